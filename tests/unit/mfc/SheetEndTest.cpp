// How a sheet's loop ends while it waits for a message, whatever brought the end about. Messages that another
// thread sends are handled without the loop's getting one.
#include "SheetFixture.h"

#include "imports/ImportHook.h"

#include <thread>

namespace {

constexpr DWORD patience = 5000; // milliseconds
constexpr INT_PTR failed = -2;   // DoModal has thrown

// Runs sheets while another thread is at work on them.
class SheetEnd : public SheetTest
{
  protected:
    // What DoModal answers when `act` runs on another thread while the loop waits. A loop that does not end
    // by itself fails the test and is woken.
    INT_PTR RunEndedBy(const std::function<void()>& act) { return RunEndedBy(act, sheet); }
    INT_PTR RunEndedBy(const std::function<void()>& act, CPropertySheet& run)
    {
        const DWORD loop = GetCurrentThreadId();
        const auto waiting = support::HookImport<decltype(GetMessageW)>(
            GetModuleHandleA(nullptr), "GetMessageW",
            [this](auto original, LPMSG message, HWND window, UINT from, UINT to) {
                if (PeekMessageW(message, nullptr, 0, 0, PM_NOREMOVE) == FALSE)
                    SetEvent(m_waits);
                return original(message, window, from, to);
            });
        std::thread other([&] {
            WaitForSingleObject(m_waits, patience);
            Hide(run.m_hWnd, loop);
            act();
            const bool hasEnded = WaitForSingleObject(m_ended, patience) == WAIT_OBJECT_0;
            EXPECT_TRUE(hasEnded) << "the loop still waits for a message";
            if (!hasEnded)
                PostThreadMessageA(loop, WM_NULL, 0, 0);
        });
        INT_PTR result = failed;
        try {
            result = run.DoModal();
        } catch (int) {
        }
        SetEvent(m_ended);
        other.join();
        return result;
    }

    // A window that cannot be seen has nothing to paint, which would wake the loop.
    void Hide(HWND window, DWORD loop) const
    {
        ShowWindow(window, SW_HIDE);
        ResetEvent(m_waits);
        PostThreadMessageA(loop, WM_NULL, 0, 0);
        WaitForSingleObject(m_waits, patience);
    }

    // Sends the sheet a message for which m_step is called.
    void SendStep() const { SendMessageA(sheet.m_hWnd, WM_STEP, 0, 0); }

    ~SheetEnd() override
    {
        CloseHandle(m_waits);
        CloseHandle(m_ended);
    }

    HANDLE m_waits = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    HANDLE m_ended = CreateEventA(nullptr, TRUE, FALSE, nullptr);
};

// As a message box does: takes whatever is queued.
void TakeAllMessages()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE)
        DispatchMessageW(&message);
}

struct SentMessage
{
    const char* name;
    int control; // of the sheet; 0 for the sheet itself
    UINT message;
    WPARAM wParam;
    INT_PTR result;
};

void PrintTo(const SentMessage& sent, std::ostream* out)
{
    *out << sent.name;
}

class SentEnd : public SheetEnd, public testing::WithParamInterface<SentMessage>
{
};

TEST_P(SentEnd, IsTheLoopsEnd)
{
    const SentMessage& sent = GetParam();
    EXPECT_EQ(RunEndedBy([&] {
                  const HWND window =
                      sent.control == 0 ? sheet.m_hWnd : GetDlgItem(sheet.m_hWnd, sent.control);
                  SendMessageA(window, sent.message, sent.wParam, 0);
              }),
              sent.result);
}

INSTANTIATE_TEST_SUITE_P(Messages, SentEnd,
                         testing::Values(SentMessage{"OkCommand", 0, WM_COMMAND, IDOK, IDOK},
                                         SentMessage{"CancelCommand", 0, WM_COMMAND, IDCANCEL, IDCANCEL},
                                         SentMessage{"OkButton", IDOK, BM_CLICK, 0, IDOK},
                                         SentMessage{"CancelButton", IDCANCEL, BM_CLICK, 0, IDCANCEL},
                                         SentMessage{"OkPressed", 0, PSM_PRESSBUTTON, PSBTN_OK, IDOK},
                                         SentMessage{"CancelPressed", 0, PSM_PRESSBUTTON, PSBTN_CANCEL,
                                                     IDCANCEL},
                                         SentMessage{"Close", 0, WM_SYSCOMMAND, SC_CLOSE, IDCANCEL}),
                         [](const auto& run) { return std::string(run.param.name); });

TEST_F(SheetEnd, FollowsASentMessageWhoseHandlerEndsTheSheet)
{
    EXPECT_EQ(RunEndedBy([this] {
                  sheet.m_step = [this] { sheet.EndDialog(77); };
                  SendStep();
              }),
              77);
}

TEST_F(SheetEnd, FollowsASentMessageWhoseHandlerTakesMessages)
{
    EXPECT_EQ(RunEndedBy([this] {
                  sheet.m_step = [this] {
                      sheet.EndDialog(77);
                      TakeAllMessages();
                  };
                  SendStep();
              }),
              77);
}

TEST_F(SheetEnd, FollowsASentOkWhoseSaveShowsMessageBoxes)
{
    first.m_atOk = TakeAllMessages;
    EXPECT_EQ(RunEndedBy([this] { SendMessageA(sheet.m_hWnd, WM_COMMAND, IDOK, 0); }), IDOK);
}

TEST_F(SheetEnd, FollowsASentOkThatFails)
{
    first.m_atOk = [] { throw 17; };
    EXPECT_EQ(RunEndedBy([this] { SendMessageA(sheet.m_hWnd, WM_COMMAND, IDOK, 0); }), failed);
}

TEST_F(SheetEnd, FollowsTheDestructionOfTheSheet)
{
    EXPECT_EQ(RunEndedBy([this] {
                  sheet.m_step = [this] { ::DestroyWindow(sheet.m_hWnd); };
                  SendStep();
              }),
              IDCANCEL);
}

TEST_F(SheetEnd, FollowsTheDestructionOfItsOwner)
{
    CTestOwner owner;
    CTestSheet owned(&owner);
    owned.AddPage(&first);
    EXPECT_EQ(RunEndedBy(
                  [&] {
                      owned.m_step = [&] { owner.DestroyWindow(); };
                      SendMessageA(owned.m_hWnd, WM_STEP, 0, 0);
                  },
                  owned),
              IDCANCEL);
}

std::function<void()> hostsAnswer;

// A window of the host, which the class library knows nothing of.
LRESULT CALLBACK AnswerAsHost(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != WM_APP)
        return DefWindowProcA(window, message, wParam, lParam);
    hostsAnswer();
    return 0;
}

TEST_F(SheetEnd, FollowsAnEndThatAnotherSheetCovered)
{
    const HWND host = CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    SetWindowLongPtrA(host, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AnswerAsHost));
    CTestSheet above;
    above.AddPage(&second);
    above.m_step = [&] {
        sheet.SendMessage(WM_COMMAND, IDOK);
        TakeAllMessages();
        above.EndDialog(77);
    };
    hostsAnswer = [&] { above.DoModal(); };
    EXPECT_EQ(RunEndedBy([&] { SendMessageA(host, WM_APP, 0, 0); }), IDOK);
    ::DestroyWindow(host);
}

TEST_F(SheetEnd, KeepsTheSheetAfterARefusedOk)
{
    first.m_mayApply = FALSE;
    EXPECT_EQ(RunEndedBy([this] {
                  SendMessageA(sheet.m_hWnd, WM_COMMAND, IDOK, 0);
                  EXPECT_TRUE(IsWindow(sheet.m_hWnd));
                  SendMessageA(sheet.m_hWnd, WM_COMMAND, IDCANCEL, 0);
              }),
              IDCANCEL);
}

} // namespace
