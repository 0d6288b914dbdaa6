// A domain controller with the agents and a login script, for the tests of desktop management's settings.
#pragma once

#include "desktop/core/DesktopManagement.h"
#include "desktop/core/NullSessionShares.h"
#include "support/ShareScript.h"
#include "support/TestDirectory.h"
#include "support/TestRegistry.h"
#include "sysaccess/core/AgentServices.h"
#include "sysaccess/core/ComputerName.h"

#include <gtest/gtest.h>
#include <ostream>

// Everything that desktop management changes, in the order in which a save does.
struct DomainState
{
    std::optional<std::string> script;
    std::optional<support::StoredValue> record;
    std::optional<std::string> clientProgram;
    std::optional<support::SharedDirectory> share;
    std::optional<std::string> clientProfile;
    std::optional<support::StoredValue> nullSessionShares;

    bool operator==(const DomainState&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const DomainState& state)
{
    return out << "script " << testing::PrintToString(state.script) << "\n  record "
               << testing::PrintToString(state.record) << "\n  program "
               << testing::PrintToString(state.clientProgram) << "\n  share "
               << testing::PrintToString(state.share) << "\n  profile "
               << testing::PrintToString(state.clientProfile) << "\n  null sessions "
               << testing::PrintToString(state.nullSessionShares);
}

class TestDomain : public testing::Test
{
  protected:
    TestDomain()
    {
        m_hostAgents.Clear();
        m_agent.Create();
        m_server.Clear();
        m_server.SetMultiString(nullSessionSharesValue, {"COMCFG", "DFS$"});
        CreateDirectoryA(m_windows.File("system32").c_str(), nullptr);
        CreateDirectoryA(m_windows.File("system32\\vtnmgmt").c_str(), nullptr);
        support::WriteBytes(m_installedProgram, "the client");
        support::WriteBytes(m_script, "@echo off\r\n");
    }

    // Settings with the script of this machine, as the page holds them.
    [[nodiscard]] DesktopManagement Settings(bool isOn) const
    {
        DesktopManagement settings;
        settings.scriptPath = m_script;
        settings.scriptDirectory = m_scripts.Path();
        settings.isOn = isOn;
        return settings;
    }

    [[nodiscard]] DomainState State() const
    {
        return {.script = support::ReadBytes(m_script),
                .record = m_agent.Value(clientIniValue),
                .clientProgram = support::ReadBytes(m_program),
                .share = m_shares.Find("VTNDATA"),
                .clientProfile = support::ReadBytes(m_profile),
                .nullSessionShares = m_server.Value(nullSessionSharesValue)};
    }

    support::TestDirectory m_windows;
    support::TestDirectory m_scripts;
    support::SavedVariable m_systemRoot{"SystemRoot", m_windows.Path()};
    support::SavedKey m_hostAgents{ServiceKey(hostServiceName)};
    support::TestKey m_agent{hostAgentKey};
    support::SavedKey m_server{fileServerKey};
    support::ShareScript m_shares{GetModuleHandleA(nullptr)};

    std::string m_installedProgram = m_windows.File("system32\\vtnmgmt\\VTNCLNT.EXE");
    std::string m_reports = m_windows.File("system32\\vtnmgmt\\vtndata");
    std::string m_script = m_scripts.File("LOGIN.BAT");
    std::string m_program = m_scripts.File("VTNCLNT.EXE");
    std::string m_profile = m_scripts.File("VTNCLNT.INI");
};
