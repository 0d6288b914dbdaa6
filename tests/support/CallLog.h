// One list of calls in the order in which they happened, whoever makes them: the scripts that stand in for
// Windows write into it, and a test compares it with the calls that it expects.
#pragma once

#include "support/Mutex.h"

#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace support {

// May be written by one thread while another reads.
class CallLog
{
  public:
    void Add(std::string call)
    {
        const std::lock_guard lock(m_mutex);
        m_calls.push_back(std::move(call));
    }

    [[nodiscard]] std::vector<std::string> Calls() const
    {
        const std::lock_guard lock(m_mutex);
        return m_calls;
    }

    // The calls of these functions alone: their entries start with the function's name.
    [[nodiscard]] std::vector<std::string> CallsOf(const std::set<std::string>& functions) const
    {
        std::vector<std::string> calls = Calls();
        std::erase_if(calls, [&](const std::string& call) {
            return !functions.contains(call.substr(0, call.find(' ')));
        });
        return calls;
    }

    void Clear()
    {
        const std::lock_guard lock(m_mutex);
        m_calls.clear();
    }

  private:
    mutable Mutex m_mutex;
    std::vector<std::string> m_calls;
};

} // namespace support
