// The machine on which the built applet is tested: a member server with its agents, without a board.
#pragma once

#include "support/AppletHost.h"
#include "support/HelpRecorder.h"
#include "support/MessageBoxScript.h"
#include "support/TestRegistry.h"

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
        productOptions.SetString("ProductType", "ServerNT");
        for (const support::TestKey* key :
             {&hostAgents, &serverAgents, &storageAgents, &nicAgents, &product, &activeDebugger})
            key->Clear();
        hostSnmp.Create();
        hostAgent.Create();
        parkedDebugger.Create();
        hostParameters.Create();
        fibreAgent.SetDword("DisableFlags", 0);
        arrayAgent.SetDword("DisableFlags", 0);
        sasAgent.SetDword("DisableFlags", 0);
    }

    support::SavedKey productOptions{"SYSTEM\\CurrentControlSet\\Control\\ProductOptions"};
    support::SavedKey hostAgents{"SYSTEM\\CurrentControlSet\\Services\\VtMgHost"};
    support::SavedKey serverAgents{"SYSTEM\\CurrentControlSet\\Services\\VtMgServ"};
    support::SavedKey storageAgents{"SYSTEM\\CurrentControlSet\\Services\\VtMgStor"};
    support::SavedKey nicAgents{"SYSTEM\\CurrentControlSet\\Services\\VTNNicMgmt"};
    support::SavedKey product{"SOFTWARE\\Vortan Lumora Agent"};
    support::SavedKey activeDebugger{"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\AeDebug"};
    support::TestKey hostSnmp = hostAgents.Subkey("VTNSNMP");
    support::TestKey hostAgent = hostAgents.Subkey("VTNMHOST");
    support::TestKey hostParameters = hostAgents.Subkey("Parameters");
    support::TestKey parkedDebugger = hostAgents.Subkey("AppTrap");
    support::TestKey fibreAgent = storageAgents.Subkey("VTNFCA");
    support::TestKey arrayAgent = storageAgents.Subkey("VTNMIDA");
    support::TestKey sasAgent = storageAgents.Subkey("VTNSAS");
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
