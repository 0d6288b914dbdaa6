// The last error, the process, its machine and environment, time, letter case, and the allocations that tests
// make fail.
#include "Import.h"
#include "Paths.h"

#include <algorithm>
#include <array>
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

// Every process of Windows has the first two; the third shows tests where to make up machines of the network.
struct SystemVariables
{
    SystemVariables()
    {
        setenv("SystemRoot", "C:\\windows", 0);
        setenv("windir", "C:\\windows", 0);
        setenv("VTN_NETWORK", standin::TemporaryDirectory().c_str(), 1);
    }
};
const SystemVariables systemVariables;

BOOL TellVersion(LPOSVERSIONINFOA version)
{
    if (version->dwOSVersionInfoSize < sizeof *version)
        return FALSE;
    version->dwMajorVersion = 6;
    version->dwMinorVersion = 1;
    return TRUE;
}

// In capitals and without its domain. The size counts the zero on the way in and not on the way out.
BOOL TellComputerName(LPSTR name, LPDWORD size)
{
    std::array<char, 256> host{};
    gethostname(host.data(), host.size() - 1);
    SystemString text = host.data();
    text = text.substr(0, std::min<std::size_t>(text.find('.'), MAX_COMPUTERNAME_LENGTH));
    CharUpperBuffA(text.data(), static_cast<DWORD>(text.size()));
    const bool fits = text.size() < *size;
    *size = static_cast<DWORD>(fits ? text.size() : text.size() + 1);
    if (fits)
        std::copy_n(text.c_str(), text.size() + 1, name);
    return fits ? TRUE : FALSE;
}

void Wait(DWORD milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

DWORD Ticks()
{
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<DWORD>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count());
}

} // namespace

extern "C" {
// The linker sends the program's calls of both to the slots; see the link options.
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
const standin::Import<decltype(GetVersionExA)> versionImport("GetVersionExA", TellVersion);
const standin::Import<decltype(GetComputerNameA)> computerNameImport("GetComputerNameA", TellComputerName);
const standin::Import<decltype(Sleep)> sleepImport("Sleep", Wait);
const standin::Import<decltype(GetTickCount)> tickCountImport("GetTickCount", Ticks);

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
    sleepImport(milliseconds);
}

DWORD GetTickCount()
{
    return tickCountImport();
}

HANDLE GetProcessHeap()
{
    static char heap;
    return &heap;
}

LPVOID HeapAlloc(HANDLE /*heap*/, DWORD flags, std::size_t size)
{
    void* const memory = __real_malloc(size);
    return memory != nullptr && (flags & HEAP_ZERO_MEMORY) != 0 ? std::memset(memory, 0, size) : memory;
}

BOOL HeapFree(HANDLE /*heap*/, DWORD /*flags*/, LPVOID memory)
{
    std::free(memory);
    return TRUE;
}

BOOL GetVersionExA(LPOSVERSIONINFOA version)
{
    return versionImport(version);
}

BOOL GetComputerNameA(LPSTR name, LPDWORD size)
{
    return computerNameImport(name, size);
}

// Without room for the value, the size that it takes; else its length.
DWORD GetEnvironmentVariableA(LPCSTR name, LPSTR value, DWORD size)
{
    const char* const found = std::getenv(name);
    if (found == nullptr) {
        SetLastError(ERROR_ENVVAR_NOT_FOUND);
        return 0;
    }
    const auto length = static_cast<DWORD>(std::strlen(found));
    if (length >= size)
        return length + 1;
    std::copy_n(found, length + 1, value);
    return length;
}
