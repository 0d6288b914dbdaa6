// The please-wait dialog: its text, how long it stays, and that it is painted while its thread is busy.
#include "sysaccess/PleaseWaitDlg.h"
#include "imports/ImportHook.h"
#include "support/DialogDriver.h"
#include "support/FakeClock.h"

#include <gtest/gtest.h>

namespace {

class PleaseWaitDlg : public testing::Test
{
  protected:
    void Show(const char* message, HWND owner = nullptr) { ShowPleaseWait(owner, message, m_slot); }
    [[nodiscard]] HWND Window() const { return m_slot->m_hWnd; }
    [[nodiscard]] HWND Text() const { return GetDlgItem(Window(), IDC_PLEASE_WAIT_TEXT); }
    [[nodiscard]] bool IsPainted() const
    {
        return !GetUpdateRect(Window(), nullptr, FALSE) && !GetUpdateRect(Text(), nullptr, FALSE);
    }

    support::FakeClock m_clock{GetModuleHandleA(nullptr)};
    PleaseWaitSlot m_slot;
};

TEST_F(PleaseWaitDlg, ShowsItsText)
{
    Show("Starting one.");
    EXPECT_TRUE(IsWindowVisible(Window()));
    EXPECT_EQ(support::WindowText(Window()), "Management Agents");
    EXPECT_EQ(support::WindowText(Text()), "Starting one.");
}

TEST_F(PleaseWaitDlg, ShowsTheNextTextInTheSameWindow)
{
    Show("Starting one.");
    const HWND first = Window();
    Show("Starting another.");
    EXPECT_EQ(Window(), first);
    EXPECT_EQ(support::WindowText(Text()), "Starting another.");
}

TEST_F(PleaseWaitDlg, IsPaintedWithoutAnybodyDispatchingMessages)
{
    Show("Starting one.");
    EXPECT_TRUE(IsPainted());
    Show("Starting another.");
    EXPECT_TRUE(IsPainted());
}

int messagesHandled = 0;

LRESULT CALLBACK CountMessages(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    messagesHandled += message == WM_APP ? 1 : 0;
    return DefWindowProcA(window, message, wParam, lParam);
}

TEST_F(PleaseWaitDlg, HandlesNoMessageOfAnotherThread)
{
    const HWND window = CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CountMessages));
    messagesHandled = 0;
    Show("Starting one.");
    support::SendFromElsewhere(window, WM_APP);
    Show("Starting another.");
    EXPECT_EQ(messagesHandled, 0);
    DestroyWindow(window);
}

// Windows would else put a ghost in the place of windows whose thread has not looked for messages for a
// while.
TEST_F(PleaseWaitDlg, KeepsTheThreadsWindowsFromBeingReplaced)
{
    int calls = 0;
    const auto count = support::HookImport<decltype(DisableProcessWindowsGhosting)>(
        GetModuleHandleA(nullptr), "DisableProcessWindowsGhosting", [&](auto) { ++calls; });
    Show("Starting one.");
    Show("Starting another.");
    EXPECT_EQ(calls, 1);
}

TEST_F(PleaseWaitDlg, CannotBeClosedByItsUser)
{
    Show("Starting one.");
    const auto style = static_cast<DWORD>(GetWindowLongPtrA(Window(), GWL_STYLE));
    EXPECT_EQ(style & (WS_CAPTION | WS_POPUP | DS_MODALFRAME), DWORD{WS_CAPTION | WS_POPUP | DS_MODALFRAME});
    EXPECT_EQ(style & WS_SYSMENU, 0U);
    EXPECT_EQ(GetWindow(GetWindow(Window(), GW_CHILD), GW_HWNDNEXT), nullptr);
}

TEST_F(PleaseWaitDlg, StaysASecondAfterItsLastText)
{
    Show("Starting one.");
    m_clock.Advance(200);
    m_slot.reset();
    EXPECT_EQ(m_clock.Sleeps(), std::vector<DWORD>{800});
}

TEST_F(PleaseWaitDlg, GoesAtOnceAfterASecond)
{
    Show("Starting one.");
    m_clock.Advance(5000);
    m_slot.reset();
    EXPECT_EQ(m_clock.Sleeps(), std::vector<DWORD>());
}

TEST_F(PleaseWaitDlg, GoesAtOnceAfterExactlyASecond)
{
    Show("Starting one.");
    m_clock.Advance(1000);
    m_slot.reset();
    EXPECT_EQ(m_clock.Sleeps(), std::vector<DWORD>());
}

TEST_F(PleaseWaitDlg, GivesEachTextASecondOfItsOwn)
{
    Show("Starting one.");
    m_clock.Advance(5000);
    Show("Starting another.");
    m_clock.Advance(1);
    m_slot.reset();
    EXPECT_EQ(m_clock.Sleeps(), std::vector<DWORD>{999});
}

TEST_F(PleaseWaitDlg, IsStillThereWhileItWaitsForItsEnd)
{
    Show("Starting one.");
    const HWND window = Window();
    bool isVisible = false;
    bool hasWaitCursor = false;
    m_clock.OnSleep([&](DWORD) {
        isVisible = IsWindowVisible(window) != FALSE;
        hasWaitCursor = GetCursor() == LoadCursorA(nullptr, IDC_WAIT);
    });
    m_slot.reset();
    EXPECT_TRUE(isVisible);
    EXPECT_TRUE(hasWaitCursor);
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(PleaseWaitDlg, ShowsTheWaitCursorUntilItsEnd)
{
    SetCursor(LoadCursorA(nullptr, IDC_ARROW));
    Show("Starting one.");
    EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, IDC_WAIT));
    m_slot.reset();
    EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, IDC_ARROW));
}

TEST_F(PleaseWaitDlg, StaysASecondWhateverItsMakerAsksFor)
{
    auto dialog = std::make_unique<CPleaseWaitDlg>("Starting one.", 60000, nullptr);
    ASSERT_TRUE(dialog->Create(CPleaseWaitDlg::IDD));
    dialog.reset();
    EXPECT_EQ(m_clock.Sleeps(), std::vector<DWORD>{1000});
}

TEST_F(PleaseWaitDlg, DoesNothingWhenItWasNeverShown)
{
    SetCursor(LoadCursorA(nullptr, IDC_WAIT));
    CWnd::BeginWaitCursor();
    std::make_unique<CPleaseWaitDlg>("Starting one.", 1000, nullptr).reset();
    EXPECT_EQ(m_clock.Sleeps(), std::vector<DWORD>());
    EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, IDC_WAIT));
    CWnd::EndWaitCursor();
}

RECT Place(HWND window)
{
    RECT place{};
    GetWindowRect(window, &place);
    return place;
}

TEST_F(PleaseWaitDlg, StandsInTheMiddleOfItsOwner)
{
    const HWND owner = CreateWindowA("STATIC", "", WS_POPUP | WS_VISIBLE, 101, 51, 600, 400, nullptr, nullptr,
                                     nullptr, nullptr);
    Show("Starting one.", owner);
    EXPECT_EQ(GetWindow(Window(), GW_OWNER), owner);
    const RECT place = Place(Window());
    EXPECT_NEAR((place.left + place.right) / 2, 401, 1);
    EXPECT_NEAR((place.top + place.bottom) / 2, 251, 1);
    m_slot.reset();
    DestroyWindow(owner);
}

TEST_F(PleaseWaitDlg, SurvivesTheEndOfItsOwner)
{
    const HWND owner = CreateWindowA("STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 100, 100, nullptr, nullptr,
                                     nullptr, nullptr);
    Show("Starting one.", owner);
    DestroyWindow(owner);
    EXPECT_EQ(Window(), nullptr);
    m_slot.reset();
    EXPECT_EQ(m_clock.Sleeps(), std::vector<DWORD>());
}

TEST(PleaseWaitDlgClock, CountsOverTheWrapOfTheTickCounter)
{
    support::FakeClock clock(GetModuleHandleA(nullptr), 0xFFFFFF9C);
    PleaseWaitSlot slot;
    ShowPleaseWait(nullptr, "Starting one.", slot);
    clock.Advance(200);
    ASSERT_EQ(clock.Now(), 100U);
    slot.reset();
    EXPECT_EQ(clock.Sleeps(), std::vector<DWORD>{800});
}

} // namespace
