// A machine whose agents share settings, in Wine's own registry. For the tests of what the SNMP Settings page
// loads and saves.
#pragma once

#include "imports/ImportHook.h"
#include "pages/core/SnmpSettings.h"
#include "support/TestRegistry.h"
#include "sysaccess/core/AgentServices.h"
#include "sysaccess/core/ConfigurationError.h"

#include <string>
#include <vector>

inline constexpr char trapDebugger[] = "vtndbg -p %ld -e %ld -g";
inline constexpr char otherDebugger[] = "drwtsn32 -p %ld -e %ld -g";

// Starts with the keys of a server with all agents and without any value; puts everything back at the end.
struct SnmpMachine
{
    SnmpMachine()
    {
        for (const support::TestKey* key : {&host, &server, &storage, &nic, &product, &activeDebugger})
            key->Clear();
        for (const support::TestKey& key : SnmpKeys())
            key.Create();
        hostAgent.Create();
        parkedDebugger.Create();
    }

    // The agent services, in the order of saving.
    [[nodiscard]] std::vector<const support::TestKey*> Services() const
    {
        return {&host, &server, &storage, &nic};
    }

    // What receives "SetsEnabled", in the order of saving.
    [[nodiscard]] std::vector<support::TestKey> SnmpKeys() const
    {
        return {hostSnmp, server.Subkey(snmpSubkey), storage.Subkey(snmpSubkey), nic.Subkey(nicSnmpSubkey)};
    }

    support::SavedKey host{ServiceKey(hostServiceName)};
    support::SavedKey server{ServiceKey(serverServiceName)};
    support::SavedKey storage{ServiceKey(storageServiceName)};
    support::SavedKey nic{ServiceKey(nicServiceName)};
    support::SavedKey product{productKey};
    support::SavedKey activeDebugger{activeDebuggerKey};
    support::TestKey hostSnmp{hostSnmpKey};
    support::TestKey hostAgent{hostAgentKey};
    support::TestKey parkedDebugger{parkedDebuggerKey};
};

// Every kind of edit.
inline constexpr DWORD everyChange = IntervalChanged | SetsChanged | RemoteRebootChanged |
                                     ExceptionTrapChanged | TelnetChanged | RackTrapsChanged;

inline SnmpSettings LoadSnmpSettings()
{
    SnmpSettings settings;
    settings.Load();
    return settings;
}

// Whether `action` is refused.
template <typename Action>
bool IsRefused(Action action)
try {
    action();
    return false;
} catch (ConfigurationError) {
    return true;
}

// Whether `action` is refused while the system denies access to the key.
template <typename Action>
bool IsRefusedWhileDenied(const support::TestKey& key, Action action)
{
    const auto deny = support::HookImport<decltype(RegOpenKeyA)>(
        GetModuleHandleA(nullptr), "RegOpenKeyA",
        [&](auto original, HKEY root, LPCSTR subkey, PHKEY opened) -> LSTATUS {
            return key.Path() == subkey ? ERROR_ACCESS_DENIED : original(root, subkey, opened);
        });
    return IsRefused(action);
}
