// The answered message boxes, on this program's own.
#include "support/MessageBoxScript.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>
#include <thread>

namespace {

using support::MessageBoxScript;
using support::ShownBox;

HMODULE Self()
{
    return GetModuleHandleA(nullptr);
}

// Apart from the hook, as the hook's header asks.
[[gnu::noinline]] int Ask(const char* text, UINT style = MB_YESNO)
{
    return MessageBoxA(GetDesktopWindow(), text, "Caption", style);
}

TEST(MessageBoxScript, AnswersInOrderAndKeepsWhatWasShown)
{
    MessageBoxScript boxes(Self());
    boxes.Answer(IDYES).Answer(IDNO);

    EXPECT_EQ(Ask("First?"), IDYES);
    EXPECT_EQ(Ask("Second?", MB_YESNO | MB_ICONHAND), IDNO);

    EXPECT_EQ(boxes.Shown()[0].owner, GetDesktopWindow());
    ExpectBoxes(boxes, {{nullptr, "First?", "Caption", MB_YESNO}, {nullptr, "Second?", "Caption", 0x14}});
}

TEST(MessageBoxScript, FailsForABoxWithoutAnswerAndAnswersHarmlessly)
{
    MessageBoxScript boxes(Self());
    EXPECT_NONFATAL_FAILURE(EXPECT_EQ(Ask("Format?", MB_YESNO), IDNO),
                            "unexpected message box: [Caption] \"Format?\"");
    EXPECT_NONFATAL_FAILURE(EXPECT_EQ(Ask("Done.", MB_OK), IDOK), "Done.");
    EXPECT_NONFATAL_FAILURE(EXPECT_EQ(Ask("Sure?", MB_OKCANCEL), IDCANCEL), "Sure?");
}

TEST(MessageBoxScript, FailsForAnAnswerThatNoBoxAskedFor)
{
    const auto leaveAnAnswer = [] {
        MessageBoxScript boxes(Self());
        boxes.Answer(IDYES);
    };
    EXPECT_NONFATAL_FAILURE(leaveAnAnswer(), "no message box asked for this answer: 6");
}

TEST(MessageBoxScript, AnswersBoxesOfOtherThreads)
{
    MessageBoxScript boxes(Self());
    boxes.Answer(IDOK);
    std::thread other([] { Ask("From afar.", MB_OK); });
    EXPECT_TRUE(boxes.WaitForBoxes(1));
    other.join();
    ExpectBoxes(boxes, {{nullptr, "From afar.", "Caption", MB_OK}});
}

TEST(MessageBoxScript, StopsWaitingForBoxesThatDoNotCome)
{
    const MessageBoxScript boxes(Self());
    EXPECT_FALSE(boxes.WaitForBoxes(1, std::chrono::milliseconds(1)));
}

TEST(MessageBoxScript, WritesBoxesIntoALogBesideOtherCalls)
{
    support::CallLog log;
    MessageBoxScript boxes(Self(), &log);
    boxes.Answer(IDOK);
    log.Add("before");
    Ask("Done.", MB_OK);
    EXPECT_EQ(log.Calls(), (std::vector<std::string>{"before", "MessageBoxA Done."}));
}

TEST(BoxExpectations, FailForOtherTextsOrStyles)
{
    static MessageBoxScript* boxes = nullptr;
    MessageBoxScript script(Self());
    boxes = &script.Answer(IDOK);
    Ask("Done.", MB_OK);
    EXPECT_NONFATAL_FAILURE(ExpectBoxes(*boxes, {{nullptr, "Done.", "Caption", MB_ICONHAND}}), "style 0x10");
    EXPECT_NONFATAL_FAILURE(ExpectBoxes(*boxes, {}), "Done.");
}

} // namespace
