#include "checktree/fixture.h"

#include <map>

namespace test {

namespace {

constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES |
                         TVS_LINESATROOT | TVS_DISABLEDRAGDROP | TVS_SHOWSELALWAYS;

const std::map<UINT, std::string>& messageNames() {
    static const std::map<UINT, std::string> names{
        {TVM_DELETEITEM, "DELETEITEM"}, {TVM_EXPAND, "EXPAND"},          {TVM_SETIMAGELIST, "SETIMAGELIST"},
        {TVM_SELECTITEM, "SELECTITEM"}, {TVM_INSERTITEMW, "INSERTITEM"}, {TVM_SETITEMW, "SETITEM"},
        {WM_SETREDRAW, "SETREDRAW"}};
    return names;
}

}  // namespace

LRESULT RecordedTree::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto name = messageNames().find(message);
    if (recording && name != messageNames().end()) {
        std::string line = name->second;
        if (message == TVM_SETITEMW || message == TVM_INSERTITEMW) {
            const TVITEMW& record = message == TVM_SETITEMW
                                        ? *reinterpret_cast<const TVITEMW*>(lParam)
                                        : reinterpret_cast<const TVINSERTSTRUCTW*>(lParam)->item;
            if (record.mask & TVIF_TEXT) line += " text " + AString(record.pszText).toUtf8();
            if (record.mask & TVIF_STATE)
                line += " state " + std::to_string((record.state & record.stateMask) >> 12);
            if (record.mask & TVIF_IMAGE) line += " image " + std::to_string(record.iImage);
            if (record.mask & TVIF_SELECTEDIMAGE)
                line += " selected " + std::to_string(record.iSelectedImage);
            if (record.mask & TVIF_PARAM) line += " data " + std::to_string(record.lParam);
        } else {
            line += " " + std::to_string(wParam);
        }
        messages.push_back(line);
    }
    if (message == TVM_INSERTITEMW && refusedItems > 0 && refusedItems--) return 0;
    return ACheckTree::WindowProc(message, wParam, lParam);
}

BOOL Owner::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    const auto* header = reinterpret_cast<const NMHDR*>(lParam);
    if (header->code == NM_CLICK) ++clicks;
    if (header->code != TVN_GETDISPINFOW) return CWnd::OnNotify(wParam, lParam, result);
    TVITEMW& item = reinterpret_cast<NMTVDISPINFOW*>(lParam)->item;
    const auto state = static_cast<UINT>(::SendMessageW(header->hwndFrom, TVM_GETITEMSTATE,
                                                        reinterpret_cast<WPARAM>(item.hItem), TVIS_EXPANDED));
    int image = ((state & TVIS_EXPANDED) ? 4 : 2) + (tree->IsWindowEnabled() ? 0 : 1);
    int selectedImage = image;
    if (fixedImage >= 0) {
        image = fixedImage;
        selectedImage = fixedImage + 2;
    }
    if (item.mask & TVIF_IMAGE) item.iImage = image;
    if (item.mask & TVIF_SELECTEDIMAGE) item.iSelectedImage = selectedImage;
    return TRUE;
}

void CheckTree::SetUp() {
    owner.tree = &tree;
    ASSERT_TRUE(owner.CreateEx(0, nullptr, _T("owner"), WS_POPUP | WS_VISIBLE, CRect(0, 0, 400, m_height),
                               nullptr, 0));
    ASSERT_TRUE(tree.Create(kStyle, CRect(0, 0, 400, m_height), &owner, 1059));
    tree.initImageLists();
    driver::settle();
}

HTREEITEM CheckTree::insert(const char* path, DWORD data) {
    return tree.insertItem(AString::fromUtf8(path), data);
}

HTREEITEM CheckTree::at(const std::string& path) {
    HTREEITEM item = nullptr;
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = path.find('/', start);
        const std::string wanted = path.substr(start, end == std::string::npos ? end : end - start);
        item = item ? tree.GetChildItem(item) : tree.GetRootItem();
        while (item && text(item) != wanted) item = tree.GetNextSiblingItem(item);
        if (!item || end == std::string::npos) return item;
        start = end + 1;
    }
}

int CheckTree::image(const std::string& path) {
    int image = -99;
    int selected = -98;
    tree.GetItemImage(at(path), image, selected);
    EXPECT_EQ(image, selected) << path;
    return image;
}

std::string CheckTree::dump() {
    std::string lines;
    checktree::forEachItem(tree, [&](HTREEITEM item) {
        int depth = 0;
        for (HTREEITEM above = tree.GetParentItem(item); above; above = tree.GetParentItem(above)) ++depth;
        int shown = 0;
        int selected = 0;
        tree.GetItemImage(item, shown, selected);
        lines += std::string(static_cast<std::size_t>(2 * depth), ' ') + text(item) + " " +
                 std::to_string(tree.getCheck(item)) + " " + std::to_string(tree.getItemData(item)) + " " +
                 std::to_string(shown) + "\n";
    });
    return lines;
}

void CheckTree::installCallback() {
    tree.m_callbackValue = reinterpret_cast<LPARAM>(this);
    tree.m_checkCallback = [](ACheckTree* sender, HTREEITEM item, int checked, LPARAM value) {
        auto* self = reinterpret_cast<CheckTree*>(value);
        EXPECT_EQ(sender, &self->tree);
        if (!item) {
            EXPECT_EQ(checked, 0);
        }
        self->calls.push_back(item ? self->text(item) + " " + std::to_string(checked) : "end");
        return 77;  // ignored
    };
}

ADWordArray CheckTree::list(std::initializer_list<DWORD> values) {
    ADWordArray array;
    for (const DWORD value : values) array.Add(value);
    return array;
}

std::vector<DWORD> CheckTree::collected(int (ACheckTree::*collect)(ADWordArray&, int) const, int stop) {
    ADWordArray data;
    const int count = (tree.*collect)(data, stop);
    EXPECT_EQ(count, data.GetSize());
    return values(data);
}

}  // namespace test
