// Inserting, changing and deleting whole lines, and how long they may be.
#include "ProfileFixture.h"

namespace {

using profile::compact;
using profile::ExpectEdit;
using profile::ExpectUndoneEdit;
using profile::raw;
using profile::Request;
using profile::ScratchFile;
using profile::sectioned;
using Lines = std::vector<std::string>;

// A request with a file of the given content and the cursor on the entry with the key.
class OnEntry : public Request
{
  public:
    OnEntry(std::uint8_t flags, const std::string& content, const std::string& key) : Request(flags)
    {
        m_file.Write(content);
        Open(m_file);
        EXPECT_EQ(Execute(PROF_FIND_FIRST, key), PROF_OK);
    }

  private:
    ScratchFile m_file;
};

// --- 20, 21: top and end

TEST(ProfileInsertFirst, InsertsAtTheTop)
{
    ExpectUndoneEdit(raw, "b\r\n", {PROF_INSERT_FIRST, "a", "1", ""}, "a1\r\nb\r\n",
                     {PROF_DELETE_FIRST, "a1", "", ""});
    ExpectEdit(compact, "", {PROF_INSERT_FIRST, "a", "1", ""}, "a=1\r\n");
}

TEST(ProfileInsertFirst, MakesNoHeaderInSectionedMode)
{
    ExpectEdit(sectioned, "", {PROF_INSERT_FIRST, "a", "1", "S"}, "  a = 1\r\n");
    ExpectEdit(sectioned, "[S]\r\n", {PROF_INSERT_FIRST, "a", "1", "S"}, "  a = 1\r\n[S]\r\n");
}

TEST(ProfileAppendLast, AppendsAtTheEnd)
{
    ExpectUndoneEdit(raw, "b\r\n", {PROF_APPEND_LAST, "a", "1", ""}, "b\r\na1\r\n",
                     {PROF_DELETE_FIRST, "a1", "", ""});
    ExpectEdit(compact, "", {PROF_APPEND_LAST, "a", "1", ""}, "a=1\r\n");
}

TEST(ProfileAppendLast, AppendsBelowANewHeaderInSectionedMode)
{
    ExpectEdit(sectioned, "[S]\r\nb=0\r\n", {PROF_APPEND_LAST, "a", "1", "S"},
               "[S]\r\nb=0\r\n\r\n[S]\r\n  a = 1\r\n");
}

// --- 40, 41, 42: around the cursor

TEST(ProfileInsertAfter, InsertsBelowTheCursorAndMovesIt)
{
    OnEntry request(compact, "a=1\r\nc=3\r\n", "a");
    EXPECT_EQ(request.Execute(PROF_INSERT_AFTER, "b", "2"), PROF_OK);
    EXPECT_EQ(request.Lines(), (Lines{"a=1", "b=2", "c=3"}));
    EXPECT_EQ(request.Current(), "b=2");
}

TEST(ProfileInsertAfter, InsertsBelowTheLastLine)
{
    OnEntry request(compact, "a=1\r\n", "a");
    EXPECT_EQ(request.Execute(PROF_INSERT_AFTER, "b", "2"), PROF_OK);
    EXPECT_EQ(request.Lines(), (Lines{"a=1", "b=2"}));
}

TEST(ProfileInsertAfter, ClassifiesTheNewLine)
{
    OnEntry request(compact, "a=1\r\n", "a");
    EXPECT_EQ(request.Execute(PROF_INSERT_RAW_AFTER, "[", "B]"), PROF_OK);
    EXPECT_EQ(request.Block().current->kind, PROF_KIND_SECTION);
    EXPECT_EQ(request.Execute(PROF_INSERT_RAW_AFTER, ";", "b"), PROF_OK);
    EXPECT_EQ(request.Block().current->kind, PROF_KIND_COMMENT);
    EXPECT_EQ(request.Execute(PROF_INSERT_RAW_AFTER), PROF_OK);
    EXPECT_EQ(request.Block().current->kind, PROF_KIND_BLANK);
}

TEST(ProfileInsertBefore, InsertsAboveTheCursorAndMovesIt)
{
    OnEntry request(compact, "a=1\r\nc=3\r\n", "c");
    EXPECT_EQ(request.Execute(PROF_INSERT_BEFORE, "b", "2"), PROF_OK);
    EXPECT_EQ(request.Lines(), (Lines{"a=1", "b=2", "c=3"}));
    EXPECT_EQ(request.Current(), "b=2");
}

TEST(ProfileInsertBefore, InsertsAboveTheFirstLine)
{
    OnEntry request(compact, "a=1\r\n", "a");
    EXPECT_EQ(request.Execute(PROF_INSERT_BEFORE, "b", "2"), PROF_OK);
    EXPECT_EQ(request.Lines(), (Lines{"b=2", "a=1"}));
}

TEST(ProfileInsertRawAfter, PutsKeyAndValueTogetherThisOnce)
{
    OnEntry request(sectioned, "a=1\r\n", "a");
    EXPECT_EQ(request.Execute(PROF_INSERT_RAW_AFTER, "b", "2"), PROF_OK);
    EXPECT_EQ(request.Execute(PROF_INSERT_AFTER, "c", "3"), PROF_OK);
    EXPECT_EQ(request.Lines(), (Lines{"a=1", "b2", "  c = 3"}));
}

// --- 6, 50, 51: the cursor line

TEST(ProfileReplaceCurrent, PutsANewLineInItsPlace)
{
    OnEntry request(compact, "a=1\r\nb=2\r\nc=3\r\n", "b");
    EXPECT_EQ(request.Execute(PROF_REPLACE_CURRENT, ";x", "9"), PROF_OK);
    EXPECT_EQ(request.Lines(), (Lines{"a=1", ";x=9", "c=3"}));
    EXPECT_EQ(request.Current(), ";x=9");
    EXPECT_EQ(request.Block().current->kind, PROF_KIND_COMMENT);
}

TEST(ProfileDeleteCurrent, MovesTheCursorToTheNextLine)
{
    OnEntry request(compact, "a=1\r\n;b\r\n", "a");
    EXPECT_EQ(request.Execute(PROF_DELETE_CURRENT), PROF_OK);
    EXPECT_EQ(request.Current(), ";b");
    EXPECT_EQ(request.Execute(PROF_DELETE_CURRENT), PROF_OK);
    EXPECT_EQ(request.Current(), std::nullopt);
    EXPECT_EQ(request.Execute(PROF_DELETE_CURRENT), PROF_NO_CURRENT);
    EXPECT_EQ(request.Lines(), Lines{});
}

TEST(ProfileSetRawCurrent, PutsKeyAndValueTogetherThisOnce)
{
    OnEntry request(sectioned, "a=1\r\nb=2\r\n", "a");
    EXPECT_EQ(request.Execute(PROF_SET_RAW_CURRENT, "x", "y"), PROF_OK);
    EXPECT_EQ(request.Lines(), (Lines{"xy", "b=2"}));
    EXPECT_STREQ(request.Block().format, "  %s = %s");
}

// --- length

TEST(ProfileLength, OfALineMayReach599Characters)
{
    const std::string longest(597, 'v');
    ExpectEdit(compact, "a=1\r\n", {PROF_SET, "a", longest, ""}, "a=" + longest + "\r\n");
}

TEST(ProfileLength, Of600IsRefusedByEveryOperation)
{
    const std::string before = "k=1\r\n[S]\r\nk=1\r\n";
    for (const std::uint16_t operation : profile::Codes{1, 2, 6, 8, 10, 11, 18, 20, 21, 40, 41, 42, 51}) {
        OnEntry request(compact, before, "k");
        EXPECT_EQ(request.ExecuteIn("S", operation, "k", std::string(599, 'v')), PROF_TOO_LONG) << operation;
        EXPECT_EQ(request.Lines(), (Lines{"k=1", "[S]", "k=1"})) << operation;
    }
}

TEST(ProfileLength, OfALongSectionNameAppendsNothing)
{
    for (const std::uint16_t operation : {PROF_SET, PROF_APPEND_LAST, PROF_ADD_SECTION_AT_END})
        ExpectEdit(sectioned, "a=1\r\n", {operation, "b", "2", std::string(598, 's')}, "a=1\r\n",
                   PROF_TOO_LONG);
}

TEST(ProfileLength, OfAValueIsAtMostItsLines)
{
    OnEntry request(compact, "k=" + std::string(597, 'v') + "\n", "k");
    EXPECT_EQ(request.Value(), std::string(597, 'v'));
}

} // namespace
