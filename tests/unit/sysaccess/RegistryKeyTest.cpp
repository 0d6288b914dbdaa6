// The registry accessor on Wine's own registry. What the registry cannot be brought to do is done to it at
// the import table.
#include "sysaccess/RegistryKey.h"

#include "support/FailingAllocations.h"
#include "support/ImportHook.h"
#include "support/TestRegistry.h"

#include <gtest/gtest.h>

namespace {

using support::ExpectAbsent;
using support::ExpectBinary;
using support::ExpectDword;
using support::ExpectMultiString;
using support::ExpectString;

const HMODULE self = GetModuleHandleA(nullptr);

class RegistryKey : public testing::Test
{
  protected:
    support::ScratchKey m_stored;
    CRegistryKey m_key{HKEY_LOCAL_MACHINE, m_stored.Path().c_str()};
};

// The tests' actions, one per operation, each in a form that can be called again and again.
DWORD ReadDword(CRegistryKey& key)
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

// --- opening and closing

TEST_F(RegistryKey, LooksUnderLocalMachineWhateverRootItIsGiven)
{
    m_stored.SetDword("Value", 7);
    CRegistryKey key(HKEY_CURRENT_USER, m_stored.Path().c_str());
    DWORD number = 0;
    EXPECT_EQ(key.GetDword("Value", number), 0U);
    EXPECT_EQ(number, 7U);
}

TEST_F(RegistryKey, RefusesAKeyThatDoesNotExist)
{
    CRegistryKey missing(HKEY_LOCAL_MACHINE, m_stored.Subkey("Missing").Path().c_str());
    ExpectRefused([&] { ReadDword(missing); });
    ExpectRefused([&] { missing.SetDword("Value", 1); });
    EXPECT_FALSE(m_stored.Subkey("Missing").Exists());
}

TEST_F(RegistryKey, RefusesAnOpenThatIsDenied)
{
    auto deny = support::HookImport<decltype(RegOpenKeyA)>(
        self, "RegOpenKeyA", [](auto, HKEY, LPCSTR, PHKEY) -> LSTATUS { return ERROR_ACCESS_DENIED; });
    ExpectRefused([&] { ReadDword(m_key); });
    ExpectRefused([&] { m_key.SetDword("Value", 1); });
    std::vector<std::string> names;
    ExpectRefused([&] { m_key.EnumSubkeys(names); });
}

TEST_F(RegistryKey, RefusesWhenAKeyCannotBeClosed)
{
    m_stored.SetDword("Value", 7);
    m_stored.Subkey("Agent").Create();
    auto fail = support::HookImport<decltype(RegCloseKey)>(self, "RegCloseKey", [](auto original, HKEY key) {
        original(key);
        return LSTATUS{ERROR_INVALID_HANDLE};
    });
    ExpectRefused([&] { ReadDword(m_key); });
    ExpectRefused([&] { m_key.SetDword("Value", 1); });
    std::vector<std::string> names;
    ExpectRefused([&] { m_key.EnumSubkeys(names); });
}

TEST_F(RegistryKey, ConnectsToAnotherMachineAndClosesBothKeys)
{
    m_stored.SetDword("Value", 7);
    std::string machine;
    auto connect = support::HookImport<decltype(RegConnectRegistryA)>(
        self, "RegConnectRegistryA", [&](auto, LPCSTR name, HKEY root, PHKEY remoteRoot) -> LSTATUS {
            machine = name;
            return RegOpenKeyExA(root, nullptr, 0, KEY_READ, remoteRoot);
        });
    int closed = 0;
    auto count =
        support::HookImport<decltype(RegCloseKey)>(self, "RegCloseKey", [&](auto original, HKEY key) {
            ++closed;
            return original(key);
        });
    CRegistryKey remote(HKEY_LOCAL_MACHINE, m_stored.Path().c_str(), "\\\\SRV2");
    EXPECT_EQ(ReadDword(remote), 0U);
    EXPECT_EQ(machine, "\\\\SRV2");
    EXPECT_EQ(closed, 2);
}

TEST_F(RegistryKey, RefusesAMachineThatCannotBeReached)
{
    auto fail = support::HookImport<decltype(RegConnectRegistryA)>(
        self, "RegConnectRegistryA", [](auto, LPCSTR, HKEY, PHKEY) -> LSTATUS { return ERROR_BAD_NETPATH; });
    CRegistryKey remote(HKEY_LOCAL_MACHINE, m_stored.Path().c_str(), "\\\\SRV2");
    ExpectRefused([&] { ReadDword(remote); });
}

TEST_F(RegistryKey, RefusesWhenTheOtherMachinesRootCannotBeClosed)
{
    m_stored.SetDword("Value", 7);
    auto connect = support::HookImport<decltype(RegConnectRegistryA)>(
        self, "RegConnectRegistryA", [](auto, LPCSTR, HKEY root, PHKEY remoteRoot) -> LSTATUS {
            return RegOpenKeyExA(root, nullptr, 0, KEY_READ, remoteRoot);
        });
    int closed = 0;
    auto failSecond =
        support::HookImport<decltype(RegCloseKey)>(self, "RegCloseKey", [&](auto original, HKEY key) {
            original(key);
            return ++closed == 2 ? LSTATUS{ERROR_INVALID_HANDLE} : LSTATUS{ERROR_SUCCESS};
        });
    CRegistryKey remote(HKEY_LOCAL_MACHINE, m_stored.Path().c_str(), "\\\\SRV2");
    ExpectRefused([&] { ReadDword(remote); });
}

TEST_F(RegistryKey, LeavesNoKeyOpenBetweenOperations)
{
    m_stored.SetDword("Value", 7);
    m_stored.Subkey("Agent").Create();
    int open = 0;
    auto opened = support::HookImport<decltype(RegOpenKeyA)>(
        self, "RegOpenKeyA", [&](auto original, HKEY root, LPCSTR path, PHKEY key) {
            ++open;
            return original(root, path, key);
        });
    auto closed =
        support::HookImport<decltype(RegCloseKey)>(self, "RegCloseKey", [&](auto original, HKEY key) {
            --open;
            return original(key);
        });
    std::vector<std::string> texts;
    DWORD number = 0;
    EXPECT_EQ(m_key.GetDword("Value", number), 0U);
    EXPECT_EQ(m_key.GetDword("Absent", number), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(m_key.SetDword("Value", 8), 0U);
    EXPECT_EQ(m_key.EnumSubkeys(texts), 0U);
    EXPECT_EQ(open, 0);
}

// --- any value

TEST_F(RegistryKey, QueryOfAnAbsentValueReturns2WithoutData)
{
    DWORD type = REG_DWORD;
    RegistryData data(new BYTE[1]);
    DWORD size = 1;
    EXPECT_EQ(m_key.QueryValue("Absent", type, data, size), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(data, nullptr);
}

TEST_F(RegistryKey, QueryReportsTypeSizeAndDataOfWhatIsStored)
{
    m_stored.SetRaw("Value", 77, {1, 2, 3});
    DWORD type = REG_SZ;
    RegistryData data;
    DWORD size = 0;
    EXPECT_EQ(m_key.QueryValue("Value", type, data, size), 0U);
    EXPECT_EQ(type, 77U);
    ASSERT_EQ(size, 3U);
    EXPECT_EQ(data[2], 3U);
}

TEST_F(RegistryKey, QueryOfAnEmptyValueSucceedsWithoutData)
{
    m_stored.SetBinary("Value", {});
    DWORD type = REG_BINARY;
    RegistryData data(new BYTE[1]);
    DWORD size = 1;
    EXPECT_EQ(m_key.QueryValue("Value", type, data, size), 0U);
    EXPECT_EQ(data, nullptr);
    EXPECT_EQ(size, 0U);
}

TEST_F(RegistryKey, QueryPassesMoreDataWithoutASizeOn)
{
    auto moreData = support::HookImport<decltype(RegQueryValueExA)>(
        self, "RegQueryValueExA", [](auto, HKEY, LPCSTR, LPDWORD, LPDWORD, LPBYTE, LPDWORD size) -> LSTATUS {
            *size = 0;
            return ERROR_MORE_DATA;
        });
    DWORD number = 5;
    EXPECT_EQ(m_key.GetDword("Value", number), DWORD{ERROR_MORE_DATA});
    EXPECT_EQ(number, 5U);
}

TEST_F(RegistryKey, RefusesWhenTheSizeCannotBeQueried)
{
    m_stored.SetDword("Value", 7);
    auto fail = support::HookImport<decltype(RegQueryValueExA)>(
        self, "RegQueryValueExA",
        [](auto, HKEY, LPCSTR, LPDWORD, LPDWORD, LPBYTE, LPDWORD) -> LSTATUS { return ERROR_ACCESS_DENIED; });
    ExpectRefused([&] { ReadDword(m_key); });
}

TEST_F(RegistryKey, RefusesWhenTheDataCannotBeQueried)
{
    m_stored.SetDword("Value", 7);
    auto fail = support::HookImport<decltype(RegQueryValueExA)>(
        self, "RegQueryValueExA",
        [](auto original, HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size) {
            return data == nullptr ? original(key, name, reserved, type, data, size)
                                   : LSTATUS{ERROR_READ_FAULT};
        });
    ExpectRefused([&] { ReadDword(m_key); });
}

TEST_F(RegistryKey, QueryWithoutMemoryReturns14AndClosesTheKey)
{
    m_stored.SetDword("Value", 7);
    int closed = 0;
    auto count =
        support::HookImport<decltype(RegCloseKey)>(self, "RegCloseKey", [&](auto original, HKEY key) {
            ++closed;
            return original(key);
        });
    DWORD number = 5;
    const support::FailingAllocations noMemory(0);
    EXPECT_EQ(m_key.GetDword("Value", number), DWORD{ERROR_OUTOFMEMORY});
    EXPECT_EQ(number, 5U);
    EXPECT_EQ(closed, 1);
}

TEST_F(RegistryKey, RefusesWhenAValueCannotBeSet)
{
    auto fail = support::HookImport<decltype(RegSetValueExA)>(
        self, "RegSetValueExA",
        [](auto, HKEY, LPCSTR, DWORD, DWORD, const BYTE*, DWORD) -> LSTATUS { return ERROR_ACCESS_DENIED; });
    ExpectRefused([&] { m_key.SetDword("Value", 1); });
    ExpectRefused([&] { m_key.SetString("Value", "a"); });
    ExpectRefused([&] { m_key.SetMultiString("Value", {"a"}); });
    ExpectRefused([&] { m_key.SetBinary("Value", nullptr, 0); });
    ExpectAbsent(m_stored, "Value");
}

TEST_F(RegistryKey, LeavesTheKeyOpenWhenAQueryOrAWriteIsRefused)
{
    int closed = 0;
    auto count =
        support::HookImport<decltype(RegCloseKey)>(self, "RegCloseKey", [&](auto original, HKEY key) {
            ++closed;
            return original(key);
        });
    auto failQuery = support::HookImport<decltype(RegQueryValueExA)>(
        self, "RegQueryValueExA",
        [](auto, HKEY, LPCSTR, LPDWORD, LPDWORD, LPBYTE, LPDWORD) -> LSTATUS { return ERROR_ACCESS_DENIED; });
    auto failSet = support::HookImport<decltype(RegSetValueExA)>(
        self, "RegSetValueExA",
        [](auto, HKEY, LPCSTR, DWORD, DWORD, const BYTE*, DWORD) -> LSTATUS { return ERROR_ACCESS_DENIED; });
    ExpectRefused([&] { ReadDword(m_key); });
    ExpectRefused([&] { m_key.SetDword("Value", 1); });
    EXPECT_EQ(closed, 0);
}

TEST_F(RegistryKey, ReadsAValueThatAnotherProgramShortensMeanwhile)
{
    m_stored.SetString("Value", "a long text");
    auto shorten = support::HookImport<decltype(RegQueryValueExA)>(
        self, "RegQueryValueExA",
        [&](auto original, HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size) {
            if (data != nullptr)
                m_stored.SetUnterminatedString("Value", "short");
            return original(key, name, reserved, type, data, size);
        });
    std::string text;
    EXPECT_EQ(m_key.GetString("Value", text, REG_SZ, 0), 0U);
    EXPECT_EQ(text, "short");
}

// --- text

TEST_F(RegistryKey, ReadsTextStoredWithoutItsTerminator)
{
    m_stored.SetUnterminatedString("Value", "agent");
    std::string text;
    EXPECT_EQ(m_key.GetString("Value", text, REG_SZ, 0), 0U);
    EXPECT_EQ(text, "agent");
}

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

TEST_F(RegistryKey, TextOfSizeZeroReadsAsEmpty)
{
    m_stored.SetRaw("Value", REG_SZ, {});
    std::string text = "before";
    EXPECT_EQ(m_key.GetString("Value", text, REG_SZ, 0), 0U);
    EXPECT_EQ(text, "");
}

TEST_F(RegistryKey, AbsentTextReturns2AndReadsAsEmpty)
{
    std::string text = "before";
    EXPECT_EQ(m_key.GetString("Absent", text, REG_SZ, 0), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(text, "");
}

TEST_F(RegistryKey, TextOfTheOtherTextTypeReturns13AndReadsAsEmpty)
{
    m_stored.SetExpandString("Expand", "%SystemRoot%\\x");
    m_stored.SetString("Plain", "x");
    std::string text = "before";
    EXPECT_EQ(m_key.GetString("Expand", text, REG_SZ, 0), DWORD{ERROR_INVALID_DATA});
    EXPECT_EQ(text, "");
    text = "before";
    EXPECT_EQ(m_key.GetString("Plain", text, REG_EXPAND_SZ, 1), DWORD{ERROR_INVALID_DATA});
    EXPECT_EQ(text, "");
}

TEST_F(RegistryKey, TextOfANonTextTypeIsNotEvenLookedFor)
{
    std::string text = "before";
    EXPECT_EQ(m_key.GetString("Value", text, REG_BINARY, 0), DWORD{ERROR_INVALID_DATA});
    EXPECT_EQ(text, "before");
}

TEST_F(RegistryKey, ExpandsEnvironmentReferencesOnlyWhenAsked)
{
    SetEnvironmentVariableA("VTN_TEST_ROOT", "C:\\agents");
    m_stored.SetExpandString("Value", "%VTN_TEST_ROOT%\\data");
    std::string text;
    EXPECT_EQ(m_key.GetString("Value", text, REG_EXPAND_SZ, 1), 0U);
    EXPECT_EQ(text, "C:\\agents\\data");
    EXPECT_EQ(m_key.GetString("Value", text, REG_EXPAND_SZ, 0), 0U);
    EXPECT_EQ(text, "%VTN_TEST_ROOT%\\data");
    EXPECT_EQ(m_key.GetString("Value", text, REG_EXPAND_SZ, 2), 0U);
    EXPECT_EQ(text, "%VTN_TEST_ROOT%\\data");
}

TEST_F(RegistryKey, ExpandingAnAbsentTextKeepsItsResult)
{
    std::string text = "before";
    EXPECT_EQ(m_key.GetString("Absent", text, REG_EXPAND_SZ, 1), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(text, "");
}

TEST_F(RegistryKey, LeavesTextUnexpandedWithoutMemoryForTheResult)
{
    m_stored.SetExpandString("Value", "%VTN%");
    std::string text;
    const support::FailingAllocations noMemory(1); // one for the data
    EXPECT_EQ(m_key.GetString("Value", text, REG_EXPAND_SZ, 1), 0U);
    EXPECT_TRUE(noMemory.HasFailed());
    EXPECT_EQ(text, "%VTN%");
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

TEST_F(RegistryKey, AnEmptyStringEndsAMultiString)
{
    m_stored.SetMultiString("Value", {"a", "", "b"});
    std::vector<std::string> texts;
    EXPECT_EQ(m_key.GetMultiString("Value", texts), 0U);
    EXPECT_EQ(texts, std::vector<std::string>{"a"});
}

TEST_F(RegistryKey, ReadsAMultiStringWithoutItsEndWithinItsSize)
{
    m_stored.SetRaw("Value", REG_MULTI_SZ, {'a', 0, 'b', 'c'});
    std::vector<std::string> texts;
    EXPECT_EQ(m_key.GetMultiString("Value", texts), 0U);
    EXPECT_EQ(texts, (std::vector<std::string>{"a", "bc"}));
}

TEST_F(RegistryKey, WritesNoStringsAsAValueOfSizeZeroAndReadsItBack)
{
    EXPECT_EQ(m_key.SetMultiString("Value", {}), 0U);
    EXPECT_EQ(m_stored.Value("Value"), (support::StoredValue{REG_MULTI_SZ, {}}));
    std::vector<std::string> texts{"before"};
    EXPECT_EQ(m_key.GetMultiString("Value", texts), 0U);
    EXPECT_TRUE(texts.empty());
}

TEST_F(RegistryKey, AbsentMultiStringReturns2AndReadsAsEmpty)
{
    std::vector<std::string> texts{"before"};
    EXPECT_EQ(m_key.GetMultiString("Absent", texts), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_TRUE(texts.empty());
}

TEST_F(RegistryKey, MultiStringOfAnotherTypeReturns13)
{
    m_stored.SetString("Value", "a");
    std::vector<std::string> texts{"before"};
    EXPECT_EQ(m_key.GetMultiString("Value", texts), DWORD{ERROR_INVALID_DATA});
    EXPECT_EQ(texts, std::vector<std::string>{"before"});
}

TEST_F(RegistryKey, MultiStringWithoutMemoryForItsDataReturns13)
{
    m_stored.SetMultiString("Value", {"a"});
    std::vector<std::string> texts;
    const support::FailingAllocations noMemory(0);
    EXPECT_EQ(m_key.GetMultiString("Value", texts), DWORD{ERROR_INVALID_DATA});
}

TEST_F(RegistryKey, MultiStringWithoutMemoryForItsTextsReturns14)
{
    m_stored.SetMultiString("Value", {"a"});
    std::vector<std::string> texts;
    const support::FailingAllocations noMemory(1); // one for the data
    EXPECT_EQ(m_key.GetMultiString("Value", texts), DWORD{ERROR_OUTOFMEMORY});
}

TEST_F(RegistryKey, AMultiStringThatCannotBeBuiltIsRefusedAndNothingIsWritten)
{
    const std::vector<std::string> texts(100, "a name of some length");
    ExpectRefused([&] {
        const support::FailingAllocations noMemory(0);
        m_key.SetMultiString("Value", texts);
    });
    ExpectAbsent(m_stored, "Value");
}

TEST_F(RegistryKey, AppendUniqueAddsAtTheEndOnce)
{
    std::vector<std::string> texts{"a"};
    EXPECT_TRUE(CRegistryKey::AppendUnique(texts, "b"));
    EXPECT_FALSE(CRegistryKey::AppendUnique(texts, "a"));
    EXPECT_EQ(texts, (std::vector<std::string>{"a", "b"}));
}

TEST_F(RegistryKey, AppendUniqueTellsLetterCasesApart)
{
    std::vector<std::string> texts{"abc"};
    EXPECT_TRUE(CRegistryKey::AppendUnique(texts, "Abc"));
    EXPECT_EQ(texts.size(), 2U);
}

// --- bytes

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

TEST_F(RegistryKey, BytesOfAnotherTypeReturn13WithTheirData)
{
    m_stored.SetDword("Value", 0x01020304);
    RegistryData data;
    DWORD size = 0;
    EXPECT_EQ(m_key.GetBinary("Value", data, size), DWORD{ERROR_INVALID_DATA});
    ASSERT_EQ(size, 4U);
    EXPECT_EQ(data[0], 0x04U);
}

// --- numbers

TEST_F(RegistryKey, ReadsAndWritesNumbers)
{
    EXPECT_EQ(m_key.SetDword("Value", 0xFFFFFFFF), 0U);
    ExpectDword(m_stored, "Value", 0xFFFFFFFF);
    DWORD number = 0;
    EXPECT_EQ(m_key.GetDword("Value", number), 0U);
    EXPECT_EQ(number, 0xFFFFFFFFU);
}

TEST_F(RegistryKey, AnAbsentNumberLeavesTheCallersDefault)
{
    DWORD number = 5;
    EXPECT_EQ(m_key.GetDword("Absent", number), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(number, 5U);
}

TEST_F(RegistryKey, ANumberOfAnotherTypeReturns13AndLeavesTheCallersDefault)
{
    m_stored.SetBinary("Value", {1, 0, 0, 0});
    DWORD number = 5;
    EXPECT_EQ(m_key.GetDword("Value", number), DWORD{ERROR_INVALID_DATA});
    EXPECT_EQ(number, 5U);
}

class NumberOfOddSize : public RegistryKey, public testing::WithParamInterface<std::size_t>
{
};

TEST_P(NumberOfOddSize, ReadsAsSuccessAndLeavesTheCallersDefault)
{
    m_stored.SetRaw("Value", REG_DWORD, support::Bytes(GetParam(), 1));
    DWORD number = 5;
    EXPECT_EQ(m_key.GetDword("Value", number), 0U);
    EXPECT_EQ(number, 5U);
}

INSTANTIATE_TEST_SUITE_P(Bytes, NumberOfOddSize, testing::Values(0, 1, 3, 5, 8, 65536));

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
        self, "RegDeleteValueA", [](auto, HKEY, LPCSTR) { return LSTATUS{ERROR_ACCESS_DENIED}; });
    auto count =
        support::HookImport<decltype(RegCloseKey)>(self, "RegCloseKey", [&](auto original, HKEY key) {
            ++closed;
            return original(key);
        });
    EXPECT_EQ(m_key.DeleteValue("Value"), 0U);
    EXPECT_EQ(closed, 1);
    ExpectDword(m_stored, "Value", 7);
}

TEST_F(RegistryKey, RefusesToDeleteFromAKeyThatDoesNotExist)
{
    CRegistryKey missing(HKEY_LOCAL_MACHINE, m_stored.Subkey("Missing").Path().c_str());
    ExpectRefused([&] { missing.DeleteValue("Value"); });
}

// --- subkeys

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
    HKEY parent = nullptr;
    HKEY subkey = nullptr;
    ASSERT_EQ(RegOpenKeyA(HKEY_LOCAL_MACHINE, m_stored.Path().c_str(), &parent), ERROR_SUCCESS);
    ASSERT_EQ(RegCreateKeyA(parent, longest.c_str(), &subkey), ERROR_SUCCESS);
    RegCloseKey(subkey);
    RegCloseKey(parent);
    std::vector<std::string> names;
    EXPECT_EQ(m_key.EnumSubkeys(names), 0U);
    EXPECT_EQ(names, std::vector<std::string>{longest});
}

TEST_F(RegistryKey, RefusesAKeyWithoutSubkeysAndLeavesNothingOpen)
{
    int closed = 0;
    auto count =
        support::HookImport<decltype(RegCloseKey)>(self, "RegCloseKey", [&](auto original, HKEY key) {
            ++closed;
            return original(key);
        });
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
        self, "RegEnumKeyA", [&](auto original, HKEY key, DWORD index, LPSTR name, DWORD size) {
            return ++calls == 3 ? LSTATUS{ERROR_KEY_DELETED} : original(key, index, name, size);
        });
    std::vector<std::string> names;
    ExpectRefused([&] { m_key.EnumSubkeys(names); });
}

TEST_F(RegistryKey, RefusesAnEnumerationWithoutMemory)
{
    m_stored.Subkey("Agent").Create();
    std::vector<std::string> names;
    ExpectRefused([&] {
        const support::FailingAllocations noMemory(0);
        m_key.EnumSubkeys(names);
    });
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
