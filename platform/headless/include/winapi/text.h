// Texts between UTF-16 and UTF-8.
#pragma once

#include "winapi/types.h"

#define CP_UTF8 65001

// Both return the number of characters written, or needed when the target's size is 0; 0 and a last error
// when it is too small. A length of -1 means up to the NUL, which is converted as well. Malformed text
// becomes U+FFFD. CP_UTF8 only, without flags and default characters.
int MultiByteToWideChar(UINT codePage, DWORD flags, const char* text, int length, LPWSTR target, int size);
int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR text, int length, char* target, int size,
                        const char* defaultCharacter, BOOL* usedDefault);
