// A clock that the tests turn: a module's Sleep returns at once and moves the time that its GetTickCount
// returns. For everything that waits.
#pragma once

#include "imports/ImportHook.h"
#include "support/CallLog.h"
#include "support/Mutex.h"

#include <functional>
#include <mutex>
#include <vector>
#include <windows.h>

namespace support {

// Stands in for Sleep and GetTickCount of one module; one clock at a time. Throws std::runtime_error when the
// module imports neither.
class FakeClock
{
  public:
    // The clock starts at `ticks` milliseconds; close below 2^32 it wraps soon. With a log, each sleep adds
    // "Sleep MILLISECONDS" to it.
    explicit FakeClock(HMODULE module, DWORD ticks = 1000, CallLog* log = nullptr);

    [[nodiscard]] DWORD Now() const;
    // Lets time pass without a sleep.
    void Advance(DWORD milliseconds);
    // The sleeps so far, in milliseconds.
    [[nodiscard]] std::vector<DWORD> Sleeps() const;
    // From now on every sleep calls `action`, on the thread that sleeps, before the time moves.
    void OnSleep(std::function<void(DWORD milliseconds)> action);

  private:
    static void WINAPI PassTime(DWORD milliseconds);
    static DWORD WINAPI Ticks();

    mutable Mutex m_mutex;
    DWORD m_ticks;
    std::vector<DWORD> m_sleeps;
    std::function<void(DWORD)> m_action;
    CallLog* m_log;
    Turn<FakeClock> m_turn;
    ReplacedImport m_sleep;
    ReplacedImport m_getTickCount;
};

} // namespace support
