// The lines of standard error in both forms.
#include "command/ErrorLines.h"
#include "command/TestStreams.h"

#include <gtest/gtest.h>

namespace {

// What standard error gets from `write`.
template <typename Write>
std::string LinesOf(bool isJson, Write write)
{
    TestStreams streams;
    ErrorLines lines(streams, isJson);
    write(lines);
    return streams.errors;
}

TEST(ErrorLines, HaveTheNameOfTheProgramOrAreJson)
{
    const auto both = [](ErrorLines& lines) {
        lines.Error("a \"b\" \\ c\n\\");
        lines.Note("d");
    };
    EXPECT_EQ(LinesOf(false, both), "vtncfg: a \"b\" \\ c\\n\\\nvtncfg: d\n");
    EXPECT_EQ(LinesOf(true, both), R"({"error":"a \"b\" \\ c\n\\"})"
                                   "\n"
                                   R"({"info":"d"})"
                                   "\n");
}

TEST(ErrorLines, SayWhetherTheChangesWereWrittenBeforeTheMemoryWasGone)
{
    const auto before = [](ErrorLines& lines) { lines.OutOfMemory(false); };
    const auto afterwards = [](ErrorLines& lines) { lines.OutOfMemory(true); };
    EXPECT_EQ(LinesOf(false, before), "vtncfg: there is not enough memory to go on\n");
    EXPECT_EQ(LinesOf(true, before), "{\"error\":\"there is not enough memory to go on\"}\n");
    EXPECT_EQ(LinesOf(false, afterwards),
              "vtncfg: the changes are written, but there is not enough memory to go on\n");
    EXPECT_EQ(LinesOf(true, afterwards),
              "{\"error\":\"the changes are written, but there is not enough memory to go on\"}\n");
}

} // namespace
