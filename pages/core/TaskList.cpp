// The call of vthstutl.dll.
#include "pages/core/TaskList.h"

#include "hostutil/TaskRecord.h"
#include "pages/core/ProcessMonitorSettings.h"
#include "sysaccess/core/Handles.h"
#include "sysaccess/core/LibrarySearch.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>

namespace {

// What the performance counters call the sum of all processes, the idle time, and a process without a name.
constexpr std::array<std::string_view, 3> notPrograms = {"_Total", "Idle", "unknown"};

// By its name alone: it may lie in the program's directory, in the system's, or where PATH points.
UniqueLibrary LoadHostUtility()
{
    const SearchWithoutCurrentDirectory search;
    return UniqueLibrary(search.IsInForce() ? LoadLibraryA("vthstutl.dll") : nullptr);
}

void FreeTaskList(TaskRecord* list)
{
    std::free(list);
}
using UniqueTaskList = UniqueHandle<TaskRecord*, FreeTaskList>;

std::string NameOf(const TaskRecord& record)
{
    std::string name(record.name.begin(), std::find(record.name.begin(), record.name.end(), '\0'));
    DropHalfCharacter(name);
    return name;
}

std::vector<std::string> NamesOf(std::span<const TaskRecord> records)
{
    std::vector<std::string> names;
    for (const TaskRecord& record : records) {
        std::string name = NameOf(record);
        const bool isProgram = std::find(notPrograms.begin(), notPrograms.end(), name) == notPrograms.end();
        if (isProgram && (names.empty() || names.back() != name))
            names.push_back(std::move(name));
    }
    return names;
}

} // namespace

std::vector<std::string> RunningProcessNames()
{
    const UniqueLibrary library = LoadHostUtility();
    if (!library)
        return {};
    const auto getTaskList = EntryPoint<GetTaskListFunction>(library.Get(), "GetTaskList");
    if (getTaskList == nullptr)
        return {};
    std::uint32_t count = 0;
    const UniqueTaskList list(getTaskList(&count));
    // As a signed number, below zero: not a count.
    if (!list || count > INT32_MAX)
        return {};
    return NamesOf({list.Get(), count});
}
