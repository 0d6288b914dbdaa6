// Pages: being shown, left, applied, cancelled, and their data.
#include "SheetFixture.h"
#include "ThreadState.h"

#include <commctrl.h>

namespace {

struct Page : SheetTest
{
};

TEST_F(Page, RunsOkOnceOnEveryPageThatWasShown)
{
    Run([this] {
        sheet.SetActivePage(2);
        sheet.SetActivePage(0);
        log.clear();
        sheet.PressButton(PSBTN_OK);
    });

    EXPECT_EQ(log, (Log{"first left", "first OK", "third OK"}));
}

TEST_F(Page, StaysWhenTheActivePageRefusesToBeLeft)
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

TEST_F(Page, StaysWhenAPageRefusesToApply)
{
    second.m_mayApply = FALSE;
    BOOL there = FALSE;
    Run([&] {
        sheet.SetActivePage(1);
        sheet.SetActivePage(0);
        sheet.SendMessage(PSM_PRESSBUTTON, PSBTN_OK);
        there = sheet.SendMessage(PSM_GETCURRENTPAGEHWND) != 0;
        sheet.PressButton(PSBTN_CANCEL);
    });

    EXPECT_TRUE(there);
}

TEST_F(Page, StaysWhenThePageInFrontForbidsCancel)
{
    first.m_mayCancel = FALSE;
    BOOL there = FALSE;
    const INT_PTR result = Run([&] {
        sheet.SendMessage(PSM_PRESSBUTTON, PSBTN_CANCEL);
        there = sheet.SendMessage(PSM_GETCURRENTPAGEHWND) != 0;
        sheet.PressButton(PSBTN_OK);
    });

    EXPECT_TRUE(there);
    EXPECT_EQ(result, IDOK);
}

TEST_F(Page, PassesOverAPageThatRefusesToBeShown)
{
    second.m_mayShow = FALSE;
    CPropertyPage* shown = nullptr;
    Run([&] {
        sheet.SetActivePage(1);
        shown = sheet.GetActivePage();
        sheet.PressButton(PSBTN_CANCEL);
    });

    EXPECT_NE(shown, &second);
}

TEST_F(Page, ExchangesDataWhenShownOrLeft)
{
    first.m_text = "loaded";
    CString shownFirst;
    CString left;
    CString shownAgain;
    Run([&] {
        first.GetDlgItemText(IDC_EDIT, shownFirst);
        first.SetDlgItemText(IDC_EDIT, "typed");
        sheet.SetActivePage(1);
        left = first.m_text;
        first.m_text = "changed meanwhile";
        sheet.SetActivePage(0);
        first.GetDlgItemText(IDC_EDIT, shownAgain);
        sheet.PressButton(PSBTN_CANCEL);
    });

    EXPECT_EQ(shownFirst, "loaded");
    EXPECT_EQ(left, "typed");
    EXPECT_EQ(shownAgain, "changed meanwhile");
}

// Counts its data exchanges.
class CCountingPage : public CPropertyPage
{
  public:
    CCountingPage() : CPropertyPage(IDD_PAGE1) {}
    void DoDataExchange(CDataExchange* /*pDX*/) override { ++m_exchanges; }

    int m_exchanges = 0;
};

TEST_F(Page, FillsAPageWhenItIsFirstShown)
{
    CCountingPage page;
    CTestSheet other;
    other.AddPage(&page);
    other.m_step = [&] { other.EndDialog(1); };
    other.DoModal();
    EXPECT_EQ(page.m_exchanges, 1);
    other.DoModal();

    EXPECT_EQ(page.m_exchanges, 2);
}

// A sheet that was made without the class library has no outcome to keep.
TEST_F(Page, MayBeAppliedAndResetInASheetOfAnotherKind)
{
    CCountingPage page;
    PROPSHEETHEADERA header{};
    header.dwSize = sizeof header;
    header.dwFlags = PSH_PROPSHEETPAGE | PSH_MODELESS;
    header.nPages = 1;
    header.ppsp = &page.m_psp;
    const auto other = reinterpret_cast<HWND>(PropertySheetA(&header));
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(page.m_exchanges, 1);
    EXPECT_TRUE(SendMessageA(other, PSM_APPLY, 0, 0));
    EXPECT_GT(page.m_exchanges, 1);
    SendMessageA(other, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
    DestroyWindow(other);
}

TEST_F(Page, ForgetsAPageThatWasAnnouncedButNeverMade)
{
    Run([&] {
        second.m_psp.pfnCallback(nullptr, PSPCB_CREATE, &second.m_psp);
        sheet.PressButton(PSBTN_CANCEL);
    });

    EXPECT_EQ(CThreadState::Get().m_creation, nullptr);
}

std::string TabText(const CPropertySheet& sheet, int index)
{
    char text[32] = "";
    TCITEMA item = {};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    const auto tabs = reinterpret_cast<HWND>(sheet.SendMessage(PSM_GETTABCONTROL));
    SendMessageA(tabs, TCM_GETITEMA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
    return text;
}

TEST(PageTitle, IsTheTemplatesUnlessThePageHasACaption)
{
    const CPropertyPage plain(IDD_PAGE1);
    const CPropertyPage titled(IDD_PAGE1, 1);
    EXPECT_EQ(plain.m_psp.dwFlags & PSP_USETITLE, 0);
    EXPECT_EQ(titled.m_psp.dwFlags & PSP_USETITLE, PSP_USETITLE);
}

TEST_F(Page, HasATabWithItsCaptionOrAText)
{
    CPropertyPage renamed(IDD_PAGE1, IDS_PAGECAPTION);
    sheet.AddPage(&renamed);
    std::string own;
    std::string other;
    Run([&] {
        own = TabText(sheet, 1);
        other = TabText(sheet, 3);
        sheet.PressButton(PSBTN_CANCEL);
    });

    EXPECT_EQ(own, "Second");
    EXPECT_EQ(other, "Renamed");
}

TEST_F(Page, KeepsTheClicksOfItsControlsToItself)
{
    Run([&] {
        first.SendMessage(WM_COMMAND, ID_CONTROL_COMMAND);
        sheet.PressButton(PSBTN_CANCEL);
    });

    EXPECT_EQ(sheet.m_commands, 0);
}

TEST_F(Page, SendsOnTheCommandsThatItDoesNotHandle)
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

} // namespace
