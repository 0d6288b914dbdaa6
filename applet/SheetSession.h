// One double-click on the applet, from the sheet's opening to the restart of the agents.
#pragma once

#include "applet/RestartDecision.h"

#include <windows.h>

// Shows the sheet, modal to the Control Panel's window (which may be null), and returns what its end asks
// for, which is nothing during an installation. Refusals are shown to the user; any other exception passes
// on.
RestartDecision RunSheetSession(HWND controlPanel);
