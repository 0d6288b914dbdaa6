// The agent services of a machine, in one table. Every page that configures the agents goes through it.
#pragma once

#include "sysaccess/core/AgentNames.h"

#include <span>
#include <string>

// Names of registry keys, values and sub-agents; compared without regard to letter case.
using NameList = std::span<const char* const>;

// Two sub-agents of one service that are one to the user: the second does as the first does.
struct AgentPair
{
    const char* first;
    const char* second;
};

// A Windows service that hosts SNMP sub-agents. Each sub-agent is a subkey of the service's key.
struct AgentService
{
    const char* name; // of the service, and of its key below the key of all services
    const char* snmpSubkey;
    std::array<const char*, 7> hiddenSubkeys; // no sub-agents, or none that the user may switch
    std::span<const AgentPair> pairs;

    // Paths below HKEY_LOCAL_MACHINE.
    [[nodiscard]] std::string Key() const;
    [[nodiscard]] std::string ParametersKey() const;
    [[nodiscard]] std::string SnmpKey() const;
};

// All of them, in the order of loading and of saving. The first is the main one, started last by the service
// manager: it depends on the others.
extern const std::array<AgentService, 4> agentServices;

// Path of a service's key below HKEY_LOCAL_MACHINE.
[[nodiscard]] std::string ServiceKey(const std::string& serviceName);

// The comparison of all these names.
[[nodiscard]] bool IsSameName(const char* left, const char* right);
[[nodiscard]] bool IsAmong(NameList names, const std::string& name);
