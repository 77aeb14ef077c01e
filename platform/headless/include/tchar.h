// Wide literals: _T("text") is a 16-bit string.
#pragma once

#define KZ_WIDE_LITERAL(text) u##text
#define _T(text) KZ_WIDE_LITERAL(text)
