// Dialogs and strings of the class library's tests.
#pragma once

#define IDD_CONTROLS 101 // one control of each kind
#define IDD_PAGE1 102
#define IDD_PAGE2 103
#define IDD_PAGE3 104

#define IDC_EDIT 1001
#define IDC_CHECK 1002
#define IDC_COMBO 1003
#define IDC_LIST 1004
#define IDC_BUTTON 1005
#define IDC_RADIO1 1010
#define IDC_RADIO2 1011
#define IDC_RADIO3 1012
#define IDC_ABSENT 1099

#define IDS_GREETING 201    // "Hello"
#define IDS_FORMAT 202      // "%d of %s"
#define IDS_LONG 203        // 300 characters
#define IDS_TWICE 204       // "%1 and %1"
#define IDS_CAPTION 205     // "From the table"
#define IDS_PAGECAPTION 206 // "Renamed"
#define IDS_LONG_WIDE 207   // 300 times U+3042
#define IDS_ABSENT 299
#define IDS_TOO_LONG 0xF114
