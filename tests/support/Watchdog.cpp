// See the header.
#include "support/Watchdog.h"

#include "support/SystemFunction.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <mutex>

namespace support {
namespace {

constexpr UINT hangCode = 3;

class WatchingListener : public testing::EmptyTestEventListener
{
  public:
    explicit WatchingListener(std::chrono::milliseconds limit) : m_watchdog(limit) {}

  private:
    void OnTestStart(const testing::TestInfo& test) override
    {
        m_watchdog.Begin(std::string(test.test_suite_name()) + '.' + test.name());
    }
    void OnTestEnd(const testing::TestInfo& /*test*/) override { m_watchdog.End(); }

    Watchdog m_watchdog;
};

} // namespace

Watchdog::Watchdog(std::chrono::milliseconds limit)
    : m_limit(limit), m_isOver(CreateEventA(nullptr, TRUE, FALSE, nullptr)),
      m_thread(CreateThread(nullptr, 0, &Main, this, 0, nullptr))
{
}

Watchdog::~Watchdog()
{
    SetEvent(m_isOver);
    WaitForSingleObject(m_thread, INFINITE);
    CloseHandle(m_thread);
    CloseHandle(m_isOver);
}

void Watchdog::Begin(const std::string& test)
{
    const std::lock_guard lock(m_mutex);
    m_test = test;
    m_end = std::chrono::steady_clock::now() + m_limit;
}

void Watchdog::End()
{
    const std::lock_guard lock(m_mutex);
    m_test.clear();
}

DWORD Watchdog::Main(void* watchdog)
{
    static_cast<Watchdog*>(watchdog)->Watch();
    return 0;
}

// A test may have replaced the program's own function.
void Watchdog::Watch()
{
    const auto wait = SystemFunction<decltype(WaitForSingleObject)>("kernel32.dll", "WaitForSingleObject");
    const auto pause = std::min(m_limit, std::chrono::milliseconds(1000));
    while (wait(m_isOver, static_cast<DWORD>(pause.count())) == WAIT_TIMEOUT)
        EndTheProgramOfAHang();
}

void Watchdog::EndTheProgramOfAHang()
{
    const std::lock_guard lock(m_mutex);
    if (m_test.empty() || std::chrono::steady_clock::now() < m_end)
        return;
    std::fflush(stdout);
    std::fprintf(stderr, "%s hangs: it has not ended after %g seconds\n", m_test.c_str(),
                 std::chrono::duration<double>(m_limit).count());
    std::fflush(stderr);
    // Unlike exit, it waits for no other thread.
    TerminateProcess(GetCurrentProcess(), hangCode);
}

void WatchTests()
{
    const auto limit =
        std::getenv("VTN_THOROUGH") == nullptr ? std::chrono::minutes(10) : std::chrono::hours(3);
    testing::UnitTest::GetInstance()->listeners().Append(
        new WatchingListener(limit)); // which owns it from now on
}

} // namespace support
