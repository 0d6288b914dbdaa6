// The record in which a host utility library lists the running processes. Read by the Process Monitor page,
// filled by the library that comes with the applet.
#pragma once

#include <array>
#include <cstdint>

// One process, 264 bytes.
struct TaskRecord
{
    std::uint32_t processId;    // the page does not look at it
    std::array<char, 260> name; // in the ANSI code page; ends with a zero unless it fills the array
};
static_assert(sizeof(TaskRecord) == 264, "the records follow each other without a gap");

// "GetTaskList": sets `count` and returns that many records, which the caller gives back with free(). The
// memory is that of msvcrt.dll, the C runtime that every library of the agents shares.
using GetTaskListFunction = TaskRecord* (*)(std::uint32_t* count);
