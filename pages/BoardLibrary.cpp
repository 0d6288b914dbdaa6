// Calls of the board library.
#include "pages/BoardLibrary.h"

#include "sysaccess/Handles.h"

#include <array>

namespace {

using BoardFunction = DWORD (*)(BoardData*);

DWORD CallBoard(const char* entryPoint, BoardData& data)
{
    std::array<char, MAX_PATH> path{};
    ExpandEnvironmentStringsA("%windir%\\system32\\RB4USER.DLL", path.data(), MAX_PATH);
    const UniqueLibrary library(LoadLibraryA(path.data()));
    if (!library)
        return ERROR_FILE_NOT_FOUND;
    const auto call = EntryPoint<BoardFunction>(library.Get(), entryPoint);
    return call == nullptr ? ERROR_FILE_NOT_FOUND : call(&data);
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
