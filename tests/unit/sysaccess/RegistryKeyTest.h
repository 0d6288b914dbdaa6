// The registry accessor on Wine's own registry. What the registry cannot be brought to do is done to it at
// the import table. Shared by the tests of its reads, its writes and the rest.
#pragma once

#include "imports/ImportHook.h"
#include "support/TestRegistry.h"
#include "support/ThisProgram.h"
#include "sysaccess/core/RegistryKey.h"

#include <gtest/gtest.h>

using support::ExpectAbsent;
using support::ExpectBinary;
using support::ExpectDword;
using support::ExpectMultiString;
using support::ExpectString;

using support::thisProgram;

class RegistryKey : public testing::Test
{
  protected:
    support::ScratchKey m_stored;
    CRegistryKey m_key{HKEY_LOCAL_MACHINE, m_stored.Path().c_str()};
};

// A read in a form that can be called again and again.
inline DWORD ReadDword(CRegistryKey& key)
{
    DWORD number = 0;
    return key.GetDword("Value", number);
}

template <typename Action>
void ExpectRefused(Action action, support::Location where = support::Location::current())
{
    try {
        action();
        support::ReportFailure(where, "nothing was thrown");
    } catch (ConfigurationError error) {
        support::ExpectEqual(IDS_ACCESS_DENIED, error, "error", where);
    }
}

// Counts the keys that are closed as long as the result lives.
[[nodiscard]] inline auto CountClosed(int& count)
{
    return support::HookImport<decltype(RegCloseKey)>(thisProgram, "RegCloseKey",
                                                      [&count](auto original, HKEY key) {
                                                          ++count;
                                                          return original(key);
                                                      });
}
