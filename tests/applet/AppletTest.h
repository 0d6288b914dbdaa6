// The machine on which the built applet is tested: a member server with its storage agents, without a board.
#pragma once

#include "support/AppletHost.h"
#include "support/HelpRecorder.h"
#include "support/MessageBoxScript.h"
#include "support/TestRegistry.h"

#include <gtest/gtest.h>
#include <string>

inline const std::string appletPath = support::BesideThisProgram("..\\..\\vtnmgmt.cpl");

// Keys that the applet reads, filled as on a healthy server and put back at the end.
struct TestMachine
{
    TestMachine()
    {
        productOptions.SetString("ProductType", "ServerNT");
        storageAgents.Clear();
        fibreAgent.SetDword("DisableFlags", 0);
        arrayAgent.SetDword("DisableFlags", 0);
        sasAgent.SetDword("DisableFlags", 0);
    }

    support::SavedKey productOptions{"SYSTEM\\CurrentControlSet\\Control\\ProductOptions"};
    support::SavedKey storageAgents{"SYSTEM\\CurrentControlSet\\Services\\VtMgStor"};
    support::TestKey fibreAgent = storageAgents.Subkey("VTNFCA");
    support::TestKey arrayAgent = storageAgents.Subkey("VTNMIDA");
    support::TestKey sasAgent = storageAgents.Subkey("VTNSAS");
};

// The applet, loaded and initialised, with somebody to answer its message boxes.
class AppletTest : public testing::Test
{
  protected:
    TestMachine m_machine;
    support::AppletHost m_host{appletPath};
    support::MessageBoxScript m_boxes{m_host.Module()};
};
