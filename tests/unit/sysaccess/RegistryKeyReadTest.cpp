// What the registry accessor reads, and what it makes of values that are absent, of another type or refused.
#include "RegistryKeyTest.h"

#include "support/FailingAllocations.h"

namespace {

// --- any value

TEST_F(RegistryKey, QueryOfAnAbsentValueReturns2WithoutData)
{
    DWORD type = REG_DWORD;
    RegistryData data(new BYTE[1]);
    DWORD size = 1;
    EXPECT_EQ(m_key.QueryValue("Absent", type, data, size), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(data, nullptr);
}

TEST_F(RegistryKey, QueryReportsTypeSizeAndData)
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
        thisProgram, "RegQueryValueExA",
        [](auto, HKEY, LPCSTR, LPDWORD, LPDWORD, LPBYTE, LPDWORD size) -> LSTATUS {
            *size = 0;
            return ERROR_MORE_DATA;
        });
    DWORD number = 5;
    EXPECT_EQ(m_key.GetDword("Value", number), DWORD{ERROR_MORE_DATA});
    EXPECT_EQ(number, 5U);
}

TEST_F(RegistryKey, QueryReadsOnAfterMoreData)
{
    m_stored.SetDword("Value", 7);
    auto moreData = support::HookImport<decltype(RegQueryValueExA)>(
        thisProgram, "RegQueryValueExA",
        [](auto original, HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size) {
            const LSTATUS status = original(key, name, reserved, type, data, size);
            return data == nullptr ? LSTATUS{ERROR_MORE_DATA} : status;
        });
    DWORD number = 5;
    EXPECT_EQ(m_key.GetDword("Value", number), 0U);
    EXPECT_EQ(number, 7U);
}

TEST_F(RegistryKey, RefusesWhenTheSizeCannotBeQueried)
{
    m_stored.SetDword("Value", 7);
    auto fail = support::HookImport<decltype(RegQueryValueExA)>(
        thisProgram, "RegQueryValueExA",
        [](auto, HKEY, LPCSTR, LPDWORD, LPDWORD, LPBYTE, LPDWORD) -> LSTATUS { return ERROR_ACCESS_DENIED; });
    ExpectRefused([&] { ReadDword(m_key); });
}

TEST_F(RegistryKey, RefusesWhenTheDataCannotBeQueried)
{
    m_stored.SetDword("Value", 7);
    auto fail = support::HookImport<decltype(RegQueryValueExA)>(
        thisProgram, "RegQueryValueExA",
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
    auto count = CountClosed(closed);
    DWORD number = 5;
    const support::FailingAllocations noMemory(0);
    EXPECT_EQ(m_key.GetDword("Value", number), DWORD{ERROR_OUTOFMEMORY});
    EXPECT_EQ(number, 5U);
    EXPECT_EQ(closed, 1);
}

TEST_F(RegistryKey, ReadsAValueThatAnotherProgramShortensMeanwhile)
{
    m_stored.SetString("Value", "a long text");
    auto shorten = support::HookImport<decltype(RegQueryValueExA)>(
        thisProgram, "RegQueryValueExA",
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

TEST_F(RegistryKey, TextOfTheOtherTypeReturns13)
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

TEST_F(RegistryKey, TextOfANonTextTypeIsNotQueried)
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

TEST_F(RegistryKey, AnEmptyStringEndsAMultiString)
{
    m_stored.SetMultiString("Value", {"a", "", "b"});
    std::vector<std::string> texts;
    EXPECT_EQ(m_key.GetMultiString("Value", texts), 0U);
    EXPECT_EQ(texts, std::vector<std::string>{"a"});
}

TEST_F(RegistryKey, ReadsAnUnterminatedMultiStringWithinItsSize)
{
    m_stored.SetRaw("Value", REG_MULTI_SZ, {'a', 0, 'b', 'c'});
    std::vector<std::string> texts;
    EXPECT_EQ(m_key.GetMultiString("Value", texts), 0U);
    EXPECT_EQ(texts, (std::vector<std::string>{"a", "bc"}));
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

TEST_F(RegistryKey, MultiStringOfMoreDataWithoutASizeReturns13)
{
    auto moreData = support::HookImport<decltype(RegQueryValueExA)>(
        thisProgram, "RegQueryValueExA",
        [](auto, HKEY, LPCSTR, LPDWORD, LPDWORD, LPBYTE, LPDWORD size) -> LSTATUS {
            *size = 0;
            return ERROR_MORE_DATA;
        });
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

TEST_F(RegistryKey, ListThatIsWrittenBackThrowsWithoutMemory)
{
    m_stored.SetMultiString("Value", {"a"});
    for (const int allowed : {0, 1}) { // for the data, for the texts
        std::vector<std::string> texts{"before"};
        const auto read = [&] {
            const support::FailingAllocations noMemory(allowed, 1);
            m_key.ReadList("Value", texts);
        };
        EXPECT_THROW(read(), std::bad_alloc) << allowed;
    }
}

TEST_F(RegistryKey, ListOfAnotherTypeReturns13)
{
    m_stored.SetDword("Value", 1);
    std::vector<std::string> texts;
    EXPECT_EQ(m_key.ReadList("Value", texts), DWORD{ERROR_INVALID_DATA});
}

// --- bytes

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

TEST_F(RegistryKey, AnAbsentNumberLeavesTheCallersDefault)
{
    DWORD number = 5;
    EXPECT_EQ(m_key.GetDword("Absent", number), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(number, 5U);
}

TEST_F(RegistryKey, ANumberOfAnotherTypeReturns13)
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

} // namespace
