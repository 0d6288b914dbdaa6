// Entries whose value is a list, its members separated by semicolons.
#include "ProfileFixture.h"

namespace {

using profile::compact;
using profile::ExpectEdit;
using profile::ExpectSettledEdit;
using profile::raw;
using profile::sectioned;

TEST(ProfileList, GrowsInFront)
{
    ExpectSettledEdit(compact, "PATH=a\r\n", {PROF_LIST_PREPEND, "PATH", "x", ""}, "PATH=x;a;\r\n");
}

TEST(ProfileList, GrowsAtTheEnd)
{
    ExpectSettledEdit(compact, "PATH=a\r\n", {PROF_LIST_APPEND, "PATH", "x", ""}, "PATH=a;x;\r\n");
}

TEST(ProfileList, StaysWhenItContainsTheValue)
{
    for (const std::uint16_t operation : {PROF_LIST_PREPEND, PROF_LIST_APPEND}) {
        ExpectSettledEdit(compact, "PATH = a;B;c\r\n", {operation, "PATH", "b", ""}, "PATH = a;B;c\r\n");
        ExpectSettledEdit(compact, "PATH=cab\r\n", {operation, "PATH", "A", ""}, "PATH=cab\r\n");
    }
}

TEST(ProfileList, ContainsTheEmptyValue)
{
    ExpectSettledEdit(compact, "PATH=a\r\n", {PROF_LIST_APPEND, "PATH", "", ""}, "PATH=a\r\n");
    ExpectSettledEdit(compact, "PATH=\r\n", {PROF_LIST_APPEND, "PATH", "", ""}, "PATH=\r\n");
}

TEST(ProfileList, IsAppendedWhenMissing)
{
    ExpectSettledEdit(compact, "x=0\r\n", {PROF_LIST_APPEND, "PATH", "a", ""}, "x=0\r\nPATH=a\r\n");
    ExpectEdit(sectioned, "x=0\r\n", {PROF_LIST_PREPEND, "PATH", "a", "S"},
               "x=0\r\n\r\n[S]\r\n  PATH = a\r\n");
    ExpectSettledEdit(raw, "", {PROF_LIST_PREPEND, "a", "", ""}, "a\r\n");
}

TEST(ProfileList, HasEachRunOfSemicolonsMadeOne)
{
    ExpectSettledEdit(compact, "PATH=a;;;;b;\r\n", {PROF_LIST_APPEND, "PATH", "c", ""}, "PATH=a;b;c;\r\n");
}

TEST(ProfileList, IsTidiedEvenWhenItStaysOrIsNew)
{
    ExpectSettledEdit(compact, "PATH=a;;b\r\n", {PROF_LIST_APPEND, "PATH", "a", ""}, "PATH=a;b\r\n");
    ExpectEdit(compact, "", {PROF_LIST_APPEND, "PATH", "a;;b", ""}, "PATH=a;b\r\n");
}

// Each of the two texts counts with its semicolon.
TEST(ProfileList, MayReach599Characters)
{
    const std::string list(297, 'a');
    const std::string added(300, 'b');
    profile::ScratchFile file;
    file.Write("k=" + list + "\r\n");
    profile::Request request(compact);
    request.Open(file);
    request.Block().format = "%.1s%s"; // leaves room for the longest value
    EXPECT_EQ(request.Execute(PROF_LIST_APPEND, "k", added), PROF_TOO_LONG);
    request.Block().format = "%.0s%s";
    EXPECT_EQ(request.Execute(PROF_LIST_APPEND, "k", added), PROF_OK);
    EXPECT_EQ(request.Current(), list + ";" + added + ";");
}

TEST(ProfileList, IsTidiedEvenWhenItRefuses600Characters)
{
    const std::string list = "a;;" + std::string(290, 'a');
    ExpectEdit(compact, "k=" + list + "\r\n", {PROF_LIST_APPEND, "k", std::string(305, 'b'), ""},
               "k=a;" + std::string(290, 'a') + "\r\n", PROF_TOO_LONG);
}

} // namespace
