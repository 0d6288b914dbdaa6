// Dialog data exchange.
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

TEST_F(DataExchange, LeavesAnObjectAloneThatHoldsAnotherControl)
{
    CEdit edit;
    edit.SubclassDlgItem(IDC_EDIT, &dialog);
    dialog.m_exchange = [&](CDataExchange* pDX) { DDX_Control(pDX, IDC_CHECK, edit); };

    EXPECT_TRUE(dialog.UpdateData(FALSE));
    EXPECT_EQ(edit.GetDlgCtrlID(), IDC_EDIT);
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

TEST_F(DataExchange, MovesChecksAndIndexes)
{
    int check = BST_CHECKED;
    int index = 1;
    for (const char* line : {"a", "b", "c"})
        SendMessageA(dialog.GetDlgItem(IDC_COMBO)->m_hWnd, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line));
    dialog.m_exchange = [&](CDataExchange* pDX) {
        DDX_Check(pDX, IDC_CHECK, check);
        DDX_CBIndex(pDX, IDC_COMBO, index);
    };
    dialog.UpdateData(FALSE);
    EXPECT_EQ(dialog.IsDlgButtonChecked(IDC_CHECK), static_cast<UINT>(BST_CHECKED));
    EXPECT_EQ(dialog.GetDlgItem(IDC_COMBO)->SendMessage(CB_GETCURSEL), 1);

    dialog.CheckDlgButton(IDC_CHECK, BST_UNCHECKED);
    dialog.GetDlgItem(IDC_COMBO)->SendMessage(CB_SETCURSEL, 2);
    dialog.UpdateData(TRUE);
    EXPECT_EQ(check, BST_UNCHECKED);
    EXPECT_EQ(index, 2);
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

} // namespace
