// Basic types, handles and macros of the Windows API, with the widths that they have on 64-bit Windows.
#pragma once

#include <cstddef>
#include <cstdint>

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using INT = int;
using UINT = unsigned int;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using LONGLONG = std::int64_t;
using SIZE_T = std::size_t;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = std::uintptr_t;
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;
using COLORREF = DWORD;
using LPVOID = void*;

// wchar_t has 32 bits off Windows; char16_t has the width, and a type of its own for overloading.
using WCHAR = char16_t;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;

#define TRUE 1
#define FALSE 0
#define WINAPI
#define APIENTRY
#define CALLBACK

// Handles are checked numbers in pointer clothes: no headless handle is ever dereferenced by its holder.
#define KZ_DECLARE_HANDLE(name) \
    struct name##__ {           \
        int unused;             \
    };                          \
    using name = name##__*

using HANDLE = void*;
using HGLOBAL = HANDLE;
KZ_DECLARE_HANDLE(HINSTANCE);
KZ_DECLARE_HANDLE(HRSRC);
using HMODULE = HINSTANCE;

#define LOWORD(value) (static_cast<WORD>(static_cast<DWORD_PTR>(value) & 0xffff))
#define HIWORD(value) (static_cast<WORD>((static_cast<DWORD_PTR>(value) >> 16) & 0xffff))
#define MAKEINTRESOURCEW(id) (reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(static_cast<WORD>(id))))
#define IS_INTRESOURCE(name) ((reinterpret_cast<ULONG_PTR>(name) >> 16) == 0)
