// The remote management board, through the user-mode library that its driver installs.
#pragma once

#include <windows.h>

// The settings that the board holds, exchanged with its library by address: 16 bytes.
struct BoardData
{
    DWORD battery;            // 0 off, 1 on; any other value: the board offers no battery setting
    DWORD remoteAlerting;     // 0 off, else on
    DWORD serverResetPending; // 0 off, else on
    DWORD resetRequest;       // 1 asks the board to reset itself
};
static_assert(sizeof(BoardData) == 16, "the board library takes the record byte by byte");

// Fills `data` with what the board holds. Returns the library's status, 0 on success; 2 without the library
// or its entry point. The library is loaded for the one call.
DWORD ReadBoardData(BoardData& data);

// Sends `data` to the board. Returns as ReadBoardData does.
DWORD WriteBoardData(BoardData& data);
