// Sends the test trap through the host agent's library.
#include "pages/TestTrap.h"

#include "pages/AgentServices.h"
#include "sysaccess/Handles.h"
#include "sysaccess/RegistryKey.h"
#include "sysaccess/ServiceControl.h"

#include <algorithm>
#include <array>
#include <vector>
#include <windows.h>

namespace {

using UniqueKey = UniqueHandle<HKEY, [](HKEY key) { RegCloseKey(key); }>;
using UniqueMutex = UniqueHandle<HANDLE, [](HANDLE mutex) { CloseHandle(mutex); }>;

constexpr char trapKey[] = "SYSTEM\\VortanHost\\Host\\Component\\GenericTrap";
constexpr char trapValue[] = "TrapData";

constexpr char readyMutex[] = "VtnHostAlerterInited";
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
    const LSTATUS found = RegQueryValueExA(key.Get(), trapValue, nullptr, nullptr, nullptr, nullptr);
    return found == ERROR_SUCCESS || found == ERROR_MORE_DATA;
}

// As systems before version 5 tell it.
bool HasTerminalServerSuite()
try {
    CRegistryKey productOptions(HKEY_LOCAL_MACHINE, "System\\CurrentControlSet\\Control\\ProductOptions");
    std::vector<std::string> suites;
    productOptions.GetMultiString("ProductSuite", suites);
    return std::find(suites.begin(), suites.end(), "Terminal Server") != suites.end();
} catch (ConfigurationError) {
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
    const std::string name = IsTerminalServer() ? GlobalName(readyMutex) : readyMutex;
    return static_cast<bool>(UniqueMutex(OpenMutexA(SYNCHRONIZE, FALSE, name.c_str())));
}

// Null when the library cannot be loaded.
HMODULE LoadHostAgentLibrary()
{
    std::array<char, MAX_PATH> path{};
    const DWORD size = ExpandEnvironmentStringsA(hostAgentLibrary, path.data(), path.size());
    return size > 0 && size <= path.size() ? LoadLibraryA(path.data()) : nullptr;
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
    const HMODULE loaded = LoadHostAgentLibrary();
    const auto sendTrap = loaded == nullptr ? nullptr : EntryPoint<SendTrapFunction>(loaded, sendTrapEntry);
    // A library without the entry stays loaded, on purpose: whatever it is, it is not the one that is known
    // to bear being unloaded.
    if (sendTrap == nullptr)
        return TestTrapOutcome::NotGenerated;
    const UniqueLibrary library(loaded);
    text = TrapText();
    return sendTrap(text.c_str()) == ERROR_SUCCESS ? TestTrapOutcome::Sent : TestTrapOutcome::NotGenerated;
}
