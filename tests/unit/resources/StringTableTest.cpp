// The string table: the English texts to the letter, the Japanese ones matching them.
#include "resources/resource.h"
#include "tests/unit/resources/RequiredTexts.h"
#include "tests/unit/resources/ResourceReader.h"

#include <algorithm>
#include <gtest/gtest.h>

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
    for (const RequiredString& required : RequiredStrings())
        EXPECT_EQ(ToUtf8(FindString(required.id, kEnglish).value_or(L"")), required.text) << required.id;
}

TEST_P(EachLanguage, HasTheNumbersOfTheTableAndNoOthers)
{
    std::set<UINT> required;
    for (const RequiredString& string : RequiredStrings())
        required.insert(string.id);

    EXPECT_EQ(StringIds(GetParam()), required);
}

TEST(StringTable, PutsTheSameValuesIntoJapaneseTexts)
{
    for (const RequiredString& required : RequiredStrings()) {
        const std::wstring japanese = FindString(required.id, kJapanese).value_or(L"");
        EXPECT_EQ(Placeholders(japanese), Placeholders(FromUtf8(required.text))) << required.id;
    }
}

TEST(StringTable, BreaksJapaneseTextsIntoTheSameParagraphs)
{
    for (const RequiredString& required : RequiredStrings()) {
        const std::wstring japanese = FindString(required.id, kJapanese).value_or(L"");
        const std::wstring english = FromUtf8(required.text);
        EXPECT_EQ(std::ranges::count(japanese, L'\n'), std::ranges::count(english, L'\n')) << required.id;
    }
}

TEST(StringTable, IsTranslatedWhereverTheTextIsMoreThanTheProductsName)
{
    for (const RequiredString& required : RequiredStrings()) {
        const std::wstring japanese = FindString(required.id, kJapanese).value_or(L"");
        const bool translated = std::ranges::any_of(japanese, [](wchar_t c) { return c >= 0x3000; });
        EXPECT_NE(translated, required.id == IDS_APPLET_NAME) << required.id;
    }
}

TEST_P(EachLanguage, HasNoStrayCharacters)
{
    for (const RequiredString& required : RequiredStrings()) {
        const std::wstring text = FindString(required.id, GetParam()).value_or(L"");
        const bool stray = std::ranges::any_of(text, [](wchar_t c) {
            return (c < L' ' && c != L'\n') || c == 0x7F || c == 0x3000 || c == 0xFEFF || c == 0xFFFD;
        });
        EXPECT_FALSE(stray) << required.id;
        EXPECT_FALSE(text.ends_with(L' ') || text.starts_with(L' ')) << required.id;
        EXPECT_EQ(text.find(L" \n"), std::wstring::npos) << required.id;
    }
}

TEST(StringTable, SurvivesTheJapaneseCodePage)
{
    for (const RequiredString& required : RequiredStrings())
        EXPECT_TRUE(ToCodePage(FindString(required.id, kJapanese).value_or(L"\xFFFD"), 932)) << required.id;
}

TEST(StringTable, IsPlainAsciiInEnglish)
{
    for (const RequiredString& required : RequiredStrings())
        EXPECT_TRUE(ToCodePage(FindString(required.id, kEnglish).value_or(L"\xFFFD"), 20127)) << required.id;
}

TEST(StringTable, NumbersTheIntervalsAndOptionsInTheirOrder)
{
    EXPECT_EQ(IDS_INTERVAL_60_MINUTES - IDS_INTERVAL_5_SECONDS, 15);
    EXPECT_EQ(IDS_PROCMON_OPTION_START, IDS_PROCMON_OPTION_NONE + 1);
    EXPECT_EQ(IDS_PROCMON_OPTION_STOP, IDS_PROCMON_OPTION_NONE + 2);
    EXPECT_EQ(IDS_PROCMON_OPTION_START_STOP, IDS_PROCMON_OPTION_NONE + 3);
}

} // namespace
