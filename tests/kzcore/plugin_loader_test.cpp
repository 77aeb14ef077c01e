#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "kzcore/tool/module_code.h"
#include "kzcore/tool/plugin_loader.h"
#include "kzcore/tool/tool.h"

namespace {

ATool* makeNothing() {
    return nullptr;
}
int zero() {
    return 0;
}

APlugInExport header() {
    return {kPlugInHeader, 0, nullptr, nullptr, nullptr, nullptr, nullptr};
}
APlugInExport end() {
    return {};
}
APlugInExport tool(const WCHAR* name, std::uint32_t flags = 0) {
    return {kPlugInTool, flags, name, nullptr, &makeNothing, &zero, &zero};
}

// Reads a copy of a table that stands between two stretches of bytes that may not be read.
struct Reading {
    std::vector<APlugInTool> tools;
    std::string error;

    explicit Reading(const std::vector<APlugInExport>& table) {
        constexpr std::size_t kGuards = 4096 / sizeof(APlugInExport);
        std::vector<APlugInExport> guarded(table.size() + 2 * kGuards);
        std::copy(table.begin(), table.end(), guarded.begin() + kGuards);
        const auto* begin = reinterpret_cast<const BYTE*>(guarded.data());
        const auto* first = reinterpret_cast<const BYTE*>(guarded.data() + kGuards);
        const auto* last = first + table.size() * sizeof(APlugInExport);
        const auto* end = reinterpret_cast<const BYTE*>(guarded.data() + guarded.size());
        const auto isReadable = [=](const void* address, std::size_t size) {
            const auto* at = static_cast<const BYTE*>(address);
            if (at >= first && at < last) return size <= static_cast<std::size_t>(last - at);
            return at < begin || at >= end;
        };
        tools = readExportTable(first, {isReadable, isModuleCode}, error);
    }
};

}  // namespace

TEST(ExportTable, GivesItsToolsInOrder) {
    const Reading reading({header(), tool(_T("AFirst")), tool(_T("ASecond"), 0x1000), end()});
    EXPECT_EQ(reading.error, "");
    ASSERT_EQ(reading.tools.size(), 2U);
    EXPECT_EQ(reading.tools[0].className.toUtf8(), "AFirst");
    EXPECT_EQ(reading.tools[0].flags, 0U);
    EXPECT_EQ(reading.tools[1].className.toUtf8(), "ASecond");
    EXPECT_EQ(reading.tools[1].flags, 0x1000U);
    EXPECT_EQ(reading.tools[1].factory, &makeNothing);
}

TEST(ExportTable, MayHoldNoTool) {
    const Reading reading({header(), end()});
    EXPECT_EQ(reading.error, "");
    EXPECT_TRUE(reading.tools.empty());
}

TEST(ExportTable, AMalformedRecordIsNamedAndNothingIsTaken) {
    const auto changed = [](APlugInExport record, auto change) {
        change(record);
        return record;
    };
    const APlugInExport good = tool(_T("ATool1"));
    std::vector<WCHAR> longName(300, WCHAR('a'));
    longName.push_back(0);
    struct Case {
        std::vector<APlugInExport> table;
        const char* error;
    };
    const Case cases[] = {
        {{}, "record 0 of the export table: cannot be read"},
        {{end()}, "record 0 of the export table: is no header"},
        {{good, end()}, "record 0 of the export table: is no header"},
        {{changed(header(), [](auto& r) { r.flags = 1; }), end()},
         "record 0 of the export table: is no header"},
        {{header(), good}, "record 2 of the export table: cannot be read"},
        {{header(), header(), end()}, "record 1 of the export table: has an unknown kind"},
        {{header(), changed(good, [](auto& r) { r.kind = 77; }), end()},
         "record 1 of the export table: has an unknown kind"},
        {{header(), good, changed(end(), [](auto& r) { r.flags = 1; })},
         "record 2 of the export table: ends the table, but is not all zero"},
        {{header(), changed(good, [](auto& r) { r.reserved = &r; }), end()},
         "record 1 of the export table: uses the reserved field"},
        {{header(), changed(good, [](auto& r) { r.className = nullptr; }), end()},
         "record 1 of the export table: has no readable class name"},
        {{header(), tool(longName.data()), end()},
         "record 1 of the export table: has no readable class name"},
        {{header(), tool(_T("")), end()}, "record 1 of the export table: has a malformed class name"},
        {{header(), tool(_T("1st")), end()}, "record 1 of the export table: has a malformed class name"},
        {{header(), tool(_T("A Tool")), end()}, "record 1 of the export table: has a malformed class name"},
        {{header(), changed(good, [](auto& r) { r.factory = nullptr; }), end()},
         "record 1 of the export table: has a function outside its module"},
        {{header(), changed(good, [](auto& r) { r.secondCallback = nullptr; }), end()},
         "record 1 of the export table: has a function outside its module"},
        {{header(), good, good, end()}, "record 2 of the export table: repeats a class name"},
    };
    for (const Case& bad : cases) {
        const Reading reading(bad.table);
        EXPECT_EQ(reading.error, bad.error);
        EXPECT_TRUE(reading.tools.empty());
    }
}

TEST(ExportTable, WithoutAnEndIsGivenUp) {
    std::vector<APlugInExport> table{header()};
    std::vector<kzutil::WideString> names;
    names.reserve(1100);
    for (int i = 0; i < 1100; ++i) {
        const AString name = AString::fromUtf8("ATool" + std::to_string(i));
        names.emplace_back(name.view());
        table.push_back(tool(names.back().c_str()));
    }
    const Reading reading(table);
    EXPECT_EQ(reading.error, "record 1024 of the export table: the table has no end");
    EXPECT_TRUE(reading.tools.empty());
}

TEST(ExportTable, DataInPlaceOfAFunctionIsRefused) {
    static int data = 0;
    const auto asFunction = [](void* address) { return reinterpret_cast<int (*)()>(address); };
    APlugInExport record = tool(_T("AFirst"));
    record.secondCallback = asFunction(&data);
    const Reading reading({header(), record, end()});
    EXPECT_EQ(reading.error, "record 1 of the export table: has data in place of a function");
    EXPECT_TRUE(reading.tools.empty());
}

TEST(ModuleCode, IsWhatCanBeCalled) {
    static const int kConstant = 7;
    static int variable = 0;
    const int local = 0;
    EXPECT_TRUE(isModuleCode(reinterpret_cast<void*>(&makeNothing)));
    EXPECT_FALSE(isModuleCode(&kConstant));
    EXPECT_FALSE(isModuleCode(&variable));
    EXPECT_FALSE(isModuleCode(&local));
    EXPECT_FALSE(isModuleCode(nullptr));
}

TEST(ExportTable, ANullTableCannotBeRead) {
    std::string error;
    const AModuleMemory anything{[](const void*, std::size_t) { return true; },
                                 [](const void*) { return true; }};
    EXPECT_TRUE(readExportTable(nullptr, anything, error).empty());
    EXPECT_EQ(error, "record 0 of the export table: cannot be read");
}

TEST(PlugIn, ThatIsMissingIsToldByItsPath) {
    AFilePath path(_T("there"));
    path += _T("no-such-plugin.so");
    std::string error;
    EXPECT_EQ(APlugIn::load(path, error), nullptr);
    EXPECT_NE(error.find("no-such-plugin.so: there is no such file"), std::string::npos) << error;
}
