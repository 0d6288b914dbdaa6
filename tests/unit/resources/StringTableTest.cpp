// The string table: the English texts to the letter, the Japanese ones matching them.
#include "demo/messages/Messages.h"
#include "resources/resource.h"
#include "tests/unit/resources/ExpectedTexts.h"
#include "tests/unit/resources/ResourceReader.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <set>

namespace {

// The places of a text that a value is put into, in their order: "%s %ld" has "%s%ld".
std::string Placeholders(const std::wstring& text)
{
    std::string found;
    for (size_t at = text.find(L'%'); at != std::wstring::npos; at = text.find(L'%', at + 1)) {
        for (const wchar_t* const placeholder : {L"%s", L"%d", L"%ld", L"%1"}) {
            if (text.compare(at, wcslen(placeholder), placeholder) == 0)
                found += ToUtf8(placeholder);
        }
    }
    return found;
}

// What the 8-bit functions make of a text on a machine with this code page; nothing when a character is lost.
std::optional<std::string> ToCodePage(const std::wstring& text, UINT codePage)
{
    char bytes[1024] = {};
    BOOL lost = FALSE;
    WideCharToMultiByte(codePage, WC_NO_BEST_FIT_CHARS, text.c_str(), -1, bytes, sizeof bytes, nullptr,
                        &lost);
    return lost ? std::nullopt : std::optional<std::string>(bytes);
}

class EachLanguage : public testing::TestWithParam<LANGID>
{
};

INSTANTIATE_TEST_SUITE_P(StringTable, EachLanguage, testing::Values(kEnglish, kJapanese),
                         [](const auto& run) { return LanguageName(run.param); });

TEST(StringTable, HoldsTheEnglishTextsToTheLetter)
{
    for (const ExpectedString& expected : ExpectedStrings())
        EXPECT_EQ(ToUtf8(FindString(expected.id, kEnglish).value_or(L"")), expected.text) << expected.id;
}

TEST_P(EachLanguage, HasTheNumbersOfTheTableAndNoOthers)
{
    std::set<UINT> expected;
    for (const ExpectedString& string : ExpectedStrings())
        expected.insert(string.id);

    EXPECT_EQ(StringIds(GetParam()), expected);
}

// Names, captions, list entries, and texts that are kept though nothing shows them.
bool IsNoMessage(UINT id)
{
    constexpr std::array others{IDS_APPLET_NAME,       IDS_APPLET_DESCRIPTION, IDS_CANNOT_RESTART,
                                IDS_STOP_QUESTION,     IDS_FIBRE_TAPE_WARNING, IDS_ERROR_CAPTION,
                                IDS_SHEET_TITLE,       IDS_PROCMON_ADD,        IDS_PROCMON_ENTER,
                                IDS_SCRIPT_FILE_FILTER};
    return std::ranges::find(others, static_cast<int>(id)) != others.end() ||
           (id >= IDS_INTERVAL_5_SECONDS && id <= IDS_INTERVAL_60_MINUTES) ||
           (id >= IDS_INTERVAL_1_SECOND && id <= IDS_INTERVAL_50_MS) ||
           (id >= IDS_PROCMON_OPTION_NONE && id <= IDS_PROCMON_OPTION_START_STOP);
}

TEST(StringTable, HasAPictureOfEachMessage)
{
    std::set<UINT> shown;
    for (const demo::Message& message : demo::messages)
        shown.insert(message.textId);
    for (const demo::Message& message : demo::pleaseWaitTexts)
        shown.insert(message.textId);
    for (const ExpectedString& string : ExpectedStrings())
        EXPECT_NE(shown.contains(string.id), IsNoMessage(string.id)) << string.id;
}

TEST(StringTable, PutsTheSameValuesIntoJapaneseTexts)
{
    for (const ExpectedString& expected : ExpectedStrings()) {
        const std::wstring japanese = FindString(expected.id, kJapanese).value_or(L"");
        EXPECT_EQ(Placeholders(japanese), Placeholders(FromUtf8(expected.text))) << expected.id;
    }
}

TEST(StringTable, BreaksJapaneseTextsIntoTheSameParagraphs)
{
    for (const ExpectedString& expected : ExpectedStrings()) {
        const std::wstring japanese = FindString(expected.id, kJapanese).value_or(L"");
        const std::wstring english = FromUtf8(expected.text);
        EXPECT_EQ(std::ranges::count(japanese, L'\n'), std::ranges::count(english, L'\n')) << expected.id;
    }
}

TEST(StringTable, IsTranslatedButForTheProductsName)
{
    for (const ExpectedString& expected : ExpectedStrings()) {
        const std::wstring japanese = FindString(expected.id, kJapanese).value_or(L"");
        const bool translated = std::ranges::any_of(japanese, [](wchar_t c) { return c >= 0x3000; });
        EXPECT_NE(translated, expected.id == IDS_APPLET_NAME) << expected.id;
    }
}

TEST_P(EachLanguage, HasNoStrayCharacters)
{
    for (const ExpectedString& expected : ExpectedStrings()) {
        const std::wstring text = FindString(expected.id, GetParam()).value_or(L"");
        const bool stray = std::ranges::any_of(text, [](wchar_t c) {
            return (c < L' ' && c != L'\n') || c == 0x7F || c == 0x3000 || c == 0xFEFF || c == 0xFFFD;
        });
        EXPECT_FALSE(stray) << expected.id;
        EXPECT_FALSE(text.ends_with(L' ') || text.starts_with(L' ')) << expected.id;
        EXPECT_EQ(text.find(L" \n"), std::wstring::npos) << expected.id;
    }
}

TEST(StringTable, SurvivesTheJapaneseCodePage)
{
    for (const ExpectedString& expected : ExpectedStrings())
        EXPECT_TRUE(ToCodePage(FindString(expected.id, kJapanese).value_or(L"\xFFFD"), 932)) << expected.id;
}

TEST(StringTable, IsPlainAsciiInEnglish)
{
    for (const ExpectedString& expected : ExpectedStrings())
        EXPECT_TRUE(ToCodePage(FindString(expected.id, kEnglish).value_or(L"\xFFFD"), 20127)) << expected.id;
}

TEST(StringTable, NumbersTheIntervalsAndOptionsInTheirOrder)
{
    EXPECT_EQ(IDS_INTERVAL_60_MINUTES - IDS_INTERVAL_5_SECONDS, 15);
    EXPECT_EQ(IDS_PROCMON_OPTION_START, IDS_PROCMON_OPTION_NONE + 1);
    EXPECT_EQ(IDS_PROCMON_OPTION_STOP, IDS_PROCMON_OPTION_NONE + 2);
    EXPECT_EQ(IDS_PROCMON_OPTION_START_STOP, IDS_PROCMON_OPTION_NONE + 3);
}

} // namespace
