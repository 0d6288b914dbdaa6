// Leaving the Desktop Mgmt page: which login scripts let go of it, and what it tells about the others.
#include "applet/ClientPageTest.h"
#include "support/FailNth.h"

namespace {

using support::DialogDriver;
using support::ExpectString;
using support::ReadBytes;
using support::WriteBytes;

class ClientLeave : public ClientPage
{
  protected:
    using Names = std::vector<std::string>;

    // Names of what is in the script directory.
    [[nodiscard]] Names Files() const
    {
        Names names;
        WIN32_FIND_DATAA entry{};
        const HANDLE search = FindFirstFileA(m_scripts.File("*").c_str(), &entry);
        do
            names.emplace_back(&entry.cFileName[0]);
        while (FindNextFileA(search, &entry));
        FindClose(search);
        return names;
    }

    // Turns to another page, which the path must allow; the file that may be made to try it is gone then.
    void ExpectLeaves(const std::string& path, support::Location where = support::Location::current())
    {
        const Names before = Files();
        m_host.Page("Desktop Mgmt").SetText(IDC_DESKTOP_SCRIPT, path);
        support::ExpectEqual(true, m_host.TurnTo("Storage"), "leaves with " + path, where);
        support::ExpectEqual(before, Files(), "files", where);
    }

    // The path is refused, and the user is asked to correct it. The answer is given here.
    void ExpectStays(const std::string& path, support::Location where = support::Location::current())
    {
        const Names before = Files();
        const DialogDriver page = m_host.ActivePage();
        page.SetText(IDC_DESKTOP_SCRIPT, path);
        page.Focus(IDC_DESKTOP_ENABLE);
        m_boxes.Answer(IDOK, where);
        support::ExpectEqual(false, m_host.TurnTo("Storage"), "leaves with " + path, where);
        support::ExpectEqual(page.Control(IDC_DESKTOP_SCRIPT), m_host.Thread().Focus(), "focus", where);
        ExpectWholePathSelected(page, where);
        support::ExpectEqual(before, Files(), "files", where);
    }
};

TEST_F(ClientLeave, IsAllowedWithABatchFileThatIsThereOrCouldBeMade)
{
    WriteBytes(m_script, "@echo off\r\n");
    WriteBytes(m_scripts.File("read only.bat"), "@echo off\r\n");
    SetFileAttributesA(m_scripts.File("read only.bat").c_str(), FILE_ATTRIBUTE_READONLY);
    Open();
    m_boxes.Answer(IDOK);
    m_host.ActivePage().Check(IDC_DESKTOP_ENABLE);
    ExpectLeaves(m_script);
    ExpectLeaves(m_scripts.File("read only.bat"));
    ExpectLeaves(m_scripts.File("absent.Bat"));
    ExpectLeaves(m_scripts.File("log on \x93\xFA\x96\x7B.bat"));
    support::ExpectBoxes(m_boxes, {enabledNote});
    EXPECT_EQ(ReadBytes(m_script), "@echo off\r\n");
    m_host.PressCancel();
}

TEST_F(ClientLeave, IsRefusedWithAnotherKindOfFileWhetherOrNotItIsThere)
{
    WriteBytes(m_scripts.File("there.cmd"), "");
    OpenSwitchedOn();
    for (const char* name : {"LOGIN.txt", "there.cmd", "LOGIN", "LOGIN.BAT.", ""})
        ExpectStays(m_scripts.File(name));
    ExpectStays("");
    support::ExpectBoxes(m_boxes, std::vector(6, nameRefusal));
    m_host.PressCancel();
}

TEST_F(ClientLeave, IsRefusedWithADirectory)
{
    CreateDirectoryA(m_scripts.File("x.BAT").c_str(), nullptr);
    OpenSwitchedOn();
    ExpectStays(m_scripts.File("x.BAT"));
    support::ExpectBoxes(m_boxes, {nameRefusal});
    m_host.PressCancel();
}

TEST_F(ClientLeave, IsRefusedInADirectoryOrOnAMachineThatIsNotThere)
{
    OpenSwitchedOn();
    ExpectStays(m_scripts.File("absent\\LOGIN.BAT"));
    ExpectStays("\\\\vtnabsent\\netlogon\\LOGIN.BAT");
    support::ExpectBoxes(m_boxes, {nameRefusal, nameRefusal});
    m_host.PressCancel();
}

// A folder's own read-only attribute keeps nobody from making files in it; its access list does.
TEST_F(ClientLeave, IsRefusedInAFolderThatTakesNoFiles)
{
    SetFileAttributesA(m_scripts.Path().c_str(), FILE_ATTRIBUTE_READONLY);
    OpenSwitchedOn();
    {
        const support::FailNth<"CreateFileA", decltype(CreateFileA)> deny(
            m_host.Module(), 1, INVALID_HANDLE_VALUE, ERROR_ACCESS_DENIED);
        ExpectStays(m_script);
    }
    support::ExpectBoxes(m_boxes, {nameRefusal});
    m_host.PressCancel();
    SetFileAttributesA(m_scripts.Path().c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(ClientLeave, IsRefusedWithAFileThatNobodyElseMayRead)
{
    WriteBytes(m_script, "@echo off\r\n");
    const HANDLE holder =
        CreateFileA(m_script.c_str(), GENERIC_READ, FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, 0, nullptr);
    OpenSwitchedOn();
    ExpectStays(m_script);
    support::ExpectBoxes(m_boxes, {nameRefusal});
    m_host.PressCancel();
    CloseHandle(holder);
    EXPECT_EQ(ReadBytes(m_script), "@echo off\r\n");
}

TEST_F(ClientLeave, ByOkIsRefusedTooAndSavesNothing)
{
    const DialogDriver page = OpenSwitchedOn();
    page.SetText(IDC_DESKTOP_SCRIPT, m_scripts.File("LOGIN.txt"));
    m_boxes.Answer(IDOK);
    m_host.Sheet().Click(IDOK);
    support::ExpectBoxes(m_boxes, {nameRefusal});
    EXPECT_FALSE(m_host.HasEnded());
    m_host.PressCancel();
    ExpectString(m_machine.hostAgent, "ClientIni", m_script);
}

TEST_F(ClientLeave, IsAllowedWithAnyPathWhileSwitchedOff)
{
    const DialogDriver page = OpenSwitchedOn();
    page.SetText(IDC_DESKTOP_SCRIPT, m_scripts.File("LOGIN.txt"));
    page.Uncheck(IDC_DESKTOP_ENABLE);
    EXPECT_TRUE(m_host.TurnTo("Storage"));
    EXPECT_EQ(m_host.Page("Desktop Mgmt").Text(IDC_DESKTOP_SCRIPT), m_scripts.File("LOGIN.txt"));
    m_host.PressCancel();
}

} // namespace
