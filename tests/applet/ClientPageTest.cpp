// The Desktop Mgmt page through its window: what it shows, switches and saves.
#include "applet/ClientPageTest.h"

namespace {

using support::DialogDriver;
using support::ExpectAbsent;
using support::ExpectString;
using support::FileExists;
using support::ReadBytes;
using support::WriteBytes;

constexpr char caption[] = "Norvale Management Agents";
constexpr char enabledNote[] =
    "Enabling Desktop Management will only update an existing script or create a new script.  It will not "
    "setup login script processing.\n\nPlease use the User Manager for Domains application to setup login "
    "script processing.";
constexpr char nameInvalid[] =
    "Filename error or file could not be opened.  Only batch (.BAT) files are allowed.";

const support::ShownBox note{nullptr, enabledNote, caption, MB_ICONINFORMATION};
const support::ShownBox refusal{nullptr, nameInvalid, caption, MB_ICONEXCLAMATION};

// --- what it shows

TEST_F(ClientPage, ShowsTheDefaultScriptSwitchedOff)
{
    const DialogDriver page = Open();
    EXPECT_FALSE(page.IsChecked(IDC_CLIENT_ENABLE));
    EXPECT_EQ(page.Text(IDC_CLIENT_SCRIPT), m_script);
    EXPECT_FALSE(page.IsEnabled(IDC_CLIENT_SCRIPT));
    EXPECT_FALSE(page.IsEnabled(IDC_CLIENT_BROWSE));
    m_host.PressCancel();
}

TEST_F(ClientPage, ShowsTheRecordedScriptSwitchedOn)
{
    m_script = m_scripts.File("my log on \x93\xFA\x96\x7B.bat");
    const DialogDriver page = OpenSwitchedOn();
    EXPECT_TRUE(page.IsChecked(IDC_CLIENT_ENABLE));
    EXPECT_EQ(page.Text(IDC_CLIENT_SCRIPT), m_script);
    EXPECT_TRUE(page.IsEnabled(IDC_CLIENT_SCRIPT));
    EXPECT_TRUE(page.IsEnabled(IDC_CLIENT_BROWSE));
    m_host.PressCancel();
}

TEST_F(ClientPage, SelectsTheWholePath)
{
    const DialogDriver page = OpenSwitchedOn();
    const LRESULT selection = support::SendWithin(page.Control(IDC_CLIENT_SCRIPT), EM_GETSEL);
    EXPECT_EQ(LOWORD(selection), 0);
    EXPECT_EQ(HIWORD(selection), m_script.size());
    m_host.PressCancel();
}

TEST_F(ClientPage, ShowsAnEmptyRecordAsSwitchedOn)
{
    m_machine.hostAgent.SetString("ClientIni", "");
    const DialogDriver page = Open();
    EXPECT_TRUE(page.IsChecked(IDC_CLIENT_ENABLE));
    EXPECT_EQ(page.Text(IDC_CLIENT_SCRIPT), m_script);
    m_host.PressCancel();
}

TEST_F(ClientPage, ShowsARecordThatMayNotBeReadAsSwitchedOn)
{
    m_host.Open();
    m_machine.hostAgent.Delete();
    EXPECT_TRUE(m_host.Page("Desktop Mgmt").IsChecked(IDC_CLIENT_ENABLE));
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
}

// --- switching on and off

TEST_F(ClientPage, SwitchingOnTellsWhatItDoesNotDoAndFreesTheControls)
{
    const DialogDriver page = Open();
    m_boxes.Answer(IDOK);
    page.Check(IDC_CLIENT_ENABLE);
    support::ExpectBoxes(m_boxes, {note});
    EXPECT_TRUE(page.IsEnabled(IDC_CLIENT_SCRIPT));
    EXPECT_TRUE(page.IsEnabled(IDC_CLIENT_BROWSE));
    page.Uncheck(IDC_CLIENT_ENABLE);
    EXPECT_FALSE(page.IsEnabled(IDC_CLIENT_SCRIPT));
    EXPECT_FALSE(page.IsEnabled(IDC_CLIENT_BROWSE));
    m_host.PressCancel();
}

TEST_F(ClientPage, OkAfterSwitchingOnSavesEveryStep)
{
    const DialogDriver page = Open();
    m_boxes.Answer(IDOK);
    page.Check(IDC_CLIENT_ENABLE);
    m_host.PressOk();
    ExpectString(m_machine.hostAgent, "ClientIni", m_script);
    EXPECT_EQ(ReadBytes(m_script).value_or("").substr(0, 11), "rem VORTAN:");
    EXPECT_EQ(ReadBytes(m_scripts.File("VTNCLNT.EXE")), "the client");
    EXPECT_TRUE(FileExists(m_scripts.File("VTNCLNT.INI")));
    EXPECT_TRUE(m_shares.Find("VTNDATA"));
    support::ExpectMultiString(m_server, "NullSessionShares", {"VTNDATA"});
}

TEST_F(ClientPage, OkAfterSwitchingOffUndoesEveryStep)
{
    WriteBytes(m_script, "@echo off\r\n");
    const DialogDriver page = Open();
    m_boxes.Answer(IDOK);
    page.Check(IDC_CLIENT_ENABLE);
    m_host.PressOk();
    Open().Uncheck(IDC_CLIENT_ENABLE);
    m_host.PressOk();
    ExpectSwitchedOff();
    EXPECT_EQ(ReadBytes(m_script), "@echo off\r\n");
}

TEST_F(ClientPage, CancelAfterSwitchingOnChangesNothing)
{
    const DialogDriver page = Open();
    m_boxes.Answer(IDOK);
    page.Check(IDC_CLIENT_ENABLE);
    m_host.PressCancel();
    ExpectSwitchedOff();
    EXPECT_FALSE(FileExists(m_script));
}

TEST_F(ClientPage, OkOnAnUntouchedPageChangesNothing)
{
    OpenSwitchedOn();
    m_host.PressOk();
    EXPECT_FALSE(FileExists(m_script));
    EXPECT_FALSE(m_shares.Find("VTNDATA"));
}

TEST_F(ClientPage, SwitchedTwiceItRewritesTheScriptAndLeavesFilesAndShareAlone)
{
    const DialogDriver page = OpenSwitchedOn();
    page.Uncheck(IDC_CLIENT_ENABLE);
    m_boxes.Answer(IDOK);
    page.Check(IDC_CLIENT_ENABLE);
    m_host.PressOk();
    EXPECT_TRUE(FileExists(m_script));
    ExpectString(m_machine.hostAgent, "ClientIni", m_script);
    EXPECT_FALSE(FileExists(m_scripts.File("VTNCLNT.EXE")));
    EXPECT_FALSE(m_shares.Find("VTNDATA"));
}

TEST_F(ClientPage, AFailedStepEndsTheSheetWithItsText)
{
    const DialogDriver page = Open();
    m_boxes.Answer(IDOK).Answer(IDOK);
    page.Check(IDC_CLIENT_ENABLE);
    m_shares.Fail("NetShareAdd", ERROR_ACCESS_DENIED);
    m_host.PressOk();
    support::ExpectBoxes(m_boxes, {note,
                                   {nullptr,
                                    "Cannot create Desktop Management Discovery shared directory\n"
                                    "%SystemRoot%\\System32\\VTNMGMT\\VTNDATA.",
                                    "Management Agents Error", MB_ICONHAND}});
}

// --- opened to switch desktop management on

class ClientStart : public ClientPage
{
  protected:
    ClientStart() { m_host.SetCommandLine("control.exe vtnmgmt.cpl /client /SETUP"); }
};

TEST_F(ClientStart, ShowsThePageSwitchedOnOnEveryServer)
{
    m_machine.productOptions.SetString("ProductType", "ServerNT");
    const DialogDriver page = Open();
    EXPECT_TRUE(page.IsChecked(IDC_CLIENT_ENABLE));
    EXPECT_TRUE(page.IsEnabled(IDC_CLIENT_SCRIPT));
    EXPECT_TRUE(page.IsEnabled(IDC_CLIENT_BROWSE));
    m_host.PressCancel();
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

TEST_F(ClientStart, ChangesNothingWhereDesktopManagementIsOn)
{
    OpenSwitchedOn();
    m_host.PressOk();
    EXPECT_FALSE(m_shares.Find("VTNDATA"));
}

// --- restart and reboot

TEST_F(ClientPage, AChangeAsksForARebootOutsideSetUp)
{
    m_host.SetCommandLine("control.exe vtnmgmt.cpl");
    OpenSwitchedOn().Type(IDC_CLIENT_SCRIPT, m_script);
    m_boxes.Answer(IDOK);
    m_host.PressOk();
    ASSERT_EQ(m_boxes.Shown().size(), 1U);
    EXPECT_NE(m_boxes.Shown()[0].text.find("must be rebooted"), std::string::npos);
}

} // namespace
