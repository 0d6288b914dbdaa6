// RB4USER.DLL: stands in for the library of the remote management board. The board's settings lie in the
// registry, "SOFTWARE\Norvale Demo\Board"; a reset takes "ResetSeconds", in which the board does not answer.
#pragma once

#include <windows.h>

extern "C" {

// Four 32-bit numbers, 16 bytes, in this order.
struct BoardData
{
    DWORD battery; // 0 off, 1 on; any other number: this board has no battery setting
    DWORD remoteAlerting;
    DWORD serverResetPending;
    DWORD resetRequest; // written as 1 the board resets itself; read as 0
};

// Both return a Win32 code, 0 for success; ERROR_NOT_READY while the board resets itself.
__declspec(dllexport) DWORD Rb4CpReadData(BoardData* data);
__declspec(dllexport) DWORD Rb4CpWriteData(const BoardData* data);
}

static_assert(sizeof(BoardData) == 16);
