// CWnd: texts, styles, radio buttons, coordinates, centring and the wait cursor.
#include "imports/ImportHook.h"
#include "TestDialogs.h"

#include <gtest/gtest.h>

namespace {

struct WndPlace : testing::Test
{
    void SetUp() override { ASSERT_TRUE(dialog.Create(IDD_CONTROLS, &owner)); }

    CTestOwner owner;
    CTestDialog dialog;
};

TEST_F(WndPlace, ReadsAndWritesTexts)
{
    CWnd* edit = dialog.GetDlgItem(IDC_EDIT);
    edit->SetWindowText("one");
    char buffer[3] = "";
    CString text;
    edit->GetWindowText(text);

    EXPECT_EQ(text, "one");
    EXPECT_EQ(edit->GetWindowTextLength(), 3);
    EXPECT_EQ(edit->GetWindowText(buffer, sizeof buffer), 2);
    EXPECT_STREQ(buffer, "on");

    dialog.SetDlgItemText(IDC_EDIT, "another");
    EXPECT_EQ(dialog.GetDlgItemText(IDC_EDIT, text), 7);
    EXPECT_EQ(text, "another");
    EXPECT_EQ(dialog.GetDlgItemText(IDC_ABSENT, text), 0);
    EXPECT_EQ(text, "");
}

TEST_F(WndPlace, FindsItsRelations)
{
    EXPECT_EQ(dialog.GetOwner(), &owner);
    EXPECT_EQ(dialog.GetDlgItem(IDC_ABSENT), nullptr);
    EXPECT_EQ(dialog.GetDlgItem(IDC_EDIT)->GetParent(), &dialog);
    EXPECT_EQ(dialog.GetDlgItem(IDC_EDIT)->GetDlgCtrlID(), IDC_EDIT);
}

TEST_F(WndPlace, MovesAWindowIntoAnother)
{
    CWnd* edit = dialog.GetDlgItem(IDC_EDIT);
    CWnd* list = dialog.GetDlgItem(IDC_LIST);

    EXPECT_EQ(edit->SetParent(list), &dialog);
    EXPECT_EQ(edit->GetParent(), list);
    edit->MoveWindow(CRect(1, 2, 31, 22));
    CRect place;
    edit->GetWindowRect(place);
    list->ScreenToClient(place);
    EXPECT_EQ(place, CRect(1, 2, 31, 22));
    list->ClientToScreen(place);
    CPoint corner(place.TopLeft());
    list->ScreenToClient(&corner);
    EXPECT_EQ(corner.x, 1);
    list->ClientToScreen(&corner);
    EXPECT_EQ(corner.x, place.left);
    edit->BringWindowToTop();
    EXPECT_EQ(GetTopWindow(list->m_hWnd), edit->m_hWnd);
}

TEST_F(WndPlace, ShowsAndEnables)
{
    CWnd* edit = dialog.GetDlgItem(IDC_EDIT);
    dialog.ShowWindow(SW_SHOW);
    edit->ShowWindow(SW_HIDE);
    EXPECT_FALSE(edit->IsWindowVisible());
    edit->ShowWindow(SW_SHOW);
    EXPECT_TRUE(edit->IsWindowVisible());
    edit->EnableWindow(FALSE);
    EXPECT_FALSE(edit->IsWindowEnabled());
    edit->EnableWindow();
    EXPECT_TRUE(edit->IsWindowEnabled());
}

TEST_F(WndPlace, GivesAndFindsTheFocus)
{
    dialog.ShowWindow(SW_SHOW);
    CWnd* edit = dialog.GetDlgItem(IDC_EDIT);
    dialog.GetDlgItem(IDC_BUTTON)->SetFocus();
    CWnd* before = edit->SetFocus();

    EXPECT_EQ(before, dialog.GetDlgItem(IDC_BUTTON));
    EXPECT_EQ(CWnd::GetFocus(), edit);
}

TEST_F(WndPlace, ChangesStyles)
{
    CWnd* edit = dialog.GetDlgItem(IDC_EDIT);

    EXPECT_TRUE(edit->ModifyStyle(WS_TABSTOP, WS_GROUP));
    EXPECT_EQ(edit->GetStyle() & (WS_TABSTOP | WS_GROUP), static_cast<DWORD>(WS_GROUP));
    EXPECT_FALSE(edit->ModifyStyle(WS_TABSTOP, WS_GROUP, SWP_FRAMECHANGED));
}

TEST_F(WndPlace, ChecksBoxesAndRadioButtons)
{
    dialog.CheckDlgButton(IDC_CHECK, BST_CHECKED);
    EXPECT_EQ(dialog.IsDlgButtonChecked(IDC_CHECK), static_cast<UINT>(BST_CHECKED));

    EXPECT_EQ(dialog.GetCheckedRadioButton(IDC_RADIO1, IDC_RADIO3), 0);
    dialog.CheckRadioButton(IDC_RADIO1, IDC_RADIO3, IDC_RADIO2);
    EXPECT_EQ(dialog.GetCheckedRadioButton(IDC_RADIO1, IDC_RADIO3), IDC_RADIO2);
    dialog.CheckRadioButton(IDC_RADIO1, IDC_RADIO3, IDC_RADIO3);
    EXPECT_EQ(dialog.GetCheckedRadioButton(IDC_RADIO1, IDC_RADIO3), IDC_RADIO3);
}

TEST_F(WndPlace, RepaintsOnDemand)
{
    dialog.ShowWindow(SW_SHOW);
    dialog.UpdateWindow();
    EXPECT_FALSE(GetUpdateRect(dialog.m_hWnd, nullptr, FALSE));
    dialog.Invalidate();
    EXPECT_TRUE(GetUpdateRect(dialog.m_hWnd, nullptr, FALSE));
    dialog.RedrawWindow();
    EXPECT_FALSE(GetUpdateRect(dialog.m_hWnd, nullptr, FALSE));
    CWnd* list = dialog.GetDlgItem(IDC_LIST);
    list->SetRedraw(FALSE);
    list->SetRedraw();
    EXPECT_TRUE(list->IsWindowVisible());
}

CRect PlaceOf(const CWnd& window)
{
    CRect place;
    window.GetWindowRect(place);
    return place;
}

CRect WorkArea()
{
    CRect work;
    SystemParametersInfoA(SPI_GETWORKAREA, 0, work.operator LPRECT(), 0);
    return work;
}

void ExpectCentred(const CRect& inner, const CRect& outer)
{
    EXPECT_NEAR(inner.CenterPoint().x, outer.CenterPoint().x, 1);
    EXPECT_NEAR(inner.CenterPoint().y, outer.CenterPoint().y, 1);
}

TEST_F(WndPlace, IsCentredOverItsOwner)
{
    dialog.CenterWindow();

    ExpectCentred(PlaceOf(dialog), PlaceOf(owner));
}

TEST_F(WndPlace, IsCentredOnTheScreenOfAHiddenOwner)
{
    owner.ShowWindow(SW_HIDE);
    dialog.CenterWindow();

    ExpectCentred(PlaceOf(dialog), WorkArea());
}

TEST_F(WndPlace, IsCentredOverTheWindowThatTheCallerNames)
{
    CTestOwner other;
    other.MoveWindow(CRect(400, 300, 900, 650));
    dialog.CenterWindow(&other);

    ExpectCentred(PlaceOf(dialog), PlaceOf(other));
}

TEST_F(WndPlace, StaysInsideTheWorkAreaWhenCentred)
{
    owner.MoveWindow(CRect(-300, -200, -100, -100));
    dialog.CenterWindow();
    EXPECT_EQ(PlaceOf(dialog).TopLeft().x, WorkArea().left);
    EXPECT_EQ(PlaceOf(dialog).TopLeft().y, WorkArea().top);

    owner.MoveWindow(CRect(5000, 5000, 5100, 5100));
    dialog.CenterWindow();
    EXPECT_EQ(PlaceOf(dialog).right, WorkArea().right);
    EXPECT_EQ(PlaceOf(dialog).bottom, WorkArea().bottom);
}

// A second monitor to the right of the first.
const CRect secondWorkArea(5000, 100, 6000, 900);
const auto secondMonitor = reinterpret_cast<HMONITOR>(2);

// Puts the window on the second monitor, wherever it is.
auto PutOnTheSecondMonitor(const CWnd& window)
{
    return support::HookImport<decltype(MonitorFromWindow)>(
        GetModuleHandleA(nullptr), "MonitorFromWindow",
        [onTheSecond = window.m_hWnd](auto original, HWND asked, DWORD otherwise) {
            return asked == onTheSecond ? secondMonitor : original(asked, otherwise);
        });
}

auto DescribeTheSecondMonitor()
{
    return support::HookImport<decltype(GetMonitorInfoA)>(
        GetModuleHandleA(nullptr), "GetMonitorInfoA",
        [](auto original, HMONITOR monitor, MONITORINFO* info) -> BOOL {
            if (monitor != secondMonitor)
                return original(monitor, info);
            info->rcWork = secondWorkArea;
            return TRUE;
        });
}

TEST_F(WndPlace, StaysOnTheMonitorOfItsOwner)
{
    owner.MoveWindow(CRect(4800, 50, 4900, 90));
    const auto place = PutOnTheSecondMonitor(owner);
    const auto describe = DescribeTheSecondMonitor();
    dialog.CenterWindow();

    EXPECT_EQ(PlaceOf(dialog).left, secondWorkArea.left);
    EXPECT_EQ(PlaceOf(dialog).top, secondWorkArea.top);
}

TEST_F(WndPlace, IsCentredOnTheMonitorOfAHiddenOwner)
{
    owner.ShowWindow(SW_HIDE);
    const auto place = PutOnTheSecondMonitor(owner);
    const auto describe = DescribeTheSecondMonitor();
    dialog.CenterWindow();

    ExpectCentred(PlaceOf(dialog), secondWorkArea);
}

TEST_F(WndPlace, IsCentredOnItsOwnMonitorWithoutAnOwner)
{
    const auto place = PutOnTheSecondMonitor(owner);
    const auto describe = DescribeTheSecondMonitor();
    owner.CenterWindow();

    ExpectCentred(PlaceOf(owner), secondWorkArea);
}

TEST_F(WndPlace, CentresAChildInItsParent)
{
    CWnd* button = dialog.GetDlgItem(IDC_BUTTON);
    button->CenterWindow();
    CRect client;
    dialog.GetClientRect(client);
    dialog.ClientToScreen(client);

    ExpectCentred(PlaceOf(*button), client);
}

TEST(WaitCursor, NestsAndPutsTheOldCursorBack)
{
    const HCURSOR arrow = LoadCursorA(nullptr, IDC_ARROW);
    const HCURSOR wait = LoadCursorA(nullptr, IDC_WAIT);
    SetCursor(arrow);

    CWnd::BeginWaitCursor();
    EXPECT_EQ(GetCursor(), wait);
    {
        CWaitCursor inner;
        SetCursor(arrow);
        inner.Restore();
        EXPECT_EQ(GetCursor(), wait);
    }
    EXPECT_EQ(GetCursor(), wait);
    CWnd::EndWaitCursor();
    EXPECT_EQ(GetCursor(), arrow);
}

TEST(WaitCursor, IgnoresOneEndTooMany)
{
    const HCURSOR arrow = LoadCursorA(nullptr, IDC_ARROW);
    SetCursor(arrow);
    CWnd::EndWaitCursor();
    CWnd::RestoreWaitCursor();
    EXPECT_EQ(GetCursor(), arrow);

    CWnd::BeginWaitCursor();
    EXPECT_NE(GetCursor(), arrow);
    CWnd::EndWaitCursor();
    EXPECT_EQ(GetCursor(), arrow);
}

TEST(Rect, MeasuresItself)
{
    CRect rect(10, 20, 110, 70);
    EXPECT_EQ(rect.Width(), 100);
    EXPECT_EQ(rect.Height(), 50);
    EXPECT_EQ(rect.Size().cx, 100);
    EXPECT_FALSE(rect.IsRectEmpty());
    EXPECT_TRUE(CRect().IsRectEmpty());
    rect.OffsetRect(-10, -20);
    EXPECT_EQ(rect, CRect(0, 0, 100, 50));
}

} // namespace
