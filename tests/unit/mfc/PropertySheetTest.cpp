// The sheet: pages, buttons, results, help and keys.
#include "TestDialogs.h"

#include <commctrl.h>
#include <gtest/gtest.h>

namespace {

struct SheetTest : testing::Test
{
    void SetUp() override
    {
        sheet.AddPage(&first);
        sheet.AddPage(&second);
        sheet.AddPage(&third);
    }

    // Runs the sheet with `step` as what its user does.
    INT_PTR Run(const std::function<void()>& step)
    {
        sheet.m_step = step;
        return sheet.DoModal();
    }

    Log log;
    CTestPage first{IDD_PAGE1, log, "first"};
    CTestPage second{IDD_PAGE2, log, "second"};
    CTestPage third{IDD_PAGE3, log, "third"};
    CTestSheet sheet;
};

TEST_F(SheetTest, AnswersOkWhenTheUserPressesOk)
{
    const INT_PTR result = Run([this] { sheet.PressButton(PSBTN_OK); });

    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(sheet.m_hWnd, nullptr);
    EXPECT_EQ(DialogsOfThread(), 0);
}

TEST_F(SheetTest, AnswersCancelWhenTheUserPressesCancel)
{
    EXPECT_EQ(Run([this] { sheet.PressButton(PSBTN_CANCEL); }), IDCANCEL);
    EXPECT_EQ(log, (Log{"first init", "first shown", "first cancel"}));
}

TEST_F(SheetTest, AnswersCancelWhenItIsClosed)
{
    EXPECT_EQ(Run([this] { sheet.PostMessage(WM_SYSCOMMAND, SC_CLOSE); }), IDCANCEL);
}

TEST_F(SheetTest, AnswersCancelOnEscape)
{
    EXPECT_EQ(Run([this] { sheet.GetActivePage()->PostMessage(WM_KEYDOWN, VK_ESCAPE, 1); }), IDCANCEL);
}

TEST_F(SheetTest, AnswersOkOnEnter)
{
    EXPECT_EQ(
        Run([this] { sheet.GetActivePage()->GetDlgItem(IDC_EDIT)->PostMessage(WM_KEYDOWN, VK_RETURN, 1); }),
        IDOK);
}

TEST_F(SheetTest, RunsOkOnceOnEveryPageThatWasShown)
{
    Run([this] {
        sheet.SetActivePage(2);
        sheet.SetActivePage(0);
        log.clear();
        sheet.PressButton(PSBTN_OK);
    });

    EXPECT_EQ(log, (Log{"first left", "first OK", "third OK"}));
}

TEST_F(SheetTest, StaysWhenTheActivePageRefusesToBeLeft)
{
    first.m_mayLeave = FALSE;
    BOOL moved = TRUE;
    const INT_PTR result = Run([&] {
        moved = sheet.SetActivePage(1);
        sheet.SendMessage(PSM_PRESSBUTTON, PSBTN_OK);
        sheet.PressButton(PSBTN_CANCEL);
    });

    EXPECT_FALSE(moved);
    EXPECT_EQ(result, IDCANCEL);
    EXPECT_EQ(log, (Log{"first init", "first shown", "first left", "first left", "first cancel"}));
}

TEST_F(SheetTest, CanBeRunAgain)
{
    Run([this] { sheet.PressButton(PSBTN_OK); });
    log.clear();
    const INT_PTR again = Run([this] { sheet.PressButton(PSBTN_OK); });

    EXPECT_EQ(again, IDOK);
    EXPECT_EQ(log, (Log{"first init", "first shown", "first left", "first OK"}));
}

TEST_F(SheetTest, StartsWithTheSelectedPage)
{
    CTestSheet other(nullptr, 1);
    other.AddPage(&first);
    other.AddPage(&second);
    EXPECT_EQ(other.GetActiveIndex(), 1);
    CPropertyPage* active = nullptr;
    other.m_step = [&] {
        active = other.GetActivePage();
        other.EndDialog(77);
    };

    EXPECT_EQ(other.DoModal(), 77);
    EXPECT_EQ(active, &second);
    EXPECT_EQ(log, (Log{"second init", "second shown"}));
}

TEST_F(SheetTest, AppearsInTheMiddleOfTheWorkAreaWithoutAnOwner)
{
    CRect work;
    SystemParametersInfoA(SPI_GETWORKAREA, 0, static_cast<RECT*>(&work), 0);
    CRect place;
    Run([&] {
        sheet.GetWindowRect(&place);
        sheet.PressButton(PSBTN_CANCEL);
    });
    EXPECT_NEAR(place.CenterPoint().x, work.CenterPoint().x, 1);
    EXPECT_NEAR(place.CenterPoint().y, work.CenterPoint().y, 1);
}

TEST_F(SheetTest, NamesItsPagesAndTheirTabs)
{
    int index = -1;
    char title[32] = "";
    char tab[32] = "";
    Run([&] {
        sheet.SetActivePage(1);
        index = sheet.GetActiveIndex();
        sheet.GetWindowText(title, sizeof title);
        TCITEMA item = {};
        item.mask = TCIF_TEXT;
        item.pszText = tab;
        item.cchTextMax = sizeof tab;
        const auto tabs = reinterpret_cast<HWND>(sheet.SendMessage(PSM_GETTABCONTROL));
        SendMessageA(tabs, TCM_GETITEMA, 1, reinterpret_cast<LPARAM>(&item));
        sheet.PressButton(PSBTN_CANCEL);
    });

    EXPECT_EQ(index, 1);
    EXPECT_STREQ(title, "Sheet");
    EXPECT_STREQ(tab, "Second");
    EXPECT_EQ(sheet.GetPageCount(), 3);
    EXPECT_EQ(sheet.GetPage(2), &third);
}

TEST_F(SheetTest, HasTheApplyAndHelpButtonsOfTheSystem)
{
    bool apply = false;
    bool help = false;
    bool enabledBefore = true;
    bool enabledAfter = false;
    Run([&] {
        apply = sheet.GetDlgItem(ID_APPLY_NOW) != nullptr;
        help = sheet.GetDlgItem(IDHELP) != nullptr;
        enabledBefore = sheet.GetDlgItem(ID_APPLY_NOW)->IsWindowEnabled();
        first.SetModified();
        enabledAfter = sheet.GetDlgItem(ID_APPLY_NOW)->IsWindowEnabled();
        sheet.PressButton(PSBTN_CANCEL);
    });

    EXPECT_TRUE(apply);
    EXPECT_TRUE(help);
    EXPECT_FALSE(enabledBefore);
    EXPECT_TRUE(enabledAfter);
}

TEST_F(SheetTest, HearsOfHelpFromTheHelpButton)
{
    first.m_psp.dwFlags |= PSP_HASHELP;
    BOOL enabled = FALSE;
    Run([&] {
        CWnd* help = sheet.GetDlgItem(IDHELP);
        enabled = help->IsWindowEnabled();
        help->SendMessage(BM_CLICK);
        sheet.PressButton(PSBTN_CANCEL);
    });

    EXPECT_TRUE(enabled);
    EXPECT_EQ(sheet.m_helps, 1);
}

TEST_F(SheetTest, GetsTheCommandsThatItsPagesDoNotHandle)
{
    const int before = TestApp().m_commands;
    Run([&] {
        first.SendMessage(WM_COMMAND, ID_SHEET_COMMAND);
        first.SendMessage(WM_COMMAND, ID_APP_COMMAND);
        first.SendMessage(WM_COMMAND, ID_NOBODYS_COMMAND);
        sheet.PressButton(PSBTN_CANCEL);
    });

    EXPECT_EQ(sheet.m_commands, 1);
    EXPECT_EQ(TestApp().m_commands, before + 1);
}

int g_filteredKeys = 0;

LRESULT CALLBACK CountF1(int code, WPARAM wParam, LPARAM lParam)
{
    const auto message = reinterpret_cast<const MSG*>(lParam);
    if (code == MSGF_DIALOGBOX && message->message == WM_KEYDOWN && message->wParam == VK_F1)
        ++g_filteredKeys;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(SheetTest, ShowsItsKeysToAMessageFilter)
{
    g_filteredKeys = 0;
    const HHOOK hook = SetWindowsHookExA(WH_MSGFILTER, &CountF1, nullptr, GetCurrentThreadId());
    Run([this] {
        sheet.GetActivePage()->GetDlgItem(IDC_EDIT)->PostMessage(WM_KEYDOWN, VK_F1, 1);
        sheet.PressButton(PSBTN_CANCEL);
    });
    UnhookWindowsHookEx(hook);

    EXPECT_EQ(g_filteredKeys, 1);
}

TEST_F(SheetTest, KeepsItsOwnerDisabledWhileItRuns)
{
    CTestOwner owner;
    CTestSheet owned(&owner);
    owned.AddPage(&first);
    BOOL enabled = TRUE;
    CWnd* ownerSeen = nullptr;
    owned.m_step = [&] {
        enabled = owner.IsWindowEnabled();
        ownerSeen = owned.GetOwner();
        owned.PressButton(PSBTN_OK);
    };
    owned.DoModal();

    EXPECT_FALSE(enabled);
    EXPECT_EQ(ownerSeen, &owner);
    EXPECT_TRUE(owner.IsWindowEnabled());
    EXPECT_EQ(GetActiveWindow(), owner.m_hWnd);
}

TEST_F(SheetTest, LeavesAnOwnerDisabledThatWasSoBefore)
{
    CTestOwner owner;
    owner.EnableWindow(FALSE);
    CTestSheet owned(&owner);
    owned.AddPage(&first);
    owned.m_step = [&] { owned.PressButton(PSBTN_OK); };
    owned.DoModal();

    EXPECT_FALSE(owner.IsWindowEnabled());
}

TEST_F(SheetTest, AnswersMinusOneWhenItsWindowIsRefused)
{
    sheet.m_refused = true;

    EXPECT_EQ(sheet.DoModal(), -1);
    EXPECT_EQ(sheet.m_hWnd, nullptr);
    EXPECT_EQ(DialogsOfThread(), 0);
}

TEST_F(SheetTest, TakesItsTitleAndATabFromTheStringTable)
{
    CPropertyPage page(IDD_PAGE1, IDS_PAGECAPTION);
    CPropertySheet titled(IDS_CAPTION);
    titled.AddPage(&page);

    EXPECT_NE(page.m_psp.dwFlags & PSP_USETITLE, 0U);
    EXPECT_EQ(titled.GetPageCount(), 1);
}

TEST_F(SheetTest, EndsWithItsProgram)
{
    EXPECT_EQ(Run([] { PostQuitMessage(5); }), IDCANCEL);

    MSG message = {};
    EXPECT_TRUE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 5U);
}

} // namespace
