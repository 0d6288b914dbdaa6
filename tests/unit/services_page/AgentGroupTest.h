// The sub-agents of one service, read from keys of Wine's own registry that are made for the test. Shared by
// the tests of healthy services and of others.
#pragma once

#include "pages/core/AgentGroup.h"
#include "RefuseToOpen.h"
#include "support/TestRegistry.h"

#include <gtest/gtest.h>

using Names = std::vector<std::string>;

// The last row of the product's table, which alone has a pair, under a name of the tests.
inline AgentService TestService()
{
    AgentService service = agentServices.back();
    service.name = "VtnTestAgents";
    return service;
}

class AgentGroupLoad : public testing::Test
{
  protected:
    AgentGroupLoad() { m_parameters.Create(); }

    // A sub-agent whose name for the user is its own with a "!".
    void AddAgent(const std::string& name) { m_key.Subkey(name).SetString("DisplayName", name + "!"); }

    [[nodiscard]] AgentGroup Load() const { return AgentGroup(m_service); }

    // The entry with this name; the test fails when there is none.
    AgentEntry Entry(const AgentGroup& group, const std::string& name,
                     support::Location where = support::Location::current())
    {
        for (const AgentEntry& entry : group.Entries()) {
            if (entry.name == name)
                return entry;
        }
        support::ReportFailure(where, "no entry " + name);
        return {};
    }

    AgentService m_service = TestService();
    support::ScratchKey m_key{m_service.Key()};
    support::TestKey m_parameters{m_service.ParametersKey()};
};
