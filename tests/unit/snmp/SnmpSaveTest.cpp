// What the SNMP Settings page writes.
#include "imports/ImportHook.h"
#include "machine/SnmpMachine.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

namespace {

using support::ExpectAbsent;
using support::ExpectDword;
using support::ExpectString;

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

TEST_F(SnmpSettingsSave, WritesTheServerRoleAloneByDefault)
{
    SnmpSettings settings = LoadSnmpSettings();
    settings.serverRole = "Mail";
    settings.Save(0);
    ExpectString(m_machine.product, "ServerRole", "Mail");
    ExpectNothingButTheRole();
}

TEST_F(SnmpSettingsSave, KeepsAServerRoleLongerThanTheField)
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
    m_machine.hostSnmp.SetDword("SetsEnabled", 0x80000007);
    LoadSnmpSettings().Save(GetParam());
    for (const support::TestKey& key : m_machine.SnmpKeys())
        EXPECT_EQ(key.ValueNames(), std::vector<std::string>{"SetsEnabled"}) << key.Path();
    ExpectDword(m_machine.hostSnmp, "SetsEnabled", 7); // a bit that is no setting is gone
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
    // Written out: a wrong number in the product's own table must not pass.
    constexpr std::array<DWORD, 16> timeouts = {5000,    10000,   15000,   20000,  30000,  60000,
                                                120000,  180000,  240000,  300000, 600000, 1200000,
                                                1800000, 2400000, 3000000, 3600000};
    SnmpSettings settings = LoadSnmpSettings();
    for (std::size_t row = 0; row < timeouts.size(); ++row) {
        settings.intervalIndex = static_cast<int>(row);
        settings.Save(IntervalChanged);
        ExpectDword(m_machine.hostSnmp, "Timeout", timeouts[row]);
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

class NoAgents : public SnmpSettingsSave, public testing::WithParamInterface<std::vector<std::string>>
{
};

TEST_P(NoAgents, GetNoIntervalWhateverTheirServiceAndSpelling)
{
    const SnmpSettings settings = LoadSnmpSettings();
    for (const support::TestKey* service : m_machine.Services()) {
        service->Clear();
        service->Subkey("an agent").Create();
        for (const std::string& name : GetParam())
            service->Subkey(name).Create();
    }
    settings.Save(IntervalChanged);
    for (const support::TestKey* service : m_machine.Services()) {
        ExpectDword(service->Subkey("an agent"), "Timeout", 5000);
        for (const std::string& name : GetParam())
            ExpectAbsent(service->Subkey(name), "Timeout");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Spellings, NoAgents,
    testing::Values(std::vector<std::string>{"Parameters", "SECURITY", "AppTrap", "Linkage", "ENUM"},
                    std::vector<std::string>{"PARAMETERS", "Security", "APPTRAP", "LINKAGE", "enum"},
                    std::vector<std::string>{"paraMeters", "security", "aPPtRAP", "linkAGE", "eNUm"}));

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

TEST_F(ExceptionTrap, WritesItsCommandUnexpandedWhenThatFails)
{
    m_machine.activeDebugger.SetString("Debugger", otherDebugger);
    const auto refuse = support::HookImport<decltype(ExpandEnvironmentStringsA)>(
        GetModuleHandleA(nullptr), "ExpandEnvironmentStringsA", [](auto, auto...) { return DWORD{0}; });
    Switch(TRUE);
    ExpectDebuggers(trapDebugger, otherDebugger);
}

// With its terminating zero the expanded command may take 256 bytes.
TEST_F(ExceptionTrap, WritesItsCommandExpandedAsLongAsThereIsRoom)
{
    for (const DWORD length : {255U, 256U}) {
        const std::string expanded(length, 'x');
        const auto expand = support::HookImport<decltype(ExpandEnvironmentStringsA)>(
            GetModuleHandleA(nullptr), "ExpandEnvironmentStringsA",
            [&](auto, LPCSTR, LPSTR text, DWORD size) {
                if (size > length)
                    std::copy_n(expanded.c_str(), length + 1, text);
                return length + 1;
            });
        m_machine.activeDebugger.SetString("Debugger", otherDebugger);
        Switch(TRUE);
        ExpectDebuggers(length == 255U ? expanded : trapDebugger, otherDebugger);
    }
}

TEST_F(ExceptionTrap, RestoresTheSystemsDebuggerWhenSwitchedOff)
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

TEST_F(ExceptionTrap, KeepsItsOwnDebuggerOfAnyLength)
{
    const std::string longDebugger = std::string(3994, 'd') + "vtndbg";
    m_machine.activeDebugger.SetString("Debugger", longDebugger);
    m_machine.parkedDebugger.SetString("Debugger", otherDebugger);
    Switch(FALSE);
    ExpectDebuggers(otherDebugger, longDebugger);
    Switch(TRUE);
    ExpectDebuggers(trapDebugger, otherDebugger);
}

TEST_F(ExceptionTrap, RestoresNoDebuggerParkedAsAnotherType)
{
    const auto switchOff = [&] {
        m_machine.activeDebugger.SetString("Debugger", trapDebugger);
        Switch(FALSE);
        ExpectDebuggers("", trapDebugger);
    };
    m_machine.parkedDebugger.SetExpandString("Debugger", otherDebugger);
    switchOff();
    m_machine.parkedDebugger.SetDword("Debugger", 0x41414141);
    switchOff();
    m_machine.parkedDebugger.SetRaw("Debugger", REG_SZ, {});
    switchOff();
}

TEST_F(ExceptionTrap, RestoresADebuggerParkedWithoutItsZero)
{
    m_machine.activeDebugger.SetString("Debugger", trapDebugger);
    m_machine.parkedDebugger.SetUnterminatedString("Debugger", otherDebugger);
    Switch(FALSE);
    ExpectDebuggers(otherDebugger, trapDebugger);
}

TEST_F(ExceptionTrap, ParksAnEmptyOrUnterminatedDebugger)
{
    m_machine.activeDebugger.SetRaw("Debugger", REG_SZ, {});
    Switch(TRUE);
    ExpectDebuggers(trapDebugger, "");
    m_machine.activeDebugger.SetUnterminatedString("Debugger", otherDebugger);
    Switch(TRUE);
    ExpectDebuggers(trapDebugger, otherDebugger);
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

// --- again

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
