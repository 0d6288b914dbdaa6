// Ends a test program that hangs: nobody else could end tests that run windows' loops on their own thread.
#pragma once

#include "support/Mutex.h"

#include <chrono>
#include <string>
#include <windows.h>

namespace support {

// Watches one test at a time. When it takes longer than the limit, its name is printed and the process ends
// with code 3, whatever its threads wait for. It makes its handles at once and holds the same until its end:
// tests count those of the process.
class Watchdog
{
  public:
    explicit Watchdog(std::chrono::milliseconds limit);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    // A test begins; the one before it has ended.
    void Begin(const std::string& test);
    void End();

  private:
    static DWORD WINAPI Main(void* watchdog);
    void Watch();
    void EndTheProgramOfAHang();

    const std::chrono::milliseconds m_limit;
    Mutex m_mutex;
    std::string m_test; // empty between tests
    std::chrono::steady_clock::time_point m_end;
    HANDLE m_isOver;
    HANDLE m_thread;
};

// Watches every test of the program from now on, each for so long as only a hang takes. Called once, before
// RUN_ALL_TESTS.
void WatchTests();

} // namespace support
