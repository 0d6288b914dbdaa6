// How the registry accessor lists the subkeys of its key.
#include "RegistryKeyTest.h"

#include "support/FailingAllocations.h"

namespace {

TEST_F(RegistryKey, EnumeratesItsSubkeys)
{
    m_stored.Subkey("Parameters").Create();
    m_stored.Subkey("VTNHOST").Create();
    std::vector<std::string> names;
    EXPECT_EQ(m_key.EnumSubkeys(names), 0U);
    EXPECT_EQ(names, m_stored.SubkeyNames());
    EXPECT_EQ(names.size(), 2U);
}

TEST_F(RegistryKey, EnumeratesASubkeyNameOfFullLength)
{
    const std::string longest(255, 'x');
    m_stored.CreateSubkey(longest);
    std::vector<std::string> names;
    EXPECT_EQ(m_key.EnumSubkeys(names), 0U);
    EXPECT_EQ(names, std::vector<std::string>{longest});
}

TEST_F(RegistryKey, RefusesAKeyWithoutSubkeysAndLeavesNothingOpen)
{
    int closed = 0;
    auto count = CountClosed(closed);
    std::vector<std::string> names{"before"};
    ExpectRefused([&] { m_key.EnumSubkeys(names); });
    EXPECT_EQ(names, std::vector<std::string>{"before"});
    EXPECT_EQ(closed, 1);
}

TEST_F(RegistryKey, RefusesAnEnumerationThatFailsBetweenCountingAndReading)
{
    m_stored.Subkey("Agent").Create();
    int calls = 0;
    auto fail = support::HookImport<decltype(RegEnumKeyA)>(
        thisProgram, "RegEnumKeyA", [&](auto original, HKEY key, DWORD index, LPSTR name, DWORD size) {
            return ++calls == 3 ? LSTATUS{ERROR_KEY_DELETED} : original(key, index, name, size);
        });
    std::vector<std::string> names;
    ExpectRefused([&] { m_key.EnumSubkeys(names); });
}

// The one in the middle is lost; those around it can be read.
TEST_F(RegistryKey, RefusesAnEnumerationThatLosesASubkey)
{
    for (const char* name : {"A", "B", "C"})
        m_stored.Subkey(name).Create();
    int calls = 0;
    auto fail = support::HookImport<decltype(RegEnumKeyA)>(
        thisProgram, "RegEnumKeyA", [&](auto original, HKEY key, DWORD index, LPSTR name, DWORD size) {
            constexpr int counting = 4;
            return ++calls == counting + 2 ? LSTATUS{ERROR_KEY_DELETED} : original(key, index, name, size);
        });
    std::vector<std::string> names{"before"};
    ExpectRefused([&] { m_key.EnumSubkeys(names); });
    EXPECT_EQ(names, std::vector<std::string>{"before"});
}

TEST_F(RegistryKey, EnumerationWithoutMemoryThrowsAndClosesTheKey)
{
    m_stored.Subkey("Agent").Create();
    int closed = 0;
    auto count = CountClosed(closed);
    std::vector<std::string> names;
    const auto enumerate = [&] {
        const support::FailingAllocations noMemory(0);
        m_key.EnumSubkeys(names);
    };
    EXPECT_THROW(enumerate(), std::bad_alloc);
    EXPECT_EQ(closed, 1);
}

TEST_F(RegistryKey, EnumeratesThisMachineEvenForAnotherMachinesKey)
{
    m_stored.Subkey("Agent").Create();
    CRegistryKey remote(HKEY_LOCAL_MACHINE, m_stored.Path().c_str(), "\\\\SRV2");
    std::vector<std::string> names;
    EXPECT_EQ(remote.EnumSubkeys(names), 0U);
    EXPECT_EQ(names, std::vector<std::string>{"Agent"});
}

} // namespace
