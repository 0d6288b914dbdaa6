// The last error, the process and its environment, letter case, and the allocations that tests make fail.
#include "Import.h"
#include "SystemMemory.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <strings.h>
#include <thread>
#include <unistd.h>
#include <windows.h>

namespace {

using standin::SystemString;

thread_local DWORD lastError = ERROR_SUCCESS;

std::string CommandLine()
{
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    std::string line{std::istreambuf_iterator<char>(file), {}};
    std::replace(line.begin(), line.end(), '\0', ' ');
    return line;
}

// Replaces each "%NAME%" of a variable that exists.
SystemString Expand(const SystemString& source)
{
    SystemString result;
    std::size_t place = 0;
    while (place < source.size()) {
        const std::size_t end = source[place] == '%' ? source.find('%', place + 1) : SystemString::npos;
        const char* value = end == SystemString::npos
                                ? nullptr
                                : std::getenv(source.substr(place + 1, end - place - 1).c_str());
        if (value != nullptr) {
            result += value;
            place = end + 1;
        } else {
            result += source[place++];
        }
    }
    return result;
}

LPSTR CommandLineText()
{
    static std::string line = CommandLine();
    return line.data();
}

DWORD ExpandInto(LPCSTR source, LPSTR destination, DWORD size)
{
    const SystemString text = Expand(source);
    const auto needed = static_cast<DWORD>(text.size() + 1);
    if (needed <= size)
        std::copy_n(text.c_str(), needed, destination);
    return needed;
}

} // namespace

extern "C" {
// The linker sends the program's calls of the three to the slots; see the link options.
void* __real_realloc(void* memory, std::size_t size);
void* __wrap_malloc(std::size_t size);
void* __wrap_realloc(void* memory, std::size_t size);
}

namespace {

char* Duplicate(const char* text)
{
    const std::size_t size = std::strlen(text) + 1;
    void* const copy = __real_malloc(size);
    return copy == nullptr ? nullptr : static_cast<char*>(std::memcpy(copy, text, size));
}

// Memory is asked for before any constructor has run, so these slots are made on first use.
const auto& MallocImport()
{
    static const standin::Import<void*(std::size_t)> slot("malloc", __real_malloc);
    return slot;
}

const auto& ReallocImport()
{
    static const standin::Import<void*(void*, std::size_t)> slot("realloc", __real_realloc);
    return slot;
}

const standin::Import<decltype(_strdup)> duplicateImport("_strdup", Duplicate);
const standin::Import<decltype(GetCommandLineA)> commandLineImport("GetCommandLineA", CommandLineText);
const standin::Import<decltype(ExpandEnvironmentStringsA)> expandImport("ExpandEnvironmentStringsA",
                                                                        ExpandInto);

} // namespace

void* __wrap_malloc(std::size_t size)
{
    return MallocImport()(size);
}

void* __wrap_realloc(void* memory, std::size_t size)
{
    return ReallocImport()(memory, size);
}

char* _strdup(const char* text)
{
    return duplicateImport(text);
}

int _stricmp(const char* left, const char* right)
{
    return strcasecmp(left, right);
}

int _strnicmp(const char* left, const char* right, std::size_t length)
{
    return strncasecmp(left, right, length);
}

DWORD GetLastError()
{
    return lastError;
}

void SetLastError(DWORD code)
{
    lastError = code;
}

DWORD GetCurrentProcessId()
{
    return static_cast<DWORD>(getpid());
}

LPSTR GetCommandLineA()
{
    return commandLineImport();
}

BOOL SetEnvironmentVariableA(LPCSTR name, LPCSTR value)
{
    return (value == nullptr ? unsetenv(name) : setenv(name, value, 1)) == 0 ? TRUE : FALSE;
}

DWORD ExpandEnvironmentStringsA(LPCSTR source, LPSTR destination, DWORD size)
{
    return expandImport(source, destination, size);
}

// ASCII letters alone: what is above them depends on the code page.
DWORD CharUpperBuffA(LPSTR text, DWORD length)
{
    std::transform(text, text + length, text, [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 32) : letter;
    });
    return length;
}

void Sleep(DWORD milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}
