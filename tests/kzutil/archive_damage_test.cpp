// Archives that are cut, damaged or made to mislead, and memory that runs out.
#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <random>

#include "tests/kzutil/text_printing.h"
#include "tests/support/archive_node.h"
#include "tests/support/failing_new.h"

namespace {

using Object = std::unique_ptr<ARoot>;

Bytes sample() {
    auto outer = std::make_unique<ATestNode>();
    outer->number = 5;
    outer->text = _T("a text that is too long to lie in the object itself");
    outer->child = std::make_unique<ATestNode>();
    AArchive out;
    out << 1;
    out.orbiWriteObject(outer.get());
    out.orbiWriteObject(nullptr);
    out.orbiWriteObject(outer->child.get());
    return out.takeBytes();
}

// Reads everything that sample() stores; how many objects came out.
int readAll(AArchive& in) {
    int number = 0, objects = 0;
    in >> number;
    for (int i = 0; i < 3; ++i) objects += Object(in.orbiReadObject()) != nullptr;
    return objects;
}

class DamagedArchive : public testing::Test {
protected:
    DamagedArchive() { ATestNode::registerClass(); }
};

TEST_F(DamagedArchive, IsReadableWhileItIsWhole) {
    AArchive in(sample());
    EXPECT_EQ(readAll(in), 2);
    EXPECT_EQ(in.getError(), "");
}

TEST_F(DamagedArchive, IsRefusedWhereverItIsCut) {
    const Bytes whole = sample();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        AArchive in(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)));
        int number = 77;
        AString text(_T("before"));
        in >> number >> text;
        EXPECT_EQ(number, 77) << length;
        EXPECT_EQ(text, _T("before")) << length;
        EXPECT_EQ(readAll(in), 0) << length;
        EXPECT_NE(in.getError(), "") << length;
    }
}

TEST_F(DamagedArchive, IsRefusedWhicheverByteHasChanged) {
    const Bytes whole = sample();
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const int change : {0x01, 0x02, 0x10, 0x80, 0xff}) {
            Bytes bytes = whole;
            bytes[at] ^= static_cast<BYTE>(change);
            AArchive in(std::move(bytes));
            EXPECT_EQ(readAll(in), 0) << at;
            EXPECT_NE(in.getError(), "") << at;
        }
    }
}

TEST_F(DamagedArchive, IsRefusedWithSomethingBehindIt) {
    Bytes bytes = sample();
    bytes.push_back(0);
    AArchive in(std::move(bytes));
    EXPECT_NE(in.getError(), "");
    EXPECT_EQ(readAll(in), 0);
}

TEST_F(DamagedArchive, GivesAnErrorWhereverItsSealedContentIsCut) {
    const Bytes content = contentOf(sample());
    for (std::size_t length = 0; length < content.size(); ++length) {
        AArchive in(sealed(Bytes(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(length))));
        EXPECT_EQ(in.getError(), "") << length;
        EXPECT_LT(readAll(in), 2) << length;
        EXPECT_NE(in.getError(), "") << length;
    }
}

TEST_F(DamagedArchive, NeverReadsOutsideOfItselfWhateverItsSealedContentSays) {
    const Bytes content = contentOf(sample());
    std::mt19937 random(3);
    int errors = 0, whole = 0;
    for (int round = 0; round < 20000; ++round) {
        Bytes changed = content;
        for (unsigned i = 0, changes = 1 + random() % 3; i < changes; ++i) {
            const BYTE likely[] = {0, 1, 2, 8, 0x7f, 0x80, 0xff, static_cast<BYTE>(random())};
            changed[random() % changed.size()] = likely[random() % 8];
        }
        AArchive in(sealed(changed));
        const int objects = readAll(in);
        EXPECT_LE(objects, 2);
        (in.getError().empty() ? whole : errors)++;
    }
    // Some changes hit a text or a number and do no harm, others a length.
    EXPECT_GT(errors, 0);
    EXPECT_GT(whole, 0);
}

TEST_F(DamagedArchive, RefusesLengthsThatReachOutOfTheirRecord) {
    for (const unsigned long long length :
         {9ull, 10ull, 0x7fffffffull, 0x100000000ull, 1ull << 63, ~0ull, ~0ull - 7}) {
        Bytes content;
        appendNumber(content, 16, 8);
        appendNumber(content, length, 8);
        appendNumber(content, 0, 8);
        appendNumber(content, 0, 8);  // behind the outer record, which must not be reached
        const Bytes archive = sealed(content);

        AArchive record(archive);
        record.TagStart();
        record.TagStart();
        EXPECT_NE(record.getError(), "") << length;

        AArchive text(archive);
        AString read(_T("before"));
        text.TagStart();
        text >> read;
        EXPECT_NE(text.getError(), "") << length;
        EXPECT_EQ(read, _T("before")) << length;

        AArchive object(archive);
        object.TagStart();
        EXPECT_EQ(object.orbiReadObject(), nullptr) << length;
        EXPECT_NE(object.getError(), "") << length;
    }
}

TEST_F(DamagedArchive, RefusesABodyThatReachesOutOfItsRecord) {
    for (const unsigned long long length : {1ull, 1ull << 40, ~0ull}) {
        Bytes content, object;
        appendText(object, AString(_T("ATestNode")));
        appendNumber(object, length, 8);
        appendNumber(content, object.size(), 8);
        content.insert(content.end(), object.begin(), object.end());
        appendNumber(content, 0, 8);
        AArchive in(sealed(content));
        in.TagStart();
        EXPECT_EQ(in.orbiReadObject(), nullptr);
        EXPECT_NE(in.getError(), "");
    }
}

TEST_F(DamagedArchive, ReadsNothingPastARecordsEnd) {
    AArchive out;
    out.TagStart();
    out.Tag(0);
    out << 1;
    out.TagEnd();
    out << 2;
    AArchive in(out.takeBytes());
    int first = 0, second = 77;
    in.TagStart();
    in.Tag(0);
    in >> first >> second;
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 77);
    const std::string error = in.getError();
    EXPECT_NE(error, "");
    // The first error stays, and nothing is read behind it.
    in.TagEnd();
    in >> second;
    in.Tag(4);
    EXPECT_EQ(second, 77);
    EXPECT_EQ(in.getError(), error);
}

TEST_F(DamagedArchive, TellsWhichByteIsWrong) {
    AArchive out;
    out.TagStart();
    out.Tag(3);
    out << 1;
    out.TagEnd();
    AArchive in(out.takeBytes());
    int number = 77;
    in.TagStart();
    in.Tag(4);
    in >> number;
    EXPECT_EQ(number, 77);
    EXPECT_NE(in.getError().find("byte 32"), std::string::npos) << in.getError();
}

TEST_F(DamagedArchive, IsRefusedWhenItsObjectsLieTooDeep) {
    Bytes content;
    for (int depth = 0; depth < 1000; ++depth) {
        Bytes node;
        Bytes base;
        appendNumber(base, 5, 8);
        appendNumber(base, 0, 1);
        appendNumber(base, 60, 4);
        Bytes fields = {0};
        fields.insert(fields.end(), base.begin(), base.end());
        fields.push_back(1);
        appendNumber(fields, 7, 4);
        appendText(fields, AString());
        fields.push_back(2);
        if (depth == 0) appendNumber(fields, 0, 8);
        fields.insert(fields.end(), content.begin(), content.end());
        appendText(node, AString(_T("ATestNode")));
        appendNumber(node, fields.size() + 8, 8);
        appendNumber(node, fields.size(), 8);
        node.insert(node.end(), fields.begin(), fields.end());
        content = std::move(node);
        if (depth + 1 == 64) {
            AArchive in(sealed(content));
            EXPECT_TRUE(Object(in.orbiReadObject())) << in.getError();
        }
    }
    AArchive in(sealed(content));
    EXPECT_EQ(in.orbiReadObject(), nullptr);
    EXPECT_NE(in.getError().find("too deep"), std::string::npos) << in.getError();
}

TEST_F(DamagedArchive, KeepsOneObjectThatWasReadBeforeTheDamage) {
    Bytes content = contentOf(sample());
    content.resize(content.size() - 1);
    AArchive in(sealed(content));
    EXPECT_EQ(readAll(in), 1);
    EXPECT_NE(in.getError(), "");
}

// Runs it with every single allocation failing, until one run gets through; how many failed.
template <class Run>
int failEveryAllocation(Run run) {
    for (int n = 1;; ++n) {
        bool thrown = false;
        const AllocationFailure failing = failAllocation(n);
        try {
            run(failing);
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
        if (!failing.happened()) {
            EXPECT_FALSE(thrown);
            return n - 1;
        }
    }
}

TEST_F(DamagedArchive, ReadingThrowsOrGivesAnErrorWhenMemoryRunsOut) {
    const Bytes bytes = sample();
    const int failures = failEveryAllocation([&](const AllocationFailure& failing) {
        AArchive in(bytes);
        const int objects = readAll(in);
        const bool isWhole = objects == 2 && in.getError().empty();
        EXPECT_NE(isWhole, failing.happened());
    });
    EXPECT_GT(failures, 3);
}

TEST_F(DamagedArchive, MayBeReadAgainFromThePlaceWhereMemoryRanOut) {
    const Bytes bytes = sample();
    for (int n = 1;; ++n) {
        AArchive in(bytes);
        int number = 0;
        in >> number;
        bool happened = false;
        Object object;
        try {
            const AllocationFailure failing = failAllocation(n);
            object.reset(in.orbiReadObject());
            happened = failing.happened();
        } catch (const std::bad_alloc&) {
            happened = true;
            object.reset(in.orbiReadObject());
        }
        ASSERT_EQ(in.getError(), "") << n;
        ASSERT_TRUE(object) << n;
        EXPECT_EQ(static_cast<ATestNode*>(object.get())->number, 5);
        if (!happened) break;
    }
}

TEST_F(DamagedArchive, GivesAnErrorWhenAFactoryRunsOutOfMemory) {
    registerArchiveClass(ATestNode().getClassName(), []() -> ARoot* { return new (std::nothrow) ATestNode; });
    const Bytes bytes = sample();
    int errors = 0;
    failEveryAllocation([&](const AllocationFailure& failing) {
        AArchive in(bytes);
        const int objects = readAll(in);
        EXPECT_EQ(in.getError().empty(), objects == 2);
        EXPECT_NE(in.getError().empty(), failing.happened());
        errors += !in.getError().empty();
    });
    EXPECT_EQ(errors, 3);  // the two at top level and the child
}

TEST_F(DamagedArchive, StoringStandsWhereItStoodWhenMemoryRanOut) {
    ATestNode object;
    object.text = _T("a text that is too long to lie in the object itself");
    const auto storeTwice = [&](int n) {
        AArchive out;
        out << 1;
        try {
            const AllocationFailure failing = failAllocation(n);
            out.orbiWriteObject(&object);
        } catch (const std::bad_alloc&) {
            out.orbiWriteObject(&object);
        }
        EXPECT_EQ(out.getError(), "");
        return out.takeBytes();
    };
    const Bytes expected = storeTwice(0);
    for (int n = 1; n < 40; ++n) EXPECT_EQ(storeTwice(n), expected) << n;
}

TEST_F(DamagedArchive, RegisteringAClassThrowsWhenMemoryRunsOut) {
    const AString name(_T("AClassWithANameThatDoesNotLieInTheObjectItself"));
    const int failures = failEveryAllocation([&](const AllocationFailure&) {
        registerArchiveClass(name, []() -> ARoot* { return new ATestNode; });
    });
    EXPECT_GT(failures, 0);
    registerArchiveClass(name, nullptr);
}

}  // namespace
