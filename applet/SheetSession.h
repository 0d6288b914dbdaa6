// One double-click on the applet, from the sheet's opening to the restart of the agents.
#pragma once

#include <windows.h>

// Shows the sheet, modal to the Control Panel's window (which may be null). After OK it offers the restart of
// the agents' services that the changes need, except during an installation. Refusals are shown to the user;
// any other exception passes on.
void RunSheetSession(HWND controlPanel);
