// Ids of the test program's dialogs.
#pragma once

#define IDD_NO_FONT 100
#define IDD_UNKNOWN_CLASS 101
#define IDD_KEYS 102
#define IDD_PAGE 4096
#define IDD_RESIZABLE 10493

#define IDC_TREE 1059
#define IDC_ALL_TYPES 1060
#define IDC_SHOW_ALL_BOX 1061
#define IDC_SHOW_ALL 1066
#define IDC_SHOW_NONE 1067

#define IDS_SHEET_CAPTION 4181
#define IDS_PAGE_CAPTION 4182
