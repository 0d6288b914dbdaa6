// The rules of the sheet with six pages made for the test: tabs, order of saving, changes, help.
#include "applet/SheetAssembly.h"

#include "imports/ImportHook.h"
#include "pages/core/BoardLibrary.h"
#include "resources/resource.h"
#include "support/HelpRecorder.h"
#include "support/TestRegistry.h"
#include "support/ThisProgram.h"

#include <cstring>
#include <gtest/gtest.h>
#include <prsht.h>

namespace {

using support::thisProgram;

using Names = std::vector<std::string>;

// A page that notes its saves and can be left only when the test says so.
class NotingPage : public CVtnPropPage
{
  public:
    NotingPage(UINT templateId, const char* name, Names& saved)
        : CVtnPropPage(templateId, name), m_name(name), m_saved(saved)
    {
    }

    [[nodiscard]] const std::string& Name() const { return m_name; }

    DWORD Save() override
    {
        m_saved.push_back(m_name);
        return saveResult;
    }
    [[nodiscard]] bool IsChanged() const override { return isChanged; }
    BOOL OnKillActive() override { return letsGo && CVtnPropPage::OnKillActive(); }

    DWORD saveResult = 0;
    bool isChanged = false;
    BOOL letsGo = TRUE;

  private:
    std::string m_name;
    Names& m_saved;
};

// The sheet with all pages; it does the given thing as soon as it is on the screen and then closes itself.
class TestSheet : public CSheetAssembly
{
  public:
    TestSheet() : CSheetAssembly("Test", nullptr)
    {
        Assign(PageRole::Services, services);
        Assign(PageRole::Storage, storage);
        Assign(PageRole::Snmp, snmpSettings);
        Assign(PageRole::Desktop, desktopMgmt);
        Assign(PageRole::Board, remoteLumora);
        Assign(PageRole::ProcessMonitor, processMonitor);
    }

    BOOL OnInitDialog() override
    {
        const BOOL result = CSheetAssembly::OnInitDialog();
        for (const UINT command : commands)
            PostMessage(WM_COMMAND, command, 0);
        PostMessage(WM_COMMAND, IDCANCEL, 0);
        return result;
    }

    Names saved;
    std::vector<UINT> commands;
    NotingPage services{IDD_SERVICES, "services", saved};
    NotingPage storage{IDD_STORAGE, "storage", saved};
    NotingPage snmpSettings{IDD_SNMP, "snmp settings", saved};
    NotingPage desktopMgmt{IDD_DESKTOP, "desktop mgmt", saved};
    NotingPage remoteLumora{IDD_BOARD, "remote lumora", saved};
    NotingPage processMonitor{IDD_PROCMON, "process monitor", saved};
};

class SheetAssembly : public testing::Test
{
  protected:
    SheetAssembly() { m_options.SetString("ProductType", "ServerNT"); }

    // The tabs from left to right, by the names of their pages.
    Names Tabs()
    {
        m_sheet.BuildPages();
        Names names;
        for (int i = 0; i < m_sheet.GetPageCount(); ++i)
            names.push_back(dynamic_cast<NotingPage&>(*m_sheet.GetPage(i)).Name());
        return names;
    }

    support::SavedKey m_options{"SYSTEM\\CurrentControlSet\\Control\\ProductOptions"};
    TestSheet m_sheet;
};

// Runs an action while the process seems to have been started with another command line.
template <typename Action>
auto WithCommandLine(std::string commandLine, Action action)
{
    auto hook = support::HookImport<decltype(GetCommandLineA)>(thisProgram, "GetCommandLineA",
                                                               [&](auto) { return commandLine.data(); });
    return action();
}

DWORD WINAPI AnswerBoardCall(BoardData* data)
{
    *data = {};
    return ERROR_SUCCESS;
}

// Runs an action on a machine whose board library can be loaded and answers.
template <typename Action>
auto WithBoard(Action action)
{
    auto load = support::HookImport<decltype(LoadLibraryA)>(
        thisProgram, "LoadLibraryA", [](auto original, LPCSTR name) {
            return original(std::strstr(name, "RB4USER.DLL") != nullptr ? "kernel32.dll" : name);
        });
    auto find = support::HookImport<decltype(GetProcAddress)>(
        thisProgram, "GetProcAddress", [](auto original, HMODULE library, LPCSTR name) {
            const bool isBoard = !IS_INTRESOURCE(name) && std::strcmp(name, "Rb4CpReadData") == 0;
            return isBoard ? reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&AnswerBoardCall))
                           : original(library, name);
        });
    return action();
}

// --- tabs

TEST_F(SheetAssembly, AMemberServerShowsFourPages)
{
    EXPECT_EQ(Tabs(), (Names{"services", "snmp settings", "storage", "process monitor"}));
}

TEST_F(SheetAssembly, TheBoardsPageComesLastWhenTheBoardAnswers)
{
    const Names tabs = WithBoard([&] { return Tabs(); });
    EXPECT_EQ(tabs, (Names{"services", "snmp settings", "storage", "process monitor", "remote lumora"}));
}

TEST_F(SheetAssembly, ADomainControllerShowsDesktopMgmtBeforeProcessMonitor)
{
    m_options.SetString("ProductType", "LanmanNT");
    EXPECT_EQ(Tabs(), (Names{"services", "snmp settings", "storage", "desktop mgmt", "process monitor"}));
}

class ProductTypeOfAController : public SheetAssembly, public testing::WithParamInterface<const char*>
{
};

TEST_P(ProductTypeOfAController, CountsInAnyLetterCase)
{
    m_options.SetString("ProductType", GetParam());
    EXPECT_EQ(Tabs().at(3), "desktop mgmt");
}

INSTANTIATE_TEST_SUITE_P(LetterCases, ProductTypeOfAController,
                         testing::Values("LANMANNT", "lanmannt", "Lanmannt"));

class ProductTypeOfAnotherMachine : public SheetAssembly, public testing::WithParamInterface<const char*>
{
};

TEST_P(ProductTypeOfAnotherMachine, HidesDesktopMgmt)
{
    m_options.SetString("ProductType", GetParam());
    EXPECT_EQ(Tabs().at(3), "process monitor");
}

INSTANTIATE_TEST_SUITE_P(Texts, ProductTypeOfAnotherMachine,
                         testing::Values("", "WinNT", "ServerNT", "LanmanntX", "Lanman"));

TEST_F(SheetAssembly, AnUnreadableProductTypeHidesDesktopMgmt)
{
    m_options.DeleteValue("ProductType");
    EXPECT_EQ(Tabs().size(), 4U);
}

TEST_F(SheetAssembly, AProductTypeOfAnotherTypeHidesDesktopMgmt)
{
    m_options.SetExpandString("ProductType", "LanmanNT");
    EXPECT_EQ(Tabs().size(), 4U);
}

TEST_F(SheetAssembly, AMissingProductOptionsKeyHidesDesktopMgmt)
{
    m_options.Delete();
    EXPECT_EQ(Tabs().size(), 4U);
}

TEST_F(SheetAssembly, TheClientSwitchShowsDesktopMgmtAnywhere)
{
    const Names tabs = WithCommandLine("control.exe vtnmgmt.cpl,x/clIent", [&] { return Tabs(); });
    EXPECT_EQ(tabs, (Names{"services", "snmp settings", "storage", "desktop mgmt", "process monitor"}));
}

TEST_F(SheetAssembly, TheSetupSwitchHidesProcessMonitor)
{
    const Names tabs = WithCommandLine("control.exe vtnmgmt.cpl /Setup", [&] { return Tabs(); });
    EXPECT_EQ(tabs, (Names{"services", "snmp settings", "storage"}));
}

TEST_F(SheetAssembly, ABoardLibraryWithoutEntryHidesThePage)
{
    auto load = support::HookImport<decltype(LoadLibraryA)>(
        thisProgram, "LoadLibraryA", [](auto original, LPCSTR) { return original("kernel32.dll"); });
    EXPECT_EQ(Tabs().size(), 4U);
}

// --- saving

TEST_F(SheetAssembly, SavesPagesWithoutATabToo)
{
    EXPECT_EQ(m_sheet.SaveAllPages(), 0U);
    EXPECT_EQ(m_sheet.saved, (Names{"services", "snmp settings", "storage", "desktop mgmt"}));
}

TEST_F(SheetAssembly, SavesProcessMonitorAndTheBoardOnlyWhenChanged)
{
    m_sheet.processMonitor.isChanged = true;
    m_sheet.remoteLumora.isChanged = true;
    m_sheet.SaveAllPages();
    EXPECT_EQ(m_sheet.saved, (Names{"services", "snmp settings", "process monitor", "storage", "desktop mgmt",
                                    "remote lumora"}));
}

TEST_F(SheetAssembly, TheResultOfASaveIsTheBoards)
{
    m_sheet.storage.saveResult = 5;
    m_sheet.remoteLumora.saveResult = 31;
    EXPECT_EQ(m_sheet.SaveAllPages(), 0U);
    m_sheet.remoteLumora.isChanged = true;
    EXPECT_EQ(m_sheet.SaveAllPages(), 31U);
}

TEST_F(SheetAssembly, ReportsTheChangesOfEachPageByItsRole)
{
    m_sheet.services.isChanged = m_sheet.desktopMgmt.isChanged = true;
    for (const PageRole role : {PageRole::Services, PageRole::Desktop})
        EXPECT_TRUE(m_sheet.IsChanged(role));
    for (const PageRole role : {PageRole::Storage, PageRole::Snmp, PageRole::Board, PageRole::ProcessMonitor})
        EXPECT_FALSE(m_sheet.IsChanged(role));
}

// --- the window: Apply, Help

// The row of buttons before and after the sheet has arranged it.
class ButtonRowSheet : public TestSheet
{
  public:
    BOOL OnInitDialog() override
    {
        const BOOL result = TestSheet::OnInitDialog();
        isApplyVisible = GetDlgItem(ID_APPLY_NOW)->IsWindowVisible() != FALSE;
        isApplyEnabled = GetDlgItem(ID_APPLY_NOW)->IsWindowEnabled() != FALSE;
        isHelpEnabled = GetDlgItem(IDHELP)->IsWindowEnabled() != FALSE;
        GetDlgItem(ID_APPLY_NOW)->GetWindowRect(&apply);
        GetDlgItem(IDHELP)->GetWindowRect(&help);
        return result;
    }

    CRect apply;
    CRect help;
    bool isApplyVisible = true;
    bool isApplyEnabled = true;
    bool isHelpEnabled = false;
};

TEST_F(SheetAssembly, HelpStandsInThePlaceOfApply)
{
    ButtonRowSheet sheet;
    sheet.BuildPages();
    EXPECT_EQ(sheet.DoModal(), IDCANCEL);
    EXPECT_FALSE(sheet.isApplyVisible);
    EXPECT_FALSE(sheet.isApplyEnabled);
    EXPECT_TRUE(sheet.isHelpEnabled);
    EXPECT_EQ(sheet.help.left, sheet.apply.left);
    EXPECT_EQ(sheet.help.top, sheet.apply.top);
}

class SheetHelp : public SheetAssembly
{
  protected:
    SheetHelp() { Recorder().Clear(); }

    // The library is looked for once per program, so one recorder serves all tests.
    static support::HelpRecorder& Recorder()
    {
        static support::HelpRecorder recorder(thisProgram);
        return recorder;
    }

    // Opens the sheet with the page at `tab` in front, asks for help and closes it. Topics that were shown.
    Names AskForHelp(int tab)
    {
        m_sheet.commands = {ID_HELP};
        m_sheet.m_psh.nStartPage = static_cast<UINT>(tab);
        m_sheet.DoModal();
        Names topics;
        for (const support::HelpRequest& request : Recorder().Requests())
            topics.push_back(request.topic);
        return topics;
    }
};

class HelpOfEachPage : public SheetHelp, public testing::WithParamInterface<int>
{
};

TEST_P(HelpOfEachPage, IsTheTopicOfThePageInFront)
{
    m_options.SetString("ProductType", "LanmanNT");
    const Names tabs = WithBoard([&] { return Tabs(); });
    EXPECT_EQ(AskForHelp(GetParam()), Names{tabs.at(static_cast<std::size_t>(GetParam()))});
}

INSTANTIATE_TEST_SUITE_P(Tabs, HelpOfEachPage, testing::Range(0, 6));

TEST_F(SheetHelp, APageThatCannotBeLeftGetsNoHelp)
{
    m_sheet.BuildPages();
    m_sheet.storage.letsGo = FALSE;
    EXPECT_EQ(AskForHelp(2), Names{});
}

TEST_F(SheetHelp, AnUnknownPageGetsNoHelp)
{
    NotingPage stranger(IDD_STORAGE, "stranger", m_sheet.saved);
    m_sheet.AddPage(&stranger);
    EXPECT_EQ(AskForHelp(0), Names{});
}

// --- OK

// A sheet that is shown with given pages visited and ends with OK.
class OkSheet : public TestSheet
{
  public:
    BOOL OnInitDialog() override
    {
        const BOOL result = CSheetAssembly::OnInitDialog();
        PostMessage(PSM_SETCURSEL, 1, 0);
        PostMessage(WM_COMMAND, IDOK, 0);
        return result;
    }
};

TEST_F(SheetAssembly, OkSavesAllPagesOncePerVisitedPage)
{
    OkSheet sheet;
    sheet.BuildPages();
    EXPECT_EQ(sheet.DoModal(), IDOK);
    const Names once{"services", "snmp settings", "storage", "desktop mgmt"};
    Names twice = once;
    twice.insert(twice.end(), once.begin(), once.end());
    EXPECT_EQ(sheet.saved, twice);
}

} // namespace
