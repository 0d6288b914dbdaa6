// Finding entries by key and reading, writing and deleting them, wherever in the file they are.
#include "ProfileFixture.h"

namespace {

using profile::compact;
using profile::ExpectEdit;
using profile::ExpectSettledEdit;
using profile::ExpectUndoneEdit;
using profile::raw;
using profile::Request;
using profile::ScratchFile;
using profile::sectioned;
using Lines = std::vector<std::string>;

// A request with a file of the given content.
class Opened : public Request
{
  public:
    Opened(std::uint8_t flags, const std::string& content) : Request(flags)
    {
        m_file.Write(content);
        Open(m_file);
    }

  private:
    ScratchFile m_file;
};

// The value that the first entry with the key has.
std::string Found(std::uint8_t flags, const std::string& content, const std::string& key)
{
    Opened request(flags, content);
    return request.Execute(PROF_FIND_FIRST, key) == PROF_OK ? request.Value() : "(not found)";
}

// --- requests that lead nowhere

TEST(ProfileExecute, IgnoresAnUnknownOperation)
{
    for (const std::uint16_t operation :
         profile::Codes{0, 9, 12, 19, 22, 24, 39, 43, 49, 53, 59, 62, 256 + 8}) {
        Opened request(compact, "a=1\r\n");
        EXPECT_EQ(request.Execute(operation, "a", "2"), PROF_OK);
        EXPECT_EQ(request.Lines(), Lines{"a=1"});
        EXPECT_EQ(Request().Execute(operation), PROF_OK);
    }
}

TEST(ProfileExecute, RefusesEveryOperationWithoutAFile)
{
    for (const std::uint16_t operation :
         profile::Codes{1,  2,  3,  4,  5,  6,  7,  8,  10, 11, 13, 14, 15, 16,
                        17, 18, 20, 21, 23, 40, 41, 42, 50, 51, 52, 60, 61})
        EXPECT_EQ(Request().Execute(operation), PROF_NOT_OPEN) << operation;
}

TEST(ProfileExecute, RefusesOperationsOnTheCursorWithoutOne)
{
    for (const std::uint16_t operation : profile::Codes{4, 6, 14, 40, 41, 42, 50, 51}) {
        Opened request(compact, "a=1\r\n");
        EXPECT_EQ(request.Execute(operation, "b", "2"), PROF_NO_CURRENT) << operation;
        EXPECT_EQ(request.Lines(), Lines{"a=1"});
    }
}

TEST(ProfileExecute, TakesANullTextForAnEmptyOne)
{
    Opened request(compact, "a=1\r\n=2\r\n");
    request.Block().operation = PROF_FIND_FIRST;
    request.Block().value = nullptr;
    EXPECT_EQ(ProfileExecute(request.Block()), PROF_OK);
    EXPECT_EQ(request.Current(), "=2");
    request.Block().operation = PROF_SET;
    EXPECT_EQ(ProfileExecute(request.Block()), PROF_OK);
    EXPECT_EQ(request.Current(), "=");
}

// --- how a key is compared

TEST(ProfileKey, IsTheTextBeforeTheFirstEqualsSign)
{
    for (const std::uint8_t mode : {compact, sectioned}) {
        EXPECT_EQ(Found(mode, "a=1=2\r\n", "a"), "1=2");
        EXPECT_EQ(Found(mode, "a b = c\r\n", "a b"), "c");
        EXPECT_EQ(Found(mode, "alone\r\n", "alone"), "");
        EXPECT_EQ(Found(mode, "a=1\r\n", "a=1"), "(not found)");
    }
}

TEST(ProfileKey, MayHaveBlanksAroundIt)
{
    EXPECT_EQ(Found(compact, " \ta\t \t=1\r\n", "a"), "1");
    EXPECT_EQ(Found(compact, "alone \t\r\n", "alone"), "");
}

TEST(ProfileKey, MatchesInAnyLetterCase)
{
    EXPECT_EQ(Found(compact, "PaTh=x\r\n", "pAtH"), "x");
}

TEST(ProfileKey, IsComparedWithRunsOfBlanksAsOneSpace)
{
    EXPECT_EQ(Found(compact, "a \t  b=1\r\n", "a b"), "1");
    EXPECT_EQ(Found(compact, "a  b=1\r\n", "a  b"), "(not found)");
}

TEST(ProfileKey, IsTheWholeLineInRawMode)
{
    EXPECT_EQ(Found(raw, "  ECHO  \t on\r\n", "echo on"), "");
    EXPECT_EQ(Found(raw, "a=1\r\n", "a"), "(not found)");
    EXPECT_EQ(Found(raw, "a=1\r\n", "a=1"), "");
}

TEST(ProfileKey, OfARawLineWithTrailingBlanksNeverMatches)
{
    EXPECT_EQ(Found(raw, "echo on \r\n", "echo on"), "(not found)");
}

TEST(ProfileKey, IsNotLookedForInCommentsAndBlankLines)
{
    EXPECT_EQ(Found(compact, ";a=1\r\n\r\n ; a=2\r\na=3\r\n", "a"), "3");
    EXPECT_EQ(Found(raw, ";a\r\n", ";a"), "(not found)");
    EXPECT_EQ(Found(raw, "\r\nb\r\n", ""), "(not found)");
}

TEST(ProfileKey, IsNotLookedForBelowASectionHeader)
{
    EXPECT_EQ(Found(compact, "[A]\r\na=1\r\n", "a"), "(not found)");
    EXPECT_EQ(Found(raw, " [A]\r\na\r\n", "a"), "(not found)");
    EXPECT_EQ(Found(raw, "[A]\r\na\r\n", "[A]"), "(not found)");
}

// --- how a value is read

TEST(ProfileValue, BeginsBehindEqualsSignsAndBlanks)
{
    EXPECT_EQ(Found(sectioned, "  key = value\r\n", "key"), "value");
    EXPECT_EQ(Found(compact, "key==\t =value\r\n", "key"), "value");
    EXPECT_EQ(Found(compact, "key=\r\n", "key"), "");
}

TEST(ProfileValue, HasEachRunOfBlanksAsOneSpace)
{
    EXPECT_EQ(Found(compact, "key=a  b\t\tc \t\r\n", "key"), "a b c ");
}

// --- 3, 4: find

TEST(ProfileFindFirst, SearchesFromTheTop)
{
    Opened request(compact, "a=1\r\nb=2\r\na=3\r\n");
    EXPECT_EQ(request.Execute(PROF_FIND_FIRST, "b"), PROF_OK);
    EXPECT_EQ(request.Execute(PROF_FIND_FIRST, "a"), PROF_OK);
    EXPECT_EQ(request.Value(), "1");
    EXPECT_EQ(request.Current(), "a=1");
}

TEST(ProfileFindFirst, WithoutAMatchStaysOnTheLastLine)
{
    Opened request(compact, "a=1\r\nb=2\r\n;c\r\n[D]\r\ne=5\r\n");
    EXPECT_EQ(request.Execute(PROF_FIND_FIRST, "e", "untouched"), PROF_KEY_NOT_FOUND);
    EXPECT_EQ(request.Value(), "untouched");
    EXPECT_EQ(request.Current(), "b=2");
}

TEST(ProfileFindFirst, ReportsAFileWithoutLines)
{
    EXPECT_EQ(Opened(compact, "").Execute(PROF_FIND_FIRST, "a"), PROF_EMPTY);
}

TEST(ProfileFindNext, FindsTheNextBelowTheCursor)
{
    Opened request(compact, "a=1\r\nb=2\r\na=3\r\n");
    EXPECT_EQ(request.Execute(PROF_FIND_FIRST, "a"), PROF_OK);
    EXPECT_EQ(request.Execute(PROF_FIND_NEXT, "a"), PROF_OK);
    EXPECT_EQ(request.Value(), "3");
    EXPECT_EQ(request.Current(), "a=3");
}

TEST(ProfileFindNext, StepsOffTheLastLine)
{
    Opened request(compact, "a=1\r\n");
    EXPECT_EQ(request.Execute(PROF_FIND_FIRST, "a"), PROF_OK);
    EXPECT_EQ(request.Execute(PROF_FIND_NEXT, "a", "untouched"), PROF_KEY_NOT_FOUND);
    EXPECT_EQ(request.Current(), std::nullopt);
    EXPECT_EQ(request.Value(), "untouched");
    EXPECT_EQ(request.Execute(PROF_FIND_NEXT, "a"), PROF_NO_CURRENT);
}

TEST(ProfileFindNext, StepsOneLineOnWhateverItHolds)
{
    for (const std::string line : {"[A]", ";a=2", ""}) {
        Opened request(compact, "a=1\r\n" + line + "\r\n[B]\r\na=3\r\n");
        EXPECT_EQ(request.Execute(PROF_FIND_FIRST, "a"), PROF_OK);
        EXPECT_EQ(request.Execute(PROF_FIND_NEXT, "a"), PROF_KEY_NOT_FOUND);
        EXPECT_EQ(request.Current(), line);
    }
}

TEST(ProfileFindNext, WithoutAMatchStaysOnTheLastEntry)
{
    Opened request(compact, "a=1\r\n;c\r\nb=2\r\n;d\r\n");
    EXPECT_EQ(request.Execute(PROF_FIND_FIRST, "a"), PROF_OK);
    EXPECT_EQ(request.Execute(PROF_FIND_NEXT, "a"), PROF_KEY_NOT_FOUND);
    EXPECT_EQ(request.Current(), "b=2");
}

// --- 8: set

TEST(ProfileSet, RewritesTheEntryInTheFormatOfTheMode)
{
    ExpectSettledEdit(compact, "x=0\r\n a \t= 1\r\n", {PROF_SET, "a", "2", ""}, "x=0\r\na=2\r\n");
    ExpectSettledEdit(sectioned, "a=1\r\n", {PROF_SET, "a", "2", ""}, "  a = 2\r\n");
    ExpectSettledEdit(raw, "A  line\r\n", {PROF_SET, "a line", "", ""}, "a line\r\n");
}

TEST(ProfileSet, AppendsAMissingEntry)
{
    ExpectSettledEdit(compact, "x=0\r\n", {PROF_SET, "a", "1", ""}, "x=0\r\na=1\r\n");
    ExpectSettledEdit(compact, "", {PROF_SET, "a", "1", ""}, "a=1\r\n");
}

TEST(ProfileSet, AppendsBelowANewHeaderInSectionedMode)
{
    ExpectEdit(sectioned, "x=0\r\n", {PROF_SET, "a", "1", "S"}, "x=0\r\n\r\n[S]\r\n  a = 1\r\n");
}

TEST(ProfileSet, AppendsWhenAHeaderEndsTheSearch)
{
    ExpectEdit(compact, "[A]\r\na=1\r\n", {PROF_SET, "a", "2", ""}, "[A]\r\na=1\r\na=2\r\n");
}

TEST(ProfileSet, UsesAFormatOfTheCaller)
{
    Opened request(raw, "a\r\n");
    request.Block().format = "%s";
    EXPECT_EQ(request.Execute(PROF_SET, "b", "ignored"), PROF_OK);
    EXPECT_EQ(request.Lines(), (Lines{"a", "b"}));
}

TEST(ProfileSet, KeepsTheKindOfTheLineThatItRewrites)
{
    Opened request(compact, "a=1\r\n");
    EXPECT_EQ(request.Execute(PROF_FIND_FIRST, "a"), PROF_OK);
    EXPECT_EQ(request.Execute(PROF_SET_RAW_CURRENT, ";", "a=1"), PROF_OK);
    EXPECT_EQ(request.Block().current->kind, PROF_KIND_ENTRY);
}

// --- 5, 52: delete

TEST(ProfileDeletePair, DeletesTheFirstEntryWithKeyAndValue)
{
    ExpectUndoneEdit(compact, "a=1\r\nb=2\r\na=2\r\n", {PROF_DELETE_PAIR, "A", "2", ""}, "a=1\r\nb=2\r\n",
                     {PROF_APPEND_LAST, "a", "2", ""});
    ExpectEdit(compact, "a=X\r\na=x\r\n", {PROF_DELETE_PAIR, "a", "x", ""}, "a=x\r\n");
}

TEST(ProfileDeletePair, ReturnsSuccessWithoutOne)
{
    ExpectEdit(compact, "a=1\r\nb=2\r\n", {PROF_DELETE_PAIR, "a", "2", ""}, "a=1\r\nb=2\r\n");
    ExpectEdit(compact, "[A]\r\na=2\r\n", {PROF_DELETE_PAIR, "a", "2", ""}, "[A]\r\na=2\r\n");
    EXPECT_EQ(Opened(compact, "").Execute(PROF_DELETE_PAIR, "a", "2"), PROF_OK);
}

TEST(ProfileDeleteFirst, DeletesTheFirstEntryAlone)
{
    ExpectEdit(compact, "b=1\r\na=2\r\na=3\r\n", {PROF_DELETE_FIRST, "a", "", ""}, "b=1\r\na=3\r\n");
    ExpectUndoneEdit(raw, "a line\r\nother\r\n", {PROF_DELETE_FIRST, "A LINE", "", ""}, "other\r\n",
                     {PROF_INSERT_FIRST, "a line", "", ""});
}

TEST(ProfileDeleteFirst, ReturnsSuccessWithoutOne)
{
    ExpectEdit(compact, "b=1\r\n", {PROF_DELETE_FIRST, "a", "", ""}, "b=1\r\n");
    EXPECT_EQ(Opened(compact, "").Execute(PROF_DELETE_FIRST, "a"), PROF_OK);
}

TEST(ProfileDeleteFirst, MovesTheCursorToTheNextLine)
{
    Opened request(compact, "a=1\r\nb=2\r\n");
    EXPECT_EQ(request.Execute(PROF_DELETE_FIRST, "a"), PROF_OK);
    EXPECT_EQ(request.Current(), "b=2");
}

// --- 7: remove from a value

TEST(ProfileRemoveFromValue, CutsTheFirstOccurrenceOutInAnyLetterCase)
{
    ExpectEdit(compact, "PATH=a;B;b;c\r\n", {PROF_REMOVE_FROM_VALUE, "path", "b;", ""}, "path=a;b;c\r\n");
    ExpectEdit(sectioned, "k = one two\r\n", {PROF_REMOVE_FROM_VALUE, "k", " TWO", ""}, "  k = one\r\n");
}

TEST(ProfileRemoveFromValue, LeavesAValueThatLacksIt)
{
    ExpectSettledEdit(compact, "a  = 1\r\n", {PROF_REMOVE_FROM_VALUE, "a", "2", ""}, "a  = 1\r\n");
}

TEST(ProfileRemoveFromValue, ReportsAMissingKey)
{
    ExpectEdit(compact, "a=1\r\n", {PROF_REMOVE_FROM_VALUE, "b", "1", ""}, "a=1\r\n", PROF_KEY_NOT_FOUND);
    EXPECT_EQ(Opened(compact, "").Execute(PROF_REMOVE_FROM_VALUE, "b", "1"), PROF_KEY_NOT_FOUND);
}

} // namespace
