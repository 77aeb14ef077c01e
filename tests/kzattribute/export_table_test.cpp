// The export table as raw bytes, and what the module exports besides.
#include <cstring>
#include <string>

#include "kzutil/archive.h"
#include "module.h"

namespace {

constexpr std::size_t kRecord = 48;
constexpr std::size_t kRecords = 11;

struct Expected {
    const char* className;
    std::uint32_t flags;
};

constexpr Expected kTools[] = {
    {"AViewFilterTool", 0},    {"ASelectByAttrTool", 0},  {"ASelectSimilarTool", 0},
    {"ASelectColorTool", 0},   {"AShowAllTool", 0x1000},  {"AShowAllExceptTool", 0x1000},
    {"AShowThisTool", 0x1000}, {"AHideThisTool", 0x1000}, {"AHideAllExceptTool", 0x1000},
};

template <class Number>
Number numberAt(const BYTE* bytes, std::size_t offset) {
    Number number;
    std::memcpy(&number, bytes + offset, sizeof number);
    return number;
}

class ExportedTable : public testing::Test {
protected:
    std::unique_ptr<APlugIn> plugIn = test::loadPlugIn();

    template <class Function>
    Function exported(const std::string& name) {
        return reinterpret_cast<Function>(
            reinterpret_cast<void*>(GetProcAddress(plugIn->getModule(), name.c_str())));
    }
    const BYTE* table() {
        return reinterpret_cast<const BYTE*>(exported<const void* (*)()>("APlugInExportGetList")());
    }
};

// The Itanium name of operator>>(AArchive&, CLASS*&).
std::string extractionName(const std::string& className) {
    return "_ZrsR8AArchiveRP" + std::to_string(className.size()) + className;
}

}  // namespace

TEST_F(ExportedTable, Holds528BytesOfElevenRecords) {
    BYTE bytes[kRecord * kRecords];
    static_assert(sizeof bytes == 528);
    std::memcpy(bytes, table(), sizeof bytes);

    EXPECT_EQ(numberAt<std::uint32_t>(bytes, 0), 3U);
    for (std::size_t i = 4; i < kRecord; ++i) EXPECT_EQ(bytes[i], 0) << "header byte " << i;

    const auto callback = numberAt<std::uint64_t>(bytes, kRecord + 32);
    for (std::size_t row = 1; row <= 9; ++row) {
        const BYTE* record = bytes + row * kRecord;
        const Expected& expected = kTools[row - 1];
        EXPECT_EQ(numberAt<std::uint32_t>(record, 0), 2U);
        EXPECT_EQ(numberAt<std::uint32_t>(record, 4), expected.flags) << expected.className;
        EXPECT_EQ(AString(numberAt<const WCHAR*>(record, 8)).toUtf8(), expected.className);
        EXPECT_EQ(numberAt<std::uint64_t>(record, 16), 0U);
        const std::unique_ptr<ATool> tool(numberAt<ATool* (*)()>(record, 24)());
        ASSERT_NE(tool, nullptr);
        EXPECT_EQ(tool->getClassName().toUtf8(), expected.className);
        EXPECT_EQ(numberAt<int (*)()>(record, 32)(), 0);
        EXPECT_EQ(numberAt<std::uint64_t>(record, 32), callback);
        EXPECT_EQ(numberAt<std::uint64_t>(record, 40), callback);
    }
    for (std::size_t i = 10 * kRecord; i < sizeof bytes; ++i) EXPECT_EQ(bytes[i], 0) << "byte " << i;
}

TEST_F(ExportedTable, HasTheSameAddressOnEveryCall) {
    const auto getList = exported<const void* (*)()>("APlugInExportGetList");
    EXPECT_EQ(getList(), getList());
    std::vector<BYTE> before(table(), table() + kRecord * kRecords);
    for (const APlugInTool& entry : plugIn->getTools()) delete entry.factory();
    EXPECT_EQ(std::memcmp(before.data(), table(), before.size()), 0);
}

TEST_F(ExportedTable, TheHostFindsExactlyNineTools) {
    ASSERT_EQ(plugIn->getTools().size(), 9U);
    for (std::size_t i = 0; i < 9; ++i) {
        EXPECT_EQ(plugIn->getTools()[i].className.toUtf8(), kTools[i].className);
        EXPECT_EQ(plugIn->getTools()[i].flags, kTools[i].flags);
    }
    EXPECT_EQ(plugIn->findTool(_T("ashowalltool")), nullptr);
}

TEST_F(ExportedTable, EveryClassHasItsExtractionOperator) {
    using Extract = AArchive& (*)(AArchive&, ARoot*&);
    std::vector<std::string> classes{"AViewFilterPrefs"};
    for (const Expected& tool : kTools) classes.push_back(tool.className);
    for (const std::string& className : classes) {
        const auto extract = exported<Extract>(extractionName(className));
        ASSERT_NE(extract, nullptr) << extractionName(className);
        AArchive storing;
        storing.orbiWriteObject(nullptr);
        AArchive loading(storing.takeBytes());
        ARoot* object = plugIn->getTools().empty() ? nullptr : reinterpret_cast<ARoot*>(&storing);
        EXPECT_EQ(&extract(loading, object), &loading);
        EXPECT_EQ(object, nullptr) << "a stored null is read as null";
    }
}

TEST_F(ExportedTable, EveryToolComesBackFromAnArchive) {
    using Extract = AArchive& (*)(AArchive&, ARoot*&);
    for (const Expected& expected : kTools) {
        const auto tool = test::makeTool(*plugIn, AString::fromUtf8(expected.className));
        AArchive storing;
        storing.orbiWriteObject(tool.get());
        AArchive loading(storing.takeBytes());
        ARoot* read = nullptr;
        exported<Extract>(extractionName(expected.className))(loading, read);
        ASSERT_NE(read, nullptr) << loading.getError();
        const std::unique_ptr<ARoot> owned(read);
        EXPECT_EQ(read->getClassName().toUtf8(), expected.className);
        EXPECT_EQ(read->getVersion(), 60);
        EXPECT_EQ(loading.getError(), "");
    }
}

TEST_F(ExportedTable, ExtractionTakesAnObjectOfAnotherClassAsItIs) {
    using Extract = AArchive& (*)(AArchive&, ARoot*&);
    const auto tool = test::makeTool(*plugIn, _T("AShowAllTool"));
    AArchive storing;
    storing.orbiWriteObject(tool.get());
    AArchive loading(storing.takeBytes());
    ARoot* read = nullptr;
    exported<Extract>(extractionName("AHideThisTool"))(loading, read);
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->getClassName().toUtf8(), "AShowAllTool");
    delete read;
}

TEST_F(ExportedTable, TheOperatorsOfAllTenClassesAndTheTableAreThere) {
    EXPECT_EQ(exported<void*>("_ZN18ASelectSimilarTool9classNameE"), nullptr)
        << "what is inside stays inside";
    EXPECT_NE(exported<void*>("APlugInExportGetList"), nullptr);
}

TEST_F(ExportedTable, AClassIsUnknownToArchivesOnceItsModuleIsGone) {
    std::vector<BYTE> bytes;
    {
        const auto tool = test::makeTool(*plugIn, _T("AShowAllTool"));
        AArchive storing;
        storing.orbiWriteObject(tool.get());
        bytes = storing.takeBytes();
    }
    plugIn.reset();
    AArchive loading(bytes);
    EXPECT_EQ(loading.orbiReadObject(), nullptr);
    EXPECT_EQ(loading.getError(), "");
}
