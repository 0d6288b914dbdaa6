// Makes one call of Windows fail, the first, second or a later one, to see what the product does then:
//
//     const FailNth<"RegSetValueExA", decltype(RegSetValueExA)> refuse(module, 2, ERROR_ACCESS_DENIED);
//     const FailNth<"StartServiceA", decltype(StartServiceA)> busy(module, 1, FALSE,
//     ERROR_SERVICE_DATABASE_LOCKED);
#pragma once

#include "imports/ImportHook.h"
#include "support/Expect.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <string>
#include <type_traits>
#include <windows.h>

namespace support {

// Name of a function as a template argument, which gives each function a hook of its own.
struct FunctionName
{
    template <std::size_t size>
    consteval FunctionName(const char (&name)[size])
    {
        std::copy_n(&name[0], size, text.begin());
    }

    std::array<char, 64> text{};
};

template <FunctionName name, typename Function>
class FailNth;

// While it lives, the call number `call` (from 1) that the module makes of the function is answered with
// `result`, and with `lastError` as the last error, without reaching Windows. All other calls pass. Fails the
// test at the line that made it when there were fewer calls. Throws std::runtime_error when the module does
// not import the function.
template <FunctionName name, typename Result, typename... Arguments>
class FailNth<name, Result(Arguments...)>
{
  public:
    FailNth(HMODULE module, int call, std::type_identity_t<Result> result, DWORD lastError = ERROR_SUCCESS,
            Location where = Location::current())
        : m_call(call), m_result(result), m_lastError(lastError), m_where(where), m_turn(this),
          m_import(module, name.text.data(), &Replacement)
    {
        if (!m_import.IsImported())
            throw std::runtime_error(std::string("not imported: ") + name.text.data());
    }
    ~FailNth()
    {
        if (m_count < m_call)
            ReportFailure(m_where, std::string(name.text.data()) + " was called " + std::to_string(m_count) +
                                       " times");
    }
    FailNth(const FailNth&) = delete;
    FailNth& operator=(const FailNth&) = delete;

    // The calls so far, the failed one among them.
    [[nodiscard]] int Calls() const { return m_count; }

  private:
    static Result Replacement(Arguments... arguments)
    {
        FailNth& self = Turn<FailNth>::Active();
        if (++self.m_count != self.m_call)
            return self.m_import.template Original<Result(Arguments...)>()(arguments...);
        SetLastError(self.m_lastError);
        return self.m_result;
    }

    int m_call;
    std::atomic<int> m_count = 0;
    Result m_result;
    DWORD m_lastError;
    Location m_where;
    Turn<FailNth> m_turn;
    ReplacedImport m_import;
};

} // namespace support
