// What the made-up machine's registry holds for the applet's pages.
#include "demo/machine/Settings.h"
#include "support/TestRegistry.h"

#include <gtest/gtest.h>

namespace {

using support::ExpectDword;
using support::ExpectString;

// The keys as the machine is made with them; put back at the end.
class MachineSettings : public testing::Test
{
  protected:
    MachineSettings()
    {
        for (const support::TestKey* key :
             {&m_hostAgents, &m_storageAgents, &m_product, &m_debuggers, &m_thresholds, &m_traps, &m_board})
            key->Clear();
        demo::MakeSettings();
    }

    support::SavedKey m_hostAgents{"SYSTEM\\CurrentControlSet\\Services\\VtMgHost"};
    support::SavedKey m_storageAgents{"SYSTEM\\CurrentControlSet\\Services\\VtMgStor"};
    support::SavedKey m_product{"SOFTWARE\\Vortan Lumora Agent"};
    support::SavedKey m_debuggers{"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\AeDebug"};
    support::SavedKey m_thresholds{"SYSTEM\\VortanPermanent"};
    support::SavedKey m_traps{"SYSTEM\\VortanHost"};
    support::SavedKey m_board{"SOFTWARE\\Norvale Demo\\Board"};
};

TEST_F(MachineSettings, HaveTheAgentsDebuggerParked)
{
    ExpectString(m_debuggers, "Debugger", "drwtsn32 -p %ld -e %ld -g");
    ExpectString(m_hostAgents.Subkey("AppTrap"), "Debugger", "vtndbg -p %ld -e %ld -g");
}

TEST_F(MachineSettings, SayWhatTheServerIsFor)
{
    ExpectString(m_product, "ServerRole", "Domain controller, building 2");
    ExpectDword(m_hostAgents.Subkey("VTNMHOST"), "HostFlags", 0);
}

TEST_F(MachineSettings, HoldThresholdsToClearAndATrapToSend)
{
    for (const char* key : {"Threshold\\AlarmTable", "Host\\OsPerfTh\\Cache", "Host\\OsPerfTh\\LogicalDisk",
                            "Host\\OsPerfTh\\PagingFile", "Host\\OsPerfTh\\Processor"})
        ExpectDword(m_thresholds.Subkey(key), "Rising", 90);
    EXPECT_TRUE(m_traps.Subkey("Host\\Component\\GenericTrap").Value("TrapData").has_value());
}

} // namespace
