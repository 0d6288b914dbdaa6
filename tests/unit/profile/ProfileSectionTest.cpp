// The operations on sections.
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

// Whether the section is found, and where the cursor then is.
std::string FoundHeader(const std::string& content, const std::string& section)
{
    const ScratchFile file;
    file.Write(content);
    Request request(sectioned);
    request.Open(file);
    const std::int16_t status = request.ExecuteIn(section, PROF_FIND_SECTION);
    if (status == PROF_SECTION_NOT_FOUND)
        return "(not found)";
    return status == PROF_OK ? request.Current().value_or("(no cursor)") : "(failed)";
}

// Where the cursor is after one operation on a file that was just opened.
std::optional<std::string> CursorAfter(const std::string& content, const std::string& section,
                                       std::uint16_t operation, const std::string& key,
                                       const std::string& value = "")
{
    const ScratchFile file;
    file.Write(content);
    Request request(sectioned);
    request.Open(file);
    (void)request.ExecuteIn(section, operation, key, value);
    return request.Current();
}

// --- 61: find a section

TEST(ProfileFindSection, FindsTheFirstHeaderInAnyLetterCase)
{
    EXPECT_EQ(FoundHeader("a=1\r\n[Other]\r\n[OPTIONS]\r\n[options]\r\n", "Options"), "[OPTIONS]");
}

TEST(ProfileFindSection, AllowsBlanksInsideTheBrackets)
{
    EXPECT_EQ(FoundHeader("[ \tOptions \t]\r\n", "Options"), "[ \tOptions \t]");
    EXPECT_EQ(FoundHeader("[Options] ; more\r\n", "Options"), "[Options] ; more");
}

TEST(ProfileFindSection, NeverFindsAHeaderWithBlanksBeforeIt)
{
    EXPECT_EQ(FoundHeader("  [Options]\r\n", "Options"), "(not found)");
    EXPECT_EQ(FoundHeader("\t[Options]\r\n", "Options"), "(not found)");
}

TEST(ProfileFindSection, WantsTheWholeName)
{
    EXPECT_EQ(FoundHeader("[Options2]\r\n[Opt]\r\n[Options\r\n", "Options"), "(not found)");
    EXPECT_EQ(FoundHeader("[]\r\n", "Options"), "(not found)");
    EXPECT_EQ(FoundHeader("[\r\n[ ]\r\n", ""), "[ ]");
}

TEST(ProfileFindSection, LeavesTheCursorWhenThereIsNone)
{
    const ScratchFile file;
    file.Write("a=1\r\n[A]\r\n");
    Request request(sectioned);
    request.Open(file);
    EXPECT_EQ(request.Execute(PROF_FIND_FIRST, "a"), PROF_OK);
    EXPECT_EQ(request.ExecuteIn("B", PROF_FIND_SECTION), PROF_SECTION_NOT_FOUND);
    EXPECT_EQ(request.Current(), "a=1");
}

TEST(ProfileFindSection, DoesNotFindAHeaderRewrittenAsEmpty)
{
    const ScratchFile file;
    file.Write("[A]\r\na=1\r\n");
    Request request(sectioned);
    request.Open(file);
    EXPECT_EQ(request.ExecuteIn("A", PROF_FIND_SECTION), PROF_OK);
    EXPECT_EQ(request.Execute(PROF_SET_RAW_CURRENT), PROF_OK);
    EXPECT_EQ(request.ExecuteIn("", PROF_FIND_SECTION), PROF_SECTION_NOT_FOUND);
    EXPECT_EQ(request.ExecuteIn("A", PROF_FIND_SECTION), PROF_SECTION_NOT_FOUND);
}

// --- 10: set in a section

TEST(ProfileSectionSet, RewritesTheEntryOfItsOwnSection)
{
    ExpectSettledEdit(sectioned, "a=0\r\n[A]\r\na=1\r\n[B]\r\na=2\r\n", {PROF_SECTION_SET, "a", "3", "B"},
                      "a=0\r\n[A]\r\na=1\r\n[B]\r\n  a = 3\r\n");
}

TEST(ProfileSectionSet, InsertsBelowTheLastLineThatIsNotBlank)
{
    ExpectSettledEdit(sectioned, "[A]\r\nx=1\r\n;note\r\n\r\n[B]\r\n", {PROF_SECTION_SET, "a", "1", "A"},
                      "[A]\r\nx=1\r\n;note\r\n  a = 1\r\n\r\n[B]\r\n");
}

TEST(ProfileSectionSet, InsertsBelowTheHeaderOfAnEmptySection)
{
    ExpectSettledEdit(sectioned, "[A]\r\n[B]\r\nb=1\r\n", {PROF_SECTION_SET, "a", "1", "A"},
                      "[A]\r\n  a = 1\r\n[B]\r\nb=1\r\n");
    ExpectSettledEdit(sectioned, "[A]\r\n\r\n\r\n[B]\r\n", {PROF_SECTION_SET, "a", "1", "A"},
                      "[A]\r\n  a = 1\r\n\r\n\r\n[B]\r\n");
    ExpectSettledEdit(sectioned, "[B]\r\n[A]\r\n", {PROF_SECTION_SET, "a", "1", "A"},
                      "[B]\r\n[A]\r\n  a = 1\r\n");
}

TEST(ProfileSectionSet, AppendsAMissingSection)
{
    ExpectSettledEdit(sectioned, "[B]\r\nb=1\r\n", {PROF_SECTION_SET, "a", "1", "A"},
                      "[B]\r\nb=1\r\n\r\n[A]\r\n  a = 1\r\n");
}

TEST(ProfileSectionSet, AppendsASectionWhoseHeaderHasBlanksBeforeIt)
{
    ExpectSettledEdit(sectioned, "  [Options]\r\na=0\r\n", {PROF_SECTION_SET, "a", "1", "Options"},
                      "  [Options]\r\na=0\r\n\r\n[Options]\r\n  a = 1\r\n");
}

TEST(ProfileSectionSet, AppendsTheEntryAloneOutsideSectionedMode)
{
    ExpectEdit(compact, "b=1\r\n", {PROF_SECTION_SET, "a", "1", "A"}, "b=1\r\na=1\r\n");
}

// --- 11: add to a section

TEST(ProfileSectionAdd, InsertsEvenWhenTheKeyIsThere)
{
    ExpectEdit(sectioned, "[A]\r\na=1\r\n\r\n[B]\r\n", {PROF_SECTION_ADD, "a", "2", "A"},
               "[A]\r\na=1\r\n  a = 2\r\n\r\n[B]\r\n");
    ExpectEdit(sectioned, "[A]\r\n", {PROF_SECTION_ADD, "a", "2", "A"}, "[A]\r\n  a = 2\r\n");
}

TEST(ProfileSectionAdd, AppendsAMissingSection)
{
    ExpectEdit(sectioned, "", {PROF_SECTION_ADD, "a", "2", "A"}, "\r\n[A]\r\n  a = 2\r\n");
}

// A line that is refused is not inserted, but the place for it has been found.
TEST(ProfileSectionAdd, LeavesTheCursorOnOrAboveTheNewLine)
{
    const std::string content = "x=0\r\n[A]\r\na=1\r\n;c\r\n\r\n[E]\r\n";
    const std::string tooLong(600, 'v');
    for (const std::uint16_t operation : {PROF_SECTION_SET, PROF_SECTION_ADD}) {
        EXPECT_EQ(CursorAfter(content, "A", operation, "b", "2"), "  b = 2");
        EXPECT_EQ(CursorAfter(content, "A", operation, "b", tooLong), ";c");
        EXPECT_EQ(CursorAfter(content, "E", operation, "b", tooLong), "[E]");
        EXPECT_EQ(CursorAfter(content, "N", operation, "b", tooLong), std::nullopt);
    }
}

// --- 13, 14: get

TEST(ProfileSectionGet, ReadsTheValueInTheSection)
{
    const ScratchFile file;
    file.Write("a=0\r\n[A]\r\na=1\r\n[B]\r\na=2\r\nb=x\r\nA = 3\r\n[C]\r\na=4\r\n");
    Request request(sectioned);
    request.Open(file);
    EXPECT_EQ(request.ExecuteIn("B", PROF_SECTION_GET, "a"), PROF_OK);
    EXPECT_EQ(request.Value(), "2");
    EXPECT_EQ(request.ExecuteIn("B", PROF_SECTION_GET_NEXT, "a"), PROF_OK);
    EXPECT_EQ(request.Value(), "3");
    EXPECT_EQ(request.ExecuteIn("B", PROF_SECTION_GET_NEXT, "a"), PROF_KEY_NOT_FOUND);
    EXPECT_EQ(request.ExecuteIn("A", PROF_SECTION_GET, "a"), PROF_OK);
    EXPECT_EQ(request.Value(), "1");
}

TEST(ProfileSectionGet, DistinguishesAMissingSectionFromAMissingKey)
{
    ExpectEdit(sectioned, "[A]\r\na=1\r\n", {PROF_SECTION_GET, "a", "", "B"}, "[A]\r\na=1\r\n",
               PROF_SECTION_NOT_FOUND);
    ExpectEdit(sectioned, "[A]\r\na=1\r\n", {PROF_SECTION_GET, "b", "", "A"}, "[A]\r\na=1\r\n",
               PROF_KEY_NOT_FOUND);
    ExpectEdit(sectioned, "[A]\r\n", {PROF_SECTION_GET, "b", "", "A"}, "[A]\r\n", PROF_KEY_NOT_FOUND);
}

TEST(ProfileSectionGet, WithoutTheKeyStaysOnTheLastEntry)
{
    EXPECT_EQ(CursorAfter("a=0\r\n[A]\r\n;c\r\n[B]\r\n", "A", PROF_SECTION_GET, "b"), "[A]");
    EXPECT_EQ(CursorAfter("[A]\r\na=1\r\n;c\r\n[B]\r\n", "A", PROF_SECTION_GET, "b"), "a=1");
}

TEST(ProfileSectionGetNext, StepsOneLineOnEvenOntoTheNextHeader)
{
    const ScratchFile file;
    file.Write("[A]\r\na=1\r\n[B]\r\na=2\r\n");
    Request request(sectioned);
    request.Open(file);
    EXPECT_EQ(request.ExecuteIn("A", PROF_SECTION_GET, "a"), PROF_OK);
    EXPECT_EQ(request.ExecuteIn("A", PROF_SECTION_GET_NEXT, "a", "untouched"), PROF_KEY_NOT_FOUND);
    EXPECT_EQ(request.Current(), "[B]");
    EXPECT_EQ(request.Value(), "untouched");
}

TEST(ProfileSectionGetNext, StepsOffTheLastLine)
{
    const ScratchFile file;
    file.Write("[A]\r\na=1\r\n");
    Request request(sectioned);
    request.Open(file);
    EXPECT_EQ(request.ExecuteIn("A", PROF_SECTION_GET, "a"), PROF_OK);
    EXPECT_EQ(request.ExecuteIn("A", PROF_SECTION_GET_NEXT, "a"), PROF_KEY_NOT_FOUND);
    EXPECT_EQ(request.Current(), std::nullopt);
    EXPECT_EQ(request.ExecuteIn("A", PROF_SECTION_GET_NEXT, "a"), PROF_NO_CURRENT);
}

// --- 15, 16: delete

TEST(ProfileSectionDelete, DeletesTheHeaderAndItsLines)
{
    ExpectEdit(sectioned, "x\r\n[A]\r\na=1\r\n\r\n;c\r\n[B]\r\nb=1\r\n", {PROF_SECTION_DELETE, "", "", "A"},
               "x\r\n[B]\r\nb=1\r\n");
    ExpectEdit(sectioned, "x\r\n[A]\r\na=1\r\n", {PROF_SECTION_DELETE, "", "", "A"}, "x\r\n");
}

TEST(ProfileSectionDelete, EndsAtAHeaderThatHasBlanksBeforeIt)
{
    ExpectEdit(sectioned, "[A]\r\na=1\r\n [B]\r\n", {PROF_SECTION_DELETE, "", "", "A"}, " [B]\r\n");
}

TEST(ProfileSectionDelete, ReportsAMissingSection)
{
    ExpectEdit(sectioned, "[A]\r\n", {PROF_SECTION_DELETE, "", "", "B"}, "[A]\r\n", PROF_SECTION_NOT_FOUND);
}

TEST(ProfileSectionDeleteKey, DeletesTheEntryOfItsOwnSection)
{
    ExpectUndoneEdit(sectioned, "a=0\r\n[A]\r\n  a = 1\r\n[B]\r\n", {PROF_SECTION_DELETE_KEY, "a", "", "A"},
                     "a=0\r\n[A]\r\n[B]\r\n", {PROF_SECTION_SET, "a", "1", "A"});
}

TEST(ProfileSectionDeleteKey, ReturnsSuccessWithoutOne)
{
    ExpectEdit(sectioned, "[A]\r\n[B]\r\na=1\r\n", {PROF_SECTION_DELETE_KEY, "a", "", "A"},
               "[A]\r\n[B]\r\na=1\r\n");
    ExpectEdit(sectioned, "[A]\r\na=1\r\n", {PROF_SECTION_DELETE_KEY, "a", "", "B"}, "[A]\r\na=1\r\n");
}

TEST(ProfileSectionDeleteKey, LeavesTheCursorWhereTheSearchEnded)
{
    const std::string content = "x=0\r\n[A]\r\n;c\r\na=1\r\nb=2\r\n[E]\r\n;d\r\n";
    EXPECT_EQ(CursorAfter(content, "A", PROF_SECTION_DELETE_KEY, "a"), "b=2");
    EXPECT_EQ(CursorAfter(content, "A", PROF_SECTION_DELETE_KEY, "z"), "b=2");
    EXPECT_EQ(CursorAfter(content, "E", PROF_SECTION_DELETE_KEY, "z"), "[E]");
    EXPECT_EQ(CursorAfter(content, "N", PROF_SECTION_DELETE_KEY, "z"), std::nullopt);
}

// --- 17, 23: copy and paste

TEST(ProfileSectionCopy, CopiesTheLinesBetweenHeaders)
{
    const ScratchFile file;
    file.Write("[A]\r\n a=1\r\n\r\n;c\r\n[B]\r\nb=1\r\n");
    Request request(sectioned);
    request.Open(file);
    EXPECT_EQ(request.ExecuteIn("A", PROF_SECTION_COPY), PROF_OK);
    EXPECT_EQ(request.Clipboard(), (Lines{"", " a=1", "", ";c"}));
    EXPECT_EQ(request.ExecuteIn("B", PROF_SECTION_COPY), PROF_OK);
    EXPECT_EQ(request.Clipboard(), (Lines{"", "b=1"}));
}

TEST(ProfileSectionCopy, CopiesNoLinesOfAnEmptySection)
{
    const ScratchFile file;
    file.Write("[A]\r\n[B]\r\n");
    Request request(sectioned);
    request.Open(file);
    EXPECT_EQ(request.ExecuteIn("A", PROF_SECTION_COPY), PROF_OK);
    EXPECT_EQ(request.Clipboard(), Lines{""});
}

TEST(ProfileSectionCopy, RefusesAHeaderThatIsTheLastLine)
{
    const ScratchFile file;
    file.Write("[A]\r\na=1\r\n[B]\r\n");
    Request request(sectioned);
    request.Open(file);
    EXPECT_EQ(request.ExecuteIn("A", PROF_SECTION_COPY), PROF_OK);
    EXPECT_EQ(request.ExecuteIn("B", PROF_SECTION_COPY), PROF_NO_CURRENT);
    EXPECT_EQ(request.Clipboard(), (Lines{"", "a=1"}));
}

TEST(ProfileSectionCopy, ReportsAMissingSection)
{
    ExpectEdit(sectioned, "[A]\r\n", {PROF_SECTION_COPY, "", "", "B"}, "[A]\r\n", PROF_SECTION_NOT_FOUND);
}

TEST(ProfilePasteAtEnd, AppendsAnEmptyLineAndTheCopiedOnes)
{
    EXPECT_EQ(profile::Edited(sectioned, "[A]\r\na=1\r\n;c\r\n[B]\r\n",
                              {{PROF_SECTION_COPY, "", "", "A"}, {PROF_PASTE_AT_END, "", "", ""}}, PROF_OK,
                              support::Location::current()),
              "[A]\r\na=1\r\n;c\r\n[B]\r\n\r\na=1\r\n;c\r\n");
}

TEST(ProfilePasteAtEnd, KeepsTheKindsOfTheLines)
{
    const ScratchFile file;
    file.Write("[A]\r\na=1\r\n;c\r\n");
    Request request(sectioned);
    request.Open(file);
    EXPECT_EQ(request.ExecuteIn("A", PROF_SECTION_COPY), PROF_OK);
    EXPECT_EQ(request.Execute(PROF_PASTE_AT_END), PROF_OK);
    EXPECT_EQ(request.Current(), ";c");
    EXPECT_EQ(request.Block().current->kind, PROF_KIND_COMMENT);
    EXPECT_EQ(request.Block().current->prev->kind, PROF_KIND_ENTRY);
    EXPECT_EQ(request.Block().current->prev->prev->kind, PROF_KIND_BLANK);
}

TEST(ProfilePasteAtEnd, DoesNothingWithoutAClipboard)
{
    ExpectEdit(sectioned, "[A]\r\n", {PROF_PASTE_AT_END, "", "", ""}, "[A]\r\n");
}

TEST(ProfilePasteAtEnd, LeavesTheCursorAloneWithoutAClipboard)
{
    const ScratchFile file;
    file.Write("[A]\r\na=1\r\n[B]\r\n");
    Request request(sectioned);
    request.Open(file);
    EXPECT_EQ(request.ExecuteIn("B", PROF_FIND_SECTION), PROF_OK);
    EXPECT_EQ(request.Execute(PROF_PASTE_AT_END), PROF_OK);
    EXPECT_EQ(request.Current(), "[B]");
}

// --- 18: append to a value

TEST(ProfileSectionAppendValue, AppendsACommaAndTheValue)
{
    ExpectEdit(sectioned, "[A]\r\na= x  y\r\n", {PROF_SECTION_APPEND_VALUE, "a", "z", "A"},
               "[A]\r\n  a = x y, z\r\n");
}

TEST(ProfileSectionAppendValue, DistinguishesAMissingSectionFromAMissingKey)
{
    ExpectEdit(sectioned, "[A]\r\na=1\r\n", {PROF_SECTION_APPEND_VALUE, "a", "z", "B"}, "[A]\r\na=1\r\n",
               PROF_SECTION_NOT_FOUND);
    ExpectEdit(sectioned, "[A]\r\na=1\r\n", {PROF_SECTION_APPEND_VALUE, "b", "z", "A"}, "[A]\r\na=1\r\n",
               PROF_KEY_NOT_FOUND);
}

// --- 60: add a section

TEST(ProfileAddSectionAtEnd, AppendsAnEmptyLineAndTheHeader)
{
    ExpectEdit(sectioned, "[A]\r\n", {PROF_ADD_SECTION_AT_END, "", "", "B"}, "[A]\r\n\r\n[B]\r\n");
}

TEST(ProfileAddSectionAtEnd, DoesNothingOutsideSectionedMode)
{
    for (const std::uint8_t mode : {raw, compact})
        ExpectEdit(mode, "[A]\r\n", {PROF_ADD_SECTION_AT_END, "", "", "B"}, "[A]\r\n");
}

} // namespace
