// Help: the Help button, F1, the help file of each language, and a system without HTML Help.
#include "applet/AppletTest.h"
#include "resources/resource.h"
#include "support/HostAgent.h"
#include "support/ImportHook.h"

#include <cstring>
#include <htmlhelp.h>

namespace {

constexpr WPARAM helpCommand = 0xE146; // of the sheet

const std::string systemHelp = "C:\\windows\\system32\\hhctrl.ocx";

class Help : public AppletTest
{
  protected:
    support::HelpRecorder m_help{m_host.Module()};
};

const std::string helpDirectory = support::EnvironmentVariable("WINDIR") + "\\System32\\vtnmgmt\\vtmghost\\";
const support::HelpRequest storageHelp{nullptr, helpDirectory + "vtnmgmt.chm", HH_DISPLAY_TOPIC,
                                       "html\\vtnm7wh1.htm"};

TEST_F(Help, TheButtonShowsThePagesTopic)
{
    m_host.Open();
    m_host.Page("Storage");
    m_host.Sheet().Click(IDHELP);
    EXPECT_EQ(m_help.Requests(), std::vector{storageHelp});
    m_host.PressCancel();
}

TEST_F(Help, F1ShowsThePagesTopic)
{
    m_host.Open();
    m_host.Page("Storage");
    m_host.PressKey(VK_F1);
    EXPECT_EQ(m_help.Requests(), std::vector{storageHelp});
    m_host.PressCancel();
}

class HeldKey : public Help, public testing::WithParamInterface<int>
{
};

TEST_P(HeldKey, KeepsF1FromAskingForHelp)
{
    m_host.HoldKeys({GetParam()});
    m_host.Open();
    m_host.PressKey(VK_F1);
    EXPECT_TRUE(m_help.Requests().empty());
    m_host.PressCancel();
}

INSTANTIATE_TEST_SUITE_P(Keys, HeldKey, testing::Values(VK_SHIFT, VK_CONTROL));

// The user of these tests answers real message boxes: a scripted one would take no keys.
class HelpInARefusal : public testing::Test
{
  protected:
    // Presses F1 and then Enter in the box that tells of a refusal, and returns the windows that were asked
    // for help.
    std::vector<HWND> WindowsAskedForHelp()
    {
        std::vector<HWND> asked;
        const auto hook = support::HookImport<decltype(PostMessageA)>(
            m_host.Module(), "PostMessageA",
            [&](auto original, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
                if (message == WM_COMMAND && wParam == helpCommand)
                    asked.push_back(window);
                return original(window, message, wParam, lParam);
            });
        const HWND box = m_host.WaitForDialog("Management Agents Error").Window();
        EXPECT_TRUE(support::WaitUntil([&] { return IsChild(box, m_host.Thread().Focus()) != FALSE; }));
        m_host.PressKey(VK_F1);
        m_host.PressKey(VK_RETURN);
        EXPECT_EQ(m_host.WaitForEnd(), 0);
        return asked;
    }

    TestMachine m_machine;
    support::AppletHost m_host{appletPath};
    support::HelpRecorder m_help{m_host.Module()};
};

TEST_F(HelpInARefusal, IsAskedOfNobodyBeforeThereIsASheet)
{
    m_machine.hostAgent.Delete();
    m_host.DoubleClick();
    EXPECT_EQ(WindowsAskedForHelp(), std::vector<HWND>());
    EXPECT_TRUE(m_help.Requests().empty());
}

TEST_F(HelpInARefusal, IsAskedOfNobodyAfterTheSheetIsGone)
{
    m_host.Open();
    m_host.Page("SNMP Settings").Click(IDC_SNMP_DISABLE_TELNET);
    m_machine.hostAgent.Delete();
    m_host.Sheet().Click(IDOK);
    EXPECT_EQ(WindowsAskedForHelp(), std::vector<HWND>());
    EXPECT_TRUE(m_help.Requests().empty());
}

TEST_F(Help, OtherKeysAskForNothing)
{
    m_host.Open();
    m_host.PressKey(VK_F2);
    EXPECT_TRUE(m_help.Requests().empty());
    m_host.PressCancel();
}

TEST_F(Help, AJapaneseSystemGetsItsOwnHelpFile)
{
    auto hook = support::HookImport<decltype(GetSystemDefaultLangID)>(
        m_host.Module(), "GetSystemDefaultLangID", [](auto) { return LANGID{1041}; });
    m_host.Open();
    m_host.Page("Storage");
    m_host.PressKey(VK_F1);
    ASSERT_EQ(m_help.Requests().size(), 1U);
    EXPECT_EQ(m_help.Requests()[0].file, helpDirectory + "vtnmgmt_jpn.chm");
    m_host.PressCancel();
}

TEST_F(Help, LoadsHtmlHelpOnFirstUseAndKeepsIt)
{
    m_host.Open();
    EXPECT_TRUE(m_help.LoadedLibraries().empty());
    m_host.Sheet().Click(IDHELP);
    m_host.Sheet().Click(IDHELP);
    EXPECT_EQ(m_help.LoadedLibraries().size(), 1U);
    EXPECT_EQ(m_help.Requests().size(), 2U);
    m_host.PressCancel();
}

TEST_F(Help, LooksFirstWhereHtmlHelpIsRegisteredThenForTheUsualLibrary)
{
    auto registered = support::HookImport<decltype(RegGetValueA)>(
        m_host.Module(), "RegGetValueA",
        [](auto, HKEY, LPCSTR, LPCSTR, DWORD, LPDWORD, PVOID path, LPDWORD) -> LSTATUS {
            std::strcpy(static_cast<char*>(path), "D:\\help\\hhctrl.ocx");
            return ERROR_SUCCESS;
        });
    m_help.RemoveLibrary();
    m_host.Open();
    m_host.Sheet().Click(IDHELP);
    EXPECT_EQ(m_help.LoadedLibraries(), (std::vector<std::string>{"D:\\help\\hhctrl.ocx", systemHelp}));
    m_host.PressCancel();
}

TEST_F(Help, WithoutTheRegisteredLibraryLooksForTheUsualOne)
{
    m_help.RemoveLibrary();
    m_host.Open();
    m_host.Sheet().Click(IDHELP);
    ASSERT_FALSE(m_help.LoadedLibraries().empty());
    EXPECT_EQ(m_help.LoadedLibraries().back(), systemHelp);
    m_host.PressCancel();
}

TEST_F(Help, ALibraryThatWasNotFoundIsNotLookedForAgain)
{
    m_help.RemoveLibrary();
    m_host.Open();
    m_host.Sheet().Click(IDHELP);
    m_help.Restore();
    m_help.Clear();
    m_host.Sheet().Click(IDHELP);
    EXPECT_TRUE(m_help.LoadedLibraries().empty());
    EXPECT_TRUE(m_help.Requests().empty());
    m_host.PressCancel();
}

TEST_F(Help, AnEntryThatWasNotFoundIsNotLookedForAgain)
{
    m_help.RemoveEntry();
    m_host.Open();
    m_host.Sheet().Click(IDHELP);
    m_help.Restore();
    m_host.Sheet().Click(IDHELP);
    EXPECT_TRUE(m_help.Requests().empty());
    m_host.PressCancel();
}

} // namespace
