// What the Process Monitor page lists when it is shown, and how.
#include "applet/ProcMonPageTest.h"
#include "imports/ImportHook.h"
#include "machine/HostAgent.h"
#include "support/ProgramPath.h"
#include "support/RegistryCalls.h"

#include <algorithm>
#include <htmlhelp.h>
#include <prsht.h>

namespace {

using support::hostUtilityLibrary;
using namespace std::string_literals;

using ProcMonLoad = ProcMonPageTest;

TEST_F(ProcMonLoad, ShowsEachNameWithItsOption)
{
    Store("\x03notepad.exe\0\x01"s
          "a.exe\0\x02"s
          "b.exe\0"s);
    Open();
    EXPECT_EQ(Items(), (Rows{"a.exe\tStart", "b.exe\tStop", "notepad.exe\tStart & Stop"}));
    m_host.PressCancel();
}

// A list box does not say where its tab stops are.
TEST_F(ProcMonLoad, PutsTheOptionsInAColumn)
{
    std::vector<UINT> stops;
    const auto note = support::HookImport<decltype(SendMessageA)>(
        m_host.Module(), "SendMessageA",
        [&](auto original, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
            if (message == LB_SETTABSTOPS)
                stops.assign(reinterpret_cast<UINT*>(lParam), reinterpret_cast<UINT*>(lParam) + wParam);
            return original(window, message, wParam, lParam);
        });
    Open();
    EXPECT_EQ(stops, std::vector<UINT>{80});
    m_host.PressCancel();
}

TEST_F(ProcMonLoad, ListsWhatRunsWithoutAnOption)
{
    m_tasks.names = {"Zeta.exe", "alpha.exe"};
    Open();
    EXPECT_EQ(Items(), (Rows{"alpha.exe\tNone", "zeta.exe\tNone"}));
    m_host.PressCancel();
}

TEST_F(ProcMonLoad, ListsAConfiguredRunningNameOnce)
{
    Store("\x02"s
          "svc.exe\0"s);
    m_tasks.names = {"SVC.exe"};
    Open();
    EXPECT_EQ(Items(), Rows{"svc.exe\tStop"});
    m_host.PressCancel();
}

// On a Japanese system 0x83 is the first byte of a character of two: with the tab behind the name it would be
// one.
TEST_F(ProcMonLoad, SavesANameWithoutHalfACharacter)
{
    const bool isJapanese = GetACP() == 932;
    EXPECT_TRUE(isJapanese || support::EnvironmentVariable("VTN_TEST_CODE_PAGE").empty());
    const std::string cut = isJapanese ? "a" : "a\x83";
    Store("\x82"
          "a\x83\0\x80"
          "b\0"s);
    m_host.Open();
    m_host.Page(m_host.Tabs().back()); // whatever it is called
    Select(1);
    Page().Check(IDC_PROCMON_START);
    m_host.PressOk();
    ExpectStored("\x82"s + cut +
                 "\0\x81"s
                 "b\0"s);
}

TEST_F(ProcMonLoad, InstancesOfOneProgramAreOneItem)
{
    m_tasks.names = {"a.exe", "a.exe", "b.exe", "a.exe"};
    Open();
    EXPECT_EQ(Items(), (Rows{"a.exe\tNone", "b.exe\tNone"}));
    m_host.PressCancel();
}

TEST_F(ProcMonLoad, ListsOtherThanProgramsOnlyWhenConfigured)
{
    Store("\x01idle\0"s);
    m_tasks.names = {"_Total", "Idle", "unknown"};
    Open();
    EXPECT_EQ(Items(), Rows{"idle\tStart"});
    m_host.PressCancel();
}

TEST_F(ProcMonLoad, CapitalsOfTheStoredNamesBecomeSmall)
{
    Store("\x01SQL.EXE\0\x02sql.exe\0"s);
    Open();
    EXPECT_EQ(Items(), Rows{"sql.exe\tStart"});
    m_host.PressCancel();
}

TEST_F(ProcMonLoad, DoubledNamesAreListedOnceWithTheFirstOption)
{
    Store("\x01"s
          "b\0\x03"s
          "b\0\x02"s
          "a\0"s);
    Open();
    EXPECT_EQ(Items(), (Rows{"a\tStop", "b\tStart"}));
    m_host.PressCancel();
}

// The search for the name comes upon the bracketed one first, so the name is not seen to be there.
TEST_F(ProcMonLoad, OnlyTheFirstItemWithANameCounts)
{
    Store("\x01[system\0\x01system\0"s);
    m_tasks.names = {"System"};
    Open();
    EXPECT_EQ(Items(), (Rows{"[system\tStart", "system\tNone", "system\tStart"}));
    m_host.PressCancel();
}

TEST_F(ProcMonLoad, OptionsAboveThreeHaveNoText)
{
    std::string stored;
    Rows expected;
    for (char option = 4; option <= 15; ++option) {
        const std::string name(1, static_cast<char>('a' + option));
        stored += option + name + '\0';
        expected.push_back(name + '\t');
    }
    Store(stored);
    Open();
    EXPECT_EQ(Items(), expected);
    m_host.PressCancel();
}

TEST_F(ProcMonLoad, TheMiddleBitsOfAnOptionCountForNothing)
{
    Store("\x72"s
          "a\0\x91"s
          "b\0"s);
    Open();
    EXPECT_EQ(Items(), (Rows{"a\tStop", "b\tStart"}));
    m_host.PressCancel();
}

TEST_F(ProcMonLoad, ReadsConfigurationsCutShort)
{
    Store("\x01"s
          "a\0\x02"s
          "bc"s);
    Open();
    EXPECT_EQ(Items(), (Rows{"a\tStart", "bc\tStop"}));
    m_host.PressCancel();
    Store("\x03"s);
    Open();
    EXPECT_EQ(Items(), Rows{"\tStart & Stop"});
    m_host.PressCancel();
}

TEST_F(ProcMonLoad, AFirstOptionOfZeroIsNoConfiguration)
{
    Store("\0a\0\x01"s
          "b\0"s);
    Open();
    EXPECT_EQ(Items(), Rows());
    m_host.PressCancel();
}

TEST_F(ProcMonLoad, WithoutTheLibraryListsConfiguredNames)
{
    Store("\x01"s
          "a\0"s);
    m_tasks.names = {"b"};
    m_libraries.Remove(hostUtilityLibrary);
    Open();
    EXPECT_EQ(Items(), Rows{"a\tStart"});
    m_host.PressCancel();
    m_libraries.Add(hostUtilityLibrary);
    Open();
    EXPECT_EQ(Items(), Rows{"a\tStart"});
    m_host.PressCancel();
}

TEST_F(ProcMonLoad, TheLibraryIsReleased)
{
    Open();
    EXPECT_EQ(m_libraries.Loads(hostUtilityLibrary), 1);
    EXPECT_EQ(m_libraries.Held(hostUtilityLibrary), 0);
    m_host.PressCancel();
}

TEST_F(ProcMonLoad, ARefusedConfigurationEndsTheSheetWithTheMessage)
{
    m_host.Open();
    m_machine.hostParameters.Delete();
    m_boxes.Answer(IDOK);
    PostMessageA(m_host.Sheet().Window(), PSM_SETCURSELID, 0, IDD_PROCMON);
    m_host.WaitForEnd();
    ASSERT_EQ(m_boxes.Shown().size(), 1U);
    EXPECT_EQ(m_boxes.Shown()[0].caption, "Management Agents Error");
}

TEST_F(ProcMonLoad, ReadsTheConfigurationBeforeItAsksWhatRuns)
{
    Store("\x01"s
          "a\0"s);
    m_host.Open();
    support::CallLog log;
    auto load = support::HookImport<decltype(LoadLibraryA)>(m_host.Module(), "LoadLibraryA",
                                                            [&](auto original, LPCSTR path) {
                                                                log.Add(std::string("LoadLibraryA ") + path);
                                                                return original(path);
                                                            });
    const support::RegistryCalls registry(m_host.Module(), &log);
    m_host.Page(tab);
    const std::string key = R"(HKLM\SYSTEM\CurrentControlSet\Services\VtMgHOST\Parameters)";
    const Rows expected = {"RegOpenKeyA " + key, "RegQueryValueExA " + key + ", ProcMon",
                           "RegQueryValueExA " + key + ", ProcMon", "RegCloseKey " + key,
                           "LoadLibraryA vthstutl.dll"};
    EXPECT_EQ(log.Calls(), expected);
    m_host.PressCancel();
}

TEST_F(ProcMonLoad, NothingIsSelectedAtFirst)
{
    Store("\x01"s
          "a\0"s);
    Open();
    EXPECT_EQ(Page().Selection(IDC_PROCMON_LIST), -1);
    EXPECT_FALSE(Page().IsEnabled(IDC_PROCMON_NONE));
    EXPECT_FALSE(Page().IsEnabled(IDC_PROCMON_OPTION_GROUP));
    EXPECT_FALSE(Page().IsEnabled(IDC_PROCMON_DELETE));
    m_host.PressCancel();
}

TEST_F(ProcMonLoad, DeleteIsForTheFirstItemAtFirst)
{
    Store("\x81"s
          "a\0\x01"s
          "b\0"s);
    Open();
    EXPECT_TRUE(Page().IsEnabled(IDC_PROCMON_DELETE));
    m_host.PressCancel();
}

TEST_F(ProcMonLoad, ShowsTheHelpTopic)
{
    support::HelpRecorder help(m_host.Module());
    Open();
    m_host.Sheet().Click(IDHELP);
    ASSERT_EQ(help.Requests().size(), 1U);
    EXPECT_EQ(help.Requests()[0].topic, "html\\vtnm5po2.htm");
    EXPECT_EQ(help.Requests()[0].command, UINT{HH_DISPLAY_TOPIC});
    EXPECT_EQ(help.Requests()[0].owner, nullptr);
    m_host.PressCancel();
}

// --- with the library that comes with the applet

class ProcMonHostUtility : public AppletTest
{
  protected:
    ProcMonHostUtility() { SetDllDirectoryA(support::BesideThisProgram("..\\..").c_str()); }
    ~ProcMonHostUtility() override { SetDllDirectoryA(nullptr); }
};

TEST_F(ProcMonHostUtility, ListsThisVeryProgram)
{
    m_host.Open();
    const Rows items = m_host.Page("Process Monitor").Items(IDC_PROCMON_LIST);
    EXPECT_EQ(std::count(items.begin(), items.end(), "applet_process_monitor_test.exe\tNone"), 1);
    EXPECT_EQ(GetModuleHandleA("vthstutl.dll"), nullptr);
    m_host.PressCancel();
}

} // namespace
