// Looking for HTML Help while each call of that fails. The applet looks once for each time that it is loaded,
// so every case loads it anew; whoever asks for help and gets none must not notice more than that.
#include "machine/SweepMachine.h"
#include "machine/WatchedImports.h"
#include "resources/resource.h"
#include "support/HelpRecorder.h"

#include <cstdio>

namespace {

using namespace sweep;

// What came of pressing Help: the calls up to the return, and how often help was shown.
struct Answer
{
    std::vector<std::string> calls;
    std::size_t shown = 0;
};

// Loads the applet and presses Help while call number `failing` (from 1) fails; none for 0.
Answer AskForHelp(std::size_t failing, DWORD code)
{
    Subject subject;
    const Settings settings(subject);
    CallRecorder recorder;
    const StandIns standIns(subject.host.Module(), settings, recorder);
    const support::HelpRecorder help(subject.host.Module());
    const WatchedImports watches(subject.host.Module(), recorder);
    subject.host.Open();
    recorder.Arm(failing, code);
    subject.host.Sheet().Click(IDHELP);
    recorder.Disarm();
    Answer answer{{}, help.Requests().size()};
    for (const Call& call : recorder.Calls())
        answer.calls.push_back(call.function);
    subject.host.PressCancel();
    EXPECT_EQ(standIns.UserTexts(), std::vector<std::string>());
    EXPECT_TRUE(subject.host.Thread().Windows().empty());
    return answer;
}

// Only the entry has no other place to look for it.
TEST(HelpFault, FallsBackToTheUsualLibrary)
{
    const Answer reference = AskForHelp(0, 0);
    ASSERT_EQ(reference.shown, 1U);
    const auto codes = WatchedImports::Codes();
    std::size_t tried = 0;
    for (std::size_t i = 0; i < reference.calls.size(); ++i) {
        for (const DWORD code : codes.at(reference.calls[i])) {
            SCOPED_TRACE(reference.calls[i] + " fails with " + std::to_string(code));
            const Answer answer = AskForHelp(i + 1, code);
            ASSERT_GT(answer.calls.size(), i);
            EXPECT_EQ(answer.calls[i], reference.calls[i]);
            EXPECT_EQ(answer.shown, reference.calls[i] == "GetProcAddress" ? 0U : 1U);
            ++tried;
        }
    }
    std::printf("ask for help: %zu calls, failed in %zu ways\n", reference.calls.size(), tried);
}

} // namespace
