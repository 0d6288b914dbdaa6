// The library's one export: the messages of the Control Panel.
#include "applet/SheetSession.h"
#include "applet/VtnCpl.h"
#include "sysaccess/core/ExceptionMemory.h"
#include "sysaccess/Help.h"
#include "sysaccess/MessageBoxes.h"

#include <afxwin.h>
#include <array>
#include <cpl.h>
#include <new>

extern "C" LONG APIENTRY CPlApplet(HWND hwndCPl, UINT msg, LPARAM lParam1, LPARAM lParam2);

namespace {

constexpr LONG appletCount = 1;

void Initialise()
{
    PrepareExceptions();
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

LONG Answer(HWND controlPanel, UINT message, LPARAM first, LPARAM second)
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    UpdateHelpFilePath();
    switch (message) {
    case CPL_INIT:
        Initialise();
        return 1;
    case CPL_GETCOUNT:
        return appletCount;
    case CPL_INQUIRE:
        Inquire(first, reinterpret_cast<CPLINFO*>(second));
        return 1;
    case CPL_DBLCLK:
        RunSheetSession(controlPanel);
        return 0;
    case CPL_STOP:
        return 0;
    default:
        NoteUnknownMessage(message);
        return 0;
    }
}

} // namespace

// Answers CPL_INQUIRE with 1 although 0 is usual, and CPL_EXIT and CPL_NEWINQUIRE as messages that it does
// not know. On purpose: this is what hosts of this applet expect of it. Without memory it answers 0, which a
// host takes for a refusal where it is one, and reports what was asked for by the user: an exception would
// end the host, and all that it shows.
extern "C" LONG APIENTRY CPlApplet(HWND hwndCPl, UINT msg, LPARAM lParam1, LPARAM lParam2)
try {
    return Answer(hwndCPl, msg, lParam1, lParam2);
} catch (const std::bad_alloc&) {
    if (msg == CPL_DBLCLK)
        ReportMissingMemory(hwndCPl);
    return 0;
}
