// The process list, from the system's snapshot of the processes.
#include "hostutil/HostUtility.h"

#include "sysaccess/core/Handles.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

// It needs windows.h before it.
#include <tlhelp32.h>

namespace {

// An administrator may have chosen it for the whole system.
bool IsCodePageUtf8()
{
    return GetACP() == CP_UTF8;
}

// Characters that the code page lacks become its default character, "?" in all of the West: no file name
// holds one, so the result is not taken for another program's. Nothing is replaced by a similar letter.
std::string ToAnsi(const wchar_t* text)
{
    // UTF-8 lacks no character, and Windows refuses the flag there.
    const DWORD flags = IsCodePageUtf8() ? 0 : WC_NO_BEST_FIT_CHARS;
    const auto convert = [text, flags](char* buffer, int size) {
        return WideCharToMultiByte(CP_ACP, flags, text, -1, buffer, size, nullptr, nullptr);
    };
    std::string converted(static_cast<std::size_t>(std::max(convert(nullptr, 0), 1)), '\0');
    convert(converted.data(), static_cast<int>(converted.size()));
    converted.pop_back();
    return converted;
}

// The same as WholeCharacters, in UTF-8: all bytes of a character but its first one are 10xxxxxx.
std::size_t WholeUtf8Characters(const std::string& text, std::size_t limit)
{
    std::size_t length = std::min(text.size(), limit);
    while (length > 0 && length < text.size() && (static_cast<BYTE>(text[length]) & 0xC0U) == 0x80)
        --length;
    return length;
}

// The length of the longest beginning of `text` that has at most `limit` bytes and does not split a
// character.
std::size_t WholeCharacters(const std::string& text, std::size_t limit)
{
    if (IsCodePageUtf8())
        return WholeUtf8Characters(text, limit);
    std::size_t length = 0;
    while (length < text.size()) {
        const bool isPair = IsDBCSLeadByte(static_cast<BYTE>(text[length])) && length + 1 < text.size();
        const std::size_t next = length + (isPair ? 2 : 1);
        if (next > limit)
            break;
        length = next;
    }
    return length;
}

TaskRecord RecordOf(const PROCESSENTRY32W& process)
{
    // Process 0 stands for the idle time of the processors; the name it has in a snapshot is no program's.
    const std::string name = process.th32ProcessID == 0 ? "Idle" : ToAnsi(process.szExeFile);
    TaskRecord record{process.th32ProcessID, {}};
    const std::size_t length = WholeCharacters(name, record.name.size() - 1);
    std::copy_n(name.begin(), length, record.name.begin());
    return record;
}

// Nothing when the system gives no snapshot.
std::optional<std::vector<TaskRecord>> RunningProcesses()
{
    const UniqueObject snapshot = OwnUnlessInvalid(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    if (!snapshot)
        return std::nullopt;
    std::vector<TaskRecord> records;
    PROCESSENTRY32W process{};
    process.dwSize = sizeof process;
    for (BOOL isThere = Process32FirstW(snapshot.Get(), &process); isThere != FALSE;
         isThere = Process32NextW(snapshot.Get(), &process))
        records.push_back(RecordOf(process));
    return records;
}

// For the caller's free().
TaskRecord* Copy(const std::vector<TaskRecord>& records)
{
    // One more than needed: an allocation of no bytes may answer null.
    auto* const list = static_cast<TaskRecord*>(std::calloc(records.size() + 1, sizeof(TaskRecord)));
    if (list != nullptr)
        std::copy(records.begin(), records.end(), list);
    return list;
}

} // namespace

TaskRecord* GetTaskList(std::uint32_t* count) noexcept
{
    *count = 0;
    try {
        const auto records = RunningProcesses();
        TaskRecord* const list = records ? Copy(*records) : nullptr;
        if (list != nullptr)
            *count = static_cast<std::uint32_t>(records->size());
        return list;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
