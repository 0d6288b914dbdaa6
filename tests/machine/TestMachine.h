// The machine on which the built applet is tested, in Wine's own registry: a member server with its agents,
// without a board.
#pragma once

#include "support/AppletHost.h"
#include "support/ProgramPath.h"
#include "support/TestRegistry.h"
#include "sysaccess/core/AgentServices.h"

#include <string>

inline const std::string appletPath = support::BesideThisProgram("..\\..\\vtnmgmt.cpl");

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
