// The machine on which the built applet is tested, in Wine's own registry: a member server with its agents,
// without a board.
#pragma once

#include "support/AppletHost.h"
#include "support/TestRegistry.h"

#include <string>

inline const std::string appletPath = support::BesideThisProgram("..\\..\\vtnmgmt.cpl");

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
