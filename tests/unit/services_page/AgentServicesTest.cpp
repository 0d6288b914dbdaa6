// The table of agent services.
#include "sysaccess/core/AgentServices.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

using Names = std::vector<std::string>;

TEST(AgentServices, StandInTheOrderOfLoadingAndSaving)
{
    Names keys;
    for (const AgentService& service : agentServices)
        keys.push_back(service.Key());
    const std::string services = "SYSTEM\\CurrentControlSet\\Services\\";
    EXPECT_EQ(keys, (Names{services + "VtMgHost", services + "VtMgServ", services + "VtMgStor",
                           services + "VTNNicMgmt"}));
}

TEST(AgentServices, KeepTheirParametersAndSnmpSettingsInSubkeys)
{
    const AgentService& nic = agentServices[3];
    EXPECT_EQ(nic.ParametersKey(), nic.Key() + "\\Parameters");
    EXPECT_EQ(nic.SnmpKey(), nic.Key() + "\\VTNNISNMP");
    EXPECT_EQ(agentServices[0].SnmpKey(), agentServices[0].Key() + "\\VTNSNMP");
}

TEST(AgentServices, EachHideItsOwnSnmpSubkey)
{
    for (const AgentService& service : agentServices)
        EXPECT_TRUE(IsAmong(service.hiddenSubkeys, service.snmpSubkey)) << service.name;
    EXPECT_FALSE(IsAmong(agentServices[3].hiddenSubkeys, "VTNSNMP"));
    EXPECT_FALSE(IsAmong(agentServices[0].hiddenSubkeys, "VTNNISNMP"));
}

} // namespace
