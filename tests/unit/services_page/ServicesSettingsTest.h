// The services of a machine, loaded and saved as a test wants them. Shared by the tests of the settings.
#pragma once

#include "machine/AgentMachine.h"
#include "pages/core/ServicesSettings.h"

#include <gtest/gtest.h>

using Names = std::vector<std::string>;

// More sub-agents than any of these tests has.
constexpr std::size_t anyNumber = 100;

class ServicesSettingsTest : public testing::Test
{
  protected:
    // A sub-agent in each service, named after it; those of `active` are active.
    void AddAgents(const Names& active)
    {
        for (const AgentService& service : agentServices)
            m_machine.AddAgent(service.name, std::string("VTN") + service.name);
        for (const std::string& name : active)
            m_machine.SetActive(name, {"VTN" + name});
    }

    [[nodiscard]] Names LoadedServices()
    {
        m_settings.Load();
        Names names;
        for (const AgentGroup& group : m_settings.groups)
            names.emplace_back(group.Service().name);
        return names;
    }

    void LoadAndSave(std::size_t limit = anyNumber)
    {
        m_settings.Load();
        m_settings.Save(limit);
    }

    void ExpectDependencies(const Names& names, support::Location where = support::Location::current())
    {
        const support::Bytes bytes = names.empty() ? support::Bytes() : support::MultiStringBytes(names);
        support::ExpectEqual({support::StoredValue{REG_MULTI_SZ, bytes}},
                             m_machine.Service("VtMgHost").Value("DependOnService"), "DependOnService",
                             where);
    }

    AgentMachine m_machine;
    ServicesSettings m_settings;
};
