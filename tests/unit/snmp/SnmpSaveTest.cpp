// What the SNMP Settings page writes, and what becomes of it when a write is refused.
#include "SnmpMachine.h"
#include "support/FailNth.h"
#include "support/RegistryCalls.h"
#include "sysaccess/ConfigurationError.h"

#include <gtest/gtest.h>

namespace {

using support::ExpectAbsent;
using support::ExpectDword;
using support::ExpectString;

constexpr char trapDebugger[] = "vtndbg -p %ld -e %ld -g";
constexpr char otherDebugger[] = "drwtsn32 -p %ld -e %ld -g";

class SnmpSettingsSave : public testing::Test
{
  protected:
    void ExpectNothingButTheRole() const
    {
        for (const support::TestKey& key : m_machine.SnmpKeys())
            EXPECT_EQ(key.ValueNames(), std::vector<std::string>()) << key.Path();
        ExpectAbsent(m_machine.hostAgent, "HostFlags");
        ExpectAbsent(m_machine.activeDebugger, "Debugger");
        ExpectAbsent(m_machine.parkedDebugger, "Debugger");
    }

    SnmpMachine m_machine;
};

// --- the server role

TEST_F(SnmpSettingsSave, WritesTheServerRoleAloneWhenNothingElseWasChanged)
{
    SnmpSettings settings = LoadSnmpSettings();
    settings.serverRole = "Mail";
    settings.Save(0);
    ExpectString(m_machine.product, "ServerRole", "Mail");
    ExpectNothingButTheRole();
}

TEST_F(SnmpSettingsSave, KeepsAServerRoleThatIsLongerThanTheFieldTakes)
{
    m_machine.product.SetString("ServerRole", std::string(1000, 'r'));
    LoadSnmpSettings().Save(0);
    ExpectString(m_machine.product, "ServerRole", std::string(1000, 'r'));
}

TEST_F(SnmpSettingsSave, WritesAnEmptyServerRole)
{
    LoadSnmpSettings().Save(0);
    ExpectString(m_machine.product, "ServerRole", "");
}

// --- sets, remote reboot, rack traps

class ThreeBoxes : public SnmpSettingsSave, public testing::WithParamInterface<DWORD>
{
};

TEST_P(ThreeBoxes, BecomeOneNumberOfEveryAgent)
{
    SnmpSettings settings = LoadSnmpSettings();
    settings.setsEnabled = (GetParam() & 1) != 0;
    settings.remoteReboot = (GetParam() & 2) != 0;
    settings.rackTrapsDisabled = (GetParam() & 4) != 0;
    settings.Save(SetsChanged);
    for (const support::TestKey& key : m_machine.SnmpKeys())
        ExpectDword(key, "SetsEnabled", GetParam());
}

INSTANTIATE_TEST_SUITE_P(Combinations, ThreeBoxes, testing::Range(DWORD{0}, DWORD{8}));

class SetsChange : public SnmpSettingsSave, public testing::WithParamInterface<DWORD>
{
};

TEST_P(SetsChange, WritesTheNumberAndNothingElse)
{
    m_machine.hostSnmp.SetDword("SetsEnabled", 0x1F);
    LoadSnmpSettings().Save(GetParam());
    for (const support::TestKey& key : m_machine.SnmpKeys())
        EXPECT_EQ(key.ValueNames(), std::vector<std::string>{"SetsEnabled"}) << key.Path();
    ExpectDword(m_machine.hostSnmp, "SetsEnabled", 7); // bits of nobody are gone
    ExpectAbsent(m_machine.hostAgent, "HostFlags");
    ExpectAbsent(m_machine.activeDebugger, "Debugger");
}

INSTANTIATE_TEST_SUITE_P(Boxes, SetsChange,
                         testing::Values(SetsChanged, RemoteRebootChanged, RackTrapsChanged));

TEST_F(SnmpSettingsSave, PassesOverAnAgentThatCannotBeWrittenTo)
{
    m_machine.hostSnmp.Delete();
    m_machine.storage.Subkey("VTNSNMP").Delete();
    SnmpSettings settings;
    settings.setsEnabled = TRUE;
    settings.Save(SetsChanged);
    ExpectDword(m_machine.server.Subkey("VTNSNMP"), "SetsEnabled", 1);
    ExpectDword(m_machine.nic.Subkey("VTNNISNMP"), "SetsEnabled", 1);
    EXPECT_FALSE(m_machine.hostSnmp.Exists());
}

// --- telnet

TEST_F(SnmpSettingsSave, ReplacesTheHostFlagsAsAWhole)
{
    m_machine.hostAgent.SetDword("HostFlags", 0xFFFFFFFF);
    SnmpSettings settings = LoadSnmpSettings();
    settings.Save(TelnetChanged);
    ExpectDword(m_machine.hostAgent, "HostFlags", 1);
    settings.telnetDisabled = FALSE;
    settings.Save(TelnetChanged);
    ExpectDword(m_machine.hostAgent, "HostFlags", 0);
}

// --- interval

TEST_F(SnmpSettingsSave, WritesEachIntervalAsItsMilliseconds)
{
    SnmpSettings settings = LoadSnmpSettings();
    for (std::size_t row = 0; row < collectionIntervalCount; ++row) {
        settings.intervalIndex = static_cast<int>(row);
        settings.Save(IntervalChanged);
        ExpectDword(m_machine.hostSnmp, "Timeout", collectionIntervals[row].milliseconds);
        EXPECT_EQ(LoadSnmpSettings().intervalIndex, settings.intervalIndex);
    }
}

TEST_F(SnmpSettingsSave, WritesTheIntervalIntoEveryAgentOfEveryService)
{
    const std::vector<support::TestKey> agents = {
        m_machine.hostSnmp, m_machine.hostAgent, m_machine.server.Subkey("VTNRACK"),
        m_machine.storage.Subkey("an agent"), m_machine.nic.Subkey("VTNMNIC")};
    for (const support::TestKey& agent : agents)
        agent.Create();
    SnmpSettings settings;
    settings.intervalIndex = 5;
    settings.Save(IntervalChanged);
    for (const support::TestKey& agent : agents)
        ExpectDword(agent, "Timeout", 60000);
}

TEST_F(SnmpSettingsSave, WritesNoIntervalIntoSubkeysThatAreNoAgents)
{
    const std::vector<std::string> names = {"Parameters", "SECURITY",   "AppTrap", "Linkage",
                                            "ENUM",       "PARAMETERS", "security"};
    for (const std::string& name : names)
        m_machine.storage.Subkey(name).Create();
    LoadSnmpSettings().Save(IntervalChanged);
    for (const std::string& name : names)
        ExpectAbsent(m_machine.storage.Subkey(name), "Timeout");
    ExpectDword(m_machine.storage.Subkey("VTNSNMP"), "Timeout", 5000);
}

TEST_F(SnmpSettingsSave, PassesOverAServiceWithoutSubkeysOrKey)
{
    m_machine.host.Subkey("AppTrap").Delete();
    SnmpSettings settings = LoadSnmpSettings();
    m_machine.host.Clear();
    m_machine.server.Delete();
    settings.Save(IntervalChanged);
    ExpectDword(m_machine.storage.Subkey("VTNSNMP"), "Timeout", 5000);
    ExpectDword(m_machine.nic.Subkey("VTNNISNMP"), "Timeout", 5000);
}

TEST_F(SnmpSettingsSave, WritesNoIntervalWithoutASelectedOne)
{
    SnmpSettings settings = LoadSnmpSettings();
    for (const int index : {-1, 16}) {
        settings.intervalIndex = index;
        settings.Save(IntervalChanged);
    }
    ExpectAbsent(m_machine.hostSnmp, "Timeout");
}

// --- exception trap

class ExceptionTrap : public SnmpSettingsSave
{
  protected:
    void Switch(BOOL on)
    {
        SnmpSettings settings = LoadSnmpSettings();
        settings.exceptionTrap = on;
        settings.Save(ExceptionTrapChanged);
        settings.Save(ExceptionTrapChanged); // once for every page that was visited
    }
    void ExpectDebuggers(const std::string& active, const std::string& parked,
                         support::Location where = support::Location::current()) const
    {
        ExpectString(m_machine.activeDebugger, "Debugger", active, where);
        ExpectString(m_machine.parkedDebugger, "Debugger", parked, where);
    }
};

TEST_F(ExceptionTrap, ParksTheSystemsDebuggerWhenItIsSwitchedOn)
{
    m_machine.activeDebugger.SetString("Debugger", otherDebugger);
    Switch(TRUE);
    ExpectDebuggers(trapDebugger, otherDebugger);
}

TEST_F(ExceptionTrap, GivesTheSystemsDebuggerBackWhenItIsSwitchedOff)
{
    m_machine.activeDebugger.SetString("Debugger", "\"C:\\Agents\\VTNDBG.EXE\" -p %ld");
    m_machine.parkedDebugger.SetString("Debugger", otherDebugger);
    Switch(FALSE);
    ExpectDebuggers(otherDebugger, "\"C:\\Agents\\VTNDBG.EXE\" -p %ld");
}

TEST_F(ExceptionTrap, LeavesEverythingAsItWasAfterOnAndOff)
{
    m_machine.activeDebugger.SetString("Debugger", otherDebugger);
    m_machine.parkedDebugger.SetString("Debugger", trapDebugger);
    Switch(TRUE);
    Switch(FALSE);
    ExpectDebuggers(otherDebugger, trapDebugger);
}

TEST_F(ExceptionTrap, StaysOnWhenItIsSwitchedOnTwice)
{
    m_machine.activeDebugger.SetString("Debugger", otherDebugger);
    Switch(TRUE);
    Switch(TRUE);
    ExpectDebuggers(trapDebugger, otherDebugger);
}

TEST_F(ExceptionTrap, StaysOffWhenItIsSwitchedOffTwice)
{
    m_machine.activeDebugger.SetString("Debugger", trapDebugger);
    Switch(FALSE);
    Switch(FALSE);
    ExpectDebuggers("", trapDebugger);
}

TEST_F(ExceptionTrap, KeepsADebuggerOfAnyLength)
{
    const std::string longDebugger(4000, 'd');
    m_machine.activeDebugger.SetString("Debugger", longDebugger);
    Switch(TRUE);
    ExpectDebuggers(trapDebugger, longDebugger);
    Switch(FALSE);
    ExpectDebuggers(longDebugger, trapDebugger);
}

TEST_F(ExceptionTrap, ReplacesADebuggerOfAnotherType)
{
    m_machine.activeDebugger.SetDword("Debugger", 1);
    Switch(TRUE);
    ExpectDebuggers(trapDebugger, "");
}

TEST_F(ExceptionTrap, TouchesNoDebuggerUnlessItsBoxWasClicked)
{
    m_machine.activeDebugger.SetString("Debugger", otherDebugger);
    LoadSnmpSettings().Save(everyChange & ~DWORD{ExceptionTrapChanged});
    ExpectString(m_machine.activeDebugger, "Debugger", otherDebugger);
    ExpectAbsent(m_machine.parkedDebugger, "Debugger");
}

// --- refusals

// A save of everything: its writes in their order, and whether the refusal of each ends it.
struct Write
{
    std::string entry;
    bool endsTheSave;
};

std::vector<Write> AllWrites(const SnmpMachine& machine)
{
    std::vector<Write> writes;
    const auto add = [&](const support::TestKey& key, const char* value, bool endsTheSave) {
        writes.push_back({"RegSetValueExA HKLM\\" + key.Path() + ", " + value, endsTheSave});
    };
    for (const support::TestKey& key : machine.SnmpKeys())
        add(key, "SetsEnabled", false);
    add(machine.product, "ServerRole", true);
    add(machine.hostAgent, "HostFlags", true);
    add(machine.hostAgent, "Timeout", false);
    for (const support::TestKey& key : machine.SnmpKeys())
        add(key, "Timeout", false);
    add(machine.parkedDebugger, "Debugger", true);
    add(machine.activeDebugger, "Debugger", true);
    return writes;
}

class RefusedWrite : public SnmpSettingsSave, public testing::WithParamInterface<int>
{
  protected:
    // Saves everything while write number `refused` fails, and returns what was tried.
    std::vector<std::string> SaveWithRefusal(int refused, bool& hasThrown)
    {
        const SnmpSettings settings = LoadSnmpSettings();
        const HMODULE program = GetModuleHandleA(nullptr);
        const support::FailNth<"RegSetValueExA", decltype(RegSetValueExA)> refuse(program, refused,
                                                                                  ERROR_ACCESS_DENIED);
        const support::RegistryCalls calls(program);
        hasThrown = TrySave(settings);
        return calls.Log().CallsOf({"RegSetValueExA"});
    }

  private:
    static bool TrySave(const SnmpSettings& settings)
    try {
        settings.Save(everyChange);
        return false;
    } catch (ConfigurationError) {
        return true;
    }
};

TEST_P(RefusedWrite, EndsTheSaveOrIsPassedOverAndWhatWasWrittenStays)
{
    const std::vector<Write> writes = AllWrites(m_machine);
    ASSERT_EQ(writes.size(), 13);
    const auto refused = static_cast<std::size_t>(GetParam());
    bool hasThrown = false;
    const std::vector<std::string> tried = SaveWithRefusal(GetParam(), hasThrown);

    EXPECT_EQ(hasThrown, writes[refused - 1].endsTheSave);
    ASSERT_EQ(tried.size(), hasThrown ? refused : writes.size());
    for (std::size_t i = 0; i < tried.size(); ++i)
        EXPECT_EQ(tried[i], writes[i].entry + (i == refused - 1 ? " = 5" : ""));
}

INSTANTIATE_TEST_SUITE_P(InTheirOrder, RefusedWrite, testing::Range(1, 14));

TEST_F(SnmpSettingsSave, GivesTheSameResultWhenRepeated)
{
    m_machine.activeDebugger.SetString("Debugger", otherDebugger);
    SnmpSettings settings = LoadSnmpSettings();
    settings.exceptionTrap = TRUE;
    settings.remoteReboot = TRUE;
    settings.Save(everyChange);
    settings.Save(everyChange);
    ExpectString(m_machine.activeDebugger, "Debugger", trapDebugger);
    ExpectString(m_machine.parkedDebugger, "Debugger", otherDebugger);
    ExpectDword(m_machine.hostSnmp, "SetsEnabled", 2);
    ExpectDword(m_machine.hostSnmp, "Timeout", 5000);
}

} // namespace
