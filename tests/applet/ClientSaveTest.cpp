// OK on the Desktop Mgmt page: what it switches on and off, and what it tells when it cannot.
#include "applet/ClientPageTest.h"
#include "support/FailNth.h"

#include <algorithm>

namespace {

using support::DialogDriver;
using support::ExpectAbsent;
using support::ExpectString;
using support::FileExists;
using support::ReadBytes;
using support::WriteBytes;

// --- switching on and off

TEST_F(ClientPage, SwitchingOnTellsWhatItDoesNotDoAndFreesTheControls)
{
    const DialogDriver page = OpenAndSwitchOn();
    support::ExpectBoxes(m_boxes, {enabledNote});
    EXPECT_TRUE(page.IsEnabled(IDC_DESKTOP_SCRIPT));
    EXPECT_TRUE(page.IsEnabled(IDC_DESKTOP_BROWSE));
    page.Uncheck(IDC_DESKTOP_ENABLE);
    EXPECT_FALSE(page.IsEnabled(IDC_DESKTOP_SCRIPT));
    EXPECT_FALSE(page.IsEnabled(IDC_DESKTOP_BROWSE));
    m_host.PressCancel();
}

TEST_F(ClientPage, OkAfterSwitchingOnSavesEveryStep)
{
    OpenAndSwitchOn();
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
    OpenAndSwitchOn();
    m_host.PressOk();
    Open().Uncheck(IDC_DESKTOP_ENABLE);
    m_host.PressOk();
    ExpectSwitchedOff();
    EXPECT_EQ(ReadBytes(m_script), "@echo off\r\n");
}

TEST_F(ClientPage, CancelAfterSwitchingOnChangesNothing)
{
    OpenAndSwitchOn();
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
    page.Uncheck(IDC_DESKTOP_ENABLE);
    m_boxes.Answer(IDOK);
    page.Check(IDC_DESKTOP_ENABLE);
    m_host.PressOk();
    EXPECT_TRUE(FileExists(m_script));
    ExpectString(m_machine.hostAgent, "ClientIni", m_script);
    EXPECT_FALSE(FileExists(m_scripts.File("VTNCLNT.EXE")));
    EXPECT_FALSE(m_shares.Find("VTNDATA"));
}

TEST_F(ClientPage, TurningToAnotherPageAndBackIsNoChange)
{
    OpenSwitchedOn();
    m_host.Page("Storage");
    m_host.Page("Desktop Mgmt");
    m_host.PressOk();
    EXPECT_FALSE(FileExists(m_script));
}

TEST_F(ClientPage, OkSavesOncePerVisitedPageWithTheSameResult)
{
    OpenAndSwitchOn();
    const std::vector<std::string> tabs = m_host.Tabs();
    for (const std::string& tab : tabs)
        m_host.Page(tab);
    m_host.PressOk();
    const std::vector<std::string> calls = m_shares.Calls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "NetShareAdd VTNDATA"), tabs.size());
    EXPECT_EQ(m_shares.Find("VTNDATA")->path, m_windows.File("system32\\vtnmgmt\\vtndata"));
    support::ExpectMultiString(m_server, "NullSessionShares", {"VTNDATA"});
    const std::string script = ReadBytes(m_script).value_or("");
    EXPECT_EQ(std::count(script.begin(), script.end(), '\n'), 3);
}

// --- steps that fail: each ends the sheet with its text

class ClientFailure : public ClientPage
{
  protected:
    ClientFailure() { m_server.Clear(); }

    // From here on desktop management is on, the note about it is answered, and the page is open.
    DialogDriver OpenAfterSwitchingOn()
    {
        OpenAndSwitchOn();
        m_host.PressOk();
        return Open();
    }

    // Presses OK; the sheet ends with this text, after the note about switching on.
    void ExpectEndsWith(const std::string& text, support::Location where = support::Location::current())
    {
        m_boxes.Answer(IDOK, where);
        m_host.PressOk();
        support::ExpectBoxes(m_boxes, {enabledNote, {nullptr, text, "Management Agents Error", MB_ICONHAND}},
                             where);
    }

    // A file that another program reads and lets nobody change.
    static HANDLE HoldOpen(const std::string& path)
    {
        return CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    }
};

TEST_F(ClientFailure, OfTheScript)
{
    WriteBytes(m_script, "@echo off\r\n");
    const HANDLE holder = HoldOpen(m_script);
    OpenAndSwitchOn();
    ExpectEndsWith("Cannot create/update Desktop Management script file.");
    CloseHandle(holder);
    EXPECT_EQ(ReadBytes(m_script), "@echo off\r\n");
    ExpectSwitchedOff();
}

TEST_F(ClientFailure, OfTheRecord)
{
    OpenAndSwitchOn();
    m_machine.hostAgent.Delete();
    ExpectEndsWith("You do not have access to change the configuration of the Management Agents.");
    EXPECT_TRUE(FileExists(m_script));
    EXPECT_FALSE(FileExists(m_scripts.File("VTNCLNT.EXE")));
}

TEST_F(ClientFailure, OfCopyingTheClient)
{
    DeleteFileA(m_windows.File("system32\\vtnmgmt\\VTNCLNT.EXE").c_str());
    OpenAndSwitchOn();
    ExpectEndsWith("Cannot enable Desktop Management.  Error copying files to the client share directory.");
    ExpectString(m_machine.hostAgent, "ClientIni", m_script);
    EXPECT_FALSE(m_shares.Find("VTNDATA"));
}

TEST_F(ClientFailure, OfAddingTheShare)
{
    OpenAndSwitchOn();
    m_shares.Fail("NetShareAdd", ERROR_ACCESS_DENIED);
    ExpectEndsWith("Cannot create Desktop Management Discovery shared directory\n"
                   "%SystemRoot%\\System32\\VTNMGMT\\VTNDATA.");
    EXPECT_TRUE(FileExists(m_scripts.File("VTNCLNT.EXE")));
}

TEST_F(ClientFailure, OfTheClientsProfile)
{
    OpenAndSwitchOn();
    const support::FailNth<"WritePrivateProfileStringA", decltype(WritePrivateProfileStringA)> fail(
        m_host.Module(), 1, FALSE, ERROR_ACCESS_DENIED);
    ExpectEndsWith("Cannot update the VTNCLNT.INI file.");
    EXPECT_TRUE(m_shares.Find("VTNDATA"));
    ExpectAbsent(m_server, "NullSessionShares");
}

TEST_F(ClientFailure, OfDeletingTheClient)
{
    OpenAfterSwitchingOn().Uncheck(IDC_DESKTOP_ENABLE);
    const HANDLE holder = HoldOpen(m_scripts.File("VTNCLNT.EXE"));
    ExpectEndsWith(
        "Cannot disable Desktop Management.  Error removing files from the client share directory.");
    CloseHandle(holder);
    ExpectAbsent(m_machine.hostAgent, "ClientIni");
    EXPECT_TRUE(m_shares.Find("VTNDATA"));
}

TEST_F(ClientFailure, OfDeletingTheShare)
{
    OpenAfterSwitchingOn().Uncheck(IDC_DESKTOP_ENABLE);
    m_shares.Fail("NetShareDel", ERROR_ACCESS_DENIED);
    ExpectEndsWith("Cannot remove Desktop Management Discovery shared directory\n"
                   "%SystemRoot%\\System32\\VTNMGMT\\VTNDATA.");
    EXPECT_FALSE(FileExists(m_scripts.File("VTNCLNT.EXE")));
    support::ExpectMultiString(m_server, "NullSessionShares", {"VTNDATA"});
}

} // namespace
