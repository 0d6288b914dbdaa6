// The board, kept in the registry so that it outlives the process that asks it.
#include "BoardLibrary.h"

#include "../support/Error.h"
#include "../support/Registry.h"

#include <array>

namespace {

constexpr const char* boardKey = "SOFTWARE\\Norvale Demo\\Board";
constexpr DWORD defaultResetSeconds = 7;

struct BoardSetting
{
    const char* name;
    DWORD BoardData::*field;
};
constexpr std::array<BoardSetting, 3> settings{{
    {"Battery", &BoardData::battery},
    {"RemoteAlerting", &BoardData::remoteAlerting},
    {"ServerResetPending", &BoardData::serverResetPending},
}};

// Units of 100 nanoseconds since 1601: a time that means the same in every process and after a restart.
ULONGLONG Now()
{
    FILETIME time{};
    GetSystemTimeAsFileTime(&time);
    return (static_cast<ULONGLONG>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

bool IsResetting(const demo::Key& board)
{
    return Now() < board.Qword("ResetUntil").value_or(0);
}

void BeginReset(demo::Key& board)
{
    constexpr ULONGLONG unitsPerSecond = 10'000'000;
    const DWORD seconds = board.Dword("ResetSeconds").value_or(defaultResetSeconds);
    board.SetQword("ResetUntil", Now() + seconds * unitsPerSecond);
}

DWORD Read(BoardData& data)
{
    const auto board = demo::Key::Open(boardKey);
    if (!board)
        return ERROR_FILE_NOT_FOUND;
    if (IsResetting(*board))
        return ERROR_NOT_READY;
    data = {};
    for (const auto& setting : settings)
        data.*setting.field = board->Dword(setting.name).value_or(0);
    return ERROR_SUCCESS;
}

DWORD Write(const BoardData& data)
{
    if (!demo::Key::Open(boardKey))
        return ERROR_FILE_NOT_FOUND;
    auto board = demo::Key::Create(boardKey);
    if (IsResetting(board))
        return ERROR_NOT_READY;
    for (const auto& setting : settings)
        board.SetDword(setting.name, data.*setting.field);
    if (data.resetRequest == 1)
        BeginReset(board);
    return ERROR_SUCCESS;
}

} // namespace

DWORD Rb4CpReadData(BoardData* data)
{
    return demo::CodeOf([&] { return Read(*data); });
}

DWORD Rb4CpWriteData(const BoardData* data)
{
    return demo::CodeOf([&] { return Write(*data); });
}
