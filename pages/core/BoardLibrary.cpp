// Calls of the board library.
#include "pages/core/BoardLibrary.h"

#include "sysaccess/core/Environment.h"
#include "sysaccess/core/Handles.h"

#include <array>

namespace {

using BoardFunction = DWORD (*)(BoardData*);

// Milliseconds that a reset may take, and those between two reads.
constexpr DWORD resetTime = 30000;
constexpr DWORD readInterval = 3000;

DWORD CallBoard(const char* entryPoint, BoardData& data)
{
    std::array<char, MAX_PATH> path{};
    if (!ExpandEnvironment("%windir%\\system32\\RB4USER.DLL", path))
        return ERROR_FILE_NOT_FOUND;
    const UniqueLibrary library(LoadLibraryA(path.data()));
    if (!library)
        return ERROR_FILE_NOT_FOUND;
    const auto call = EntryPoint<BoardFunction>(library.Get(), entryPoint);
    return call == nullptr ? ERROR_FILE_NOT_FOUND : call(&data);
}

// Reads until the board answers or the time is over, with a pause after each failure, the last one too.
DWORD WaitForBoard(BoardData& data)
{
    DWORD status = ERROR_SUCCESS;
    for (DWORD waited = 0; waited < resetTime; waited += readInterval) {
        status = ReadBoardData(data);
        if (status == ERROR_SUCCESS)
            break;
        Sleep(readInterval);
    }
    return status;
}

} // namespace

DWORD ReadBoardData(BoardData& data)
{
    return CallBoard("Rb4CpReadData", data);
}

DWORD WriteBoardData(BoardData& data)
{
    return CallBoard("Rb4CpWriteData", data);
}

DWORD ResetBoard(BoardData& data)
{
    DWORD status = ReadBoardData(data);
    if (status != ERROR_SUCCESS)
        return status;
    data.resetRequest = 1;
    status = WriteBoardData(data);
    return status == ERROR_SUCCESS ? WaitForBoard(data) : status;
}
