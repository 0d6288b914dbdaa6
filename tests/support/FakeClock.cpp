// See the header.
#include "support/FakeClock.h"

#include <stdexcept>
#include <utility>

namespace support {

FakeClock::FakeClock(HMODULE module, DWORD ticks, CallLog* log)
    : m_ticks(ticks), m_log(log), m_turn(this), m_sleep(module, "Sleep", &PassTime),
      m_getTickCount(module, "GetTickCount", &Ticks)
{
    if (!m_sleep.IsImported() && !m_getTickCount.IsImported())
        throw std::runtime_error("not imported: Sleep, GetTickCount");
}

DWORD FakeClock::Now() const
{
    const std::lock_guard lock(m_mutex);
    return m_ticks;
}

void FakeClock::Advance(DWORD milliseconds)
{
    const std::lock_guard lock(m_mutex);
    m_ticks += milliseconds;
}

std::vector<DWORD> FakeClock::Sleeps() const
{
    const std::lock_guard lock(m_mutex);
    return m_sleeps;
}

void FakeClock::OnSleep(std::function<void(DWORD)> action)
{
    const std::lock_guard lock(m_mutex);
    m_action = std::move(action);
}

void FakeClock::PassTime(DWORD milliseconds)
{
    FakeClock& clock = Turn<FakeClock>::Active();
    std::unique_lock lock(clock.m_mutex);
    clock.m_sleeps.push_back(milliseconds);
    if (clock.m_log != nullptr)
        clock.m_log->Add("Sleep " + std::to_string(milliseconds));
    // Not under the lock: the action may look at the clock.
    const std::function<void(DWORD)> action = clock.m_action;
    lock.unlock();
    if (action)
        action(milliseconds);
    clock.Advance(milliseconds);
}

DWORD FakeClock::Ticks()
{
    return Turn<FakeClock>::Active().Now();
}

} // namespace support
