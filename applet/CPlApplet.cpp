// The library's one export: the messages of the Control Panel.
#include "applet/SheetSession.h"
#include "applet/VtnCpl.h"
#include "sysaccess/Help.h"

#include <afxwin.h>
#include <array>
#include <cpl.h>

extern "C" LONG APIENTRY CPlApplet(HWND hwndCPl, UINT msg, LPARAM lParam1, LPARAM lParam2);

namespace {

constexpr LONG appletCount = 1;

void Initialise()
{
    TheAppletRecord();
    theApp.CopyHelpFilePath();
    theApp.UseAppletNameAsCaption();
    theApp.RegisterShellHelpMessage();
}

// Describes one applet. A record that does not exist, or nowhere to write, leaves everything as it is.
void Inquire(LPARAM index, CPLINFO* info)
{
    if (index < 0 || index >= appletCount || info == nullptr)
        return;
    const AppletRecord& record = TheAppletRecord();
    info->idIcon = static_cast<int>(record.iconId);
    info->idName = static_cast<int>(record.nameId);
    info->idInfo = static_cast<int>(record.descriptionId);
    info->lData = static_cast<LONG>(index);
}

// Makes a text for a log that the applet does not keep.
void NoteUnknownMessage(UINT message)
{
    std::array<char, 64> text{};
    wsprintfA(text.data(), "vtnmgmt!CPlApplet: Unknown CPL message: %d\n", static_cast<int>(message));
}

} // namespace

// Answers CPL_INQUIRE with 1 although 0 is usual, and CPL_EXIT and CPL_NEWINQUIRE as messages that it does
// not know. On purpose: this is what hosts of this applet expect of it.
extern "C" LONG APIENTRY CPlApplet(HWND hwndCPl, UINT msg, LPARAM lParam1, LPARAM lParam2)
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    UpdateHelpFilePath();
    switch (msg) {
    case CPL_INIT:
        Initialise();
        return 1;
    case CPL_GETCOUNT:
        return appletCount;
    case CPL_INQUIRE:
        Inquire(lParam1, reinterpret_cast<CPLINFO*>(lParam2));
        return 1;
    case CPL_DBLCLK:
        RunSheetSession(hwndCPl);
        return 0;
    case CPL_STOP:
        return 0;
    default:
        NoteUnknownMessage(msg);
        return 0;
    }
}
