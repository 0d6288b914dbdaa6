// The services and the agent groups, as data and as what is done with it.
#include "Agents.h"

#include "../service/Behaviour.h"
#include "../support/Registry.h"
#include "../support/Services.h"

#include <string>
#include <vector>

namespace demo {

namespace {

struct MachineService
{
    ServiceEntry entry;
    Behaviour behaviour;
};

// In the order in which they start. The host agents take their time, so that the please-wait window can be
// seen.
const std::vector<MachineService>& Services()
{
    static const std::vector<MachineService> services = {
        {{"SNMP", "SNMP Service", {}}, {.startDelay = 300, .stopDelay = 300, .waitHint = 500}},
        {{"VtMgServ", "Norvale Server Agents", {"SNMP"}},
         {.startDelay = 200, .stopDelay = 400, .waitHint = 500}},
        {{"VtMgStor", "Norvale Storage Agents", {"SNMP"}},
         {.startDelay = 200, .stopDelay = 400, .waitHint = 500}},
        {{"VTNNicMgmt", "Norvale NIC Agents", {"SNMP"}},
         {.startDelay = 200, .stopDelay = 200, .waitHint = 500}},
        {{"VtMgHost", "Norvale Host Agents", {"VtMgServ", "VtMgStor", "VTNNicMgmt", "SNMP"}},
         {.startDelay = 1200,
          .startSteps = 3,
          .stopDelay = 1500,
          .stopSteps = 2,
          .waitHint = 600,
          .readyMutex = "VtnHostAlerterInited"}},
        {{"VtnWebWmi", "Norvale Web Management Agent", {}},
         {.startDelay = 300, .stopDelay = 300, .waitHint = 500}},
    };
    return services;
}

struct SubAgent
{
    const char* key;
    const char* displayName; // null: the sub-agent is shown by its key
};

struct AgentGroup
{
    const char* service;
    const char* snmpKey;
    std::vector<std::string> subServices; // the active sub-agents
    std::vector<SubAgent> subAgents;
    std::vector<const char*> otherKeys; // subkeys that are no sub-agents, spelled as installers spell them
};

// One of the active names is spelled in another letter case than its key, and one has no key any more.
const AgentGroup hostAgents = {
    "VtMgHost",
    "VTNSNMP",
    {"vtnmhost", "VTNPERF", "VTNPROC", "VTNALERT", "VTNGONE"},
    {{"VTNMHOST", "Host Information Agent"},
     {"VTNPERF", "Operating System Performance Agent"},
     {"VTNPROC", "Process Monitor Agent"},
     {"VTNALERT", "Remote Alerter Agent"},
     {"VTNSWINV", "Software Inventory Agent"},
     {"VTNTHRSH", nullptr}},
    {"VTNUPS", "SECURITY", "AppTrap", "LINKAGE", "Enum"},
};
const AgentGroup serverAgents = {
    "VtMgServ",
    "VTNSNMP",
    {"VTNHEALTH", "VTNSTDEQ", "VTNRLMB"},
    {{"VTNHEALTH", "Server Health Agent"},
     {"VTNSTDEQ", "Standard Equipment Agent"},
     {"VTNRLMB", "Remote Lumora Agent"},
     {"VTNRACK", "Rack Infrastructure Agent"},
     {"VTNPOWER", nullptr}},
    {"Security", "linkage"},
};
const AgentGroup storageAgents = {
    "VtMgStor",
    "VTNSNMP",
    {"VTNFCA", "VTNMIDA", "VTNSAS"},
    {{"VTNFCA", "Fibre Array Agent"},
     {"VTNMIDA", "Quenta Array Agent"},
     {"VTNSAS", "SAS Agent"},
     {"VTNSCSI", "SCSI Agent"},
     {"VTNATA", nullptr}},
    {"Enum"},
};
// The last two are one agent in two parts, switched together.
const AgentGroup nicAgents = {
    "VTNNicMgmt",
    "VTNNISNMP",
    {"VTNMNIC", "VTNNICS"},
    {{"VTNVLAN", "VLAN Agent"}, {"VTNMNIC", "NIC Management Agent"}, {"VTNNICS", "NIC SNMP Agent"}},
    {"Linkage"},
};

std::string ServiceKey(const AgentGroup& group)
{
    return std::string("SYSTEM\\CurrentControlSet\\Services\\") + group.service;
}

void MakeGroup(const AgentGroup& group)
{
    constexpr DWORD twoMinutes = 120'000;
    const std::string service = ServiceKey(group) + '\\';
    Key::Create(service + "Parameters").SetStrings("SubServices", group.subServices);
    for (const auto* key : group.otherKeys)
        (void)Key::Create(service + key);

    auto snmp = Key::Create(service + group.snmpKey);
    snmp.SetDword("SetsEnabled", 1);
    snmp.SetDword("Timeout", twoMinutes);
    for (const auto& agent : group.subAgents) {
        auto key = Key::Create(service + agent.key);
        key.SetDword("Timeout", twoMinutes);
        if (agent.displayName != nullptr)
            key.SetString("DisplayName", agent.displayName);
    }
}

// A display name that holds a variable is of a type that is not shown.
void GivePowerAgentAnExpandedName()
{
    Key::Create(ServiceKey(serverAgents) + "\\VTNPOWER")
        .SetExpandString("DisplayName", "%ProductFamily% Power Agent");
}

} // namespace

void MakeAgents()
{
    for (const auto& service : Services()) {
        InstallService(service.entry);
        StoreBehaviour(service.entry.name, service.behaviour);
    }
    for (const auto& group : {hostAgents, serverAgents, storageAgents, nicAgents})
        MakeGroup(group);
    GivePowerAgentAnExpandedName();
}

void BringUpAgents()
{
    for (const auto& service : Services())
        BringUpService(service.entry.name);
}

} // namespace demo
