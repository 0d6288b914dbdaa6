// Where login scripts lie, by version of Windows.
#include "desktop/core/LoginScriptLocation.h"

#include "support/CodePage932.h"
#include "support/FailNth.h"
#include "support/ServiceScript.h"
#include "support/ShareScript.h"
#include "support/TestRegistry.h"
#include "support/ThisProgram.h"

#include <gtest/gtest.h>

namespace {

using States = std::vector<DWORD>;

using support::thisProgram;

// The NETLOGON share of a domain controller that runs this version of Windows.
class ScriptDirectory : public testing::Test
{
  protected:
    support::ShareScript m_shares{thisProgram};
};

TEST_F(ScriptDirectory, IsThatOfTheNetLogonShare)
{
    m_shares.Add("NETLOGON", {.path = "C:\\WINNT\\SYSVOL\\sysvol\\norvale\\scripts"});
    EXPECT_EQ(FindScriptDirectory(), "C:\\WINNT\\SYSVOL\\sysvol\\norvale\\scripts");
    EXPECT_EQ(m_shares.Calls(), std::vector<std::string>{"NetShareGetInfo NETLOGON"});
    EXPECT_EQ(m_shares.BuffersLeft(), 0);
}

TEST_F(ScriptDirectory, IsEmptyWithoutTheShare)
{
    EXPECT_EQ(FindScriptDirectory(), "");
}

TEST_F(ScriptDirectory, IsEmptyWhenTheServerRefuses)
{
    m_shares.Add("NETLOGON", {.path = "C:\\scripts"});
    m_shares.Fail("NetShareGetInfo", ERROR_ACCESS_DENIED);
    EXPECT_EQ(FindScriptDirectory(), "");
}

TEST_F(ScriptDirectory, IsEmptyWhenItDoesNotFitAPath)
{
    m_shares.Add("NETLOGON", {.path = "C:\\" + std::string(256, 'a')});
    EXPECT_EQ(FindScriptDirectory(), "C:\\" + std::string(256, 'a'));
    m_shares.Add("NETLOGON", {.path = "C:\\" + std::string(257, 'a')});
    EXPECT_EQ(FindScriptDirectory(), "");
    EXPECT_EQ(m_shares.BuffersLeft(), 0);
}

TEST_F(ScriptDirectory, IsThatOfTheShareWithoutAVersion)
{
    m_shares.Add("NETLOGON", {.path = "C:\\scripts"});
    const support::FailNth<"GetVersionExA", decltype(GetVersionExA)> fail(thisProgram, 1, FALSE);
    EXPECT_EQ(FindScriptDirectory(), "C:\\scripts");
}

template <DWORD major>
BOOL WINAPI AnswerVersion(LPOSVERSIONINFOA version)
{
    version->dwMajorVersion = major;
    return TRUE;
}

TEST_F(ScriptDirectory, IsThatOfTheShareFromWindows2000On)
{
    m_shares.Add("NETLOGON", {.path = "C:\\scripts"});
    const support::ReplacedImport version(thisProgram, "GetVersionExA", &AnswerVersion<5>);
    EXPECT_EQ(FindScriptDirectory(), "C:\\scripts");
}

LSTATUS WINAPI RefuseKey(HKEY /*root*/, LPCSTR /*subkey*/, PHKEY /*key*/)
{
    return ERROR_ACCESS_DENIED;
}

// A domain controller of the time before Windows 2000, with both keys and no values.
class OldScriptDirectory : public ScriptDirectory
{
  protected:
    OldScriptDirectory()
    {
        m_shares.Add("NETLOGON", {.path = "C:\\not asked for"});
        m_replicator.Clear();
        m_netLogon.Clear();
    }

    void StartReplicator() { SetReplicator(SERVICE_RUNNING); }
    void SetReplicator(DWORD state)
    {
        m_services.Add("Replicator", {.states = {support::ServiceState(state)}});
    }

    support::ReplacedImport m_version{thisProgram, "GetVersionExA", &AnswerVersion<4>};
    support::ServiceScript m_services{thisProgram};
    support::SavedKey m_replicator{"System\\CurrentControlSet\\Services\\Replicator\\Parameters"};
    support::SavedKey m_netLogon{"System\\CurrentControlSet\\Services\\NetLogon\\Parameters"};
};

TEST_F(OldScriptDirectory, IsThatOfTheNetLogonService)
{
    m_netLogon.SetString("Scripts", "C:\\WINNT\\system32\\Repl\\Import\\Scripts");
    EXPECT_EQ(FindScriptDirectory(), "C:\\WINNT\\system32\\Repl\\Import\\Scripts");
    EXPECT_TRUE(m_shares.Calls().empty());
}

TEST_F(OldScriptDirectory, MayNameEnvironmentVariables)
{
    SetEnvironmentVariableA("VTN_TEST_ROOT", "C:\\WINNT");
    m_netLogon.SetExpandString("Scripts", "%VTN_TEST_ROOT%\\Scripts");
    EXPECT_EQ(FindScriptDirectory(), "C:\\WINNT\\Scripts");
    SetEnvironmentVariableA("VTN_TEST_ROOT", nullptr);
}

TEST_F(OldScriptDirectory, KeepsPercentSignsOfAPlainText)
{
    m_netLogon.SetString("Scripts", "%SystemRoot%\\Scripts");
    EXPECT_EQ(FindScriptDirectory(), "%SystemRoot%\\Scripts");
}

TEST_F(OldScriptDirectory, IsEmptyWithoutAValue)
{
    EXPECT_EQ(FindScriptDirectory(), "");
    m_netLogon.SetDword("Scripts", 7);
    EXPECT_EQ(FindScriptDirectory(), "");
}

TEST_F(OldScriptDirectory, IsBelowTheExportPathWhileTheReplicatorRuns)
{
    StartReplicator();
    m_netLogon.SetString("Scripts", "C:\\not asked for");
    m_replicator.SetString("ExportPath", "C:\\Repl\\Export");
    EXPECT_EQ(FindScriptDirectory(), "C:\\Repl\\Export\\Scripts");
}

TEST_F(OldScriptDirectory, BelowTheExportPathTakesOneBackslash)
{
    StartReplicator();
    m_replicator.SetString("ExportPath", "C:\\");
    EXPECT_EQ(FindScriptDirectory(), "C:\\Scripts");
}

TEST_F(OldScriptDirectory, BelowTheExportPathMayNameEnvironmentVariables)
{
    StartReplicator();
    SetEnvironmentVariableA("VTN_TEST_ROOT", "C:\\Repl\\");
    m_replicator.SetExpandString("ExportPath", "%VTN_TEST_ROOT%");
    EXPECT_EQ(FindScriptDirectory(), "C:\\Repl\\Scripts");
    SetEnvironmentVariableA("VTN_TEST_ROOT", nullptr);
}

TEST_F(OldScriptDirectory, IsEmptyWithoutAnExportPath)
{
    StartReplicator();
    EXPECT_EQ(FindScriptDirectory(), "");
}

TEST_F(OldScriptDirectory, AStoppedOrStoppingReplicatorDoesNotCount)
{
    m_netLogon.SetString("Scripts", "C:\\Scripts");
    m_replicator.SetString("ExportPath", "C:\\Export");
    for (const DWORD state : States{SERVICE_STOPPED, SERVICE_STOP_PENDING}) {
        SetReplicator(state);
        EXPECT_EQ(FindScriptDirectory(), "C:\\Scripts") << state;
    }
    for (const DWORD state : States{SERVICE_START_PENDING, SERVICE_RUNNING, SERVICE_CONTINUE_PENDING,
                                    SERVICE_PAUSE_PENDING, SERVICE_PAUSED})
    {
        SetReplicator(state);
        EXPECT_EQ(FindScriptDirectory(), "C:\\Export\\Scripts") << state;
    }
}

TEST_F(OldScriptDirectory, ARefusingManagerCountsAsARunningReplicator)
{
    m_services.Fail("OpenSCManagerA", "", ERROR_ACCESS_DENIED);
    m_replicator.SetString("ExportPath", "C:\\Export");
    EXPECT_EQ(FindScriptDirectory(), "C:\\Export\\Scripts");
}

TEST_F(OldScriptDirectory, IsEmptyWithoutTheNetLogonKey)
{
    m_netLogon.Delete();
    EXPECT_EQ(FindScriptDirectory(), "");
}

TEST_F(OldScriptDirectory, IsEmptyWithoutTheKeyOfTheReplicator)
{
    StartReplicator();
    m_replicator.Delete();
    EXPECT_EQ(FindScriptDirectory(), "");
}

TEST_F(OldScriptDirectory, IsEmptyWhenEitherKeyIsRefused)
{
    m_netLogon.SetString("Scripts", "C:\\Scripts");
    m_replicator.SetString("ExportPath", "C:\\Export");
    const support::ReplacedImport refuse(thisProgram, "RegOpenKeyA", &RefuseKey);
    EXPECT_EQ(FindScriptDirectory(), "");
    StartReplicator();
    EXPECT_EQ(FindScriptDirectory(), "");
}

TEST_F(OldScriptDirectory, IsReadWithVariablesAfterARefusedReadWithout)
{
    m_netLogon.SetExpandString("Scripts", "C:\\Scripts");
    const support::FailNth<"RegOpenKeyA", decltype(RegOpenKeyA)> refuse(thisProgram, 1, ERROR_ACCESS_DENIED);
    EXPECT_EQ(FindScriptDirectory(), "C:\\Scripts");
}

TEST(DirectoryOf, EndsBeforeTheLastBackslash)
{
    EXPECT_EQ(DirectoryOf("C:\\scripts\\LOGIN.BAT"), "C:\\scripts");
    EXPECT_EQ(DirectoryOf("\\\\SRV1\\netlogon\\LOGIN.BAT"), "\\\\SRV1\\netlogon");
    EXPECT_EQ(DirectoryOf("C:\\LOGIN.BAT"), "C:");
    EXPECT_EQ(DirectoryOf("C:\\scripts\\"), "C:\\scripts");
    EXPECT_EQ(DirectoryOf("\\LOGIN.BAT"), "");
    EXPECT_EQ(DirectoryOf("LOGIN.BAT"), "");
    EXPECT_EQ(DirectoryOf(""), "");
}

TEST(DirectoryOf, TakesNoSecondByteForABackslash)
{
    const support::CodePage932 japanese(thisProgram);
    EXPECT_EQ(DirectoryOf("C:\\\x83\x5C\\\x83\x5C.BAT"), "C:\\\x83\x5C");
    EXPECT_EQ(DirectoryOf("\x83\x5C"), "");
}

} // namespace
