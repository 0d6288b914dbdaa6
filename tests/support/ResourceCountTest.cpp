// The counts of what the process holds: each must move when something leaks.
#include "support/ResourceCount.h"
#include "support/AppletHost.h"
#include "support/Mutex.h"
#include "support/ProgramPath.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>
#include <mutex>
#include <thread>

namespace {

using support::ResourceCount;
using support::WindowsHookCount;

TEST(ResourceCount, MovesWithWindowsOfEveryKind)
{
    const ResourceCount before = ResourceCount::Now();
    const HWND top =
        CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    const HWND child = CreateWindowExA(0, "STATIC", "", WS_CHILD, 0, 0, 1, 1, top, nullptr, nullptr, nullptr);
    const HWND hidden =
        CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    EXPECT_NE(child, nullptr);
    EXPECT_GE(ResourceCount::Now().windows, before.windows + 3);
    DestroyWindow(top);
    DestroyWindow(hidden);
    EXPECT_LE(ResourceCount::Now().windows, before.windows + 1);
}

TEST(ResourceCount, MovesWithGdiObjects)
{
    DeleteObject(CreateSolidBrush(0));
    const ResourceCount before = ResourceCount::Now();
    const HBRUSH brush = CreateSolidBrush(0x123456);
    const HPEN pen = CreatePen(PS_SOLID, 1, 0x123456);
    const HFONT font = CreateFontA(12, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "Tahoma");
    EXPECT_EQ(ResourceCount::Now().gdiObjects, before.gdiObjects + 3);
    DeleteObject(font);
    DeleteObject(pen);
    DeleteObject(brush);
    EXPECT_EQ(ResourceCount::Now().gdiObjects, before.gdiObjects);
}

TEST(ResourceCount, MovesWithKernelHandlesAndRegistryKeys)
{
    const ResourceCount before = ResourceCount::Now();
    const HANDLE event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    HKEY key = nullptr;
    RegOpenKeyA(HKEY_LOCAL_MACHINE, "SOFTWARE", &key);
    EXPECT_EQ(ResourceCount::Now().kernelHandles, before.kernelHandles + 2);
    RegCloseKey(key);
    CloseHandle(event);
    EXPECT_EQ(ResourceCount::Now().kernelHandles, before.kernelHandles);
}

// Two threads that meet at a lock, as the test and the UI thread may at any time. Each meeting has a lock of
// its own. Wine may keep a handle for one of its own locks once threads have met there, so one may leave
// more.
TEST(ResourceCount, StaysWhenThreadsMeetAtALock)
{
    constexpr int meetings = 5;
    constexpr int rounds = 100;
    int grown = 0;
    for (int meeting = 0; meeting < meetings; ++meeting) {
        support::Mutex mutex;
        int entered = 0;
        const auto enter = [&] {
            for (int round = 0; round < rounds; ++round) {
                const std::lock_guard lock(mutex);
                ++entered;
                Sleep(0);
            }
        };
        std::thread(enter).join();
        const ResourceCount before = ResourceCount::Now();
        std::thread other(enter);
        enter();
        other.join();
        EXPECT_EQ(entered, 3 * rounds);
        grown += HasGrown(before, ResourceCount::Now()) ? 1 : 0;
    }
    EXPECT_LE(grown, 1);
}

// A job's result can be had before its thread has put the job away.
TEST(ResourceCount, StaysWhenTheThreadHasSettledAfterAJob)
{
    support::UiThread thread;
    const auto run = [&] {
        std::future<LONG> answer = thread.Start([] { return 0; });
        EXPECT_EQ(answer.wait_for(support::defaultLimit), std::future_status::ready);
        answer.get();
        thread.Settle();
    };
    run();
    const ResourceCount before = ResourceCount::Now();
    for (int job = 0; job < 50; ++job) {
        run();
        EXPECT_EQ(ResourceCount::Now(), before);
    }
}

TEST(ResourceCount, FailsATestThatLeaks)
{
    EXPECT_NONFATAL_FAILURE(ADD_FAILURE() << "first", "first"); // the first report makes a handle that stays
    static ResourceCount before;
    before = ResourceCount::Now();
    const HANDLE event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    EXPECT_NONFATAL_FAILURE(support::ExpectNoLeak(before), "resources of the process");
    CloseHandle(event);
    ExpectNoLeak(before);
}

TEST(ResourceCount, FindsNoLeakInAReopenedSheet)
{
    support::AppletHost host(support::BesideThisProgram("sample.cpl"));
    const auto openAndCancel = [&] {
        host.Open();
        host.PressCancel();
    };
    // What Windows makes once for all sheets is no leak.
    openAndCancel();
    const ResourceCount before = ResourceCount::Now();
    openAndCancel();
    openAndCancel();
    ExpectNoLeak(before);
}

TEST(ResourceCount, FindsNoLeakInAReloadedApplet)
{
    const auto loadAndUnload = [] {
        const support::AppletHost host(support::BesideThisProgram("sample.cpl"));
    };
    loadAndUnload();
    const ResourceCount before = ResourceCount::Now();
    loadAndUnload();
    loadAndUnload();
    ExpectNoLeak(before);
}

TEST(WindowsHookCount, CountsTheHooksOfASheet)
{
    support::AppletHost host(support::BesideThisProgram("sample.cpl"));
    const WindowsHookCount hooks(host.Module());
    host.Open();
    EXPECT_EQ(hooks.Left(), 1);
    host.PressCancel();
    EXPECT_EQ(hooks.Installed(), 1);
    EXPECT_EQ(hooks.Left(), 0);
}

} // namespace
