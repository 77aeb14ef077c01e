// Objects to store, and archives made by hand.
#pragma once

#include <memory>
#include <vector>

#include "kzutil/archive.h"

// A class as plug-ins write them: tagged fields behind the base's part, and an object inside it.
class ATestNode : public ARoot {
public:
    int number = 0;
    AString text;
    std::unique_ptr<ARoot> child;

    const AString& getClassName() const override {
        static const AString name(_T("ATestNode"));
        return name;
    }
    int getVersion() const override { return 60; }
    ARoot* createInstance() const override { return new ATestNode; }

    int orbiSerialize(AArchive& archive) override {
        archive.TagStart();
        archive.Tag(0);
        if (ARoot::orbiSerialize(archive) == 0) return 0;
        if (archive.isLoading()) {
            archive.Tag(1);
            archive >> number >> text;
            archive.Tag(2);
            child.reset(archive.orbiReadObject());
        } else {
            archive.Tag(1);
            archive << number << text;
            archive.Tag(2);
            archive.orbiWriteObject(child.get());
        }
        archive.TagEnd();
        return 1;
    }

    static void registerClass() {
        registerArchiveClass(ATestNode().getClassName(), []() -> ARoot* { return new ATestNode; });
    }
};

using Bytes = std::vector<BYTE>;

inline void appendNumber(Bytes& bytes, unsigned long long number, int width) {
    for (int i = 0; i < width; ++i, number >>= 8) bytes.push_back(static_cast<BYTE>(number));
}

inline void appendText(Bytes& bytes, const AString& text) {
    appendNumber(bytes, text.view().size(), 8);
    for (const WCHAR unit : text.view()) appendNumber(bytes, unit, 2);
}

// The archive of this content: what a reader meets when whoever lies to it has got length and checksum right.
inline Bytes sealed(const Bytes& content) {
    unsigned long long sum = 14695981039346656037u;
    for (const BYTE octet : content) {
        sum ^= octet;
        sum *= 1099511628211u;
    }
    Bytes archive = {'K', 'Z', 'A', 'R'};
    appendNumber(archive, 1, 4);
    appendNumber(archive, content.size(), 8);
    appendNumber(archive, sum, 8);
    archive.insert(archive.end(), content.begin(), content.end());
    return archive;
}

inline Bytes contentOf(const Bytes& archive) {
    return Bytes(archive.begin() + 24, archive.end());
}
