// The host and its plug-in share one chain of resources: an id that both used would show one's for the
// other's. Ids are kept apart by whole blocks of sixteen, the unit in which strings are stored.
#include <set>

#include "module.h"

namespace {

constexpr UINT kLastId = 0xFFFF;

bool has(HMODULE module, UINT id, UINT type) {
    return FindResourceW(module, MAKEINTRESOURCEW(id), MAKEINTRESOURCEW(type)) != nullptr;
}

// The blocks in which a module has a resource of any of the numbered kinds.
std::set<UINT> blocksOf(HMODULE module) {
    constexpr UINT kStrings = 6;
    constexpr UINT kKinds[] = {1, 2, 3, 4, 5, 9, 10, 12, 14};  // pictures, menus, dialogs, accelerators, data
    std::set<UINT> blocks;
    for (UINT id = 1; id <= kLastId; ++id) {
        for (const UINT kind : kKinds) {
            if (has(module, id, kind)) blocks.insert(id / 16);
        }
    }
    for (UINT block = 0; block <= kLastId / 16; ++block) {
        if (has(module, block + 1, kStrings)) blocks.insert(block);
    }
    return blocks;
}

HMODULE hostLibrary() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(findClass(_T("ARectangle"))), &module);
    return module;
}

}  // namespace

TEST(ResourceIds, OfTheHostShareNoBlockWithThePlugIns) {
    const auto plugIn = test::loadPlugIn();
    ASSERT_NE(plugIn, nullptr);
    const std::set<UINT> plugInBlocks = blocksOf(plugIn->getModule());
    const std::set<UINT> hostBlocks = blocksOf(hostLibrary());
    EXPECT_TRUE(plugInBlocks.contains(2048 / 16)) << "its check boxes";
    EXPECT_TRUE(plugInBlocks.contains(52074 / 16)) << "its last text";
    for (const AClassInfo& row : databaseClasses()) {
        EXPECT_TRUE(hostBlocks.contains(row.nameId / 16)) << row.name.toUtf8();
        EXPECT_TRUE(hostBlocks.contains(row.iconId / 16)) << row.name.toUtf8();
    }
    for (const UINT block : hostBlocks) EXPECT_FALSE(plugInBlocks.contains(block)) << block * 16;
}
