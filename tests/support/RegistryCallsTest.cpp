// The listener to registry calls, on this program's own.
#include "support/RegistryCalls.h"
#include "support/TestRegistry.h"

#include <gtest/gtest.h>

namespace {

using support::RegistryCalls;
using support::ScratchKey;

using Calls = std::vector<std::string>;

// Apart from the listener, as the hook's header asks.
[[gnu::noinline]] HKEY OpenScratch()
{
    HKEY key = nullptr;
    RegOpenKeyA(HKEY_LOCAL_MACHINE, "SOFTWARE\\vtnmgmt-calls", &key);
    return key;
}

[[gnu::noinline]] void UseValues(HKEY key)
{
    const DWORD value = 5;
    RegSetValueExA(key, "Value", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value);
    RegQueryValueExA(key, "Absent", nullptr, nullptr, nullptr, nullptr);
    RegDeleteValueA(key, "Value");
}

[[gnu::noinline]] void UseSubkeys(HKEY key)
{
    char name[16] = "";
    HKEY below = nullptr;
    RegEnumKeyA(key, 0, &name[0], sizeof name);
    RegOpenKeyExA(key, "Below", 0, KEY_READ, &below);
    RegCloseKey(below);
    RegDeleteKeyA(key, "Below");
}

[[gnu::noinline]] void Connect()
{
    HKEY key = nullptr;
    RegConnectRegistryA(nullptr, HKEY_LOCAL_MACHINE, &key);
    RegCloseKey(key);
}

[[gnu::noinline]] void Close(HKEY key)
{
    RegCloseKey(key);
}

TEST(RegistryCalls, ListsEachCallWithItsKeyAndFailure)
{
    const ScratchKey scratch("SOFTWARE\\vtnmgmt-calls");
    scratch.Subkey("Below").Create();
    const RegistryCalls calls(GetModuleHandleA(nullptr));

    const HKEY key = OpenScratch();
    UseValues(key);
    UseSubkeys(key);
    Close(key);

    const std::string path = "HKLM\\SOFTWARE\\vtnmgmt-calls";
    EXPECT_EQ(calls.Calls(),
              (Calls{"RegOpenKeyA " + path, "RegSetValueExA " + path + ", Value",
                     "RegQueryValueExA " + path + ", Absent = 2", "RegDeleteValueA " + path + ", Value",
                     "RegEnumKeyA " + path + ", 0", "RegOpenKeyExA " + path + "\\Below, access 0x20019",
                     "RegCloseKey " + path + "\\Below", "RegDeleteKeyA " + path + "\\Below",
                     "RegCloseKey " + path}));
}

TEST(RegistryCalls, ReportsTheKeysLeftOpen)
{
    const ScratchKey scratch("SOFTWARE\\vtnmgmt-calls");
    const RegistryCalls calls(GetModuleHandleA(nullptr));
    const HKEY key = OpenScratch();
    EXPECT_EQ(calls.OpenKeys(), Calls{"HKLM\\SOFTWARE\\vtnmgmt-calls"});
    Close(key);
    EXPECT_EQ(calls.OpenKeys(), Calls{});
}

TEST(RegistryCalls, FollowsConnections)
{
    const RegistryCalls calls(GetModuleHandleA(nullptr));
    Connect();
    EXPECT_EQ(calls.Calls().front(), "RegConnectRegistryA :HKLM");
    EXPECT_EQ(calls.OpenKeys(), Calls{});
}

TEST(RegistryCalls, DoesNotHearTheTestsOwnKeys)
{
    const RegistryCalls calls(GetModuleHandleA(nullptr));
    {
        const ScratchKey scratch;
        scratch.SetDword("Value", 1);
        ExpectDword(scratch, "Value", 1);
        scratch.DeleteValue("Value");
    }
    EXPECT_EQ(calls.Calls(), Calls{});
}

} // namespace
