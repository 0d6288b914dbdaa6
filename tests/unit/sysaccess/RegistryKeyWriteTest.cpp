// What the registry accessor writes and deletes, and what it does when that is refused.
#include "RegistryKeyTest.h"

#include "support/FailingAllocations.h"

namespace {

// --- any value

TEST_F(RegistryKey, RefusesWhenAValueCannotBeSet)
{
    auto fail = support::HookImport<decltype(RegSetValueExA)>(
        thisProgram, "RegSetValueExA",
        [](auto, HKEY, LPCSTR, DWORD, DWORD, const BYTE*, DWORD) -> LSTATUS { return ERROR_ACCESS_DENIED; });
    ExpectRefused([&] { m_key.SetDword("Value", 1); });
    ExpectRefused([&] { m_key.SetString("Value", "a"); });
    ExpectRefused([&] { m_key.SetMultiString("Value", {"a"}); });
    ExpectRefused([&] { m_key.SetBinary("Value", nullptr, 0); });
    ExpectAbsent(m_stored, "Value");
}

TEST_F(RegistryKey, LeavesTheReservedParameterZero)
{
    DWORD reserved = 0;
    const auto watch = support::HookImport<decltype(RegSetValueExA)>(
        thisProgram, "RegSetValueExA", [&](auto original, HKEY key, LPCSTR name, DWORD third, auto... more) {
            reserved = third;
            return original(key, name, third, more...);
        });
    EXPECT_EQ(m_key.SetDword("Value", 1), 0U);
    EXPECT_EQ(reserved, 0U);
    ExpectDword(m_stored, "Value", 1);
}

// --- text

TEST_F(RegistryKey, WritesTextWithItsTerminator)
{
    EXPECT_EQ(m_key.SetString("Value", "agent"), 0U);
    ExpectString(m_stored, "Value", "agent");
}

TEST_F(RegistryKey, WritesAndReadsEmptyText)
{
    EXPECT_EQ(m_key.SetString("Value", ""), 0U);
    ExpectString(m_stored, "Value", "");
    std::string text = "before";
    EXPECT_EQ(m_key.GetString("Value", text, REG_SZ, 0), 0U);
    EXPECT_EQ(text, "");
}

// --- lists of texts

TEST_F(RegistryKey, ReadsAndWritesAMultiString)
{
    EXPECT_EQ(m_key.SetMultiString("Value", {"VTNHOST", "VTNUPS"}), 0U);
    ExpectMultiString(m_stored, "Value", {"VTNHOST", "VTNUPS"});
    std::vector<std::string> texts;
    EXPECT_EQ(m_key.GetMultiString("Value", texts), 0U);
    EXPECT_EQ(texts, (std::vector<std::string>{"VTNHOST", "VTNUPS"}));
}

TEST_F(RegistryKey, WritesNoStringsAsAnEmptyValue)
{
    EXPECT_EQ(m_key.SetMultiString("Value", {}), 0U);
    EXPECT_EQ(m_stored.Value("Value"), (support::StoredValue{REG_MULTI_SZ, {}}));
    std::vector<std::string> texts{"before"};
    EXPECT_EQ(m_key.GetMultiString("Value", texts), 0U);
    EXPECT_TRUE(texts.empty());
}

TEST_F(RegistryKey, MultiStringWithoutMemoryThrowsAndIsNotWritten)
{
    const std::vector<std::string> texts(100, "a name of some length");
    const auto write = [&] {
        const support::FailingAllocations noMemory(0);
        m_key.SetMultiString("Value", texts);
    };
    EXPECT_THROW(write(), std::bad_alloc);
    ExpectAbsent(m_stored, "Value");
}

TEST_F(RegistryKey, AppendUniqueAddsAtTheEndOnce)
{
    std::vector<std::string> texts{"a"};
    EXPECT_TRUE(CRegistryKey::AppendUnique(texts, "b"));
    EXPECT_FALSE(CRegistryKey::AppendUnique(texts, "a"));
    EXPECT_EQ(texts, (std::vector<std::string>{"a", "b"}));
}

TEST_F(RegistryKey, AppendUniqueComparesLetterCase)
{
    std::vector<std::string> texts{"abc"};
    EXPECT_TRUE(CRegistryKey::AppendUnique(texts, "Abc"));
    EXPECT_EQ(texts.size(), 2U);
}

// --- bytes and numbers

TEST_F(RegistryKey, ReadsAndWritesBytes)
{
    const std::vector<BYTE> bytes{0x83, 'a', 0};
    EXPECT_EQ(m_key.SetBinary("Value", bytes.data(), static_cast<DWORD>(bytes.size())), 0U);
    ExpectBinary(m_stored, "Value", bytes);
    RegistryData data;
    DWORD size = 0;
    EXPECT_EQ(m_key.GetBinary("Value", data, size), 0U);
    EXPECT_EQ(std::vector<BYTE>(data.get(), data.get() + size), bytes);
}

TEST_F(RegistryKey, ReadsAndWritesNumbers)
{
    EXPECT_EQ(m_key.SetDword("Value", 0xFFFFFFFF), 0U);
    ExpectDword(m_stored, "Value", 0xFFFFFFFF);
    DWORD number = 0;
    EXPECT_EQ(m_key.GetDword("Value", number), 0U);
    EXPECT_EQ(number, 0xFFFFFFFFU);
}

// --- deleting

TEST_F(RegistryKey, DeletesAValueAndNoOther)
{
    m_stored.SetString("Value", "text");
    m_stored.SetDword("Other", 1);
    EXPECT_EQ(m_key.DeleteValue("Value"), 0U);
    ExpectAbsent(m_stored, "Value");
    ExpectDword(m_stored, "Other", 1);
}

TEST_F(RegistryKey, DeletingAnAbsentValueIsNoError)
{
    EXPECT_EQ(m_key.DeleteValue("Value"), 0U);
}

TEST_F(RegistryKey, ClosesTheKeyWhenAValueCannotBeDeleted)
{
    m_stored.SetDword("Value", 7);
    int closed = 0;
    auto refuse = support::HookImport<decltype(RegDeleteValueA)>(
        thisProgram, "RegDeleteValueA", [](auto, HKEY, LPCSTR) { return LSTATUS{ERROR_ACCESS_DENIED}; });
    auto count = CountClosed(closed);
    EXPECT_EQ(m_key.DeleteValue("Value"), 0U);
    EXPECT_EQ(closed, 1);
    ExpectDword(m_stored, "Value", 7);
}

TEST_F(RegistryKey, RefusesToDeleteFromAMissingKey)
{
    CRegistryKey missing(HKEY_LOCAL_MACHINE, m_stored.Subkey("Missing").Path().c_str());
    ExpectRefused([&] { missing.DeleteValue("Value"); });
}

} // namespace
