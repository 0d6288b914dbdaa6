// CWnd: objects and windows finding and leaving each other.
#include "CreationHook.h"
#include "TestDialogs.h"
#include "ThreadState.h"

#include <gtest/gtest.h>
#include <thread>

namespace {

// Notes which of its first and last messages reached it.
class CWatched : public CEdit
{
  public:
    BOOL CreateIn(CWnd* parent)
    {
        return CreateEx(0, "EDIT", "text", WS_CHILD, CRect(0, 0, 50, 20), parent, 77);
    }

    afx_msg int OnCreate(LPCREATESTRUCT create)
    {
        m_self = FromHandlePermanent(m_hWnd);
        m_width = create->cx;
        return m_refused ? -1 : CEdit::OnCreate(create);
    }
    afx_msg void OnDestroy()
    {
        m_destroyed = true;
        CEdit::OnDestroy();
    }
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags)
    {
        m_char = nChar;
        if (nChar != 'x')
            CEdit::OnChar(nChar, nRepCnt, nFlags);
    }
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point)
    {
        m_flags = nFlags;
        m_point = point;
        CEdit::OnLButtonDown(nFlags, point);
    }
    void PostNcDestroy() override { m_gone = m_hWnd == nullptr; }

    CWnd* m_self = nullptr;
    int m_width = 0;
    UINT m_char = 0;
    UINT m_flags = 0;
    CPoint m_point;
    bool m_refused = false;
    bool m_destroyed = false;
    bool m_gone = false;

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CWatched, CEdit)
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_CHAR()
    ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

struct WndTest : testing::Test
{
    HWND MakeEdit()
    {
        return CreateWindowExA(0, "EDIT", "", WS_CHILD, 0, 0, 50, 20, owner.m_hWnd, nullptr, nullptr,
                               nullptr);
    }

    CTestOwner owner;
};

WNDPROC ProcedureOf(HWND window)
{
    return reinterpret_cast<WNDPROC>(GetWindowLongPtrA(window, GWLP_WNDPROC));
}

TEST_F(WndTest, IsBoundBeforeItsWindowsFirstMessages)
{
    CWatched edit;

    EXPECT_TRUE(edit.CreateIn(&owner));
    EXPECT_EQ(edit.m_self, &edit);
    EXPECT_EQ(edit.m_width, 50);
    EXPECT_EQ(edit.GetDlgCtrlID(), 77);
    EXPECT_EQ(edit.GetParent(), &owner);
    EXPECT_EQ(edit.GetOwner(), &owner);
}

TEST_F(WndTest, MayRefuseItsCreation)
{
    CWatched edit;
    edit.m_refused = true;

    EXPECT_FALSE(edit.CreateIn(&owner));
    EXPECT_EQ(edit.m_hWnd, nullptr);
}

TEST_F(WndTest, CannotBeCreatedOfAnUnknownClass)
{
    CWnd window;

    EXPECT_FALSE(window.CreateEx(0, "NoSuchClass", "", WS_CHILD, CRect(0, 0, 1, 1), &owner, 1));
    // Nothing waits for a window any more: the next one is not taken.
    const HWND edit = MakeEdit();
    EXPECT_EQ(CWnd::FromHandlePermanent(edit), nullptr);
}

TEST_F(WndTest, WaitsForAWindowOfItsOwnClass)
{
    CWatched edit;
    const CCreationHook hook(edit, "EDIT");
    const HWND other =
        CreateWindowExA(0, "STATIC", "", WS_CHILD, 0, 0, 5, 5, owner, nullptr, nullptr, nullptr);
    const HWND window = MakeEdit();
    const HWND next = MakeEdit();

    EXPECT_EQ(CWnd::FromHandlePermanent(other), nullptr);
    EXPECT_EQ(edit.m_hWnd, window);
    EXPECT_EQ(CWnd::FromHandlePermanent(next), nullptr);
}

TEST_F(WndTest, LosesItsWindowWhenThatIsDestroyed)
{
    CWatched edit;
    edit.CreateIn(&owner);
    const HWND window = edit;
    DestroyWindow(window);

    EXPECT_TRUE(edit.m_destroyed);
    EXPECT_TRUE(edit.m_gone);
    EXPECT_EQ(edit.m_hWnd, nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(window), nullptr);
}

TEST_F(WndTest, CanBeCreatedAgain)
{
    CWatched edit;
    edit.CreateIn(&owner);
    edit.DestroyWindow();

    EXPECT_TRUE(edit.CreateIn(&owner));
}

TEST_F(WndTest, DestroysACreatedWindowWithItself)
{
    HWND window = nullptr;
    {
        CWatched edit;
        edit.CreateIn(&owner);
        window = edit;
    }
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(WndTest, GivesATakenWindowBackWithItself)
{
    const HWND window = MakeEdit();
    const WNDPROC before = ProcedureOf(window);
    {
        CWatched edit;
        EXPECT_TRUE(edit.SubclassWindow(window));
        EXPECT_NE(ProcedureOf(window), before);
    }
    EXPECT_TRUE(IsWindow(window));
    EXPECT_EQ(ProcedureOf(window), before);
}

TEST_F(WndTest, SeesAndPassesOnTheMessagesOfATakenWindow)
{
    CWatched edit;
    edit.SubclassWindow(MakeEdit());
    edit.SendMessage(WM_CHAR, 'a', 1);
    edit.SendMessage(WM_CHAR, 'x', 1);
    CString text;
    edit.GetWindowText(text);

    EXPECT_EQ(edit.m_char, static_cast<UINT>('x'));
    EXPECT_EQ(text, "a");
}

TEST_F(WndTest, SeesWhereTheMouseIsPressedAndPassesItOn)
{
    CWatched edit;
    edit.SubclassWindow(MakeEdit());
    edit.SetWindowText("text");
    edit.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(-7, 3));

    EXPECT_EQ(edit.m_flags, static_cast<UINT>(MK_LBUTTON));
    EXPECT_EQ(edit.m_point.x, -7);
    EXPECT_EQ(edit.m_point.y, 3);
    EXPECT_EQ(::GetCapture(), edit.m_hWnd);
    edit.SendMessage(WM_LBUTTONUP);
}

TEST_F(WndTest, ChangesNothingWhenItTakesItsOwnWindowAgain)
{
    CWatched edit;
    const HWND window = MakeEdit();
    const WNDPROC before = ProcedureOf(window);
    edit.SubclassWindow(window);

    EXPECT_TRUE(edit.SubclassWindow(window));
    edit.SendMessage(WM_CHAR, 'a', 1);
    CString text;
    edit.GetWindowText(text);
    EXPECT_EQ(text, "a");
    EXPECT_EQ(edit.UnsubclassWindow(), window);
    EXPECT_EQ(ProcedureOf(window), before);
}

TEST_F(WndTest, KeepsItsWindowWhenItCannotTakeAnother)
{
    CWatched edit;
    const HWND window = MakeEdit();
    edit.SubclassWindow(window);

    EXPECT_FALSE(edit.SubclassDlgItem(IDC_ABSENT, &owner));
    EXPECT_FALSE(edit.SubclassWindow(MakeEdit()));
    EXPECT_EQ(edit.m_hWnd, window);
}

TEST_F(WndTest, LeavesAnothersWindowAlone)
{
    CWatched holder;
    holder.SubclassWindow(MakeEdit());
    CWatched other;

    EXPECT_FALSE(other.SubclassWindow(holder));
    EXPECT_EQ(other.m_hWnd, nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(holder), &holder);
}

TEST_F(WndTest, CannotTakeTheWindowOfAnotherThread)
{
    BOOL taken = TRUE;
    std::thread([&] {
        CWnd window;
        taken = window.SubclassWindow(owner.m_hWnd);
    }).join();

    EXPECT_FALSE(taken);
}

WNDPROC g_beneath = nullptr;
int g_onTop = 0; // messages seen

LRESULT CALLBACK OnTop(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    ++g_onTop;
    return CallWindowProcA(g_beneath, window, message, wParam, lParam);
}

TEST_F(WndTest, StaysInTheChainWhenSomebodySubclassedAfterIt)
{
    const HWND window = MakeEdit();
    CWatched edit;
    edit.SubclassWindow(window);
    g_beneath = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&OnTop)));
    edit.UnsubclassWindow();

    g_onTop = 0;
    SendMessageA(window, WM_CHAR, 'a', 1);
    EXPECT_GT(g_onTop, 0);
    EXPECT_EQ(edit.m_char, 0U);
    EXPECT_EQ(GetWindowTextLengthA(window), 1);

    // Taken again, the object stands where its procedure still is.
    EXPECT_TRUE(edit.SubclassWindow(window));
    SendMessageA(window, WM_CHAR, 'b', 1);
    EXPECT_EQ(edit.m_char, static_cast<UINT>('b'));
    EXPECT_EQ(GetWindowTextLengthA(window), 2);
    DestroyWindow(window);
    EXPECT_EQ(edit.m_hWnd, nullptr);
}

TEST_F(WndTest, IsAttachedWithoutTouchingTheWindow)
{
    const HWND window = MakeEdit();
    const WNDPROC before = ProcedureOf(window);
    CWnd wrapper;

    EXPECT_TRUE(wrapper.Attach(window));
    EXPECT_EQ(CWnd::FromHandle(window), &wrapper);
    EXPECT_EQ(ProcedureOf(window), before);
    EXPECT_EQ(wrapper.Detach(), window);
    EXPECT_EQ(CWnd::FromHandlePermanent(window), nullptr);
    EXPECT_TRUE(IsWindow(window));
}

TEST_F(WndTest, IsNotAttachedToNothing)
{
    CWnd wrapper;

    EXPECT_FALSE(wrapper.Attach(nullptr));
    EXPECT_EQ(wrapper.Detach(), nullptr);
}

TEST_F(WndTest, HasTemporaryObjectsForOtherWindows)
{
    const HWND window = MakeEdit();
    CWnd* temporary = CWnd::FromHandle(window);

    ASSERT_NE(temporary, nullptr);
    EXPECT_EQ(temporary->m_hWnd, window);
    EXPECT_EQ(CWnd::FromHandle(window), temporary);
    EXPECT_EQ(CWnd::FromHandlePermanent(window), nullptr);
    EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);
}

TEST_F(WndTest, KeepsTemporaryObjectsUntilTheirHandlerReturns)
{
    CTestDialog dialog(IDD_CONTROLS, &owner);
    const CThreadState& state = CThreadState::Get();
    const size_t before = state.CountTemporaries();
    size_t inNextHandler = 0;
    dialog.m_atButton = [&] {
        inNextHandler = state.CountTemporaries();
        dialog.EndDialog(1);
    };
    dialog.m_step = [&] {
        CWnd* made = dialog.GetDlgItem(IDC_BUTTON);
        dialog.GetDlgItem(IDC_EDIT)->SetWindowText("messages inside a handler leave them alone");
        EXPECT_EQ(state.CountTemporaries(), before + 2);
        EXPECT_EQ(made, dialog.GetDlgItem(IDC_BUTTON));
        made->PostMessage(BM_CLICK);
    };
    dialog.DoModal();

    EXPECT_EQ(inNextHandler, before);
    EXPECT_EQ(state.CountTemporaries(), before);
}

TEST_F(WndTest, KeepsTemporaryObjectsMadeBeforeALoop)
{
    CWnd* outside = CWnd::FromHandle(MakeEdit());
    const size_t before = CThreadState::Get().CountTemporaries();
    CTestDialog dialog(IDD_CONTROLS, &owner);
    dialog.m_step = [&] { dialog.EndDialog(1); };
    dialog.DoModal();

    EXPECT_EQ(CThreadState::Get().CountTemporaries(), before);
    EXPECT_EQ(CWnd::FromHandle(outside->m_hWnd), outside);
}

TEST_F(WndTest, DestroysNoWindowWithATemporaryObject)
{
    CTestDialog dialog(IDD_CONTROLS, &owner);
    const HWND window = MakeEdit();
    dialog.m_step = [&] {
        CWnd::FromHandle(window);
        dialog.EndDialog(1);
    };
    dialog.DoModal();

    EXPECT_TRUE(IsWindow(window));
}

} // namespace
