// Loads and saves what the agents share.
#include "pages/core/SnmpSettings.h"

#include "resources/resource.h"
#include "sysaccess/core/AgentServices.h"
#include "sysaccess/core/RegistryKey.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

namespace {

constexpr char productKey[] = "SOFTWARE\\Vortan Lumora Agent";
constexpr char hostSnmpKey[] = "SYSTEM\\CurrentControlSet\\Services\\VtMgHost\\VTNSNMP";
constexpr char hostAgentKey[] = "SYSTEM\\CurrentControlSet\\Services\\VtMgHost\\VTNMHOST";
constexpr char serverAgentsKey[] = "SYSTEM\\CurrentControlSet\\Services\\VtMgServ";
constexpr char rackAgent[] = "VTNRACK";

// The system starts what stands in the first when a program crashes; the agents park in the second what is
// not to be started at present.
constexpr char activeDebuggerKey[] = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\AeDebug";
constexpr char parkedDebuggerKey[] = "SYSTEM\\CurrentControlSet\\Services\\VtMgHost\\AppTrap";

constexpr char serverRoleValue[] = "ServerRole";
constexpr char setsEnabledValue[] = "SetsEnabled";
constexpr char hostFlagsValue[] = "HostFlags";
constexpr char timeoutValue[] = "Timeout";
constexpr char debuggerValue[] = "Debugger";

// Bits of "SetsEnabled" and of "HostFlags".
constexpr DWORD setsEnabledBit = 0x1;
constexpr DWORD remoteRebootBit = 0x2;
constexpr DWORD rackTrapsDisabledBit = 0x4;
constexpr DWORD telnetDisabledBit = 0x1;

// The system fills in the process and the event when it starts the debugger.
constexpr char trapDebuggerTemplate[] = "vtndbg -p %ld -e %ld -g";
constexpr std::string_view trapDebuggerMarker = "vtndbg"; // in lower case

CRegistryKey Key(const std::string& path)
{
    return {HKEY_LOCAL_MACHINE, path.c_str()};
}

// Empty unless a REG_SZ is stored.
std::string ReadText(const char* path, const char* valueName)
{
    std::string text;
    Key(path).GetString(valueName, text, REG_SZ, 0);
    return text;
}

// Nothing unless a REG_DWORD of four bytes is stored.
std::optional<DWORD> ReadNumber(const char* path, const char* valueName)
{
    DWORD type = REG_NONE;
    RegistryData data;
    DWORD size = 0;
    DWORD number = 0;
    const DWORD found = Key(path).QueryValue(valueName, type, data, size);
    if (found != ERROR_SUCCESS || type != REG_DWORD || size != sizeof number)
        return {};
    std::memcpy(&number, data.get(), sizeof number);
    return number;
}

bool HasRackSupport()
try {
    std::vector<std::string> agents;
    Key(serverAgentsKey).EnumSubkeys(agents);
    return std::any_of(agents.begin(), agents.end(),
                       [](const std::string& name) { return IsSameName(name.c_str(), rackAgent); });
} catch (ConfigurationError) {
    return false;
}

bool IsTrapDebugger(const std::string& command)
{
    const auto isSame = [](unsigned char left, unsigned char right) { return std::tolower(left) == right; };
    return std::search(command.begin(), command.end(), trapDebuggerMarker.begin(), trapDebuggerMarker.end(),
                       isSame) != command.end();
}

std::string DefaultTrapDebugger()
{
    std::array<char, 256> command{};
    const DWORD size = ExpandEnvironmentStringsA(trapDebuggerTemplate, command.data(), command.size());
    return size > 0 && size <= command.size() ? command.data() : trapDebuggerTemplate;
}

// Writes one agent's number. An agent that refuses does not keep the others from theirs.
void TrySetDword(const std::string& path, const char* valueName, DWORD number)
try {
    Key(path).SetDword(valueName, number);
} catch (ConfigurationError) {
    return;
}

// Subkeys of an agent service's key; none when they cannot be listed.
std::vector<std::string> SubkeysOf(const AgentService& service)
try {
    std::vector<std::string> names;
    Key(service.Key()).EnumSubkeys(names);
    return names;
} catch (ConfigurationError) {
    return {};
}

} // namespace

const std::array<CollectionInterval, collectionIntervalCount> collectionIntervals = {{
    {IDS_INTERVAL_5_SECONDS, 5'000},
    {IDS_INTERVAL_10_SECONDS, 10'000},
    {IDS_INTERVAL_15_SECONDS, 15'000},
    {IDS_INTERVAL_20_SECONDS, 20'000},
    {IDS_INTERVAL_30_SECONDS, 30'000},
    {IDS_INTERVAL_1_MINUTE, 60'000},
    {IDS_INTERVAL_2_MINUTES, 120'000},
    {IDS_INTERVAL_3_MINUTES, 180'000},
    {IDS_INTERVAL_4_MINUTES, 240'000},
    {IDS_INTERVAL_5_MINUTES, 300'000},
    {IDS_INTERVAL_10_MINUTES, 600'000},
    {IDS_INTERVAL_20_MINUTES, 1'200'000},
    {IDS_INTERVAL_30_MINUTES, 1'800'000},
    {IDS_INTERVAL_40_MINUTES, 2'400'000},
    {IDS_INTERVAL_50_MINUTES, 3'000'000},
    {IDS_INTERVAL_60_MINUTES, 3'600'000},
}};

int IndexOfInterval(DWORD milliseconds)
{
    const auto isShorter = [](DWORD limit, const CollectionInterval& row) {
        return limit < row.milliseconds;
    };
    const auto longer =
        std::upper_bound(collectionIntervals.begin(), collectionIntervals.end(), milliseconds, isShorter);
    return std::max(0, static_cast<int>(longer - collectionIntervals.begin()) - 1);
}

void SnmpSettings::Load()
{
    hasRackSupport = HasRackSupport();
    serverRole = ReadText(productKey, serverRoleValue);
    LoadFlagsAndInterval();
    LoadDebuggers();
}

void SnmpSettings::LoadFlagsAndInterval()
{
    const std::optional<DWORD> sets = ReadNumber(hostSnmpKey, setsEnabledValue);
    setsEnabled = (sets.value_or(0) & setsEnabledBit) != 0;
    remoteReboot = (sets.value_or(0) & remoteRebootBit) != 0;
    rackTrapsDisabled = (sets.value_or(0) & rackTrapsDisabledBit) != 0;

    const std::optional<DWORD> hostFlags = ReadNumber(hostAgentKey, hostFlagsValue);
    telnetDisabled = (hostFlags.value_or(0) & telnetDisabledBit) != 0;

    // For an absent interval, and no other, the number that was read last stands in, as ever: flags are
    // small, so it is the shortest one.
    DWORD timeout = 0;
    if (Key(hostSnmpKey).GetDword(timeoutValue, timeout) == ERROR_FILE_NOT_FOUND)
        timeout = hostFlags.value_or(sets.value_or(0));
    intervalIndex = IndexOfInterval(timeout);
}

void SnmpSettings::LoadDebuggers()
{
    const std::string active = ReadText(activeDebuggerKey, debuggerValue);
    exceptionTrap = IsTrapDebugger(active);
    m_trapDebugger = exceptionTrap ? active : DefaultTrapDebugger();
    m_savedDebugger = exceptionTrap ? ReadText(parkedDebuggerKey, debuggerValue) : active;
}

void SnmpSettings::SaveOnly(DWORD changes) const
{
    if ((changes & (SetsChanged | RemoteRebootChanged | RackTrapsChanged)) != 0)
        SaveSetsEnabled();
    if ((changes & ServerRoleChanged) != 0)
        Key(productKey).SetString(serverRoleValue, serverRole);
    // The value as a whole, on purpose: the page owns its one bit, and the agent knows no other.
    if ((changes & TelnetChanged) != 0)
        Key(hostAgentKey).SetDword(hostFlagsValue, telnetDisabled ? telnetDisabledBit : 0);
    if ((changes & IntervalChanged) != 0)
        SaveInterval();
    if ((changes & ExceptionTrapChanged) != 0)
        SaveDebuggers();
}

// As a whole, too: bits that mean nothing to the agents are cleared.
void SnmpSettings::SaveSetsEnabled() const
{
    const DWORD flags = (setsEnabled ? setsEnabledBit : 0) | (remoteReboot ? remoteRebootBit : 0) |
                        (rackTrapsDisabled ? rackTrapsDisabledBit : 0);
    for (const AgentService& service : agentServices)
        TrySetDword(service.SnmpKey(), setsEnabledValue, flags);
}

void SnmpSettings::SaveInterval() const
{
    if (intervalIndex < 0 || intervalIndex >= static_cast<int>(collectionIntervalCount))
        return; // no line of the list was selected
    const DWORD timeout = collectionIntervals[static_cast<std::size_t>(intervalIndex)].milliseconds;
    for (const AgentService& service : agentServices) {
        for (const std::string& name : SubkeysOf(service)) {
            if (!IsAmong(nonAgentSubkeys, name))
                TrySetDword(service.Key() + "\\" + name, timeoutValue, timeout);
        }
    }
}

// First the system's own debugger, which stands nowhere else once the agents' has taken its place: a refusal
// in between loses neither.
void SnmpSettings::SaveDebuggers() const
{
    CRegistryKey forSaved = Key(exceptionTrap ? parkedDebuggerKey : activeDebuggerKey);
    CRegistryKey forTrap = Key(exceptionTrap ? activeDebuggerKey : parkedDebuggerKey);
    forSaved.SetString(debuggerValue, m_savedDebugger);
    forTrap.SetString(debuggerValue, m_trapDebugger);
}
