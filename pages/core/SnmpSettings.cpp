// Loads and saves what the agents share.
#include "pages/core/SnmpSettings.h"

#include "sysaccess/core/AgentServices.h"
#include "sysaccess/core/Environment.h"
#include "sysaccess/core/RegistryKey.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

namespace {

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
    RequireMemory(Key(path).GetString(valueName, text, REG_SZ, 0));
    return text;
}

// Nothing unless a REG_DWORD of four bytes is stored.
std::optional<DWORD> ReadNumber(const char* path, const char* valueName)
{
    DWORD type = REG_NONE;
    RegistryData data;
    DWORD size = 0;
    DWORD number = 0;
    const DWORD found = RequireMemory(Key(path).QueryValue(valueName, type, data, size));
    if (found != ERROR_SUCCESS || type != REG_DWORD || size != sizeof number)
        return {};
    std::memcpy(&number, data.get(), sizeof number);
    return number;
}

// The changes that ask for the writing of a value.
constexpr DWORD ChangesOf(SnmpValue value)
{
    DWORD changes = 0;
    for (const SnmpFlag& flag : snmpFlags) {
        if (flag.value == value)
            changes |= flag.change;
    }
    return changes;
}

constexpr DWORD setsEnabledChanges = ChangesOf(SnmpValue::SetsEnabled);
constexpr DWORD hostFlagsChanges = ChangesOf(SnmpValue::HostFlags);

bool HasRackSupport()
try {
    std::vector<std::string> agents;
    Key(ServiceKey(serverServiceName)).EnumSubkeys(agents);
    return std::any_of(agents.begin(), agents.end(),
                       [](const std::string& name) { return IsSameName(name.c_str(), rackSubAgent); });
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
    return ExpandEnvironment(trapDebuggerTemplate, command) ? command.data() : trapDebuggerTemplate;
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
    TakeFlags(SnmpValue::SetsEnabled, sets.value_or(0));
    const std::optional<DWORD> hostFlags = ReadNumber(hostAgentKey, hostFlagsValue);
    TakeFlags(SnmpValue::HostFlags, hostFlags.value_or(0));

    // For an absent interval, and no other, the number that was read last stands in, on purpose: flags are
    // small, so it is the shortest one.
    DWORD timeout = 0;
    if (RequireMemory(Key(hostSnmpKey).GetDword(timeoutValue, timeout)) == ERROR_FILE_NOT_FOUND)
        timeout = hostFlags.value_or(sets.value_or(0));
    intervalIndex = IndexOfInterval(timeout);
}

void SnmpSettings::TakeFlags(SnmpValue value, DWORD stored)
{
    for (const SnmpFlag& flag : snmpFlags) {
        if (flag.value == value)
            this->*flag.setting = (stored & flag.bit) != 0;
    }
}

DWORD SnmpSettings::FlagsOf(SnmpValue value) const
{
    DWORD flags = 0;
    for (const SnmpFlag& flag : snmpFlags) {
        if (flag.value == value && this->*flag.setting)
            flags |= flag.bit;
    }
    return flags;
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
    if ((changes & setsEnabledChanges) != 0)
        SaveSetsEnabled();
    if ((changes & ServerRoleChanged) != 0)
        Key(productKey).SetString(serverRoleValue, serverRole);
    // The value as a whole, on purpose: the agent knows no bits but the page's.
    if ((changes & hostFlagsChanges) != 0)
        Key(hostAgentKey).SetDword(hostFlagsValue, FlagsOf(SnmpValue::HostFlags));
    if ((changes & IntervalChanged) != 0)
        SaveInterval();
    if ((changes & ExceptionTrapChanged) != 0)
        SaveDebuggers();
}

// As a whole, too: bits that mean nothing to the agents are cleared.
void SnmpSettings::SaveSetsEnabled() const
{
    for (const AgentService& service : agentServices)
        TrySetDword(service.SnmpKey(), setsEnabledValue, FlagsOf(SnmpValue::SetsEnabled));
}

void SnmpSettings::SaveInterval() const
{
    if (intervalIndex < 0 || intervalIndex >= static_cast<int>(collectionIntervals.size()))
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
