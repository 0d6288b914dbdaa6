// See the header.
#include "support/Watchdog.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <memory>
#include <windows.h>

namespace support {
namespace {

constexpr UINT hangCode = 3;

class Listener : public testing::EmptyTestEventListener
{
  public:
    explicit Listener(std::chrono::milliseconds limit) : m_limit(limit) {}

  private:
    void OnTestStart(const testing::TestInfo& test) override
    {
        const std::string name = std::string(test.test_suite_name()) + '.' + test.name();
        m_watchdog = std::make_unique<Watchdog>(name, m_limit);
    }
    void OnTestEnd(const testing::TestInfo& /*test*/) override { m_watchdog.reset(); }

    std::chrono::milliseconds m_limit;
    std::unique_ptr<Watchdog> m_watchdog;
};

} // namespace

Watchdog::Watchdog(std::string test, std::chrono::milliseconds limit)
    : m_test(std::move(test)), m_thread([=, this] { Watch(limit); })
{
}

Watchdog::~Watchdog()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isOver = true;
    }
    m_changed.notify_one();
    m_thread.join();
}

void Watchdog::Watch(std::chrono::milliseconds limit)
{
    std::unique_lock lock(m_mutex);
    if (m_changed.wait_for(lock, limit, [this] { return m_isOver; }))
        return;
    std::fflush(stdout);
    std::fprintf(stderr, "%s hangs: it has not ended after %g seconds\n", m_test.c_str(),
                 std::chrono::duration<double>(limit).count());
    std::fflush(stderr);
    // Unlike exit, it waits for no other thread.
    TerminateProcess(GetCurrentProcess(), hangCode);
}

void WatchTests(std::chrono::milliseconds limit)
{
    testing::UnitTest::GetInstance()->listeners().Append(new Listener(limit)); // which owns it from now on
}

} // namespace support
