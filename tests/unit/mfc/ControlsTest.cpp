// The control classes, on the controls of a real dialog.
#include "TestDialogs.h"

#include <gtest/gtest.h>

namespace {

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
    edit.SendMessage(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>("X"));
    CString text;
    edit.GetWindowText(text);
    EXPECT_EQ(text, "aXdef");
    edit.SetSel(0, -1, TRUE);
    edit.GetSel(start, end);
    EXPECT_EQ(start, 0);
    EXPECT_EQ(end, 5);
    edit.SetMargins(3, 2);
    EXPECT_EQ(edit.SendMessage(EM_GETMARGINS), MAKELONG(3, 2));
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

TEST_F(Controls, HaveAListThatCanBeScrolledSideways)
{
    EXPECT_EQ(list.SendMessage(LB_GETHORIZONTALEXTENT), 0);
    list.SetHorizontalExtent(500);
    EXPECT_EQ(list.SendMessage(LB_GETHORIZONTALEXTENT), 500);
}

TEST_F(Controls, HaveAListThatFindsTheItemAtAPoint)
{
    list.AddString("a");
    list.AddString("b");
    CRect second;
    list.GetItemRect(1, second);
    BOOL isOutside = TRUE;
    EXPECT_EQ(list.ItemFromPoint(second.CenterPoint(), isOutside), 1U);
    EXPECT_FALSE(isOutside);
    EXPECT_EQ(list.ItemFromPoint(CPoint(-5, -5), isOutside), 0U);
    EXPECT_TRUE(isOutside);
}

TEST_F(Controls, HaveAComboBoxThatSelects)
{
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
    EXPECT_EQ(combo.AddString("5 Seconds"), 0);
    combo.AddString("10 Seconds");
    EXPECT_EQ(combo.SetCurSel(1), 1);
    EXPECT_EQ(combo.GetCurSel(), 1);
    EXPECT_EQ(combo.GetCount(), 2);
    combo.ResetContent();
    EXPECT_EQ(combo.GetCount(), 0);
}

} // namespace
