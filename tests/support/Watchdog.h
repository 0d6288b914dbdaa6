// Ends a test program that hangs: for programs whose tests run windows' loops on their own thread, where
// nobody else could end them.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace support {

// Watches one test at a time. When it takes longer than the limit, its name is printed and the process ends
// with code 3, whatever its threads wait for.
class Watchdog
{
  public:
    Watchdog(std::string test, std::chrono::milliseconds limit);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

  private:
    void Watch(std::chrono::milliseconds limit);

    std::string m_test;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_isOver = false;
    std::thread m_thread;
};

// Watches every test of the program from now on. Called once, before RUN_ALL_TESTS.
void WatchTests(std::chrono::milliseconds limit);

} // namespace support
