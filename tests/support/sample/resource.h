// Ids of the sample applet, for its resources, its code and the tests that drive it.
#pragma once

#define IDI_SAMPLE 1
#define IDS_SAMPLE_NAME 1
#define IDS_SAMPLE_INFO 2

// First page
#define IDD_FIRST 101
#define IDC_FIRST_CHECK 1001
#define IDC_FIRST_EDIT 1002
#define IDC_FIRST_ASK 1003
#define IDC_FIRST_DISABLED 1004
#define IDC_FIRST_MORE 1005

// Second page
#define IDD_SECOND 102
#define IDC_SECOND_CHECK 1101
#define IDC_SECOND_LIST 1102
#define IDC_SECOND_COMBO 1103

// Dialog behind the first page's More button
#define IDD_MORE 103
