// A remote management board that answers as the test says, in place of RB4USER.DLL.
#pragma once

#include "pages/core/BoardLibrary.h"
#include "support/LibraryScript.h"

#include <deque>
#include <string>
#include <vector>

namespace support {

inline constexpr char boardLibrary[] = "RB4USER.DLL";

// One board at a time. Reads answer the record, and the statuses of `readStatuses` from first to last, 0 when
// there are none left; writes likewise.
class BoardScript
{
  public:
    explicit BoardScript(LibraryScript& libraries) : m_turn(this)
    {
        libraries.Add(boardLibrary);
        libraries.SetEntry(boardLibrary, "Rb4CpReadData", &Read);
        libraries.SetEntry(boardLibrary, "Rb4CpWriteData", &Write);
    }

    BoardData record{};
    std::deque<DWORD> readStatuses;
    std::deque<DWORD> writeStatuses;
    int reads = 0;
    std::vector<BoardData> written; // refused ones, too

  private:
    static DWORD Next(std::deque<DWORD>& statuses)
    {
        if (statuses.empty())
            return ERROR_SUCCESS;
        const DWORD status = statuses.front();
        statuses.pop_front();
        return status;
    }

    static DWORD Read(BoardData* data)
    {
        BoardScript& self = Turn<BoardScript>::Active();
        ++self.reads;
        const DWORD status = Next(self.readStatuses);
        if (status == ERROR_SUCCESS)
            *data = self.record;
        return status;
    }

    static DWORD Write(const BoardData* data)
    {
        BoardScript& self = Turn<BoardScript>::Active();
        self.written.push_back(*data);
        return Next(self.writeStatuses);
    }

    Turn<BoardScript> m_turn;
};

} // namespace support
