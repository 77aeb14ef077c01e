#include "app/window/windows/user.h"

#include <commdlg.h>

#include <algorithm>

#include "kzutil/utf.h"

namespace app::window {

namespace {

constexpr std::size_t kLongestName = 32768;

// Patterns as the dialogs take them: pairs that end with NUL.
constexpr WCHAR kDrawings[] = L"Drawings (*.svg, *.svgz)\0*.svg;*.svgz\0All files\0*.*\0";
constexpr WCHAR kPictures[] = L"Pictures (*.png)\0*.png\0";

using Ask = BOOL(WINAPI*)(OPENFILENAMEW*);

std::optional<std::string> ask(Ask dialog, HWND owner, FileKind kind, const std::string& suggestion,
                               DWORD flags) {
    kzutil::WideString name = kzutil::widen(suggestion);
    std::ranges::replace(name, L'/', L'\\');
    name.resize(kLongestName);
    OPENFILENAMEW asked = {};
    asked.lStructSize = sizeof asked;
    asked.hwndOwner = owner;
    asked.lpstrFilter = kind == FileKind::drawing ? kDrawings : kPictures;
    asked.lpstrDefExt = kind == FileKind::drawing ? L"svg" : L"png";
    asked.lpstrFile = name.data();
    asked.nMaxFile = static_cast<DWORD>(name.size());
    asked.Flags = flags | OFN_NOCHANGEDIR | OFN_HIDEREADONLY;
    if (!dialog(&asked)) return std::nullopt;
    return kzutil::narrow(name.c_str());
}

}  // namespace

std::optional<std::string> User::fileToOpen(HWND owner) {
    return ask(GetOpenFileNameW, owner, FileKind::drawing, {}, OFN_FILEMUSTEXIST);
}

std::optional<std::string> User::fileToWrite(HWND owner, FileKind kind, const std::string& suggestion) {
    return ask(GetSaveFileNameW, owner, kind, suggestion, OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST);
}

int User::chooseFrom(HWND owner, HMENU popup, POINT at) {
    return ::TrackPopupMenu(popup, TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, at.x, at.y, 0, owner,
                            nullptr);
}

void User::tell(HWND owner, const std::string& text, bool isError) {
    ::MessageBoxW(owner, kzutil::widen(text).c_str(), L"kzdraw",
                  MB_OK | (isError ? MB_ICONERROR : MB_ICONINFORMATION));
}

}  // namespace app::window
