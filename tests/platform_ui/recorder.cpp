#include "tests/platform_ui/recorder.h"

#include <utility>

#include "platform/driver/input.h"

namespace {

constexpr const WCHAR* class_name = _T("TreeRecorder");

std::string hexadecimal(UINT number) {
    char text[16];
    snprintf(text, sizeof(text), "%x", number);
    return text;
}

}  // namespace

std::basic_string<WCHAR> wide(const std::string& text) {
    return {text.begin(), text.end()};
}

Recorder::Recorder(DWORD style, SIZE size) {
    static const bool controls = [] {
        const INITCOMMONCONTROLSEX wanted = {sizeof(wanted), ICC_TREEVIEW_CLASSES};
        return InitCommonControlsEx(&wanted) != FALSE;
    }();
    WNDCLASSEXW description = {};
    description.cbSize = sizeof(description);
    description.lpfnWndProc = procedure;
    description.lpszClassName = class_name;
    RegisterClassExW(&description);
    if (!controls) return;
    frame_ = CreateWindowExW(0, class_name, _T("Frame"), WS_POPUP | WS_VISIBLE, 0, 0, 600, 600, nullptr,
                             nullptr, nullptr, nullptr);
    tree_ = CreateWindowExW(0, WC_TREEVIEWW, nullptr, WS_CHILD | WS_VISIBLE | style, 0, 0, size.cx, size.cy,
                            frame_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(1059)), nullptr, nullptr);
    SetWindowLongPtrW(frame_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    driver::settle();
}

Recorder::~Recorder() {
    if (!frame_) return;
    SetWindowLongPtrW(frame_, GWLP_USERDATA, 0);
    DestroyWindow(frame_);
    driver::settle();
    for (HIMAGELIST images : images_) ImageList_Destroy(images);
}

void Recorder::attach_images(bool state, bool normal) {
    auto attach = [this](int kind) {
        HIMAGELIST images = ImageList_Create(16, 16, ILC_COLOR24, 10, 10);
        HDC screen = GetDC(nullptr);
        HBITMAP strip = CreateCompatibleBitmap(screen, 7 * 16, 16);
        ReleaseDC(nullptr, screen);
        ImageList_Add(images, strip, nullptr);
        DeleteObject(strip);
        SendMessageW(tree_, TVM_SETIMAGELIST, static_cast<WPARAM>(kind), reinterpret_cast<LPARAM>(images));
        images_.push_back(images);
    };
    if (state) attach(TVSIL_STATE);
    if (normal) attach(TVSIL_NORMAL);
}

HTREEITEM Recorder::insert(const std::string& name, HTREEITEM parent, HTREEITEM after, int image) {
    std::basic_string<WCHAR> text = wide(name);
    TVINSERTSTRUCTW request = {};
    request.hParent = parent;
    request.hInsertAfter = after;
    request.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_STATE;
    request.item.pszText = text.data();
    request.item.iImage = image;
    request.item.iSelectedImage = image;
    request.item.state = INDEXTOSTATEIMAGEMASK(1);
    request.item.stateMask = TVIS_STATEIMAGEMASK;
    auto item = reinterpret_cast<HTREEITEM>(
        SendMessageW(tree_, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&request)));
    if (item) names_[item] = name;
    return item;
}

std::string Recorder::name(HTREEITEM item) const {
    if (!item) return "-";
    auto found = names_.find(item);
    return found == names_.end() ? "?" : found->second;
}

std::vector<std::string> Recorder::take() {
    return std::exchange(notices_, {});
}

LRESULT CALLBACK Recorder::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* recorder = reinterpret_cast<Recorder*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (recorder && message == WM_NOTIFY) return recorder->notice(*reinterpret_cast<const NMHDR*>(lParam));
    return DefWindowProcW(window, message, wParam, lParam);
}

LRESULT Recorder::notice(const NMHDR& header) {
    const auto& change = reinterpret_cast<const NMTREEVIEWW&>(header);
    auto selection = [&](const char* verb) {
        return std::string(verb) + " " + name(change.itemOld.hItem) + " > " + name(change.itemNew.hItem) +
               " by " + std::to_string(change.action);
    };
    auto expansion = [&](const char* verb) {
        return verb + std::string(change.action == TVE_EXPAND ? " expand " : " collapse ") +
               name(change.itemNew.hItem) + " state " + hexadecimal(change.itemNew.state & 0xF0FF);
    };
    switch (header.code) {
        case TVN_SELCHANGINGW:
            notices_.push_back(selection("selecting"));
            return refuse_selecting;
        case TVN_SELCHANGEDW:
            notices_.push_back(selection("selected"));
            return 0;
        case TVN_ITEMEXPANDINGW:
            notices_.push_back(expansion("before"));
            return change.action == TVE_EXPAND ? refuse_expanding : refuse_collapsing;
        case TVN_ITEMEXPANDEDW:
            notices_.push_back(expansion("after"));
            return 0;
        case TVN_DELETEITEMW:
            notices_.push_back("deleted " + name(change.itemOld.hItem));
            names_.erase(change.itemOld.hItem);
            return 0;
        case TVN_GETDISPINFOW: {
            auto& info = const_cast<NMTVDISPINFOW&>(reinterpret_cast<const NMTVDISPINFOW&>(header));
            const int image = info.item.state & TVIS_EXPANDED ? 4 : 2;
            if (info.item.mask & TVIF_IMAGE) info.item.iImage = image;
            if (info.item.mask & TVIF_SELECTEDIMAGE) info.item.iSelectedImage = image;
            return 0;
        }
        case TVN_KEYDOWN:
            notices_.push_back("key");
            return 0;
        case NM_CLICK:
            notices_.push_back("click");
            return 0;
        case NM_DBLCLK:
            notices_.push_back("double click");
            return 0;
        case NM_RETURN:
            notices_.push_back("return");
            return 0;
        case NM_SETFOCUS:
            notices_.push_back("focus");
            return 0;
        case NM_KILLFOCUS:
            notices_.push_back("focus lost");
            return 0;
        default:
            return 0;
    }
}
