// The running processes as the test makes them up, in place of the host utility library vthstutl.dll.
#pragma once

#include "hostutil/TaskRecord.h"
#include "support/LibraryScript.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace support {

inline constexpr char hostUtilityLibrary[] = "vthstutl.dll";

// One list at a time.
class TaskListScript
{
  public:
    explicit TaskListScript(LibraryScript& libraries) : m_turn(this)
    {
        libraries.Add(hostUtilityLibrary);
        libraries.SetEntry(hostUtilityLibrary, "GetTaskList", &GetTaskList);
    }

    // Names of up to 260 bytes; those of 260 fill their record without a zero.
    std::vector<std::string> names;
    // No memory for the list: it answers null, whatever the count says.
    bool isExhausted = false;

  private:
    static TaskRecord* GetTaskList(std::uint32_t* count)
    {
        const TaskListScript& self = Turn<TaskListScript>::Active();
        *count = static_cast<std::uint32_t>(self.names.size());
        if (self.isExhausted)
            return nullptr;
        auto* const records =
            static_cast<TaskRecord*>(std::calloc(self.names.size() + 1, sizeof(TaskRecord)));
        for (std::size_t i = 0; i < self.names.size(); ++i) {
            records[i].processId = 0xFFFFFFFF;
            std::copy(self.names[i].begin(), self.names[i].end(), records[i].name.begin());
        }
        return records;
    }

    Turn<TaskListScript> m_turn;
};

} // namespace support
