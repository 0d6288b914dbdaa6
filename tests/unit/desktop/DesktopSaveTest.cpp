// The save of desktop management on a machine whose shares alone are made up: every step, again and undone.
#include "DesktopSaveTest.h"

#include "support/FailNth.h"
#include "support/ThisProgram.h"

#include <array>

namespace {

using support::ExpectAbsent;
using support::ExpectMultiString;
using support::ExpectString;
using support::FileExists;
using support::ReadBytes;
using support::WriteBytes;

using support::thisProgram;

TEST_F(DesktopManagementSave, NothingChangedWritesNothing)
{
    const DomainState before = State();
    Settings(true).Save(0);
    Settings(false).Save(0);
    EXPECT_EQ(State(), before);
    EXPECT_TRUE(m_shares.Calls().empty());
}

// --- switching on

TEST_F(DesktopManagementSave, SwitchingOnEditsAndRecordsTheScript)
{
    SwitchOn();
    EXPECT_EQ(ReadBytes(m_script), Block() + "@echo off\r\n");
    ExpectString(m_agent, clientIniValue, m_script);
}

TEST_F(DesktopManagementSave, SwitchingOnCopiesTheClientBesideTheScript)
{
    SwitchOn();
    EXPECT_EQ(ReadBytes(m_program), "the client");
}

TEST_F(DesktopManagementSave, SwitchingOnReplacesAnOldReadOnlyClient)
{
    WriteBytes(m_program, "an old client");
    SetFileAttributesA(m_program.c_str(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
    SetFileAttributesA(m_installedProgram.c_str(), FILE_ATTRIBUTE_READONLY);
    SwitchOn();
    EXPECT_EQ(ReadBytes(m_program), "the client");
    EXPECT_EQ(GetFileAttributesA(m_program.c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
}

TEST_F(DesktopManagementSave, SwitchingOnSharesTheReportDirectory)
{
    SwitchOn();
    EXPECT_TRUE(FileExists(m_reports));
    const support::SharedDirectory expected{.path = m_reports,
                                            .remark = "CIM Client Share",
                                            .type = 0,
                                            .permissions = 127,
                                            .maxUses = 0xFFFFFFFF,
                                            .currentUses = 0,
                                            .password = ""};
    EXPECT_EQ(m_shares.Find("VTNDATA"), expected);
}

TEST_F(DesktopManagementSave, SwitchingOnKeepsAShareThatIsThere)
{
    m_shares.Add("VTNDATA", {.path = "D:\\elsewhere"});
    SwitchOn();
    EXPECT_EQ(m_shares.Find("VTNDATA")->path, "D:\\elsewhere");
    EXPECT_TRUE(FileExists(m_profile));
}

TEST_F(DesktopManagementSave, SwitchingOnWritesWhereClientsReport)
{
    WriteBytes(m_profile, "[Options]\r\nDelay=5\r\n[Other]\r\nKey=1\r\n");
    SwitchOn();
    std::array<char, 100> destination{};
    GetPrivateProfileStringA("Options", "DestinationDirectory", "", destination.data(), destination.size(),
                             m_profile.c_str());
    EXPECT_EQ(destination.data(), "\\\\" + ComputerName() + "\\VTNDATA");
    EXPECT_EQ(GetPrivateProfileIntA("Options", "Delay", 0, m_profile.c_str()), 5U);
    EXPECT_EQ(GetPrivateProfileIntA("Other", "Key", 0, m_profile.c_str()), 1U);
}

TEST_F(DesktopManagementSave, SwitchingOnOpensTheShareToAnonymousClients)
{
    SwitchOn();
    ExpectMultiString(m_server, "NullSessionShares", {"COMCFG", "DFS$", "VTNDATA"});
}

TEST_F(DesktopManagementSave, SwitchingOnMakesTheListOfNullSessionShares)
{
    m_server.DeleteValue("NullSessionShares");
    SwitchOn();
    ExpectMultiString(m_server, "NullSessionShares", {"VTNDATA"});
}

TEST_F(DesktopManagementSave, SwitchingOnReplacesAListOfAnotherType)
{
    m_server.SetString("NullSessionShares", "COMCFG");
    SwitchOn();
    ExpectMultiString(m_server, "NullSessionShares", {"VTNDATA"});
}

TEST_F(DesktopManagementSave, SwitchingOnComparesSharesByLetterCase)
{
    m_server.SetMultiString("NullSessionShares", {"vtndata"});
    SwitchOn();
    ExpectMultiString(m_server, "NullSessionShares", {"vtndata", "VTNDATA"});
}

TEST_F(DesktopManagementSave, SwitchingOnSixTimesIsSwitchingOnOnce)
{
    SwitchOn();
    const DomainState once = State();
    for (int i = 0; i < 5; ++i)
        SwitchOn();
    EXPECT_EQ(State(), once);
}

// --- switching off

TEST_F(DesktopManagementSave, SwitchingOffUndoesEveryStep)
{
    DomainState before = State();
    SwitchOn();
    SwitchOff();
    before.clientProfile = "[Options]\r\n"; // the profile itself may hold settings of the client's own
    EXPECT_EQ(State(), before);
}

TEST_F(DesktopManagementSave, SwitchingOffKeepsTheClientsOwnSettings)
{
    WriteBytes(m_profile, "[Options]\r\nDelay=5\r\n");
    SwitchOn();
    SwitchOff();
    EXPECT_EQ(ReadBytes(m_profile), "[Options]\r\nDelay=5\r\n");
}

TEST_F(DesktopManagementSave, SwitchingOffSixTimesIsSwitchingOffOnce)
{
    SwitchOn();
    SwitchOff();
    const DomainState once = State();
    for (int i = 0; i < 5; ++i)
        SwitchOff();
    EXPECT_EQ(State(), once);
}

TEST_F(DesktopManagementSave, SwitchingOffWhatIsGoneAlreadySucceeds)
{
    SwitchOff();
    EXPECT_FALSE(FileExists(m_program));
    EXPECT_FALSE(m_shares.Find("VTNDATA"));
    ExpectAbsent(m_agent, clientIniValue);
}

TEST_F(DesktopManagementSave, SwitchingOffDeletesAReadOnlyClient)
{
    SwitchOn();
    SetFileAttributesA(m_program.c_str(), FILE_ATTRIBUTE_READONLY);
    SwitchOff();
    EXPECT_FALSE(FileExists(m_program));
}

TEST_F(DesktopManagementSave, SwitchingOffKeepsAnEntryInSmallLetters)
{
    m_server.SetMultiString("NullSessionShares", {"vtndata", "COMCFG"});
    SwitchOff();
    ExpectMultiString(m_server, "NullSessionShares", {"vtndata", "COMCFG"});
}

TEST_F(DesktopManagementSave, SwitchingOffTakesTheFirstOfTwoEqualEntries)
{
    m_server.SetMultiString("NullSessionShares", {"VTNDATA", "COMCFG", "VTNDATA"});
    SwitchOff();
    ExpectMultiString(m_server, "NullSessionShares", {"COMCFG", "VTNDATA"});
}

TEST_F(DesktopManagementSave, SwitchingOffWithoutAListMakesAnEmptyOne)
{
    m_server.DeleteValue("NullSessionShares");
    SwitchOff();
    EXPECT_EQ(m_server.Value("NullSessionShares"), (support::StoredValue{REG_MULTI_SZ, {}}));
}

TEST_F(DesktopManagementSave, SwitchingOffPassesOverAnUnwritableProfile)
{
    const support::FailNth<"WritePrivateProfileStringA", decltype(WritePrivateProfileStringA)> fail(
        thisProgram, 1, FALSE, ERROR_ACCESS_DENIED);
    SwitchOff();
    ExpectMultiString(m_server, "NullSessionShares", {"COMCFG", "DFS$"});
}

TEST_F(DesktopManagementSave, SwitchingOffPassesOverAnUndeletableRecord)
{
    const support::FailNth<"RegDeleteValueA", decltype(RegDeleteValueA)> fail(thisProgram, 1,
                                                                              ERROR_ACCESS_DENIED);
    SwitchOff();
}

// --- one bit of the changes alone

TEST_F(DesktopManagementSave, AScriptChangeAloneLeavesFilesAndShareAlone)
{
    DomainState expected = State();
    Settings(true).Save(ScriptChanged);
    EXPECT_TRUE(m_shares.Calls().empty());
    expected.script = Block() + "@echo off\r\n";
    expected.record = State().record;
    EXPECT_EQ(State(), expected);
    ExpectString(m_agent, clientIniValue, m_script);
}

TEST_F(DesktopManagementSave, ASwitchAloneLeavesScriptAndRecordAlone)
{
    Settings(true).Save(SwitchChanged);
    EXPECT_EQ(ReadBytes(m_script), "@echo off\r\n");
    ExpectAbsent(m_agent, clientIniValue);
    EXPECT_TRUE(FileExists(m_program));
    EXPECT_TRUE(m_shares.Find("VTNDATA"));
}

TEST_F(DesktopManagementSave, AnotherKindOfScriptIsRecordedButNeverTouched)
{
    DesktopManagement settings = Settings(true);
    settings.scriptPath = m_scripts.File("LOGIN.CMD");
    settings.Save(everything);
    EXPECT_FALSE(FileExists(settings.scriptPath));
    ExpectString(m_agent, clientIniValue, settings.scriptPath);
    EXPECT_EQ(ReadBytes(m_script), "@echo off\r\n");
    WriteBytes(settings.scriptPath, Block());
    settings.isOn = false;
    settings.Save(everything);
    EXPECT_EQ(ReadBytes(settings.scriptPath), Block());
    ExpectAbsent(m_agent, clientIniValue);
}

TEST_F(DesktopManagementSave, NamingAnotherScriptLeavesTheFormerOneItsBlock)
{
    SwitchOn();
    DesktopManagement settings = Settings(true);
    settings.scriptPath = m_scripts.File("other.bat");
    settings.Save(ScriptChanged);
    EXPECT_EQ(ReadBytes(settings.scriptPath), Block());
    EXPECT_EQ(ReadBytes(m_script), Block() + "@echo off\r\n");
    ExpectString(m_agent, clientIniValue, settings.scriptPath);
}

TEST_F(DesktopManagementSave, TheClientFilesGoWhereTheScriptWasFound)
{
    const support::TestDirectory elsewhere;
    DesktopManagement settings = Settings(true);
    settings.scriptPath = elsewhere.File("other.bat");
    settings.Save(everything);
    EXPECT_EQ(ReadBytes(elsewhere.File("other.bat")), Block());
    EXPECT_FALSE(FileExists(elsewhere.File("VTNCLNT.EXE")));
    EXPECT_TRUE(FileExists(m_program));
    EXPECT_TRUE(FileExists(m_profile));
}

} // namespace
