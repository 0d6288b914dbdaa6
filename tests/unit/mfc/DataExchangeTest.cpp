// Dialog data exchange and the controls that it binds.
#include "support/MessageBoxScript.h"
#include "TestDialogs.h"

#include <gtest/gtest.h>

namespace {

// Counts the notifications of its edit control.
class CExchanging : public CTestDialog
{
  public:
    void OnChange() { ++m_changes; }

    int m_changes = 0;

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CExchanging, CTestDialog)
    ON_EN_CHANGE(IDC_EDIT, &CExchanging::OnChange)
END_MESSAGE_MAP()

struct DataExchange : testing::Test
{
    void SetUp() override
    {
        ASSERT_TRUE(dialog.Create(IDD_CONTROLS));
        dialog.ShowWindow(SW_SHOW);
    }

    CExchanging dialog;
};

TEST_F(DataExchange, BindsControls)
{
    CEdit edit;
    dialog.m_exchange = [&](CDataExchange* pDX) { DDX_Control(pDX, IDC_EDIT, edit); };

    EXPECT_TRUE(dialog.UpdateData(FALSE));
    EXPECT_EQ(edit.GetDlgCtrlID(), IDC_EDIT);
    EXPECT_EQ(dialog.GetDlgItem(IDC_EDIT), &edit);
}

TEST_F(DataExchange, LeavesABoundControlAlone)
{
    CEdit edit;
    edit.SubclassDlgItem(IDC_EDIT, &dialog);
    const LONG_PTR procedure = GetWindowLongPtrA(edit.m_hWnd, GWLP_WNDPROC);
    dialog.m_exchange = [&](CDataExchange* pDX) { DDX_Control(pDX, IDC_EDIT, edit); };

    EXPECT_TRUE(dialog.UpdateData(FALSE));
    EXPECT_TRUE(dialog.UpdateData(TRUE));
    EXPECT_EQ(GetWindowLongPtrA(edit.m_hWnd, GWLP_WNDPROC), procedure);
}

TEST_F(DataExchange, ThrowsWhenAControlIsMissingOrTaken)
{
    CEdit edit;
    dialog.m_exchange = [&](CDataExchange* pDX) { DDX_Control(pDX, IDC_ABSENT, edit); };
    EXPECT_THROW(dialog.UpdateData(FALSE), CNotSupportedException);

    CEdit holder;
    holder.SubclassDlgItem(IDC_EDIT, &dialog);
    dialog.m_exchange = [&](CDataExchange* pDX) { DDX_Control(pDX, IDC_EDIT, edit); };
    EXPECT_THROW(dialog.UpdateData(FALSE), CNotSupportedException);
}

TEST_F(DataExchange, MovesTexts)
{
    CString text("in");
    dialog.m_exchange = [&](CDataExchange* pDX) { DDX_Text(pDX, IDC_EDIT, text); };
    dialog.UpdateData(FALSE);
    CString shown;
    dialog.GetDlgItemText(IDC_EDIT, shown);
    EXPECT_EQ(shown, "in");

    dialog.SetDlgItemText(IDC_EDIT, "out");
    dialog.UpdateData();
    EXPECT_EQ(text, "out");
}

TEST_F(DataExchange, MovesChecksIndexesAndRadioButtons)
{
    int check = BST_CHECKED;
    int index = 1;
    int radio = 2;
    for (const char* line : {"a", "b", "c"})
        SendMessageA(dialog.GetDlgItem(IDC_COMBO)->m_hWnd, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line));
    dialog.m_exchange = [&](CDataExchange* pDX) {
        DDX_Check(pDX, IDC_CHECK, check);
        DDX_CBIndex(pDX, IDC_COMBO, index);
        DDX_Radio(pDX, IDC_RADIO1, radio);
    };
    dialog.UpdateData(FALSE);
    EXPECT_EQ(dialog.IsDlgButtonChecked(IDC_CHECK), static_cast<UINT>(BST_CHECKED));
    EXPECT_EQ(dialog.GetDlgItem(IDC_COMBO)->SendMessage(CB_GETCURSEL), 1);
    EXPECT_EQ(dialog.GetCheckedRadioButton(IDC_RADIO1, IDC_RADIO3), IDC_RADIO3);

    dialog.CheckDlgButton(IDC_CHECK, BST_UNCHECKED);
    dialog.GetDlgItem(IDC_COMBO)->SendMessage(CB_SETCURSEL, 2);
    dialog.CheckRadioButton(IDC_RADIO1, IDC_RADIO3, IDC_RADIO2);
    dialog.UpdateData(TRUE);
    EXPECT_EQ(check, BST_UNCHECKED);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(radio, 1);
}

TEST_F(DataExchange, HasNoRadioButtonWhenNoneIsChecked)
{
    int radio = 0;
    dialog.m_exchange = [&](CDataExchange* pDX) { DDX_Radio(pDX, IDC_RADIO1, radio); };
    dialog.UpdateData(TRUE);

    EXPECT_EQ(radio, -1);
}

TEST_F(DataExchange, KeepsTheNotificationsThatItCausesFromTheDialog)
{
    CString text("in");
    dialog.m_exchange = [&](CDataExchange* pDX) { DDX_Text(pDX, IDC_EDIT, text); };
    dialog.UpdateData(FALSE);
    EXPECT_EQ(dialog.m_changes, 0);

    dialog.SetDlgItemText(IDC_EDIT, "typed");
    EXPECT_EQ(dialog.m_changes, 1);
}

TEST_F(DataExchange, LimitsWhatCanBeTyped)
{
    CString text;
    dialog.m_exchange = [&](CDataExchange* pDX) {
        DDX_Text(pDX, IDC_EDIT, text);
        DDV_MaxChars(pDX, text, 5);
    };
    dialog.UpdateData(FALSE);

    EXPECT_EQ(dialog.GetDlgItem(IDC_EDIT)->SendMessage(EM_GETLIMITTEXT), 5);
}

TEST_F(DataExchange, RefusesATextThatIsTooLong)
{
    CString text;
    dialog.m_exchange = [&](CDataExchange* pDX) {
        DDX_Text(pDX, IDC_EDIT, text);
        DDV_MaxChars(pDX, text, 5);
    };
    dialog.GetDlgItem(IDC_BUTTON)->SetFocus();
    dialog.SetDlgItemText(IDC_EDIT, "123456");
    support::MessageBoxScript boxes(GetModuleHandleA(nullptr));
    boxes.Answer(IDOK);

    EXPECT_FALSE(dialog.UpdateData(TRUE));
    support::ExpectBoxes(
        boxes, {{nullptr, "No more than 5 characters, please.", "mfc_test", MB_OK | MB_ICONEXCLAMATION}});
    CWnd* edit = dialog.GetDlgItem(IDC_EDIT);
    EXPECT_EQ(CWnd::GetFocus(), edit);
    EXPECT_EQ(edit->SendMessage(EM_GETSEL), MAKELONG(0, 6));
}

TEST_F(DataExchange, AcceptsATextOfJustTheLimit)
{
    CString text;
    dialog.m_exchange = [&](CDataExchange* pDX) {
        DDX_Text(pDX, IDC_EDIT, text);
        DDV_MaxChars(pDX, text, 5);
    };
    dialog.SetDlgItemText(IDC_EDIT, "12345");

    EXPECT_TRUE(dialog.UpdateData(TRUE));
    EXPECT_EQ(text, "12345");
}

TEST_F(DataExchange, PassesOnWhatIsNoRefusal)
{
    dialog.m_exchange = [](CDataExchange*) { throw 7; };
    EXPECT_THROW(dialog.UpdateData(TRUE), int);

    // And notifications reach the dialog again.
    dialog.m_exchange = nullptr;
    dialog.SetDlgItemText(IDC_EDIT, "typed");
    EXPECT_EQ(dialog.m_changes, 1);
}

struct Controls : testing::Test
{
    void SetUp() override
    {
        ASSERT_TRUE(dialog.Create(IDD_CONTROLS));
        edit.SubclassDlgItem(IDC_EDIT, &dialog);
        check.SubclassDlgItem(IDC_CHECK, &dialog);
        combo.SubclassDlgItem(IDC_COMBO, &dialog);
        list.SubclassDlgItem(IDC_LIST, &dialog);
    }

    CTestDialog dialog;
    CEdit edit;
    CButton check;
    CComboBox combo;
    CListBox list;
};

TEST_F(Controls, HaveAButtonThatIsChecked)
{
    EXPECT_EQ(check.GetCheck(), BST_UNCHECKED);
    check.SetCheck(BST_CHECKED);
    EXPECT_EQ(check.GetCheck(), BST_CHECKED);
}

TEST_F(Controls, HaveAnEditThatSelectsReplacesAndLimits)
{
    edit.SetWindowText("abcdef");
    edit.SetSel(1, 3);
    int start = 0;
    int end = 0;
    edit.GetSel(start, end);
    EXPECT_EQ(start, 1);
    EXPECT_EQ(end, 3);
    edit.ReplaceSel("X");
    CString text;
    edit.GetWindowText(text);
    EXPECT_EQ(text, "aXdef");
    edit.SetSel(0, -1, TRUE);
    edit.GetSel(start, end);
    EXPECT_EQ(start, 0);
    EXPECT_EQ(end, 5);
    edit.LimitText(9);
    EXPECT_EQ(edit.GetLimitText(), 9U);
}

TEST_F(Controls, HaveAListThatInsertsFindsAndDeletes)
{
    EXPECT_EQ(list.AddString("beta"), 0);
    EXPECT_EQ(list.InsertString(0, "alpha"), 0);
    EXPECT_EQ(list.InsertString(-1, "betamax"), 2);
    EXPECT_EQ(list.GetCount(), 3);
    EXPECT_EQ(list.FindString(-1, "BETA"), 1);
    EXPECT_EQ(list.FindString(1, "beta"), 2);
    EXPECT_EQ(list.FindStringExact(-1, "betamax"), 2);
    EXPECT_EQ(list.FindStringExact(-1, "bet"), LB_ERR);
    EXPECT_EQ(list.DeleteString(0), 2);
    CString text;
    list.GetText(1, text);
    EXPECT_EQ(text, "betamax");
    EXPECT_EQ(list.GetTextLen(0), 4);
    list.ResetContent();
    EXPECT_EQ(list.GetCount(), 0);
}

TEST_F(Controls, HaveAListThatSelectsAndKeepsNumbers)
{
    list.AddString("a");
    list.AddString("b");
    EXPECT_EQ(list.GetCurSel(), LB_ERR);
    EXPECT_EQ(list.SetCurSel(1), 1);
    EXPECT_EQ(list.GetCurSel(), 1);
    list.SetItemData(1, 0x30002);
    EXPECT_EQ(list.GetItemData(1), 0x30002U);
    EXPECT_EQ(list.GetItemData(7), static_cast<DWORD_PTR>(-1));
    CString text("old");
    list.GetText(7, text);
    EXPECT_EQ(text, "");
    CRect first;
    CRect second;
    list.GetItemRect(0, first);
    list.GetItemRect(1, second);
    EXPECT_EQ(first.bottom, second.top);
    EXPECT_TRUE(list.SetTabStops(80));
}

TEST_F(Controls, HaveAComboBoxThatSelects)
{
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
    EXPECT_EQ(combo.AddString("5 Seconds"), 0);
    combo.AddString("10 Seconds");
    EXPECT_EQ(combo.SetCurSel(1), 1);
    EXPECT_EQ(combo.GetCurSel(), 1);
    EXPECT_EQ(combo.GetCount(), 2);
    CString text;
    combo.GetLBText(1, text);
    EXPECT_EQ(text, "10 Seconds");
    EXPECT_EQ(combo.GetLBTextLen(0), 9);
    combo.GetLBText(9, text);
    EXPECT_EQ(text, "");
    combo.ResetContent();
    EXPECT_EQ(combo.GetCount(), 0);
}

} // namespace
