// vthstutl.dll: the list of the running processes, for machines on which the agents have not installed a
// library of that name.
#pragma once

#include "hostutil/TaskRecord.h"

// Sets `count` to the number of running processes and returns their records, in the system's order; never
// null for an empty list. Null, with a count of 0, when the list or the memory for it cannot be had. The
// caller frees it with free().
extern "C" __declspec(dllexport) TaskRecord* GetTaskList(std::uint32_t* count) noexcept;
