// The sheet as its user meets it: buttons, results, help, keys and the owner.
#include "SheetFixture.h"

namespace {

struct Sheet : SheetTest
{
};

TEST_F(Sheet, AnswersOkWhenTheUserPressesOk)
{
    const INT_PTR result = Run([this] { sheet.PressButton(PSBTN_OK); });

    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(sheet.m_hWnd, nullptr);
    EXPECT_EQ(DialogsOfThread(), 0);
}

TEST_F(Sheet, AnswersCancelWhenTheUserPressesCancel)
{
    EXPECT_EQ(Run([this] { sheet.PressButton(PSBTN_CANCEL); }), IDCANCEL);
    EXPECT_EQ(log, (Log{"first init", "first shown", "first cancel"}));
}

TEST_F(Sheet, AnswersCancelWhenItIsClosed)
{
    EXPECT_EQ(Run([this] { sheet.PostMessage(WM_SYSCOMMAND, SC_CLOSE); }), IDCANCEL);
}

TEST_F(Sheet, AnswersCancelAfterApplyToo)
{
    const INT_PTR result = Run([this] {
        first.SetModified();
        sheet.SendMessage(PSM_PRESSBUTTON, PSBTN_APPLYNOW);
        sheet.PressButton(PSBTN_CANCEL);
    });

    EXPECT_EQ(result, IDCANCEL);
    EXPECT_EQ(log,
              (Log{"first init", "first shown", "first left", "first OK", "first shown", "first cancel"}));
}

TEST_F(Sheet, AnswersCancelOnEscape)
{
    EXPECT_EQ(Run([this] { sheet.GetActivePage()->PostMessage(WM_KEYDOWN, VK_ESCAPE, 1); }), IDCANCEL);
}

TEST_F(Sheet, AnswersOkOnEnter)
{
    EXPECT_EQ(
        Run([this] { sheet.GetActivePage()->GetDlgItem(IDC_EDIT)->PostMessage(WM_KEYDOWN, VK_RETURN, 1); }),
        IDOK);
}

TEST_F(Sheet, CanBeRunAgain)
{
    Run([this] { sheet.PressButton(PSBTN_OK); });
    log.clear();
    const INT_PTR again = Run([this] { sheet.PressButton(PSBTN_OK); });

    EXPECT_EQ(again, IDOK);
    EXPECT_EQ(log, (Log{"first init", "first shown", "first left", "first OK"}));
}

TEST_F(Sheet, StartsWithTheSelectedPage)
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

TEST_F(Sheet, WithoutAnOwnerAppearsInTheMiddle)
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

TEST_F(Sheet, KnowsItsPagesAndTheOneInFront)
{
    int index = -1;
    CPropertyPage* active = nullptr;
    Run([&] {
        sheet.SetActivePage(1);
        index = sheet.GetActiveIndex();
        active = sheet.GetActivePage();
        sheet.PressButton(PSBTN_CANCEL);
    });

    EXPECT_EQ(index, 1);
    EXPECT_EQ(active, &second);
    EXPECT_EQ(sheet.GetPageCount(), 3);
    EXPECT_EQ(sheet.GetPage(2), &third);
}

TEST_F(Sheet, HasATitleFromTheStringTable)
{
    CPropertySheet titled(IDS_CAPTION);
    titled.AddPage(&first);
    CString title;
    first.m_atInit = [&] {
        first.GetParent()->GetWindowText(title);
        first.GetParent()->PostMessage(PSM_PRESSBUTTON, PSBTN_CANCEL);
    };
    titled.DoModal();

    EXPECT_EQ(title, "From the table");
}

TEST_F(Sheet, HasTheApplyAndHelpButtonsOfTheSystem)
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

TEST_F(Sheet, HearsOfHelpFromTheHelpButton)
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

int g_filteredKeys = 0;

LRESULT CALLBACK CountF1(int code, WPARAM wParam, LPARAM lParam)
{
    const auto message = reinterpret_cast<const MSG*>(lParam);
    if (code == MSGF_DIALOGBOX && message->message == WM_KEYDOWN && message->wParam == VK_F1)
        ++g_filteredKeys;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(Sheet, ShowsItsKeysToAMessageFilter)
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

TEST_F(Sheet, KeepsItsOwnerDisabledWhileItRuns)
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

TEST_F(Sheet, DisablesTheWindowAroundItsParent)
{
    CTestOwner owner;
    CWnd child;
    child.CreateEx(0, "EDIT", "", WS_CHILD, CRect(0, 0, 5, 5), &owner, 1);
    CTestSheet owned(&child);
    owned.AddPage(&first);
    BOOL enabled = TRUE;
    owned.m_step = [&] {
        enabled = owner.IsWindowEnabled();
        owned.EndDialog(1);
    };
    owned.DoModal();

    EXPECT_FALSE(enabled);
    EXPECT_TRUE(owner.IsWindowEnabled());
}

TEST_F(Sheet, LeavesAnOwnerDisabledThatWasSoBefore)
{
    CTestOwner owner;
    owner.EnableWindow(FALSE);
    CTestSheet owned(&owner);
    owned.AddPage(&first);
    owned.m_step = [&] { owned.PressButton(PSBTN_OK); };
    owned.DoModal();

    EXPECT_FALSE(owner.IsWindowEnabled());
}

TEST_F(Sheet, AnswersMinusOneWhenItsWindowIsRefused)
{
    sheet.m_refused = true;

    EXPECT_EQ(sheet.DoModal(), -1);
    EXPECT_EQ(sheet.m_hWnd, nullptr);
    EXPECT_EQ(DialogsOfThread(), 0);
}

TEST_F(Sheet, EndsWithItsProgram)
{
    EXPECT_EQ(Run([] { PostQuitMessage(5); }), IDCANCEL);

    MSG message = {};
    EXPECT_TRUE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 5U);
}

} // namespace
