// VTNMHOST.DLL: stands in for the host agent's library. It sends a trap to whoever receives traps on this
// machine, and writes a line of "traps.log" beside the library in every case, so that whoever tries the
// applet can see what has gone out, or would have.
#pragma once

#include <windows.h>

// Environment variable with the UDP port of the receiver on this machine; absent when there is none.
inline constexpr const char* receiverPortVariable = "VTN_TRAP_PORT";

// Sends `text` as an SNMP trap and logs it with the time. Returns a Win32 code, 0 when the line is written.
// As always with UDP, nobody knows whether a trap that was sent has arrived.
extern "C" __declspec(dllexport) DWORD sendVtnUserTrap(const char* text);
