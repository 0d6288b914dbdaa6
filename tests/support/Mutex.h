// A lock that holds no handle. std::mutex makes an event when two threads first meet at it, and keeps it for
// its life: a count of handles would take that for a leak, at a time that nobody can foresee.
#pragma once

#ifdef _WIN32
#include <windows.h>
#else
#include <mutex>
#endif

namespace support {

#ifdef _WIN32
// For std::lock_guard and std::unique_lock. Not recursive.
class Mutex
{
  public:
    Mutex() = default;
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    void lock() { AcquireSRWLockExclusive(&m_lock); }
    void unlock() { ReleaseSRWLockExclusive(&m_lock); }

  private:
    SRWLOCK m_lock = SRWLOCK_INIT;
};
#else
using Mutex = std::mutex; // nobody counts handles there
#endif

} // namespace support
