// What the English resources hold. The numbers stand here as numbers, so that a slip in resource.h shows as
// well.
#include "tests/unit/resources/ExpectedTexts.h"

#include <stdexcept>
#include <string>

namespace {

constexpr ExpectedString kStrings[] = {
    {1, "Norvale Management Agents"},
    {2, "Configures the Norvale Management Agents"},
    {79, "The Management Agents configuration has been changed.\n\nWould you like to restart the "
         "Management Agents now?"},
    {80, "The Management Agents configuration has been changed.\n\nWould you like to start the "
         "Management Agents now?"},
    {81, "Cannot restart the Management Agents service.\n\nPlease restart the system."},
    {82, "The Management Agents service is running.\n\nWould you like to stop the Management Agents now?"},
    {83, "The Management Agents service is in a pending state.\n\nUse the Services applet in the Control "
         "Panel to control the Management Agents."},
    {84, "Could not start the %s service.\n\nUse the Services applet in the Control Panel to control the "
         "service."},
    {85, "Could not stop the %s service.\n\nUse the Services applet in the Control Panel to control the "
         "service."},
    {86, "The Management Agents service is in an unknown state.\n\nUse the Services applet in the "
         "Control Panel to control the Management Agents."},
    {88, "Enabling the Fibre Agent tape support in a Storage Area Network environment may cause tape "
         "backups to fail.\n\nIt can also result in tape command timeouts that are reported in the Event "
         "Log."},
    {217, "\nPlease wait...\n\nStarting the %s Service."},
    {218, "\nPlease wait...\n\nStopping the %s Service."},
    {59143, "5 Seconds"},
    {59144, "10 Seconds"},
    {59145, "15 Seconds"},
    {59146, "20 Seconds"},
    {59147, "30 Seconds"},
    {59148, "1 Minute"},
    {59149, "2 Minutes"},
    {59150, "3 Minutes"},
    {59151, "4 Minutes"},
    {59152, "5 Minutes"},
    {59153, "10 Minutes"},
    {59154, "20 Minutes"},
    {59155, "30 Minutes"},
    {59156, "40 Minutes"},
    {59157, "50 Minutes"},
    {59158, "60 Minutes"},
    {59160, "The following trap has been sent:\n\n\"%s\""},
    {59161, "The trap could not be generated.\n\nPlease insure that the Host Agent is enabled and running."},
    {59163, "You do not have access to change the configuration of the Management Agents."},
    {59164, "Management Agents Error"},
    {59166, "The new configuration has been saved.\n\nThe System must be rebooted before changes can take "
            "effect."},
    {59167, "Cannot enable Desktop Management.  Error copying files to the client share directory."},
    {59168, "Cannot disable Desktop Management.  Error removing files from the client share directory."},
    {59169, "Cannot create Desktop Management Discovery shared "
            "directory\n%SystemRoot%\\System32\\VTNMGMT\\VTNDATA."},
    {59170, "Cannot remove Desktop Management Discovery shared "
            "directory\n%SystemRoot%\\System32\\VTNMGMT\\VTNDATA."},
    {59171, "Cannot create/update Desktop Management script file."},
    {59172, "Filename error or file could not be opened.  Only batch (.BAT) files are allowed."},
    {59173, "Cannot update the VTNCLNT.INI file."},
    {59176, "Management Agents for Servers Version %s - Windows"},
    {59177, "Cannot communicate with the Remote Lumora Manager Board Driver."},
    {59178, "Please wait...\n\nResetting the Remote Lumora Management Board."},
    {59179, "Resetting the Remote Lumora Management Board may result in the loss of a remote "
            "connection.\n\nDo you want to continue?"},
    {59180, "1 Second"},
    {59181, "500 MS"},
    {59182, "250 MS"},
    {59183, "100 MS"},
    {59184, "50 MS"},
    {59185, "The Management Agents Remote Alerter agent has not finished initializing or is not enabled.  "
            "The test trap was not sent."},
    {59186, "Enabling Desktop Management will only update an existing script or create a new script.  It "
            "will not setup login script processing.\n\nPlease use the User Manager for Domains application "
            "to setup login script processing."},
    {59187, "The Management Agents service must be stopped before clearing thresholds.\n\nWould you like to "
            "stop the Management Agents now?"},
    {59188, "The thresholds have been cleared."},
    {59189, "Error clearing the thresholds."},
    {59191, "&Add"},
    {59192, "&Enter"},
    {59193, "None"},
    {59194, "Start"},
    {59195, "Stop"},
    {59196, "Start & Stop"},
    {59209, "Command Files (*.bat)|*.bat||"},
    {59210, "There is not enough memory to go on.\n\nWhat was saved before stays saved. Close other "
            "programs, open the applet again and check its settings."},
    {61716, "Enter no more than %1 characters."},
};

// Styles that several controls share.
constexpr DWORD kPage = WS_CHILD | WS_CAPTION;
constexpr DWORD kPush = BS_PUSHBUTTON | WS_TABSTOP;
constexpr DWORD kCheck = BS_AUTOCHECKBOX | WS_TABSTOP;
constexpr DWORD kRadio = BS_AUTORADIOBUTTON | WS_DISABLED;
constexpr DWORD kField = ES_AUTOHSCROLL | WS_TABSTOP;
constexpr DWORD kList = LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | WS_VSCROLL | WS_TABSTOP;
constexpr DWORD kWideList = kList | WS_HSCROLL;
constexpr DWORD kDropDownList = CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP;

constexpr ExpectedControl kServices[] = {
    {1000, "Button", BS_GROUPBOX, "Manage Agents"},
    {1002, "Static", 0, "A&ctive Agents:"},
    {1001, "ListBox", kWideList, ""},
    {1006, "Button", kPush, "&Remove->"},
    {1003, "Static", 0, "&Inactive Agents:"},
    {1004, "ListBox", kWideList, ""},
    {1005, "Button", kPush, "<-&Add"},
};

constexpr ExpectedControl kEvent[] = {
    {1010, "Button", BS_GROUPBOX, "Remote Event Log Destinations"},
    {1022, "Static", 0, "&User Name:"},
    {1024, "Edit", kField, ""},
    {1023, "Static", 0, "&Password:"},
    {1025, "Edit", kField | ES_PASSWORD, ""},
    {1011, "Static", 0, "&New Computer Name:"},
    {1012, "Edit", kField | ES_UPPERCASE, ""},
    {1005, "Button", kPush, "&Add->"},
    {1006, "Button", kPush, "<-&Remove"},
    {1013, "Static", 0, "&Send Events to:"},
    {1014, "ListBox", kList, ""},
};

constexpr ExpectedControl kSnmp[] = {
    {1015, "Button", BS_GROUPBOX, "SNMP Settings"},
    {1023, "Static", 0, "Server Role"},
    {1061, "Edit", kField, ""},
    {1016, "Static", 0, "Data Collection Inter&val:"},
    {1017, "ComboBox", kDropDownList, ""},
    {1018, "Button", kCheck, "Enable &SNMP Sets"},
    {1019, "Button", kCheck, "Enable &Remote Reboot"},
    {1020, "Button", kCheck, "Enable the &Application Exception Trap"},
    {1021, "Button", kCheck, "&Disable Telnet Detection"},
    {1022, "Button", kCheck, "Disable Rack &Infrastructure Traps"},
    {1031, "Button", kPush, "Send &Test Trap"},
    {1032, "Button", kPush, "&Clear All Thresholds"},
};

constexpr ExpectedControl kClient[] = {
    {1008, "Button", BS_GROUPBOX, ""},
    {1013, "Button", kCheck, "&Enable Desktop Management"},
    {1032, "Static", 0,
     "The Login Script is the batch file executed when a client logs into the domain.  The specified "
     "script will be modified (or created) to provide support for Desktop Management."},
    {1033, "Static", 0,
     "The default directory presented should be correct, however not all domain configurations are "
     "the same.  Press Help for more information."},
    {1010, "Static", 0, "&Login Script:"},
    {1011, "Edit", kField, ""},
    {1012, "Button", kPush, "..."},
};

constexpr ExpectedControl kBoard[] = {
    {1026, "Button", BS_GROUPBOX, "Remote Lumora Management Board Settings"},
    {1027, "Button", kCheck, "Enable the &Battery"},
    {1028, "Button", kCheck, "Enable Remote &Alerting"},
    {1029, "Button", kCheck, "Enable &Server Reset Pending"},
    {1030, "Button", kPush, "&Reset Remote Lumora Board"},
};

constexpr ExpectedControl kPleaseWait[] = {
    {1031, "Static", SS_CENTER, "\n\nPlease wait..."},
};

constexpr ExpectedControl kProcMon[] = {
    {1042, "Button", BS_GROUPBOX, "Monitor Processes"},
    {-1, "Static", 0, "Monitor Option"},
    {-1, "Static", 0, "Process"},
    {1046, "ListBox", kList | LBS_SORT | LBS_USETABSTOPS, ""},
    {1056, "Edit", kField, ""},
    {1057, "Button", BS_GROUPBOX | WS_DISABLED, "Option"},
    {1052, "Button", kRadio | WS_GROUP | WS_TABSTOP, "None"},
    {1053, "Button", kRadio, "Start"},
    {1054, "Button", kRadio, "Stop"},
    {1055, "Button", kRadio, "Start && Stop"},
    {1043, "Button", kPush | WS_GROUP, "&Add"},
    {1044, "Button", kPush | WS_DISABLED, "&Delete"},
};

constexpr ExpectedControl kStorage[] = {
    {1058, "Button", BS_GROUPBOX, "Storage Settings"},
    {1059, "Button", kCheck, "&Disable Fibre Agent Tape Support"},
    {1062, "Button", kCheck, "&Disable Quenta Array Agent Tape Support"},
    {1063, "Button", kCheck, "&Disable SAS Agent Tape Support"},
    {1064, "Button", kCheck, "&Disable Quenta Array Performance Monitoring"},
};

constexpr ExpectedDialog kDialogs[] = {
    {129, 281, 132, kPage, "Services", kServices},
    {130, 281, 132, kPage, "Event Log", kEvent},
    {131, 281, 156, kPage, "SNMP Settings", kSnmp},
    {133, 281, 132, kPage, "Desktop Mgmt", kClient},
    {135, 281, 132, kPage, "Remote Lumora", kBoard},
    {136, 157, 66, WS_POPUP | WS_VISIBLE | WS_CAPTION | DS_MODALFRAME, "Management Agents", kPleaseWait},
    {137, 281, 132, kPage, "Process Monitor", kProcMon},
    {138, 281, 132, kPage, "Storage", kStorage},
};

} // namespace

std::span<const ExpectedString> ExpectedStrings()
{
    return kStrings;
}

std::span<const ExpectedDialog> ExpectedDialogs()
{
    return kDialogs;
}

const ExpectedDialog& ExpectedDialogOf(int id)
{
    for (const ExpectedDialog& dialog : kDialogs) {
        if (dialog.id == id)
            return dialog;
    }
    throw std::out_of_range("no dialog " + std::to_string(id));
}
