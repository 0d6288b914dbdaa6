// What desktop management finds when the page is opened.
#include "TestDomain.h"

#include "imports/ImportHook.h"
#include "sysaccess/core/ConfigurationError.h"

namespace {

class DesktopManagementLoad : public TestDomain
{
  protected:
    static DesktopManagement Load()
    {
        DesktopManagement settings;
        settings.Load();
        return settings;
    }
};

using DesktopManagementRecord = TestDomain;

TEST_F(DesktopManagementLoad, TakesTheRecordedScriptAndItsDirectory)
{
    m_agent.SetString(clientIniValue, "\\\\SRV1\\netlogon\\sub\\start.bat");
    EXPECT_EQ(Load().scriptPath, "\\\\SRV1\\netlogon\\sub\\start.bat");
    EXPECT_EQ(Load().scriptDirectory, "\\\\SRV1\\netlogon\\sub");
    EXPECT_TRUE(m_shares.Calls().empty());
}

TEST_F(DesktopManagementLoad, WithoutARecordOffersLoginBatInNetLogon)
{
    m_shares.Add("NETLOGON", {.path = "C:\\scripts"});
    EXPECT_EQ(Load().scriptPath, "C:\\scripts\\LOGIN.BAT");
    EXPECT_EQ(Load().scriptDirectory, "C:\\scripts");
}

TEST_F(DesktopManagementLoad, IgnoresAnEmptyRecordOrAnotherType)
{
    m_shares.Add("NETLOGON", {.path = "C:\\scripts"});
    m_agent.SetString(clientIniValue, "");
    EXPECT_EQ(Load().scriptPath, "C:\\scripts\\LOGIN.BAT");
    m_agent.SetExpandString(clientIniValue, "C:\\other\\LOGIN.BAT");
    EXPECT_EQ(Load().scriptPath, "C:\\scripts\\LOGIN.BAT");
}

TEST_F(DesktopManagementLoad, WithoutADirectoryUsesTheCurrentDrive)
{
    EXPECT_EQ(Load().scriptPath, "\\LOGIN.BAT");
    EXPECT_EQ(Load().scriptDirectory, "");
}

TEST_F(DesktopManagementLoad, AMissingAgentKeyIsRefused)
{
    m_agent.Delete();
    EXPECT_THROW(Load(), ConfigurationError);
}

TEST_F(DesktopManagementRecord, IsARegSzEvenWhenItIsEmpty)
{
    EXPECT_FALSE(DesktopManagement::IsRecorded());
    m_agent.SetString(clientIniValue, "");
    EXPECT_TRUE(DesktopManagement::IsRecorded());
    m_agent.SetString(clientIniValue, m_script);
    EXPECT_TRUE(DesktopManagement::IsRecorded());
}

TEST_F(DesktopManagementRecord, IsNothingOfAnotherType)
{
    m_agent.SetExpandString(clientIniValue, m_script);
    EXPECT_FALSE(DesktopManagement::IsRecorded());
}

TEST_F(DesktopManagementRecord, CountsAsThereWhenItsReadIsRefused)
{
    m_agent.Delete();
    EXPECT_TRUE(DesktopManagement::IsRecorded());
}

} // namespace
