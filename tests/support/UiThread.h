// A thread with a frame window and a message loop, as a Control Panel process has one: the applet's windows
// live there while the test's own thread drives them.
#pragma once

#include "support/Mutex.h"

#include <atomic>
#include <chrono>
#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <string>
#include <vector>
#include <windows.h>

namespace support {

// Longer than anything here takes on a busy machine; every wait of the tests ends with it.
constexpr std::chrono::milliseconds defaultLimit = std::chrono::seconds(20);

// Asks `isReached` every few milliseconds; false when the limit passes first.
[[nodiscard]] bool WaitUntil(const std::function<bool()>& isReached,
                             std::chrono::milliseconds limit = defaultLimit);

class UiThread
{
  public:
    // Returns when the frame window exists.
    UiThread();
    // Clears the thread and ends it, by force if need be.
    ~UiThread();
    UiThread(const UiThread&) = delete;
    UiThread& operator=(const UiThread&) = delete;

    [[nodiscard]] DWORD Id() const { return m_id; }
    // The window that owns what the jobs show.
    [[nodiscard]] HWND Frame() const { return m_frame; }

    // Runs `job` on the thread when those before it have ended. What it returns or throws comes with the
    // future.
    std::future<LONG> Start(std::function<LONG()> job);

    // Waits until the thread has handled what was posted to it so far, and what that posted in turn, or until
    // its frame is gone. Throws std::runtime_error when that takes longer than the limit.
    void Settle(std::chrono::milliseconds limit = defaultLimit) const;

    // Whether no job is running or waiting.
    [[nodiscard]] bool IsIdle() const { return m_unfinished == 0; }

    // Fails the test when a job is running still, and dismisses its windows until it ends; false when it does
    // not.
    bool Clear();

    // Visible top-level windows of the thread, the frame excepted; the upper ones first.
    [[nodiscard]] std::vector<HWND> Windows() const;

    // The window with the keyboard focus; null when none has it.
    [[nodiscard]] HWND Focus() const;

  private:
    using Job = std::packaged_task<LONG()>;

    static DWORD WINAPI Main(void* thread);
    void CreateFrame();
    void Loop();
    static void PumpMessages();
    void RunJobs();
    [[nodiscard]] bool IsEnding() const;

    mutable Mutex m_mutex;
    std::deque<Job> m_jobs;
    std::atomic<int> m_unfinished = 0;
    bool m_isEnding = false;
    HWND m_frame = nullptr;
    HANDLE m_wake;
    HANDLE m_ready;
    DWORD m_id = 0; // before the thread, whose creation fills it
    HANDLE m_thread;
};

} // namespace support
