// The numbers of the library's resources. Resource scripts, pages and tests include this file, so it holds
// nothing else. Controls of different dialogs may have the same number; each name says dialog and control.
#pragma once

#ifndef IDC_STATIC
#define IDC_STATIC (-1)
#endif

// The range of the controls' numbers. The system's buttons lie below it, commands above it.
#define IDC_FIRST 1000
#define IDC_LAST 0x7FFF

// The applet's icon.
#define IDI_APPLET 1

// The manifest that hosts of Control Panel items look for and activate.
#define IDR_MANIFEST 123

// Services page
#define IDD_SERVICES 129
#define IDC_SERVICES_GROUP 1000
#define IDC_SERVICES_ACTIVE_LIST 1001
#define IDC_SERVICES_ACTIVE_LABEL 1002
#define IDC_SERVICES_INACTIVE_LABEL 1003
#define IDC_SERVICES_INACTIVE_LIST 1004
#define IDC_SERVICES_ADD 1005
#define IDC_SERVICES_REMOVE 1006

// Event Log page
#define IDD_EVENT 130
#define IDC_EVENT_ADD 1005
#define IDC_EVENT_REMOVE 1006
#define IDC_EVENT_GROUP 1010
#define IDC_EVENT_NEW_NAME_LABEL 1011
#define IDC_EVENT_NEW_NAME 1012
#define IDC_EVENT_LIST_LABEL 1013
#define IDC_EVENT_LIST 1014
#define IDC_EVENT_USER_LABEL 1022
#define IDC_EVENT_PASSWORD_LABEL 1023
#define IDC_EVENT_USER 1024
#define IDC_EVENT_PASSWORD 1025

// SNMP Settings page
#define IDD_SNMP 131
#define IDC_SNMP_GROUP 1015
#define IDC_SNMP_INTERVAL_LABEL 1016
#define IDC_SNMP_INTERVAL 1017
#define IDC_SNMP_SETS 1018
#define IDC_SNMP_REMOTE_REBOOT 1019
#define IDC_SNMP_EXCEPTION_TRAP 1020
#define IDC_SNMP_DISABLE_TELNET 1021
#define IDC_SNMP_DISABLE_RACK_TRAPS 1022
#define IDC_SNMP_SERVER_ROLE_LABEL 1023
#define IDC_SNMP_TEST_TRAP 1031
#define IDC_SNMP_CLEAR_THRESHOLDS 1032
#define IDC_SNMP_SERVER_ROLE 1061

// Desktop Mgmt page
#define IDD_DESKTOP 133
#define IDC_DESKTOP_GROUP 1008
#define IDC_DESKTOP_SCRIPT_LABEL 1010
#define IDC_DESKTOP_SCRIPT 1011
#define IDC_DESKTOP_BROWSE 1012
#define IDC_DESKTOP_ENABLE 1013
#define IDC_DESKTOP_SCRIPT_NOTE 1032
#define IDC_DESKTOP_DIRECTORY_NOTE 1033

// Remote Lumora page
#define IDD_BOARD 135
#define IDC_BOARD_GROUP 1026
#define IDC_BOARD_BATTERY 1027
#define IDC_BOARD_REMOTE_ALERTING 1028
#define IDC_BOARD_SERVER_RESET 1029
#define IDC_BOARD_RESET 1030

// Please-wait dialog
#define IDD_PLEASE_WAIT 136
#define IDC_PLEASE_WAIT_TEXT 1031

// Process Monitor page
#define IDD_PROCMON 137
#define IDC_PROCMON_GROUP 1042
#define IDC_PROCMON_ADD 1043
#define IDC_PROCMON_DELETE 1044
#define IDC_PROCMON_LIST 1046
#define IDC_PROCMON_NONE 1052
#define IDC_PROCMON_START 1053
#define IDC_PROCMON_STOP 1054
#define IDC_PROCMON_START_STOP 1055
#define IDC_PROCMON_NEW_NAME 1056
#define IDC_PROCMON_OPTION_GROUP 1057

// Storage page
#define IDD_STORAGE 138
#define IDC_STORAGE_GROUP 1058
#define IDC_STORAGE_FIBRE_TAPE 1059
#define IDC_STORAGE_ARRAY_TAPE 1062
#define IDC_STORAGE_SAS_TAPE 1063
#define IDC_STORAGE_ARRAY_PERFORMANCE 1064

// The applet in the Control Panel; its name is the caption of most message boxes.
#define IDS_APPLET_NAME 1
#define IDS_APPLET_DESCRIPTION 2

// Starting and stopping the agents
#define IDS_RESTART_QUESTION 79
#define IDS_START_QUESTION 80
#define IDS_CANNOT_RESTART 81
#define IDS_STOP_QUESTION 82
#define IDS_AGENTS_PENDING 83
#define IDS_CANNOT_START 84
#define IDS_CANNOT_STOP 85
#define IDS_AGENTS_UNKNOWN_STATE 86
#define IDS_STARTING 217
#define IDS_STOPPING 218

// Storage
#define IDS_FIBRE_TAPE_WARNING 88

// Data collection intervals that the SNMP Settings page offers, shortest first
#define IDS_INTERVAL_5_SECONDS 59143
#define IDS_INTERVAL_10_SECONDS 59144
#define IDS_INTERVAL_15_SECONDS 59145
#define IDS_INTERVAL_20_SECONDS 59146
#define IDS_INTERVAL_30_SECONDS 59147
#define IDS_INTERVAL_1_MINUTE 59148
#define IDS_INTERVAL_2_MINUTES 59149
#define IDS_INTERVAL_3_MINUTES 59150
#define IDS_INTERVAL_4_MINUTES 59151
#define IDS_INTERVAL_5_MINUTES 59152
#define IDS_INTERVAL_10_MINUTES 59153
#define IDS_INTERVAL_20_MINUTES 59154
#define IDS_INTERVAL_30_MINUTES 59155
#define IDS_INTERVAL_40_MINUTES 59156
#define IDS_INTERVAL_50_MINUTES 59157
#define IDS_INTERVAL_60_MINUTES 59158

// Shorter intervals, which no page offers
#define IDS_INTERVAL_1_SECOND 59180
#define IDS_INTERVAL_500_MS 59181
#define IDS_INTERVAL_250_MS 59182
#define IDS_INTERVAL_100_MS 59183
#define IDS_INTERVAL_50_MS 59184

// Test trap
#define IDS_TRAP_SENT 59160
#define IDS_TRAP_NOT_GENERATED 59161
#define IDS_ALERTER_NOT_READY 59185

// Clearing the thresholds
#define IDS_CLEAR_NEEDS_STOP 59187
#define IDS_THRESHOLDS_CLEARED 59188
#define IDS_THRESHOLDS_NOT_CLEARED 59189

// Reports of a refused or finished change of the configuration
#define IDS_ACCESS_DENIED 59163
#define IDS_ERROR_CAPTION 59164
#define IDS_REBOOT_NOTICE 59166
#define IDS_OUT_OF_MEMORY 59210

// Desktop management
#define IDS_CLIENT_COPY_FAILED 59167
#define IDS_CLIENT_DELETE_FAILED 59168
#define IDS_SHARE_ADD_FAILED 59169
#define IDS_SHARE_DELETE_FAILED 59170
#define IDS_SCRIPT_UPDATE_FAILED 59171
#define IDS_SCRIPT_NAME_INVALID 59172
#define IDS_CLIENT_PROFILE_FAILED 59173
#define IDS_CLIENT_ENABLED_NOTE 59186
#define IDS_SCRIPT_FILE_FILTER 59209

// Title of the sheet
#define IDS_SHEET_TITLE 59176

// Remote management board
#define IDS_BOARD_UNREACHABLE 59177
#define IDS_BOARD_RESETTING 59178
#define IDS_BOARD_RESET_QUESTION 59179

// Process monitor: the two texts of the Add button, and the names of the options 0 to 3. The numbers up to
// 59208 are kept free for the options 4 to 15, which have no names.
#define IDS_PROCMON_ADD 59191
#define IDS_PROCMON_ENTER 59192
#define IDS_PROCMON_OPTION_NONE 59193
#define IDS_PROCMON_OPTION_START 59194
#define IDS_PROCMON_OPTION_STOP 59195
#define IDS_PROCMON_OPTION_START_STOP 59196

// The class library's message for a field with too many characters
#ifndef AFX_IDP_PARSE_STRING_SIZE
#define AFX_IDP_PARSE_STRING_SIZE 0xF114
#endif
