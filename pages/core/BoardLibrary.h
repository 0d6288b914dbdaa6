// The remote management board, through the user-mode library that its driver installs.
#pragma once

#include <array>
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

// The fields that are settings, in the record's order.
inline constexpr std::array<DWORD BoardData::*, 3> boardSettings = {
    &BoardData::battery, &BoardData::remoteAlerting, &BoardData::serverResetPending};

// Whether the board has a battery that can be switched.
[[nodiscard]] constexpr bool OffersBattery(const BoardData& data)
{
    return data.battery <= 1;
}

// Fills `data` with what the board holds. Returns the library's status, 0 on success; 2 without the library
// or its entry point. The library is loaded for the one call.
DWORD ReadBoardData(BoardData& data);

// Sends `data` to the board. Returns as ReadBoardData does.
DWORD WriteBoardData(BoardData& data);

// Makes the board reset itself with the settings that it holds, and waits until it answers again: ten reads,
// three seconds apart, at most. Fills `data` with what it then holds. Returns the status of the last call of
// the board, 0 on success.
DWORD ResetBoard(BoardData& data);
