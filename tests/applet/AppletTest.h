// The machine on which the built applet is tested: a member server with its agents, without a board.
#pragma once

#include "support/AppletHost.h"
#include "support/HelpRecorder.h"
#include "support/MessageBoxScript.h"
#include "support/TestRegistry.h"
#include "sysaccess/core/AgentServices.h"

#include <gtest/gtest.h>
#include <string>

inline const std::string appletPath = support::BesideThisProgram("..\\..\\vtnmgmt.cpl");

inline constexpr char restartQuestion[] = "The Management Agents configuration has been changed.\n\n"
                                          "Would you like to restart the Management Agents now?";

// Keys that the applet reads, filled as on a healthy server and put back at the end.
struct TestMachine
{
    TestMachine()
    {
        productOptions.SetString(productTypeValue, "ServerNT");
        for (const support::TestKey* key :
             {&hostAgents, &serverAgents, &storageAgents, &nicAgents, &product, &activeDebugger})
            key->Clear();
        hostSnmp.Create();
        hostAgent.Create();
        parkedDebugger.Create();
        hostParameters.Create();
        fibreAgent.SetDword(disableFlagsValue, 0);
        arrayAgent.SetDword(disableFlagsValue, 0);
        sasAgent.SetDword(disableFlagsValue, 0);
    }

    support::SavedKey productOptions{productOptionsKey};
    support::SavedKey hostAgents{ServiceKey(hostServiceName)};
    support::SavedKey serverAgents{ServiceKey(serverServiceName)};
    support::SavedKey storageAgents{ServiceKey(storageServiceName)};
    support::SavedKey nicAgents{ServiceKey(nicServiceName)};
    support::SavedKey product{productKey};
    support::SavedKey activeDebugger{activeDebuggerKey};
    support::TestKey hostSnmp{hostSnmpKey};
    support::TestKey hostAgent{hostAgentKey};
    support::TestKey hostParameters{hostParametersKey};
    support::TestKey parkedDebugger{parkedDebuggerKey};
    support::TestKey fibreAgent{fibreAgentKey};
    support::TestKey arrayAgent{arrayAgentKey};
    support::TestKey sasAgent{sasAgentKey};
};

// The applet, loaded and initialised, with somebody to answer its message boxes.
class AppletTest : public testing::Test
{
  protected:
    // Presses Tab until the control has the focus; false when it never gets it.
    [[nodiscard]] bool TabTo(HWND control) const
    {
        constexpr int presses = 30; // more than a page and the sheet have controls
        for (int press = 0; press < presses && m_host.Thread().Focus() != control; ++press)
            m_host.PressKey(VK_TAB);
        return m_host.Thread().Focus() == control;
    }

    TestMachine m_machine;
    support::AppletHost m_host{appletPath};
    support::MessageBoxScript m_boxes{m_host.Module()};
};
