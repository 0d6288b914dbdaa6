// What the SNMP Settings page loads and saves, without a window.
#pragma once

#include <array>
#include <string>
#include <windows.h>

// How often the agents collect data: one choice of the user, and what is stored for it.
struct CollectionInterval
{
    UINT textId;
    DWORD milliseconds;
};

inline constexpr std::size_t collectionIntervalCount = 16;

// All choices, shortest first.
extern const std::array<CollectionInterval, collectionIntervalCount> collectionIntervals;

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
    void LoadDebuggers();
    void SaveSetsEnabled() const;
    void SaveInterval() const;
    void SaveDebuggers() const;

    // The command lines of the two post-mortem debuggers: the agents', and the system's own.
    std::string m_trapDebugger;
    std::string m_savedDebugger;
};
