// The registry calls of the applet: how many it must make at least, and the same calls made without an
// applet.
#pragma once

#include "machine/CallRecorder.h"
#include "support/TestRegistry.h"

#include <map>
#include <string>
#include <vector>

// The registry calls among those that were recorded.
[[nodiscard]] std::vector<sweep::Call> RegistryCallsAmong(const std::vector<sweep::Call>& calls);

// The least number of calls that load everything from the machine as it is: each value and each list of
// subkeys once, every read with an opening, a query of the size, one of the data if the value is there, and a
// closing.
[[nodiscard]] std::size_t LeastCallsOfOpening();

// The same for one save of everything, each value being written with an opening and a closing of its own.
[[nodiscard]] std::size_t LeastCallsOfSave();

// Makes recorded registry calls once more. Values are written as they are stored at the construction.
class RegistryReplay
{
  public:
    explicit RegistryReplay(std::vector<sweep::Call> calls);

    void Run();

  private:
    void Make(const sweep::Call& call);

    std::vector<sweep::Call> m_calls;
    std::map<std::string, support::StoredValue> m_values;
    std::vector<HKEY> m_open;
    DWORD m_subkey = 0;
};
