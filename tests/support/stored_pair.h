// An object whose preferences tests store: two numbers that belong together, in records as plug-ins write
// them.
#pragma once

#include "kzutil/preference_manager.h"
#include "support/archive_node.h"

class AStoredPair : public ARoot {
public:
    int first = 1;
    int second = 2;
    bool refuses = false;  // to be stored or loaded
    bool throws = false;   // when it is loaded, half way

    AStoredPair() = default;
    AStoredPair(int a, int b) : first(a), second(b) {}

    const AString& getClassName() const override {
        static const AString name(_T("AStoredPair"));
        return name;
    }
    int getVersion() const override { return 60; }

    int orbiSerialize(AArchive& archive) override {
        if (refuses) return 0;
        archive.TagStart();
        archive.Tag(0);
        if (ARoot::orbiSerialize(archive) == 0) return 0;
        archive.Tag(1);
        exchange(archive, first);
        if (throws && archive.isLoading() && first != 1) throw std::bad_alloc();
        archive.Tag(2);
        exchange(archive, second);
        archive.TagEnd();
        return 1;
    }

    bool operator==(const AStoredPair& other) const { return first == other.first && second == other.second; }
    friend std::ostream& operator<<(std::ostream& out, const AStoredPair& pair) {
        return out << pair.first << ", " << pair.second;
    }

private:
    static void exchange(AArchive& archive, int& value) {
        if (archive.isLoading())
            archive >> value;
        else
            archive << value;
    }
};

// The content of its file.
inline Bytes storedPairContent(int first, int second, const AString& className = _T("AStoredPair")) {
    Bytes base;
    appendNumber(base, 0, 1);
    appendNumber(base, 60, 4);
    Bytes fields;
    appendNumber(fields, 0, 1);
    appendNumber(fields, base.size(), 8);
    fields.insert(fields.end(), base.begin(), base.end());
    appendNumber(fields, 1, 1);
    appendNumber(fields, static_cast<unsigned>(first), 4);
    appendNumber(fields, 2, 1);
    appendNumber(fields, static_cast<unsigned>(second), 4);
    Bytes content;
    appendText(content, className);
    appendNumber(content, fields.size(), 8);
    content.insert(content.end(), fields.begin(), fields.end());
    return content;
}
