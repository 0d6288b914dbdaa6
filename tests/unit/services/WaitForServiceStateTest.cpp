// How often, how long and for whom the wait for a service looks at it.
#include "imports/ImportHook.h"
#include "ScriptedMachine.h"
#include "support/DialogDriver.h"
#include "sysaccess/core/ServiceQueries.h"
#include "sysaccess/ServiceStartStop.h"

namespace {

using support::ServiceState;

using Statuses = std::deque<SERVICE_STATUS>;

// The same answer `count` times.
Statuses Times(std::size_t count, const SERVICE_STATUS& status)
{
    return Statuses(count, status);
}

class WaitForServiceStateTest : public ScriptedMachine
{
  protected:
    // Waits for a service that answers these statuses, having been found in `known` before.
    bool Wait(const Statuses& answers, DWORD wanted = SERVICE_RUNNING, DWORD known = SERVICE_STOPPED,
              HWND window = nullptr)
    {
        m_manager.Add("Agent", {.states = answers});
        m_status = ServiceState(known);
        const UniqueServiceHandle service = OpenServiceForControl("Agent");
        return WaitForServiceState(window, service.Get(), m_status, wanted);
    }

    [[nodiscard]] std::size_t Looks() const { return m_log.CallsOf({"QueryServiceStatus"}).size(); }
    [[nodiscard]] std::vector<DWORD> Sleeps() const { return m_clock.Sleeps(); }

    SERVICE_STATUS m_status{};
};

TEST_F(WaitForServiceStateTest, TakesTheStateThatIsKnownAlready)
{
    EXPECT_TRUE(Wait({ServiceState(SERVICE_STOPPED)}, SERVICE_RUNNING, SERVICE_RUNNING));
    EXPECT_TRUE(Wait({ServiceState(SERVICE_RUNNING)}, SERVICE_STOPPED, SERVICE_STOPPED));
    EXPECT_EQ(Looks(), 0U);
}

TEST_F(WaitForServiceStateTest, WaitsForNothingButRunningAndStopped)
{
    for (const DWORD wanted : States{SERVICE_START_PENDING, SERVICE_STOP_PENDING, SERVICE_CONTINUE_PENDING,
                                     SERVICE_PAUSE_PENDING, SERVICE_PAUSED, 0, 8})
        EXPECT_FALSE(Wait({ServiceState(wanted)}, wanted, wanted)) << wanted;
    EXPECT_EQ(Looks(), 0U);
}

TEST_F(WaitForServiceStateTest, DoesNotSleepInTheRightState)
{
    EXPECT_TRUE(Wait({ServiceState(SERVICE_RUNNING)}));
    EXPECT_EQ(Looks(), 1U);
    EXPECT_EQ(Sleeps(), std::vector<DWORD>());
}

TEST_F(WaitForServiceStateTest, SleepsForTheHintAtANewCheckPoint)
{
    EXPECT_TRUE(Wait({ServiceState(SERVICE_START_PENDING, 1, 300), ServiceState(SERVICE_START_PENDING, 2, 0),
                      ServiceState(SERVICE_START_PENDING, 3, 2500), ServiceState(SERVICE_RUNNING)}));
    EXPECT_EQ(Sleeps(), (std::vector<DWORD>{300, 0, 2500}));
}

TEST_F(WaitForServiceStateTest, SleepsLongestWhenTheCheckPointStays)
{
    EXPECT_TRUE(
        Wait({ServiceState(SERVICE_START_PENDING, 0, 300), ServiceState(SERVICE_START_PENDING, 7, 300),
              ServiceState(SERVICE_START_PENDING, 7, 300), ServiceState(SERVICE_RUNNING)}));
    EXPECT_EQ(Sleeps(), (std::vector<DWORD>{2500, 300, 2500}));
}

TEST_F(WaitForServiceStateTest, NeverSleepsLongerThanTheLongestTime)
{
    EXPECT_TRUE(Wait({ServiceState(SERVICE_START_PENDING, 1, 30000), ServiceState(SERVICE_RUNNING)}));
    EXPECT_EQ(Sleeps(), (std::vector<DWORD>{2500}));
}

TEST_F(WaitForServiceStateTest, GivesUpAfterTenRoundsWithoutProgress)
{
    EXPECT_FALSE(Wait(Times(1, ServiceState(SERVICE_START_PENDING, 0, 30000))));
    EXPECT_EQ(Looks(), 10U);
    EXPECT_EQ(Sleeps(), std::vector<DWORD>(10, 2500));
}

TEST_F(WaitForServiceStateTest, AcceptsAStateReachedInTheTenthRound)
{
    Statuses answers = Times(9, ServiceState(SERVICE_START_PENDING));
    answers.push_back(ServiceState(SERVICE_RUNNING));
    EXPECT_TRUE(Wait(answers));
    answers.push_front(ServiceState(SERVICE_START_PENDING));
    EXPECT_FALSE(Wait(answers));
}

TEST_F(WaitForServiceStateTest, AllowsThirtySixRoundsForALongHint)
{
    EXPECT_FALSE(Wait(Times(1, ServiceState(SERVICE_START_PENDING, 1, 30000))));
    EXPECT_EQ(Looks(), 1U + 36U);
    EXPECT_EQ(Sleeps(), std::vector<DWORD>(37, 2500));
}

TEST_F(WaitForServiceStateTest, CountsAgainAfterALongHint)
{
    // The new check point comes with the last look that the first one allows.
    Statuses answers = Times(36, ServiceState(SERVICE_STOP_PENDING, 1, 30000));
    answers.push_back(ServiceState(SERVICE_STOP_PENDING, 2, 5000));
    EXPECT_FALSE(Wait(answers, SERVICE_STOPPED, SERVICE_RUNNING));
    EXPECT_EQ(Looks(), 37U + 6U);
}

TEST_F(WaitForServiceStateTest, ShortHintsAllowNoMoreRounds)
{
    Statuses answers;
    for (DWORD checkPoint = 1; checkPoint <= 20; ++checkPoint)
        answers.push_back(ServiceState(SERVICE_START_PENDING, checkPoint, 2500));
    EXPECT_FALSE(Wait(answers));
    EXPECT_EQ(Looks(), 10U);
}

TEST_F(WaitForServiceStateTest, KeepsTheRoundsOfALongerHint)
{
    Statuses answers{ServiceState(SERVICE_START_PENDING, 1, 30000)};
    for (DWORD checkPoint = 2; checkPoint <= 60; ++checkPoint)
        answers.push_back(ServiceState(SERVICE_START_PENDING, checkPoint, 10));
    EXPECT_FALSE(Wait(answers));
    EXPECT_EQ(Looks(), 1U + 36U);
}

TEST_F(WaitForServiceStateTest, RoundsThePromisedTimeDownToWholeRounds)
{
    EXPECT_FALSE(Wait(Times(1, ServiceState(SERVICE_START_PENDING, 1, 2501))));
    EXPECT_EQ(Looks(), 1U + 3U);
}

TEST_F(WaitForServiceStateTest, BelievesAWaitHintOfWeeks)
{
    // Three times this hint is 2 in 32 bits.
    Statuses answers = Times(100, ServiceState(SERVICE_START_PENDING, 1, 1431655766));
    answers.push_back(ServiceState(SERVICE_RUNNING));
    EXPECT_TRUE(Wait(answers));
}

TEST_F(WaitForServiceStateTest, EndsWhenTheServiceTakesAnotherWay)
{
    EXPECT_FALSE(Wait({ServiceState(SERVICE_STOPPED)}));
    EXPECT_FALSE(Wait({ServiceState(SERVICE_STOP_PENDING)}));
    EXPECT_FALSE(Wait({ServiceState(SERVICE_PAUSED)}));
    EXPECT_FALSE(Wait({ServiceState(SERVICE_START_PENDING)}, SERVICE_STOPPED, SERVICE_RUNNING));
    EXPECT_FALSE(Wait({ServiceState(SERVICE_RUNNING)}, SERVICE_STOPPED, SERVICE_RUNNING));
    EXPECT_EQ(Looks(), 5U);
    EXPECT_EQ(Sleeps(), std::vector<DWORD>());
}

TEST_F(WaitForServiceStateTest, EndsWhenTheServiceStopsOnItsWayUp)
{
    EXPECT_FALSE(Wait({ServiceState(SERVICE_START_PENDING, 1, 100), ServiceState(SERVICE_STOPPED)}));
    EXPECT_EQ(Looks(), 2U);
    EXPECT_EQ(m_status.dwCurrentState, DWORD{SERVICE_STOPPED});
}

TEST_F(WaitForServiceStateTest, EndsWhenTheServiceCannotBeAsked)
{
    m_manager.Fail("QueryServiceStatus", "Agent", ERROR_INVALID_HANDLE, 2);
    EXPECT_FALSE(Wait({ServiceState(SERVICE_START_PENDING, 1, 100), ServiceState(SERVICE_RUNNING)}));
    EXPECT_EQ(Looks(), 2U);
}

TEST_F(WaitForServiceStateTest, LeavesTheLastStatusWithTheCaller)
{
    EXPECT_FALSE(Wait(Times(1, ServiceState(SERVICE_START_PENDING, 3, 400))));
    EXPECT_EQ(m_status.dwCurrentState, DWORD{SERVICE_START_PENDING});
    EXPECT_EQ(m_status.dwCheckPoint, 3U);
    EXPECT_EQ(m_status.dwWaitHint, 400U);
}

support::CallLog* windowLog = nullptr;

LRESULT CALLBACK LogMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_PAINT)
        windowLog->Add("Paint");
    if (message == WM_APP)
        windowLog->Add("Message");
    return DefWindowProcA(window, message, wParam, lParam);
}

HWND MakeWindowWithALog(support::CallLog& log)
{
    const HWND window = CreateWindowA("STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr,
                                      GetModuleHandleA(nullptr), nullptr);
    UpdateWindow(window);
    windowLog = &log;
    SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&LogMessage));
    return window;
}

TEST_F(WaitForServiceStateTest, RepaintsTheWindowBeforeEachSleep)
{
    const HWND window = MakeWindowWithALog(m_log);
    EXPECT_TRUE(Wait({ServiceState(SERVICE_STOP_PENDING, 1, 5), ServiceState(SERVICE_STOP_PENDING, 2, 6),
                      ServiceState(SERVICE_STOPPED)},
                     SERVICE_STOPPED, SERVICE_RUNNING, window));
    EXPECT_EQ(m_log.CallsOf({"Paint", "Sleep"}), (Calls{"Paint", "Sleep 5", "Paint", "Sleep 6"}));
    DestroyWindow(window);
}

TEST_F(WaitForServiceStateTest, HandlesNoMessageOfAnotherThread)
{
    const HWND window = MakeWindowWithALog(m_log);
    m_clock.OnSleep([&](DWORD) { support::SendFromElsewhere(window, WM_APP); });
    EXPECT_TRUE(Wait({ServiceState(SERVICE_START_PENDING, 1, 5), ServiceState(SERVICE_START_PENDING, 2, 6),
                      ServiceState(SERVICE_RUNNING)}));
    EXPECT_EQ(m_log.CallsOf({"Message", "Sleep"}), (Calls{"Sleep 5", "Sleep 6"}));
    DestroyWindow(window);
}

TEST_F(WaitForServiceStateTest, RepaintsNothingWithoutAWindow)
{
    int repaints = 0;
    const auto count = support::HookImport<decltype(InvalidateRect)>(
        GetModuleHandleA(nullptr), "InvalidateRect",
        [&](auto original, HWND window, const RECT* area, BOOL erase) {
            ++repaints;
            return original(window, area, erase);
        });
    EXPECT_TRUE(Wait({ServiceState(SERVICE_START_PENDING, 1, 5), ServiceState(SERVICE_RUNNING)}));
    EXPECT_EQ(repaints, 0);
}

} // namespace
