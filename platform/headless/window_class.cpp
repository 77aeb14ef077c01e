// Window classes: looked up by name without regard to ASCII case.
#include <algorithm>
#include <cstring>

#include "platform/headless/desk.h"
#include "platform/headless/guard.h"

namespace headless {

namespace {

char16_t lower(char16_t character) {
    return character >= u'A' && character <= u'Z' ? static_cast<char16_t>(character + 32) : character;
}

bool same_name(std::u16string_view one, std::u16string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char16_t left, char16_t right) { return lower(left) == lower(right); });
}

ATOM add_class(const WNDCLASSEXW& description) {
    auto entry = std::make_shared<WindowClass>();
    entry->name = description.lpszClassName;
    entry->procedure = description.lpfnWndProc;
    entry->style = description.style;
    entry->extra_bytes = description.cbWndExtra;
    entry->instance = description.hInstance;
    entry->atom = ++desk().last_atom;
    desk().classes.push_back(entry);
    return entry->atom;
}

}  // namespace

WindowClass* find_class(LPCWSTR name) {
    for (const auto& entry : desk().classes) {
        if (IS_INTRESOURCE(name) ? entry->atom == LOWORD(reinterpret_cast<ULONG_PTR>(name))
                                 : same_name(entry->name, name))
            return entry.get();
    }
    return nullptr;
}

}  // namespace headless

using namespace headless;

ATOM RegisterClassExW(const WNDCLASSEXW* description) {
    if (!description || description->cbSize != sizeof(WNDCLASSEXW) || !description->lpfnWndProc ||
        !description->lpszClassName || IS_INTRESOURCE(description->lpszClassName) ||
        description->cbWndExtra < 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    if (find_class(description->lpszClassName)) {
        SetLastError(ERROR_CLASS_ALREADY_EXISTS);
        return 0;
    }
    return guarded([&]() -> ATOM { return add_class(*description); });
}

BOOL UnregisterClassW(LPCWSTR name, HINSTANCE) {
    WindowClass* entry = find_class(name);
    if (!entry) {
        SetLastError(ERROR_CLASS_DOES_NOT_EXIST);
        return FALSE;
    }
    if (entry->windows > 0) {
        SetLastError(ERROR_CLASS_HAS_WINDOWS);
        return FALSE;
    }
    std::erase_if(desk().classes, [&](const auto& other) { return other.get() == entry; });
    return TRUE;
}

BOOL GetClassInfoExW(HINSTANCE, LPCWSTR name, WNDCLASSEXW* description) {
    WindowClass* entry = find_class(name);
    if (!entry) {
        SetLastError(ERROR_CLASS_DOES_NOT_EXIST);
        return FALSE;
    }
    *description = {};
    description->cbSize = sizeof(WNDCLASSEXW);
    description->style = entry->style;
    description->lpfnWndProc = entry->procedure;
    description->cbWndExtra = entry->extra_bytes;
    description->hInstance = entry->instance;
    description->lpszClassName = name;
    return TRUE;
}

int GetClassNameW(HWND window, LPWSTR buffer, int size) {
    Window* found = find_window(window);
    if (!found || !buffer || size <= 0) return 0;
    const std::u16string& name = found->window_class->name;
    const std::size_t length = std::min(name.size(), static_cast<std::size_t>(size - 1));
    std::copy_n(name.data(), length, buffer);
    buffer[length] = 0;
    return static_cast<int>(length);
}

// The classes exist already.
BOOL InitCommonControlsEx(const INITCOMMONCONTROLSEX* classes) {
    return classes && classes->dwSize == sizeof(INITCOMMONCONTROLSEX);
}

void InitCommonControls() {}
