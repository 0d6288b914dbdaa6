// VTNMHOST.DLL: stands in for the host agent's library. A trap becomes a line of "traps.log" beside the
// library, where whoever tries the applet can see what would have gone out.
#pragma once

#include <windows.h>

// Appends the time and `text` to the log. Returns a Win32 code, 0 when the line is written.
extern "C" __declspec(dllexport) DWORD sendVtnUserTrap(const char* text);
