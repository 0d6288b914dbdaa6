// The login script's path on the Desktop Mgmt page: typed, on the network, and browsed for.
#include "applet/ClientPageTest.h"

#include <algorithm>
#include <array>
#include <vector>

// It needs windows.h before it.
#include <commdlg.h>

namespace {

using support::DialogDriver;
using support::ExpectString;
using support::FileExists;
using support::ReadBytes;

// --- the path

TEST_F(ClientPage, APathCanBeTypedWithItsOwnPunctuationOnly)
{
    const DialogDriver page = OpenSwitchedOn();
    page.SetText(IDC_DESKTOP_SCRIPT, "");
    page.Type(IDC_DESKTOP_SCRIPT, "aZ09`!@#$%()_-{}~' :\\/.");
    EXPECT_EQ(page.Text(IDC_DESKTOP_SCRIPT), "aZ09`!@#$%()_-{}~' :\\/.");
    page.Type(IDC_DESKTOP_SCRIPT, "^&*+=[]|;\"<>?,\x93\xFA\xE4");
    EXPECT_EQ(page.Text(IDC_DESKTOP_SCRIPT), "aZ09`!@#$%()_-{}~' :\\/.");
    page.Type(IDC_DESKTOP_SCRIPT, "C:^\\\b\\a"); // in place of what is selected
    EXPECT_EQ(page.Text(IDC_DESKTOP_SCRIPT), "C:\\a");
    m_host.PressCancel();
}

// The number by which the page sets its filter up. No control has it, so nothing is taken over
// twice.
TEST_F(ClientPage, FiltersTheFieldWithoutTakingItOverOnceMore)
{
    std::vector<int> asked;
    {
        const auto hook = support::HookImport<decltype(GetDlgItem)>(m_host.Module(), "GetDlgItem",
                                                                    [&](auto original, HWND dialog, int id) {
                                                                        asked.push_back(id);
                                                                        return original(dialog, id);
                                                                    });
        OpenSwitchedOn();
    }
    EXPECT_EQ(std::ranges::count(asked, 1031), 1);
    EXPECT_EQ(GetDlgItem(m_host.ActivePage().Window(), 1031), nullptr);
    m_host.PressCancel();
}

TEST_F(ClientPage, ATypedPathIsUpdatedAndRecorded)
{
    const std::string path = m_scripts.File("other start.Bat");
    OpenSwitchedOn().Type(IDC_DESKTOP_SCRIPT, path); // in place of the selected text
    m_host.PressOk();
    ExpectString(m_machine.hostAgent, "ClientIni", path);
    EXPECT_TRUE(FileExists(path));
    EXPECT_FALSE(m_shares.Find("VTNDATA"));
}

TEST_F(ClientPage, ANetworkPathCanBeTypedLeftAndSaved)
{
    const support::NetworkDirectory network("netlogon");
    const std::string path = network.File("LOGIN.BAT");
    OpenSwitchedOn().Type(IDC_DESKTOP_SCRIPT, path);
    EXPECT_TRUE(m_host.TurnTo("Storage"));
    EXPECT_FALSE(FileExists(path));
    m_host.PressOk();
    EXPECT_EQ(ReadBytes(path).value_or("").substr(0, 11), "rem VORTAN:");
    ExpectString(m_machine.hostAgent, "ClientIni", path);
}

std::string CurrentDirectory()
{
    std::array<char, MAX_PATH> path{};
    GetCurrentDirectoryA(path.size(), path.data());
    return path.data();
}

class ScriptPathLength : public ClientPage
{
  protected:
    // A path of `length` bytes to LOGIN.BAT.
    std::string PathOf(std::size_t length) const
    {
        std::string path = m_scripts.Path();
        while (path.size() + 2 + sizeof "LOGIN.BAT" <= length)
            path += "\\.";
        path += std::string(length - path.size() - (sizeof "LOGIN.BAT" - 1), '\\') + "LOGIN.BAT";
        return path;
    }
};

TEST_F(ScriptPathLength, MayBe256)
{
    const std::string path = PathOf(256);
    ASSERT_EQ(path.size(), 256U);
    OpenSwitchedOn().SetText(IDC_DESKTOP_SCRIPT, path);
    m_host.PressOk();
    ExpectString(m_machine.hostAgent, "ClientIni", path);
}

TEST_F(ScriptPathLength, MayNotBe257)
{
    const DialogDriver page = OpenSwitchedOn();
    page.SetText(IDC_DESKTOP_SCRIPT, PathOf(257));
    m_boxes.Answer(IDOK);
    EXPECT_FALSE(m_host.TurnTo("Storage"));
    EXPECT_NE(m_boxes.Shown()[0].text.find("256"), std::string::npos);
    m_host.PressCancel();
}

TEST_F(ScriptPathLength, IsNotLimitedWhileSwitchedOff)
{
    const DialogDriver page = OpenSwitchedOn();
    page.SetText(IDC_DESKTOP_SCRIPT, PathOf(300));
    page.Uncheck(IDC_DESKTOP_ENABLE);
    EXPECT_TRUE(m_host.TurnTo("Storage"));
    m_host.PressCancel();
}

// --- choosing a script

// Answers the file dialog, which is Windows' own, with a path; none is Cancel.
class ClientBrowse : public ClientPage
{
  protected:
    static BOOL WINAPI Choose(OPENFILENAMEA* dialog)
    {
        s_asked = *dialog;
        s_start = dialog->lpstrFile;
        const char* const pattern = dialog->lpstrFilter + lstrlenA(dialog->lpstrFilter) + 1;
        s_filter = std::string(dialog->lpstrFilter) + "|" + pattern + "|" + (pattern + lstrlenA(pattern) + 1);
        lstrcpynA(dialog->lpstrFile, s_choice.c_str(), static_cast<int>(dialog->nMaxFile));
        return !s_choice.empty();
    }

    static inline OPENFILENAMEA s_asked;
    static inline std::string s_start;
    static inline std::string s_filter;
    static inline std::string s_choice;
    support::ReplacedImport m_save{m_host.Module(), "GetSaveFileNameA", &Choose};
};

TEST_F(ClientBrowse, AsksForABatchFileStartingFromTheTypedPath)
{
    s_choice.clear();
    const DialogDriver page = OpenSwitchedOn();
    page.SetText(IDC_DESKTOP_SCRIPT, m_scripts.File("typed.bat"));
    page.Click(IDC_DESKTOP_BROWSE);
    EXPECT_EQ(s_start, m_scripts.File("typed.bat"));
    EXPECT_EQ(s_filter, "Command Files (*.bat)|*.bat|");
    EXPECT_NE(s_asked.Flags & OFN_HIDEREADONLY, 0U);
    EXPECT_EQ(s_asked.Flags & OFN_OVERWRITEPROMPT, 0U);
    EXPECT_EQ(page.Text(IDC_DESKTOP_SCRIPT), m_scripts.File("typed.bat"));
    m_host.PressCancel();
}

// Runs in the language of the system and, a second time, in Japanese.
TEST_F(ClientBrowse, NamesTheFilesInTheUsersLanguage)
{
    s_choice.clear();
    OpenSwitchedOn().Click(IDC_DESKTOP_BROWSE);
    std::array<char, 128> filter{};
    LoadStringA(m_host.Module(), IDS_SCRIPT_FILE_FILTER, filter.data(), filter.size());
    EXPECT_EQ(s_filter + "|", filter.data());
    m_host.PressCancel();
}

TEST_F(ClientBrowse, TakesTheChosenScript)
{
    s_choice = m_scripts.File("chosen \x93\xFA\x96\x7B.bat");
    const DialogDriver page = OpenSwitchedOn();
    page.Click(IDC_DESKTOP_BROWSE);
    EXPECT_EQ(page.Text(IDC_DESKTOP_SCRIPT), s_choice);
    ExpectWholePathSelected(page);
    m_host.PressOk();
    ExpectString(m_machine.hostAgent, "ClientIni", s_choice);
    EXPECT_TRUE(FileExists(s_choice));
}

TEST_F(ClientBrowse, CancelLeavesEverythingAsItWas)
{
    const DialogDriver page = OpenSwitchedOn();
    s_choice.clear();
    page.Click(IDC_DESKTOP_BROWSE);
    EXPECT_TRUE(page.IsEnabled(IDC_DESKTOP_SCRIPT));
    m_host.PressOk();
    EXPECT_FALSE(FileExists(m_script));
}

TEST_F(ClientBrowse, TellsAtOnceOfAPathThatIsTooLong)
{
    s_choice = m_scripts.Path() + "\\";
    s_choice += std::string(257 - s_choice.size() - 4, 'a') + ".bat";
    const DialogDriver page = OpenSwitchedOn();
    m_boxes.Answer(IDOK);
    page.Click(IDC_DESKTOP_BROWSE);
    ASSERT_EQ(m_boxes.Shown().size(), 1U);
    EXPECT_NE(m_boxes.Shown()[0].text.find("256"), std::string::npos);
    EXPECT_EQ(page.Text(IDC_DESKTOP_SCRIPT), s_choice);
    ExpectWholePathSelected(page);
    m_host.PressCancel();
}

// --- the system's own dialog

TEST_F(ClientPage, BrowsingLeavesTheCurrentDirectoryAsItIs)
{
    const std::string before = CurrentDirectory();
    const DialogDriver page = OpenSwitchedOn();
    PostMessageA(page.Control(IDC_DESKTOP_BROWSE), BM_CLICK, 0, 0);
    HWND dialog = nullptr;
    const auto isUp = [&] {
        dialog = GetLastActivePopup(m_host.Sheet().Window());
        return dialog != m_host.Sheet().Window() && IsWindowVisible(dialog) != FALSE;
    };
    ASSERT_TRUE(support::WaitUntil(isUp));
    PostMessageA(dialog, WM_COMMAND, IDOK, 0); // the script that is named already
    ASSERT_TRUE(support::WaitUntil([&] { return IsWindow(dialog) == FALSE; }));
    m_host.Thread().Settle();
    EXPECT_EQ(CurrentDirectory(), before);
    m_host.PressCancel();
}

} // namespace
