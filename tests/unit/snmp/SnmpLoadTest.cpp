// What the SNMP Settings page finds in the registry, good values and bad ones.
#include "SnmpMachine.h"

#include <gtest/gtest.h>

namespace {

class SnmpSettingsLoad : public testing::Test
{
  protected:
    SnmpMachine m_machine;
};

TEST_F(SnmpSettingsLoad, HasItsDefaultsWithoutValues)
{
    const SnmpSettings settings = LoadSnmpSettings();
    EXPECT_FALSE(settings.setsEnabled || settings.remoteReboot || settings.rackTrapsDisabled);
    EXPECT_FALSE(settings.telnetDisabled || settings.exceptionTrap || settings.hasRackSupport);
    EXPECT_EQ(settings.intervalIndex, 0);
    EXPECT_EQ(settings.serverRole, "");
}

// --- flags

class SetsEnabledBits : public SnmpSettingsLoad, public testing::WithParamInterface<DWORD>
{
};

TEST_P(SetsEnabledBits, AreOneFlagEach)
{
    m_machine.hostSnmp.SetDword("SetsEnabled", GetParam());
    const SnmpSettings settings = LoadSnmpSettings();
    EXPECT_EQ(settings.setsEnabled, (GetParam() & 1) != 0);
    EXPECT_EQ(settings.remoteReboot, (GetParam() & 2) != 0);
    EXPECT_EQ(settings.rackTrapsDisabled, (GetParam() & 4) != 0);
}

INSTANTIATE_TEST_SUITE_P(Combinations, SetsEnabledBits,
                         testing::Values(0, 1, 2, 3, 4, 5, 6, 7, 0x1F, 0xFFFFFFF8));

TEST_F(SnmpSettingsLoad, ReadsTheFlagsOfTheHostAgentAlone)
{
    for (const support::TestKey& key : m_machine.SnmpKeys())
        key.SetDword("SetsEnabled", 7);
    m_machine.hostSnmp.SetDword("SetsEnabled", 0);
    EXPECT_FALSE(LoadSnmpSettings().setsEnabled);
}

TEST_F(SnmpSettingsLoad, ReadsTelnetFromItsOneBit)
{
    m_machine.hostAgent.SetDword("HostFlags", 0xFFFFFFFE);
    EXPECT_FALSE(LoadSnmpSettings().telnetDisabled);
    m_machine.hostAgent.SetDword("HostFlags", 0xFFFFFFFF);
    EXPECT_EQ(LoadSnmpSettings().telnetDisabled, TRUE);
}

TEST_F(SnmpSettingsLoad, FlagsOfAnotherTypeCountAsNone)
{
    m_machine.hostSnmp.SetBinary("SetsEnabled", {7, 0, 0, 0});
    m_machine.hostAgent.SetString("HostFlags", "1");
    const SnmpSettings settings = LoadSnmpSettings();
    EXPECT_FALSE(settings.setsEnabled || settings.remoteReboot || settings.rackTrapsDisabled);
    EXPECT_FALSE(settings.telnetDisabled);
}

TEST_F(SnmpSettingsLoad, FlagsOfAnotherSizeCountAsNone)
{
    m_machine.hostSnmp.SetRaw("SetsEnabled", REG_DWORD, {7});
    m_machine.hostAgent.SetRaw("HostFlags", REG_DWORD, {1, 0, 0, 0, 0, 0, 0, 0});
    const SnmpSettings settings = LoadSnmpSettings();
    EXPECT_FALSE(settings.setsEnabled || settings.remoteReboot || settings.rackTrapsDisabled);
    EXPECT_FALSE(settings.telnetDisabled);
}

// --- interval

class EachInterval : public SnmpSettingsLoad, public testing::WithParamInterface<int>
{
  protected:
    static DWORD Milliseconds()
    {
        return collectionIntervals[static_cast<std::size_t>(GetParam())].milliseconds;
    }

    int IndexOfStored(DWORD timeout)
    {
        m_machine.hostSnmp.SetDword("Timeout", timeout);
        return LoadSnmpSettings().intervalIndex;
    }
};

TEST_P(EachInterval, IsFoundByItsTimeout)
{
    EXPECT_EQ(IndexOfStored(Milliseconds()), GetParam());
}

TEST_P(EachInterval, StandsForAllTimeoutsUpToTheNextOne)
{
    EXPECT_EQ(IndexOfStored(Milliseconds() + 1), GetParam());
    EXPECT_EQ(IndexOfStored(Milliseconds() - 1), std::max(GetParam() - 1, 0));
}

INSTANTIATE_TEST_SUITE_P(Rows, EachInterval, testing::Range(0, static_cast<int>(collectionIntervals.size())));

TEST_F(SnmpSettingsLoad, ReadsTheIntervalOfTheHostAgentAlone)
{
    for (const support::TestKey& key : m_machine.SnmpKeys())
        key.SetDword("Timeout", 3600000);
    m_machine.hostAgent.SetDword("Timeout", 3600000);
    m_machine.hostSnmp.SetDword("Timeout", 10000);
    EXPECT_EQ(LoadSnmpSettings().intervalIndex, 1);
}

TEST_F(SnmpSettingsLoad, TakesTheNextShorterIntervalForOneInBetween)
{
    m_machine.hostSnmp.SetDword("Timeout", 45000);
    EXPECT_EQ(collectionIntervals[static_cast<std::size_t>(LoadSnmpSettings().intervalIndex)].milliseconds,
              30000);
}

TEST_F(SnmpSettingsLoad, TakesTheLongestIntervalForOneThatIsLongerStill)
{
    for (const DWORD timeout : {4000000U, 0xFFFFFFFFU}) {
        m_machine.hostSnmp.SetDword("Timeout", timeout);
        EXPECT_EQ(LoadSnmpSettings().intervalIndex, 15);
    }
}

TEST_F(SnmpSettingsLoad, TakesTheShortestIntervalForOneThatIsShorterStill)
{
    for (const DWORD timeout : {0U, 1U, 4999U}) {
        m_machine.hostSnmp.SetDword("Timeout", timeout);
        EXPECT_EQ(LoadSnmpSettings().intervalIndex, 0);
    }
}

TEST_F(SnmpSettingsLoad, TakesTheShortestIntervalWithoutOneOfItsTypeAndSize)
{
    m_machine.hostSnmp.SetDword("SetsEnabled", 7);
    m_machine.hostAgent.SetDword("HostFlags", 1);
    EXPECT_EQ(LoadSnmpSettings().intervalIndex, 0);
    m_machine.hostSnmp.SetString("Timeout", "60000");
    EXPECT_EQ(LoadSnmpSettings().intervalIndex, 0);
    for (const support::Bytes& bytes :
         {support::Bytes{}, support::Bytes{0x60, 0xEA}, support::Bytes{0x60, 0xEA, 0, 0, 0, 0, 0, 0}})
    {
        m_machine.hostSnmp.SetRaw("Timeout", REG_DWORD, bytes);
        EXPECT_EQ(LoadSnmpSettings().intervalIndex, 0) << bytes.size() << " bytes";
    }
    m_machine.hostSnmp.SetRaw("Timeout", REG_QWORD, {0x60, 0xEA, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(LoadSnmpSettings().intervalIndex, 0);
}

TEST_F(SnmpSettingsLoad, TakesTheFlagsForAnAbsentInterval)
{
    m_machine.hostSnmp.SetDword("SetsEnabled", 60000);
    EXPECT_EQ(LoadSnmpSettings().intervalIndex, 5);
    m_machine.hostAgent.SetDword("HostFlags", 10000);
    EXPECT_EQ(LoadSnmpSettings().intervalIndex, 1);
    m_machine.hostAgent.SetDword("HostFlags", 0);
    EXPECT_EQ(LoadSnmpSettings().intervalIndex, 0);
}

TEST_F(SnmpSettingsLoad, TakesTheShortestIntervalForOneThatIsNoNumberWhateverTheFlags)
{
    m_machine.hostSnmp.SetDword("SetsEnabled", 4000000);
    m_machine.hostAgent.SetDword("HostFlags", 4000000);
    const auto expectTheShortest = [](const char* stored) {
        EXPECT_EQ(LoadSnmpSettings().intervalIndex, 0) << stored;
    };
    m_machine.hostSnmp.SetString("Timeout", "60000");
    expectTheShortest("a text");
    m_machine.hostSnmp.SetBinary("Timeout", {0x60, 0xEA, 0, 0});
    expectTheShortest("four bytes");
    m_machine.hostSnmp.SetRaw("Timeout", REG_SZ, {});
    expectTheShortest("no text");
    m_machine.hostSnmp.SetRaw("Timeout", REG_DWORD, {});
    expectTheShortest("a number of no bytes");
    m_machine.hostSnmp.SetRaw("Timeout", REG_DWORD, {0x60, 0xEA});
    expectTheShortest("a number of two bytes");
}

TEST_F(SnmpSettingsLoad, TakesTheFlagsBeforeThoseThatAreNoNumberForAnAbsentInterval)
{
    m_machine.hostSnmp.SetDword("SetsEnabled", 60001);
    const auto expectTheFlagsOfSets = [](const char* stored) {
        const SnmpSettings settings = LoadSnmpSettings();
        EXPECT_EQ(settings.intervalIndex, 5) << stored;
        EXPECT_FALSE(settings.telnetDisabled) << stored;
    };
    m_machine.hostAgent.SetRaw("HostFlags", REG_DWORD, {});
    expectTheFlagsOfSets("nothing");
    m_machine.hostAgent.SetRaw("HostFlags", REG_DWORD, {1});
    expectTheFlagsOfSets("one byte");
    m_machine.hostAgent.SetRaw("HostFlags", REG_DWORD, {1, 0, 0, 0, 0, 0, 0, 0});
    expectTheFlagsOfSets("eight bytes");
    m_machine.hostAgent.SetString("HostFlags", "1");
    expectTheFlagsOfSets("a text");
}

// --- server role

TEST_F(SnmpSettingsLoad, ReadsAServerRoleOfAnyLength)
{
    for (const std::size_t length : {1U, 64U, 65U, 1000U}) {
        m_machine.product.SetString("ServerRole", std::string(length, 'r'));
        EXPECT_EQ(LoadSnmpSettings().serverRole, std::string(length, 'r'));
    }
}

TEST_F(SnmpSettingsLoad, ReadsAServerRoleWithoutItsLastZero)
{
    m_machine.product.SetUnterminatedString("ServerRole", "Mail");
    EXPECT_EQ(LoadSnmpSettings().serverRole, "Mail");
}

TEST_F(SnmpSettingsLoad, HasNoServerRoleFromAValueOfAnotherType)
{
    m_machine.product.SetExpandString("ServerRole", "%windir%");
    EXPECT_EQ(LoadSnmpSettings().serverRole, "");
    m_machine.product.SetDword("ServerRole", 0x41414141);
    EXPECT_EQ(LoadSnmpSettings().serverRole, "");
    m_machine.product.SetRaw("ServerRole", REG_SZ, {});
    EXPECT_EQ(LoadSnmpSettings().serverRole, "");
}

// --- rack support

TEST_F(SnmpSettingsLoad, KnowsRackSupportByTheAgentsKeyInAnyLetterCase)
{
    for (const char* name : {"VTNRACK", "vtnRack"}) {
        m_machine.server.Subkey(name).Create();
        EXPECT_TRUE(LoadSnmpSettings().hasRackSupport);
        m_machine.server.Subkey(name).Delete();
    }
    m_machine.server.Subkey("VTNRACK2").Create();
    m_machine.host.Subkey("VTNRACK").Create();
    EXPECT_FALSE(LoadSnmpSettings().hasRackSupport);
}

TEST_F(SnmpSettingsLoad, HasNoRackSupportWithoutServerAgents)
{
    m_machine.server.Clear();
    EXPECT_FALSE(LoadSnmpSettings().hasRackSupport);
    m_machine.server.Delete();
    EXPECT_FALSE(LoadSnmpSettings().hasRackSupport);
}

// --- exception trap

TEST_F(SnmpSettingsLoad, KnowsTheTrapsDebuggerAnywhereInTheCommandLineInAnyLetterCase)
{
    for (const char* command : {"vtndbg -p %ld -e %ld -g", "\"C:\\Agents\\VTNDBG.EXE\" -p %ld", "x VtnDbg"}) {
        m_machine.activeDebugger.SetString("Debugger", command);
        EXPECT_EQ(LoadSnmpSettings().exceptionTrap, TRUE) << command;
    }
    for (const char* command : {"", "vtndb", "vtn dbg", "drwtsn32 -p %ld -e %ld -g"}) {
        m_machine.activeDebugger.SetString("Debugger", command);
        EXPECT_EQ(LoadSnmpSettings().exceptionTrap, FALSE) << command;
    }
}

TEST_F(SnmpSettingsLoad, HasNoTrapFromADebuggerOfAnotherType)
{
    m_machine.activeDebugger.SetExpandString("Debugger", "vtndbg -p %ld");
    EXPECT_FALSE(LoadSnmpSettings().exceptionTrap);
    m_machine.activeDebugger.SetBinary("Debugger", {'v', 't', 'n', 'd', 'b', 'g'});
    EXPECT_FALSE(LoadSnmpSettings().exceptionTrap);
}

TEST_F(SnmpSettingsLoad, ReadsADebuggerOfNoBytesAndOneWithoutItsLastZero)
{
    m_machine.activeDebugger.SetRaw("Debugger", REG_SZ, {});
    EXPECT_FALSE(LoadSnmpSettings().exceptionTrap);
    m_machine.activeDebugger.SetUnterminatedString("Debugger", "vtndbg");
    EXPECT_EQ(LoadSnmpSettings().exceptionTrap, TRUE);
    m_machine.activeDebugger.SetUnterminatedString("Debugger", "vtndb");
    EXPECT_FALSE(LoadSnmpSettings().exceptionTrap);
}

TEST_F(SnmpSettingsLoad, KnowsTheTrapsDebuggerAtTheEndOfALongCommandLine)
{
    m_machine.activeDebugger.SetString("Debugger", std::string(3994, 'd') + "VtnDbg");
    EXPECT_EQ(LoadSnmpSettings().exceptionTrap, TRUE);
}

// --- keys that are not there

TEST_F(SnmpSettingsLoad, IsRefusedWithoutAKeyThatItReads)
{
    for (const support::TestKey& key :
         {support::TestKey(m_machine.product.Path()), m_machine.hostSnmp, m_machine.hostAgent,
          support::TestKey(m_machine.activeDebugger.Path())})
    {
        key.Delete();
        EXPECT_THROW(LoadSnmpSettings(), ConfigurationError) << key.Path();
        key.Create();
    }
}

TEST_F(SnmpSettingsLoad, NeedsTheParkedDebuggersKeyOnlyWithTheTrapOn)
{
    m_machine.parkedDebugger.Delete();
    EXPECT_NO_THROW(LoadSnmpSettings());
    m_machine.activeDebugger.SetString("Debugger", "vtndbg");
    EXPECT_THROW(LoadSnmpSettings(), ConfigurationError);
}

TEST_F(SnmpSettingsLoad, IsRefusedWhenAKeyThatItReadsIsDenied)
{
    m_machine.activeDebugger.SetString("Debugger", "vtndbg");
    for (const support::TestKey& key :
         {support::TestKey(m_machine.product.Path()), m_machine.hostSnmp, m_machine.hostAgent,
          support::TestKey(m_machine.activeDebugger.Path()), m_machine.parkedDebugger})
        EXPECT_TRUE(IsRefusedWhileDenied(key, [] { (void)LoadSnmpSettings(); })) << key.Path();
}

TEST_F(SnmpSettingsLoad, TakesDeniedServerAgentsForNoRackSupport)
{
    m_machine.server.Subkey("VTNRACK").Create();
    SnmpSettings settings;
    EXPECT_FALSE(IsRefusedWhileDenied(m_machine.server, [&] { settings.Load(); }));
    EXPECT_FALSE(settings.hasRackSupport);
}

} // namespace
