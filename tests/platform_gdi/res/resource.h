// The test program's bitmaps. All whole ones hold the same picture (see bitmaps.rc); the one of 1 bit has its
// own.
#pragma once

#define IDB_1_BIT 101
#define IDB_4_BITS 102
#define IDB_4_BITS_ALL_COLORS 103
#define IDB_8_BITS 104
#define IDB_16_BITS 105
#define IDB_24_BITS 106
#define IDB_32_BITS 107
#define IDB_TRUNCATED 120
#define IDB_COMPRESSED 121
#define IDB_MISSING 199
