// What the SNMP Settings page loads and saves, without a window.
#pragma once

#include "resources/resource.h"
#include "sysaccess/core/AgentNames.h"

#include <array>
#include <string>
#include <windows.h>

// How often the agents collect data: one choice of the user, and what is stored for it.
struct CollectionInterval
{
    UINT textId;
    DWORD milliseconds;
};

// All choices, shortest first.
inline constexpr auto collectionIntervals = std::to_array<CollectionInterval>({
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
});

// The last choice that is not longer than `milliseconds`; the first one when all are.
[[nodiscard]] int IndexOfInterval(DWORD milliseconds);

// What the user has touched, one bit for each kind of edit: what Save writes.
enum SnmpChange : DWORD
{
    IntervalChanged = 0x01,
    SetsChanged = 0x02,
    RemoteRebootChanged = 0x04,
    ExceptionTrapChanged = 0x08,
    TelnetChanged = 0x10,
    RackTrapsChanged = 0x20,
    ServerRoleChanged = 0x40, // the page writes the role in any case
};

// Longest server role, in bytes.
inline constexpr int serverRoleLimit = 64;

// The stored numbers whose bits are settings: one that every agent gets, and one of the host agent alone.
enum class SnmpValue
{
    SetsEnabled,
    HostFlags,
};

// The settings that all agents share. They are read from the host agent's key and written to every agent's.
// The flags are BOOL and the index is int, as check boxes and combo boxes take them.
class SnmpSettings
{
  public:
    // An absent value, or one of another type, leaves its default. Throws ConfigurationError when a key
    // cannot be opened; the rack agent's key may be absent.
    void Load();

    // Remote reboot is off while SNMP sets are.
    void KeepRemoteRebootToSets() { remoteReboot = remoteReboot && setsEnabled ? TRUE : FALSE; }

    // Writes the server role, and what `changes` (SnmpChange bits) says. An agent that cannot be written to
    // is passed over; a refusal of anything else is thrown as ConfigurationError, and what was written before
    // stays.
    void Save(DWORD changes) const { SaveOnly(changes | ServerRoleChanged); }
    // The same without the server role, unless `changes` says so.
    void SaveOnly(DWORD changes) const;

    BOOL setsEnabled = FALSE;
    BOOL remoteReboot = FALSE;
    BOOL rackTrapsDisabled = FALSE;
    BOOL telnetDisabled = FALSE;
    BOOL exceptionTrap = FALSE;  // the agents' debugger is the system's
    int intervalIndex = 0;       // into collectionIntervals
    bool hasRackSupport = false; // the rack agent is installed
    std::string serverRole;

  private:
    void LoadFlagsAndInterval();
    void TakeFlags(SnmpValue value, DWORD stored);
    [[nodiscard]] DWORD FlagsOf(SnmpValue value) const;
    void LoadDebuggers();
    void SaveSetsEnabled() const;
    void SaveInterval() const;
    void SaveDebuggers() const;

    // The command lines of the two post-mortem debuggers: the agents', and the system's own.
    std::string m_trapDebugger;
    std::string m_savedDebugger;
};

// A setting that is a check box of the page and a bit of a stored REG_DWORD.
struct SnmpFlag
{
    int controlId; // the check box
    SnmpChange change;
    BOOL SnmpSettings::*setting;
    SnmpValue value;
    DWORD bit;
};

// All of them, in the order in which the page exchanges its data.
inline constexpr auto snmpFlags = std::to_array<SnmpFlag>({
    {IDC_SNMP_REMOTE_REBOOT, RemoteRebootChanged, &SnmpSettings::remoteReboot, SnmpValue::SetsEnabled, 0x2},
    {IDC_SNMP_SETS, SetsChanged, &SnmpSettings::setsEnabled, SnmpValue::SetsEnabled, 0x1},
    {IDC_SNMP_DISABLE_TELNET, TelnetChanged, &SnmpSettings::telnetDisabled, SnmpValue::HostFlags, 0x1},
    {IDC_SNMP_DISABLE_RACK_TRAPS, RackTrapsChanged, &SnmpSettings::rackTrapsDisabled, SnmpValue::SetsEnabled,
     0x4},
});
