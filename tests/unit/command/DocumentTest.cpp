// The document's text: what is taken, and where and why it is not.
#include "command/Document.h"
#include "command/CodePage.h"
#include "command/CommandError.h"
#include "support/Expect.h"

#include <gtest/gtest.h>

namespace {

// What the refusal of a text says; empty when it is taken.
std::string RefusalOf(const std::string& text)
try {
    (void)ParseDocument(text);
    return {};
} catch (const CommandError& error) {
    return error.what();
}

TEST(Document, IsOneObject)
{
    EXPECT_EQ(ParseDocument(R"({"a":{"b":true}})"), Json({{"a", {{"b", true}}}}));
    for (const char* text : {"[]", "1", "\"a\"", "null"})
        EXPECT_EQ(RefusalOf(text), "the document is no object; it must begin with { and end with }");
}

TEST(Document, MayBeginWithAByteOrderMark)
{
    EXPECT_EQ(ParseDocument("\xEF\xBB\xBF{}"), Json::object());
}

TEST(Document, IsTakenInUtf16AsWindowsPowerShellWritesIt)
{
    const std::string text("\xFF\xFE{\0\"\0\xE9\0\x42\x04\"\0:\0001\0}\0\r\0\n\0", 22);
    EXPECT_EQ(ParseDocument(text), Json({{"\xC3\xA9\xD1\x82", 1}}));
}

TEST(Document, EndsInUtf16WithItsLastWholeCharacter)
{
    EXPECT_EQ(ParseDocument(std::string("\xFF\xFE{\0}\0x", 7)), Json::object());
}

TEST(Document, NamesTheMemberThatStandsThereTwice)
{
    EXPECT_EQ(RefusalOf(R"({"a":1,"b":{"c":1,"c":2}})"), "b.c: stands there twice; leave one of them out");
    EXPECT_EQ(RefusalOf(R"({"b":{"c":1},"b":2})"), "b: stands there twice; leave one of them out");
    EXPECT_EQ(RefusalOf(R"({"a":1,"b":{"a":1,"c":1},"c":1})"), "");
}

TEST(Document, SaysWhereAndWhyItIsNoJson)
{
    const std::vector<std::pair<std::string, std::string>> places = {
        {"{\n  \"a\": yes\n}", "line 2, column 8"},
        {"", "line 1, column 1"},
        {"x\n\n", "line 1, column 1"},
        {"\nx", "line 2, column 1"},
        {"{\n\"a\": tr\n}", "line 2, column 8"},
        {"{\"\xE9\":1}", "line 1, column 4"}};
    for (const auto& [text, place] : places) {
        const std::string refusal = RefusalOf(text);
        EXPECT_TRUE(refusal.starts_with("the document is no JSON in UTF-8 at " + place +
                                        ": syntax error while parsing"))
            << refusal;
    }
}

TEST(Document, IsRefusedWhenItGoesTooDeepOrTooFar)
{
    const auto nested = [](std::size_t depth) {
        return "{\"a\":" + std::string(depth, '[') + std::string(depth, ']') + "}";
    };
    EXPECT_EQ(RefusalOf(nested(16)), "");
    for (const std::string& deep : {nested(17), std::string(100'000, '[')})
        EXPECT_EQ(RefusalOf(deep),
                  "the document has objects or arrays in one another deeper than anything here");
    EXPECT_EQ(RefusalOf("{}" + std::string(1'048'574, ' ')), "");
    EXPECT_EQ(RefusalOf("{}" + std::string(1'048'575, ' ')),
              "the document is longer than 1 MB; this is no document of settings");
}

TEST(Document, IsRefusedForANumberThatNoProgramHolds)
{
    EXPECT_EQ(RefusalOf(R"({"a":1e9999})"), "the document holds a number that is too large for any setting");
}

TEST(Document, IsPrintedInAscii)
{
    EXPECT_EQ(OneLine({{"\xC3\xA9", "\n"}}), "{\"\\u00e9\":\"\\n\"}");
}

TEST(Changes, AreListedMemberByMember)
{
    const Json before = {{"a", {{"x", 1}, {"gone", 2}}}, {"b", true}};
    const Json after = {{"a", {{"x", 3}, {"new", 4}}}, {"b", true}};
    const std::vector<MemberChange> changes = ChangesBetween("", before, after, "none");
    ASSERT_EQ(changes.size(), 3);
    EXPECT_EQ(changes[0].path, "a.x");
    EXPECT_EQ(changes[1].path, "a.gone");
    EXPECT_EQ(changes[1].after, "none");
    EXPECT_EQ(changes[2].path, "a.new");
    EXPECT_EQ(changes[2].before, "none");
}

TEST(Changes, AreOneWhereOnlyOneSideIsAnObject)
{
    const Json plain = {{"a", 1}};
    const Json object = {{"a", {{"x", 1}, {"y", 2}}}};
    for (const auto& [before, after] : {std::pair(plain, object), std::pair(object, plain)}) {
        const std::vector<MemberChange> changes = ChangesBetween("", before, after, "none");
        ASSERT_EQ(changes.size(), 1);
        EXPECT_EQ(changes[0].path, "a");
        EXPECT_EQ(changes[0].before, before["a"]);
        EXPECT_EQ(changes[0].after, after["a"]);
    }
}

TEST(CodePage, ConvertsEachCharacterAndNoMore)
{
    EXPECT_EQ(ToUtf8("Caf\xE9 1"), "Caf\xC3\xA9 1");
    EXPECT_EQ(FromUtf8("Caf\xC3\xA9 1"), "Caf\xE9 1");
    EXPECT_EQ(LowerFromUtf8("CAF\xC3\x89 1"), "caf\xE9 1");
    EXPECT_EQ(ToUtf8(""), "");
    EXPECT_EQ(FromUtf8(""), "");
}

TEST(CodePage, RefusesWhatItCannotExpress)
{
    EXPECT_EQ(FromUtf8("\xF0\x9F\x98\x80"), std::nullopt);
    EXPECT_EQ(FromUtf8("\xC4\x80"), std::nullopt); // a long A, which Windows takes for a plain one
    EXPECT_EQ(LowerFromUtf8("\xF0\x9F\x98\x80"), std::nullopt);
}

TEST(CodePage, LowersAndSortsAsAListBoxDoes)
{
    EXPECT_EQ(LowerFromUtf8("NvBackup.EXE"), "nvbackup.exe");
    EXPECT_TRUE(IsListedBefore("a", "B"));
    EXPECT_FALSE(IsListedBefore("B", "a"));
    EXPECT_FALSE(IsListedBefore("a", "A"));
    EXPECT_TRUE(IsListedBefore("\xE9", "\xFF"));
    EXPECT_FALSE(IsListedBefore("\xE9", "\xE9"));
}

} // namespace
