// Sends the test trap through the host agent's library.
#include "pages/core/TestTrap.h"

#include "sysaccess/core/AgentNames.h"
#include "sysaccess/core/Environment.h"
#include "sysaccess/core/Handles.h"
#include "sysaccess/core/ServiceQueries.h"

#include <array>
#include <cstring>
#include <windows.h>

namespace {

constexpr char terminalServerSuite[] = "Terminal Server";
constexpr char hostAgentLibrary[] = "%windir%\\system32\\vtnmgmt\\vtmghost\\VTNMHOST.DLL";

// Sends a trap with this text; 0 when it was sent.
using SendTrapFunction = DWORD (*)(const char* text);
constexpr char sendTrapEntry[] = "sendVtnUserTrap";

constexpr LCID englishUnitedStates = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);
using DateOrTime = std::array<char, 40>;

bool IsTrapSetUp()
{
    HKEY opened = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, trapKey, 0, KEY_READ, &opened) != ERROR_SUCCESS)
        return false;
    const UniqueKey key(opened);
    const LSTATUS found = RegQueryValueExA(key.Get(), trapDataValue, nullptr, nullptr, nullptr, nullptr);
    return found == ERROR_SUCCESS || found == ERROR_MORE_DATA;
}

// The texts of a REG_MULTI_SZ, each with its zero, and one more after the last: a value that was stored
// without its end is read within its size. Empty when there is none.
std::string ReadTexts(HKEY key, const char* valueName)
{
    DWORD size = 0;
    const LSTATUS found = RegQueryValueExA(key, valueName, nullptr, nullptr, nullptr, &size);
    if (found != ERROR_SUCCESS || size == 0)
        return {};
    std::string texts(size + 1, '\0');
    DWORD type = REG_NONE;
    const LSTATUS read =
        RegQueryValueExA(key, valueName, nullptr, &type, reinterpret_cast<BYTE*>(texts.data()), &size);
    return read == ERROR_SUCCESS && type == REG_MULTI_SZ ? texts : std::string();
}

// How systems before version 5 report it. A list that cannot be read means no; the registry accessor would
// take it for a refusal, and leave the key open.
bool HasTerminalServerSuite()
{
    HKEY opened = nullptr;
    if (RegOpenKeyA(HKEY_LOCAL_MACHINE, productOptionsKey, &opened) != ERROR_SUCCESS)
        return false;
    const UniqueKey key(opened);
    const std::string suites = ReadTexts(key.Get(), productSuiteValue);
    for (const char* suite = suites.c_str(); *suite != '\0'; suite += std::strlen(suite) + 1) {
        if (std::strcmp(suite, terminalServerSuite) == 0)
            return true;
    }
    return false;
}

bool HasTerminalServerBit()
{
    OSVERSIONINFOEXA version{};
    version.dwOSVersionInfoSize = sizeof version;
    return GetVersionExA(reinterpret_cast<OSVERSIONINFOA*>(&version)) &&
           (version.wSuiteMask & VER_SUITE_TERMINAL) != 0;
}

bool IsTerminalServer()
{
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
    if (!GetVersionExA(&version))
        return false;
    return version.dwMajorVersion < 5 ? HasTerminalServerSuite() : HasTerminalServerBit();
}

// On a Terminal Server each session has names of its own; services use those of all sessions.
std::string GlobalName(const char* name)
{
    return std::string("Global\\") + name;
}

// The alerter makes the mutex when it is ready; nobody ever waits for it.
bool IsAlerterReady()
{
    const std::string name = IsTerminalServer() ? GlobalName(alerterMutex) : alerterMutex;
    return static_cast<bool>(UniqueObject(OpenMutexA(SYNCHRONIZE, FALSE, name.c_str())));
}

// Nothing when the library cannot be loaded.
UniqueLibrary LoadHostAgentLibrary()
{
    std::array<char, MAX_PATH> path{};
    return UniqueLibrary(ExpandEnvironment(hostAgentLibrary, path) ? LoadLibraryA(path.data()) : nullptr);
}

std::string TrapText()
{
    DateOrTime date{};
    DateOrTime time{};
    GetDateFormatA(englishUnitedStates, DATE_LONGDATE, nullptr, nullptr, date.data(), date.size());
    GetTimeFormatA(englishUnitedStates, 0, nullptr, nullptr, time.data(), time.size());
    return std::string("Management Agents Test Trap sent - ") + date.data() + " " + time.data();
}

} // namespace

bool CanSendTestTrap()
{
    return IsServiceActive(snmpServiceName) && IsTrapSetUp();
}

TestTrapOutcome SendTestTrap(std::string& text)
{
    if (!IsAlerterReady())
        return TestTrapOutcome::AlerterNotReady;
    UniqueLibrary library = LoadHostAgentLibrary();
    const auto sendTrap = library ? EntryPoint<SendTrapFunction>(library.Get(), sendTrapEntry) : nullptr;
    if (sendTrap == nullptr) {
        // A library without the entry stays loaded, on purpose: it is not the host agent's, so nothing is
        // known about unloading it.
        library.Release();
        return TestTrapOutcome::NotGenerated;
    }
    text = TrapText();
    return sendTrap(text.c_str()) == ERROR_SUCCESS ? TestTrapOutcome::Sent : TestTrapOutcome::NotGenerated;
}
