// Modules, their resources, and the calling thread's last error.
#pragma once

#include "winapi/types.h"

enum : DWORD {
    ERROR_SUCCESS = 0,
    ERROR_FILE_NOT_FOUND = 2,
    ERROR_ACCESS_DENIED = 5,
    ERROR_INVALID_HANDLE = 6,
    ERROR_NOT_ENOUGH_MEMORY = 8,
    ERROR_INVALID_PARAMETER = 87,
    ERROR_INSUFFICIENT_BUFFER = 122,
    ERROR_MOD_NOT_FOUND = 126,
    ERROR_PROC_NOT_FOUND = 127,
    ERROR_BAD_EXE_FORMAT = 193,
    ERROR_DLL_INIT_FAILED = 1114,
    ERROR_RESOURCE_DATA_NOT_FOUND = 1812,
    ERROR_RESOURCE_TYPE_NOT_FOUND = 1813,
    ERROR_RESOURCE_NAME_NOT_FOUND = 1814,
};

DWORD GetLastError();
void SetLastError(DWORD error);

// Reasons for which a module's DllMain is called. Off Windows LoadLibraryW calls it after the module's static
// initialisers; a DllMain that returns 0 on attach makes the load fail with ERROR_DLL_INIT_FAILED.
enum : DWORD {
    DLL_PROCESS_DETACH = 0,
    DLL_PROCESS_ATTACH = 1,
    DLL_THREAD_ATTACH = 2,
    DLL_THREAD_DETACH = 3,
};

using FARPROC = INT_PTR (*)();

#define DONT_RESOLVE_DLL_REFERENCES 0x00000001
#define LOAD_LIBRARY_AS_DATAFILE 0x00000002

// Loads a module (a shared library). Counted: each success wants one FreeLibrary. Null and a last error on
// failure. A name without a slash is looked for beside the program, nowhere else.
HMODULE LoadLibraryW(LPCWSTR path);

// With LOAD_LIBRARY_AS_DATAFILE: loads a PE image for its resources only; the handle's low bit is set, and
// every load has a handle of its own. ERROR_FILE_NOT_FOUND for a missing file, ERROR_BAD_EXE_FORMAT for one
// that is no PE image.
HMODULE LoadLibraryExW(LPCWSTR path, HANDLE file, DWORD flags);

// The last FreeLibrary of a module calls its DllMain with DLL_PROCESS_DETACH and unloads it. The entry points
// of modules that are still loaded when the process ends are not called.
BOOL FreeLibrary(HMODULE module);

// An exported function of this very module (not of a library that it depends on), or null.
FARPROC GetProcAddress(HMODULE module, const char* name);

#define GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT 0x00000002
#define GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS 0x00000004

// Without a count of its own only: the module whose image holds the address, also one that the system loaded
// with the program; the program for a null address, with or without FROM_ADDRESS.
BOOL GetModuleHandleExW(DWORD flags, LPCWSTR address, HMODULE* module);

// The path of a module's file, of the program for null. Returns the length without the NUL; a
// path that does not fit is cut, NUL-terminated, the answer is the buffer's size, and the
// last error ERROR_INSUFFICIENT_BUFFER.
DWORD GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD size);

#define RT_BITMAP MAKEINTRESOURCEW(2)
#define RT_DIALOG MAKEINTRESOURCEW(5)
#define RT_STRING MAKEINTRESOURCEW(6)

// Resources of a module, of the program for a null module. Names and types are MAKEINTRESOURCEW numbers, or
// names compared without regard to ASCII case.
HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type);
HGLOBAL LoadResource(HMODULE module, HRSRC resource);
LPVOID LockResource(HGLOBAL resource);
DWORD SizeofResource(HMODULE module, HRSRC resource);

// Copies a string of the string table, cut to size - 1 characters and NUL-terminated. Returns its
// length, 0 when the module has no such string (an empty string and a missing one look alike, as on
// Windows). With size 0, the buffer is taken as an LPCWSTR* that receives a read-only pointer into the
// resource, not NUL-terminated.
int LoadStringW(HINSTANCE module, UINT id, LPWSTR buffer, int size);
