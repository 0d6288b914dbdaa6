// What handlers throw: it reaches the caller of DoModal or Create once, after every window is gone.
#include "imports/ImportHook.h"
#include "TestDialogs.h"
#include "ThreadState.h"

#include <gtest/gtest.h>
#include <optional>
#include <source_location>
#include <thread>
#include <utility>

namespace {

// The number that `call` throws, none when it returns.
template <typename Call>
std::optional<int> ThrownBy(Call call)
{
    try {
        call();
    } catch (int number) {
        return number;
    }
    return std::nullopt;
}

struct FailureTest : testing::Test
{
    void SetUp() override
    {
        sheet.AddPage(&first);
        sheet.AddPage(&second);
        sheet.m_step = [this] { sheet.PressButton(PSBTN_OK); };
        dialog.m_step = [this] { dialog.EndDialog(IDOK); };
    }

    // Runs a dialog or sheet whose handler throws, and then, with `mend` done, once more without.
    template <typename Window>
    void ExpectThrown(Window& window, int number, const std::function<void()>& mend,
                      std::source_location where = std::source_location::current())
    {
        const testing::ScopedTrace trace(where.file_name(), static_cast<int>(where.line()),
                                         "called from here");
        const int windows = WindowsOfThread();

        EXPECT_EQ(ThrownBy([&] { window.DoModal(); }), number);
        EXPECT_EQ(window.m_hWnd, nullptr);
        EXPECT_EQ(DialogsOfThread(), 0);
        EXPECT_TRUE(owner.IsWindowEnabled());
        EXPECT_EQ(WindowsOfThread(), windows);
        // Nothing is bound but the owner, and nothing waits for a window.
        const CThreadState& state = CThreadState::Get();
        EXPECT_EQ(state.m_permanent.size(), 1U);
        EXPECT_EQ(state.m_super.size(), 1U);
        EXPECT_EQ(state.m_creation, nullptr);
        EXPECT_EQ(state.m_scope, nullptr);

        mend();
        EXPECT_EQ(ThrownBy([&] { EXPECT_EQ(window.DoModal(), IDOK); }), std::nullopt);
        EXPECT_EQ(ThrownBy([] { AfxThrowKeptException(); }), std::nullopt);
    }

    Log log;
    CTestOwner owner;
    CTestPage first{IDD_PAGE1, log, "first"};
    CTestPage second{IDD_PAGE2, log, "second"};
    CTestSheet sheet{&owner};
    CTestDialog dialog{IDD_CONTROLS, &owner};
};

[[noreturn]] void Throw7()
{
    throw 7;
}

TEST_F(FailureTest, LeavesASheetsOnInitDialog)
{
    sheet.m_atInit = Throw7;
    ExpectThrown(sheet, 7, [this] { sheet.m_atInit = nullptr; });
}

TEST_F(FailureTest, LeavesASheetsOnCreate)
{
    sheet.m_atCreate = Throw7;
    ExpectThrown(sheet, 7, [this] { sheet.m_atCreate = nullptr; });
}

TEST_F(FailureTest, LeavesTheFirstPagesOnInitDialog)
{
    first.m_atInit = Throw7;
    ExpectThrown(sheet, 7, [this] { first.m_atInit = nullptr; });
}

TEST_F(FailureTest, LeavesAPagesOnCreate)
{
    first.m_atCreate = Throw7;
    ExpectThrown(sheet, 7, [this] { first.m_atCreate = nullptr; });
}

TEST_F(FailureTest, LeavesALaterPagesOnInitDialog)
{
    second.m_atInit = Throw7;
    sheet.m_step = [this] { sheet.SetActivePage(1); };
    ExpectThrown(sheet, 7, [this] { sheet.m_step = [this] { sheet.PressButton(PSBTN_OK); }; });
}

TEST_F(FailureTest, LeavesAPagesButton)
{
    first.m_atButton = Throw7;
    sheet.m_step = [this] { first.GetDlgItem(IDC_BUTTON)->PostMessage(BM_CLICK); };
    ExpectThrown(sheet, 7, [this] { sheet.m_step = [this] { sheet.PressButton(PSBTN_OK); }; });
}

TEST_F(FailureTest, LeavesTheOkOfThePageInFront)
{
    first.m_atOk = Throw7;
    ExpectThrown(sheet, 7, [this] { first.m_atOk = nullptr; });
}

TEST_F(FailureTest, KeepsLaterPagesFromTheirOk)
{
    first.m_atOk = Throw7;
    sheet.m_step = [this] {
        sheet.SetActivePage(1);
        log.clear();
        sheet.PressButton(PSBTN_OK);
    };

    EXPECT_EQ(ThrownBy([this] { sheet.DoModal(); }), 7);
    EXPECT_EQ(log, (Log{"second left", "first OK"}));
}

TEST_F(FailureTest, RefusesTheApplyThatAPageThrewFrom)
{
    first.m_atOk = Throw7;
    LRESULT answer = PSNRET_NOERROR;
    sheet.m_step = [&] {
        PSHNOTIFY apply = {};
        apply.hdr.code = PSN_APPLY;
        answer = first.SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&apply));
    };

    EXPECT_EQ(ThrownBy([this] { sheet.DoModal(); }), 7);
    EXPECT_EQ(answer, PSNRET_INVALID_NOCHANGEPAGE);
}

int g_windowsMade = 0;

LRESULT CALLBACK CountCreations(int code, WPARAM wParam, LPARAM lParam)
{
    g_windowsMade += code == HCBT_CREATEWND ? 1 : 0;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(FailureTest, StopsACreationWhoseOnCreateThrows)
{
    sheet.m_atCreate = Throw7;
    g_windowsMade = 0;
    const HHOOK hook = SetWindowsHookExA(WH_CBT, &CountCreations, nullptr, GetCurrentThreadId());
    EXPECT_EQ(ThrownBy([this] { sheet.DoModal(); }), 7);
    UnhookWindowsHookEx(hook);

    EXPECT_EQ(g_windowsMade, 1);
}

// Throws while its window is being made, and after WM_CREATE, where an answer could stop it.
class CThrowsWhenShown : public CWnd
{
  public:
    afx_msg LRESULT OnShown(WPARAM /*wParam*/, LPARAM /*lParam*/) { Throw7(); }

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CThrowsWhenShown, CWnd)
    ON_MESSAGE(WM_SHOWWINDOW, &CThrowsWhenShown::OnShown)
END_MESSAGE_MAP()

TEST_F(FailureTest, LeavesNoWindowThatThrewWhileItWasMade)
{
    const int windows = WindowsOfThread();
    CThrowsWhenShown window;

    EXPECT_EQ(ThrownBy([&] {
                  window.CreateEx(0, "STATIC", "", WS_POPUP | WS_VISIBLE, CRect(0, 0, 50, 50), nullptr, 0);
              }),
              7);
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_EQ(WindowsOfThread(), windows);
}

TEST_F(FailureTest, LeavesTheOkOfASecondPage)
{
    second.m_atOk = Throw7;
    sheet.m_step = [this] {
        sheet.SetActivePage(1);
        sheet.PressButton(PSBTN_OK);
    };
    ExpectThrown(sheet, 7, [this] { second.m_atOk = nullptr; });
}

TEST_F(FailureTest, LeavesADialogsOnInitDialog)
{
    dialog.m_atInit = Throw7;
    ExpectThrown(dialog, 7, [this] { dialog.m_atInit = nullptr; });
}

TEST_F(FailureTest, LeavesADialogsButton)
{
    dialog.m_atButton = Throw7;
    dialog.m_step = [this] { dialog.GetDlgItem(IDC_BUTTON)->SendMessage(BM_CLICK); };
    ExpectThrown(dialog, 7, [this] { dialog.m_step = [this] { dialog.EndDialog(IDOK); }; });
}

TEST_F(FailureTest, LeavesADialogsOk)
{
    dialog.m_atOk = Throw7;
    dialog.m_step = [this] { dialog.PostMessage(WM_COMMAND, IDOK); };
    ExpectThrown(dialog, 7, [this] { dialog.m_atOk = nullptr; });
}

// Sends a window WM_THROW from another thread.
void ThrowFromOutside(HWND window, int number)
{
    std::thread([=] { SendMessageA(window, WM_THROW, static_cast<WPARAM>(number), 0); }).detach();
}

TEST_F(FailureTest, LeavesADialogsHandlerOfASentMessage)
{
    dialog.m_step = [this] {
        owner.m_atIdle = [this] {
            owner.m_atIdle = nullptr;
            ThrowFromOutside(dialog, 9);
        };
    };
    ExpectThrown(dialog, 9, [this] { dialog.m_step = [this] { dialog.EndDialog(IDOK); }; });
}

// Fetches the messages of a sheet's loop. Once it is armed, it handles all but empty ones itself, so that
// nothing else ends the loop's wait, and runs its action when there is none left.
struct OnlyEmptyMessages
{
    std::function<void()> atIdle;
    bool isArmed = false;

    BOOL Fetch(decltype(GetMessageW)* fetch, MSG* message, HWND window, UINT first, UINT last)
    {
        for (;;) {
            if (isArmed && atIdle && HIWORD(GetQueueStatus(QS_ALLINPUT)) == 0)
                std::exchange(atIdle, nullptr)();
            const BOOL answer = fetch(message, window, first, last);
            if (!isArmed || answer <= 0 || message->message == WM_NULL)
                return answer;
            DispatchMessageW(message);
        }
    }
};

TEST_F(FailureTest, LeavesASheetsHandlerOfASentMessage)
{
    OnlyEmptyMessages messages;
    messages.atIdle = [this] { ThrowFromOutside(first, 11); };
    const auto fetch = support::HookImport<decltype(GetMessageW)>(
        GetModuleHandleA(nullptr), "GetMessageW",
        [&](auto original, auto... arguments) { return messages.Fetch(original, arguments...); });
    sheet.m_step = [&] { messages.isArmed = true; };
    ExpectThrown(sheet, 11, [&] {
        messages.isArmed = false;
        sheet.m_step = [this] { sheet.PressButton(PSBTN_OK); };
    });
    EXPECT_EQ(messages.atIdle, nullptr);
}

LRESULT CALLBACK PassOn(int code, WPARAM wParam, LPARAM lParam)
{
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(FailureTest, LeavesHandlersUnderAWindowProcedureHook)
{
    const HHOOK hook = SetWindowsHookExA(WH_CALLWNDPROC, &PassOn, nullptr, GetCurrentThreadId());
    first.m_atInit = Throw7;
    ExpectThrown(sheet, 7, [this] { first.m_atInit = nullptr; });
    dialog.m_atButton = Throw7;
    dialog.m_step = [this] { dialog.GetDlgItem(IDC_BUTTON)->SendMessage(BM_CLICK); };
    ExpectThrown(dialog, 7, [this] { dialog.m_step = [this] { dialog.EndDialog(IDOK); }; });
    UnhookWindowsHookEx(hook);
}

TEST_F(FailureTest, PassesThroughANestedDialogAndItsSheet)
{
    CTestDialog nested(IDD_CONTROLS, &first);
    nested.m_step = Throw7;
    first.m_atButton = [&] { nested.DoModal(); };
    sheet.m_step = [this] { first.GetDlgItem(IDC_BUTTON)->PostMessage(BM_CLICK); };

    ExpectThrown(sheet, 7, [this] { sheet.m_step = [this] { sheet.PressButton(PSBTN_OK); }; });
    EXPECT_EQ(nested.m_hWnd, nullptr);
}

TEST_F(FailureTest, EndsOnlyTheNestedDialogWhenItsCallerCatches)
{
    CTestDialog nested(IDD_CONTROLS, &dialog);
    nested.m_step = Throw7;
    std::optional<int> caught;
    BOOL enabled = FALSE;
    dialog.m_step = [&] {
        caught = ThrownBy([&] { nested.DoModal(); });
        enabled = dialog.IsWindowEnabled();
        dialog.EndDialog(42);
    };

    EXPECT_EQ(dialog.DoModal(), 42);
    EXPECT_EQ(caught, 7);
    EXPECT_TRUE(enabled);
}

TEST_F(FailureTest, EndsTheNestedDialogWhenTheOuterOneThrows)
{
    CTestDialog nested(IDD_CONTROLS, &dialog);
    nested.m_step = [this] { dialog.SendMessage(WM_THROW, 13); };
    dialog.m_step = [&] { nested.DoModal(); };

    ExpectThrown(dialog, 13, [&] {
        nested.m_step = [&] { nested.EndDialog(1); };
        dialog.m_step = [this] { dialog.EndDialog(IDOK); };
    });
}

TEST_F(FailureTest, ThrowsTheFirstOfSeveral)
{
    dialog.m_step = [this] {
        dialog.SendMessage(WM_THROW, 1);
        throw 2;
    };

    EXPECT_EQ(ThrownBy([this] { dialog.DoModal(); }), 1);
}

TEST_F(FailureTest, RunsNoMoreHandlersOfTheWindow)
{
    dialog.m_step = [this] {
        dialog.SendMessage(WM_THROW, 1);
        dialog.GetDlgItem(IDC_BUTTON)->SendMessage(BM_CLICK);
    };

    EXPECT_EQ(ThrownBy([this] { dialog.DoModal(); }), 1);
    EXPECT_EQ(dialog.m_buttons, 0);
}

TEST_F(FailureTest, LetsAnEndingDialogOpenNoOther)
{
    CTestDialog nested(IDD_CONTROLS, &dialog);
    bool opened = false;
    nested.m_atInit = [&] { opened = true; };
    dialog.m_step = [&] {
        dialog.SendMessage(WM_THROW, 1);
        nested.DoModal();
    };

    EXPECT_EQ(ThrownBy([this] { dialog.DoModal(); }), 1);
    EXPECT_FALSE(opened);
}

TEST_F(FailureTest, LeavesTheCreationOfAModelessDialog)
{
    dialog.m_atInit = Throw7;

    EXPECT_EQ(ThrownBy([this] { dialog.Create(IDD_CONTROLS); }), 7);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(DialogsOfThread(), 0);

    dialog.m_atInit = nullptr;
    EXPECT_TRUE(dialog.Create(IDD_CONTROLS));
}

TEST_F(FailureTest, OutsideEveryLoopWaitsForTheProgramsOwn)
{
    ASSERT_TRUE(dialog.Create(IDD_CONTROLS));
    dialog.SendMessage(WM_THROW, 21);

    EXPECT_EQ(ThrownBy([] { AfxThrowKeptException(); }), 21);
    EXPECT_EQ(ThrownBy([] { AfxThrowKeptException(); }), std::nullopt);
}

} // namespace
