// Files as people and programs write them: what no operation touches keeps every byte but its ending.
#include "ProfileFixture.h"

namespace {

using profile::Request;
using profile::ScratchFile;
using Lines = std::vector<std::string>;

struct Shape
{
    const char* name;
    std::string content;
    Lines lines; // what is in it, without endings
};

std::string Joined(const Lines& lines, const std::string& ending)
{
    std::string content;
    for (const std::string& line : lines)
        content += line + ending;
    return content;
}

Shape Uniform(const char* name, const Lines& lines, const std::string& ending = "\r\n")
{
    return {name, Joined(lines, ending), lines};
}

const Lines batch = {"@echo off",
                     "rem  ---  log on ---",
                     "",
                     "if \"%OS%\" == \"Windows_NT\" goto nt",
                     "\tset PATH=%PATH%;C:\\TOOLS;;C:\\BIN;",
                     ":nt",
                     "net use  h:  \\\\srv1\\home\\%USERNAME%  /persistent:no >nul 2>&1 ",
                     "%SystemRoot%\\system32\\cmd.exe /c \"echo 100%% = [done] ; %1\""};

// Japanese text in code page 932, with second bytes that are a backslash, an opening bracket, a bar and
// letters.
const Lines japanese = {"; \x83\x5C\x83\x74\x83\x67\x83\x45\x83\x46\x83\x41", "[\x90\xDD\x92\xE8]",
                        "\x95\x5C\x8E\xA6 = \x83\x5C\x81\x5B\x83\x7C\x81\x5B\x83\x67",
                        "\x83\x5B\x83\x8D=\x83\x41\x83\x61\x94\x5C", "\xB6\xC0\xB6\xC5=\xB1"};

const Lines blanks = {" \t leading", "trailing \t ", "in\t\tthe  middle", "form\ffeed",
                      "\f",          "\v",           "bell\a\x1B[0m"};

const Lines binary = {
    "\x01\x02\x7F\x80\x9F\xA0\xFE\xFF", "=", "==", "[]", "[", "]", ";", "%s%s%n%d", "a=b=c"};

const Lines longLines = {std::string(597, 'l'), "rem " + std::string(500, '-'),
                         "set X=" + std::string(590, '%'), "end"};

// All have the endings of one kind or a mixture, and fewer than 598 characters in a line.
const std::vector<Shape> shapes = {
    Uniform("batch file", batch),
    Uniform("batch file from another system", batch, "\n"),
    Uniform("batch file with turned endings", batch, "\n\r"),
    Uniform("Japanese", japanese),
    Uniform("blanks and control characters", blanks),
    Uniform("bytes of every kind", binary),
    Uniform("long lines", longLines),
    {"mixed endings", "a\r\nb\nc\n\rd\r\n\r\n\ne\n", {"a", "b", "c", "d", "", "", "e"}},
    {"no ending at the end", "@echo off\r\ncall x.bat", {"@echo off", "call x.bat"}},
    {"end-of-file mark after the last line", "@echo off\r\ncall x.bat\r\n\x1A", {"@echo off", "call x.bat"}},
    {"end-of-file mark in the last line", "@echo off\r\ncall x.bat\x1A", {"@echo off", "call x.bat"}},
    {"byte order mark", "\xEF\xBB\xBF[Options]\r\na=1\r\n", {"\xEF\xBB\xBF[Options]", "a=1"}},
};

class ProfileShapes : public testing::TestWithParam<std::uint8_t>
{
};

// Opens the content, performs the edits and returns the saved file.
std::string After(const std::string& content, std::uint8_t mode, const std::vector<profile::Edit>& edits)
{
    return profile::Edited(mode, content, edits, PROF_OK, support::Location::current()).value_or("(deleted)");
}

TEST_P(ProfileShapes, ChangeNothingButLineEndings)
{
    for (const Shape& shape : shapes)
        EXPECT_EQ(After(shape.content, GetParam(), {}), Joined(shape.lines, "\r\n")) << shape.name;
}

TEST_P(ProfileShapes, SettleAfterTheFirstSave)
{
    for (const Shape& shape : shapes) {
        const std::string once = After(shape.content, GetParam(), {});
        EXPECT_EQ(After(once, GetParam(), {}), once) << shape.name;
    }
}

TEST_P(ProfileShapes, KeepEveryOtherLineWhenOneIsInserted)
{
    for (const Shape& shape : shapes) {
        const std::string edited = After(shape.content, GetParam(), {{PROF_INSERT_FIRST, "first", "", ""}});
        EXPECT_EQ(edited.substr(edited.find("\r\n") + 2), Joined(shape.lines, "\r\n")) << shape.name;
    }
}

TEST(ProfileShapes, AreFreedOfAnInsertedBlockWithoutATrace)
{
    for (const Shape& shape : shapes) {
        const std::vector<profile::Edit> insert = {{PROF_INSERT_FIRST, "rem two", "", ""},
                                                   {PROF_INSERT_FIRST, "rem one", "", ""}};
        const std::vector<profile::Edit> remove = {{PROF_DELETE_FIRST, "REM ONE", "", ""},
                                                   {PROF_DELETE_FIRST, "rem two", "", ""}};
        const std::string with = After(shape.content, profile::raw, insert);
        EXPECT_EQ(with, "rem one\r\nrem two\r\n" + Joined(shape.lines, "\r\n")) << shape.name;
        EXPECT_EQ(After(with, profile::raw, remove), Joined(shape.lines, "\r\n")) << shape.name;
    }
}

TEST(ProfileShapes, OfJapaneseAreSearchedByteByByte)
{
    const ScratchFile file;
    file.Write(Joined(japanese, "\r\n"));
    Request request(profile::sectioned);
    request.Open(file);
    EXPECT_EQ(request.ExecuteIn("\x90\xDD\x92\xE8", PROF_SECTION_GET, "\x95\x5C\x8E\xA6"), PROF_OK);
    EXPECT_EQ(request.Value(), "\x83\x5C\x81\x5B\x83\x7C\x81\x5B\x83\x67");
}

INSTANTIATE_TEST_SUITE_P(EveryMode, ProfileShapes,
                         testing::Values(profile::raw, profile::compact, profile::sectioned));

} // namespace
