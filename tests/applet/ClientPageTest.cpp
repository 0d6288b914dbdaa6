// The Desktop Mgmt page through its window: what it shows, and how the applet was opened.
#include "applet/ClientPageTest.h"
#include "support/ServiceScript.h"

#include <htmlhelp.h>

namespace {

using support::DialogDriver;
using support::ExpectAbsent;
using support::ExpectString;
using support::FileExists;
using support::ReadBytes;
using support::WriteBytes;

// --- what it shows

TEST_F(ClientPage, ShowsTheDefaultScriptSwitchedOff)
{
    const DialogDriver page = Open();
    EXPECT_FALSE(page.IsChecked(IDC_DESKTOP_ENABLE));
    EXPECT_EQ(page.Text(IDC_DESKTOP_SCRIPT), m_script);
    EXPECT_FALSE(page.IsEnabled(IDC_DESKTOP_SCRIPT));
    EXPECT_FALSE(page.IsEnabled(IDC_DESKTOP_BROWSE));
    m_host.PressCancel();
}

TEST_F(ClientPage, ShowsTheRecordedScriptSwitchedOn)
{
    m_script = m_scripts.File("my log on \x93\xFA\x96\x7B.bat");
    const DialogDriver page = OpenSwitchedOn();
    EXPECT_TRUE(page.IsChecked(IDC_DESKTOP_ENABLE));
    EXPECT_EQ(page.Text(IDC_DESKTOP_SCRIPT), m_script);
    EXPECT_TRUE(page.IsEnabled(IDC_DESKTOP_SCRIPT));
    EXPECT_TRUE(page.IsEnabled(IDC_DESKTOP_BROWSE));
    m_host.PressCancel();
}

TEST_F(ClientPage, SelectsTheWholePath)
{
    const DialogDriver page = OpenSwitchedOn();
    ExpectWholePathSelected(page);
    m_host.PressCancel();
}

TEST_F(ClientPage, ShowsAnEmptyRecordAsSwitchedOn)
{
    m_machine.hostAgent.SetString("ClientIni", "");
    const DialogDriver page = Open();
    EXPECT_TRUE(page.IsChecked(IDC_DESKTOP_ENABLE));
    EXPECT_EQ(page.Text(IDC_DESKTOP_SCRIPT), m_script);
    m_host.PressCancel();
}

TEST_F(ClientPage, ShowsARecordThatMayNotBeReadAsSwitchedOn)
{
    m_host.Open();
    m_machine.hostAgent.Delete();
    EXPECT_TRUE(m_host.Page("Desktop Mgmt").IsChecked(IDC_DESKTOP_ENABLE));
    m_host.PressCancel();
}

TEST_F(ClientPage, IsHiddenOnOtherServers)
{
    m_machine.productOptions.SetString("ProductType", "ServerNT");
    m_host.Open();
    for (const std::string& tab : m_host.Tabs())
        EXPECT_NE(tab, "Desktop Mgmt");
    m_host.PressCancel();
}

TEST_F(ClientPage, AMissingAgentKeyIsToldInPlaceOfTheSheet)
{
    m_machine.hostAgent.Delete();
    m_boxes.Answer(IDOK);
    m_host.DoubleClick();
    EXPECT_EQ(m_host.WaitForEnd(), 0);
    support::ExpectBoxes(
        m_boxes, {{nullptr, "You do not have access to change the configuration of the Management Agents.",
                   "Management Agents Error", MB_ICONHAND}});
}

TEST_F(ClientPage, ShowsItsHelpTopicForTheButtonAndF1)
{
    const support::HelpRecorder help(m_host.Module());
    Open();
    m_host.Sheet().Click(IDHELP);
    m_host.PressKey(VK_F1);
    ASSERT_EQ(help.Requests().size(), 2U);
    for (const support::HelpRequest& request : help.Requests()) {
        EXPECT_EQ(request.topic, "html\\vtnm2zvy.htm");
        EXPECT_EQ(request.command, UINT{HH_DISPLAY_TOPIC});
        EXPECT_EQ(request.owner, nullptr);
    }
    m_host.PressCancel();
}

TEST_F(ClientPage, ShowsNoHelpWhileThePathIsRefused)
{
    const support::HelpRecorder help(m_host.Module());
    OpenSwitchedOn().SetText(IDC_DESKTOP_SCRIPT, "LOGIN.txt");
    m_boxes.Answer(IDOK);
    m_host.Sheet().Click(IDHELP);
    support::ExpectBoxes(m_boxes, {nameRefusal});
    EXPECT_TRUE(help.Requests().empty());
    m_host.PressCancel();
}

// --- opened to switch desktop management on

class ClientStart : public ClientPage
{
  protected:
    ClientStart() { m_host.SetCommandLine("control.exe vtnmgmt.cpl /client /SETUP"); }
};

TEST_F(ClientStart, ShowsThePageSwitchedOnAndSaysNothing)
{
    for (const char* product : {"LanmanNT", "ServerNT"}) {
        m_machine.productOptions.SetString("ProductType", product);
        const DialogDriver page = Open();
        EXPECT_TRUE(page.IsChecked(IDC_DESKTOP_ENABLE)) << product;
        EXPECT_TRUE(page.IsEnabled(IDC_DESKTOP_SCRIPT)) << product;
        EXPECT_TRUE(page.IsEnabled(IDC_DESKTOP_BROWSE)) << product;
        EXPECT_EQ(page.Text(IDC_DESKTOP_SCRIPT), m_script) << product;
        ExpectWholePathSelected(page);
        m_host.PressCancel();
    }
    EXPECT_TRUE(m_boxes.Shown().empty());
}

TEST_F(ClientStart, OkSharesAndCopiesButLeavesScriptAndRecordAlone)
{
    Open();
    m_host.PressOk();
    EXPECT_TRUE(m_shares.Find("VTNDATA"));
    EXPECT_TRUE(FileExists(m_scripts.File("VTNCLNT.EXE")));
    EXPECT_FALSE(FileExists(m_script));
    ExpectAbsent(m_machine.hostAgent, "ClientIni");
}

TEST_F(ClientStart, OkAfterTypingSavesTheScriptToo)
{
    Open().Type(IDC_DESKTOP_SCRIPT, m_script); // in place of the selected text
    m_host.PressOk();
    ExpectString(m_machine.hostAgent, "ClientIni", m_script);
    EXPECT_TRUE(FileExists(m_script));
    EXPECT_TRUE(m_shares.Find("VTNDATA"));
}

TEST_F(ClientStart, SwitchingOffAgainLeavesFilesAndShareAlone)
{
    WriteBytes(m_scripts.File("VTNCLNT.EXE"), "somebody's");
    Open().Uncheck(IDC_DESKTOP_ENABLE);
    m_host.PressOk();
    EXPECT_EQ(ReadBytes(m_scripts.File("VTNCLNT.EXE")), "somebody's");
    EXPECT_FALSE(FileExists(m_script));
    ExpectAbsent(m_machine.hostAgent, "ClientIni");
}

TEST_F(ClientStart, APageThatIsNeverTurnedToChangesNothing)
{
    m_host.Open();
    m_host.PressOk();
    EXPECT_FALSE(m_shares.Find("VTNDATA"));
    EXPECT_FALSE(FileExists(m_scripts.File("VTNCLNT.EXE")));
}

TEST_F(ClientStart, ChangesNothingWhereDesktopManagementIsOn)
{
    OpenSwitchedOn();
    m_host.PressOk();
    EXPECT_FALSE(m_shares.Find("VTNDATA"));
}

// --- restart and reboot

const support::ShownBox restartOffer{nullptr, restartQuestion, "Norvale Management Agents",
                                     MB_YESNO | MB_ICONINFORMATION};
const support::ShownBox rebootNotice{
    nullptr,
    "The new configuration has been saved.\n\nThe System must be rebooted before changes can take effect.",
    "Norvale Management Agents", MB_TASKMODAL | MB_ICONHAND};

// The page of a domain controller whose host agent runs, outside of set-up.
class ClientReboot : public ClientPage
{
  protected:
    ClientReboot()
    {
        m_host.SetCommandLine("control.exe vtnmgmt.cpl");
        m_services.Add("VtMgHost", {.states = {support::ServiceState(SERVICE_RUNNING)}});
    }

    support::ServiceScript m_services{m_host.Module()};
};

TEST_F(ClientReboot, IsAskedForAfterAChange)
{
    OpenSwitchedOn().Type(IDC_DESKTOP_SCRIPT, m_script);
    m_boxes.Answer(IDNO).Answer(IDOK);
    m_host.PressOk();
    support::ExpectBoxes(m_boxes, {restartOffer, rebootNotice});
}

TEST_F(ClientReboot, IsAskedForWhenThePageWasOpenedToSwitchOnAndNothingElseWasDone)
{
    m_host.SetCommandLine("control.exe vtnmgmt.cpl /CLIENT");
    Open();
    m_boxes.Answer(IDNO).Answer(IDOK);
    m_host.PressOk();
    support::ExpectBoxes(m_boxes, {restartOffer, rebootNotice});
    EXPECT_TRUE(m_shares.Find("VTNDATA"));
}

TEST_F(ClientReboot, IsNotAskedForAfterALookAtThePage)
{
    Open();
    m_host.PressOk();
    support::ExpectBoxes(m_boxes, {});
    EXPECT_FALSE(m_shares.Find("VTNDATA"));
}

TEST_F(ClientReboot, IsAskedForWithoutServicesToRestart)
{
    m_services.Fail("OpenServiceA", "VtMgHost", ERROR_SERVICE_DOES_NOT_EXIST);
    OpenSwitchedOn().Type(IDC_DESKTOP_SCRIPT, m_script);
    m_boxes.Answer(IDOK);
    m_host.PressOk();
    support::ExpectBoxes(m_boxes, {rebootNotice});
}

} // namespace
