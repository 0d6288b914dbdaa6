// Lets every single allocation of the applet fail, in everything that the applet does: the user learns of it
// unless all is as it should be. A sample runs each time; every allocation with VTN_THOROUGH in the
// environment.
#include "resources/resource.h"
#include "sweep/Operation.h"
#include "sweep/Sample.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <numeric>

namespace {

using namespace sweep;

constexpr std::size_t allocationSampleSize = 1; // allocations of each operation

class MemorySweep : public testing::TestWithParam<Operation>
{
  protected:
    // One applet for all. What the first opening and the first exception of a thread bring along stays.
    static void SetUpTestSuite()
    {
        s_subject = std::make_unique<Subject>();
        (void)Perform(*s_subject, Operations().front(), {.allocation = 1});
    }
    static void TearDownTestSuite() { s_subject.reset(); }

    void Sweep()
    {
        const Operation& operation = GetParam();
        const Outcome reference = Perform(*s_subject, operation, {}, true);
        ASSERT_EQ(reference.thrown, "");
        std::vector<std::size_t> numbers(reference.allocations);
        std::iota(numbers.begin(), numbers.end(), std::size_t{1});
        const std::vector<std::size_t> sample = Sampled(numbers, allocationSampleSize);
        for (const std::size_t number : sample) {
            SCOPED_TRACE(std::string(operation.name) + ", allocation " + std::to_string(number));
            Check(reference, Perform(*s_subject, operation, {.allocation = number}));
        }
        std::printf("%s: %zu allocations, %zu failed\n", operation.name, numbers.size(), sample.size());
    }

  private:
    void Check(const Outcome& reference, const Outcome& found) const
    {
        EXPECT_EQ(found.thrown, "");
        EXPECT_EQ(found.windowsLeft, 0U);
        EXPECT_EQ(found.leftOpen, std::vector<std::string>());
        EXPECT_LE(found.blocksLeft, reference.blocksLeft);
        if (found.boxes == reference.boxes)
            CheckThatNothingIsMissing(reference, found);
        else
            CheckThatNothingIsMadeUp(reference, found);
    }

    // Without a word nothing may be missing: not from the machine, nor from what the user sees.
    void CheckThatNothingIsMissing(const Outcome& reference, const Outcome& found) const
    {
        EXPECT_EQ(found.shown, reference.shown);
        for (const auto& [item, content] : Difference(reference.after, found.after))
            EXPECT_TRUE(IsEditedInSilence(item)) << item << " is now: " << content;
    }

    // The message says what went wrong, and what was not done yet is as it was.
    void CheckThatNothingIsMadeUp(const Outcome& reference, const Outcome& found) const
    {
        ASSERT_FALSE(found.boxes.empty());
        EXPECT_TRUE(found.boxes.back() == Text(IDS_OUT_OF_MEMORY) ||
                    found.boxes.back() == Text(IDS_SCRIPT_UPDATE_FAILED))
            << testing::PrintToString(found.boxes);
        for (const auto& [item, content] : found.after) {
            const auto seen = reference.seen.find(item);
            ASSERT_NE(seen, reference.seen.end()) << "made: " << item;
            EXPECT_TRUE(seen->second.contains(content) || IsEditedInSilence(item))
                << item << " is now: " << content;
        }
        for (const auto& [item, contents] : reference.seen)
            EXPECT_TRUE(found.after.contains(item) || contents.contains("")) << "gone: " << item;
        const Picture left = GetParam().settles ? Difference(reference.after, found.settled) : Picture();
        EXPECT_EQ(left, Picture()) << "after a second try";
    }

    // The lines of the login script are edited one by one, and the script is saved as far as that went.
    [[nodiscard]] bool IsEditedInSilence(const std::string& item) const
    {
        return item.ends_with("LOGIN.BAT");
    }

    [[nodiscard]] std::string Text(UINT id) const
    {
        std::array<char, 512> text{};
        LoadStringA(s_subject->host.Module(), id, text.data(), static_cast<int>(text.size()));
        return text.data();
    }

    static inline std::unique_ptr<Subject> s_subject;
};

TEST_P(MemorySweep, ReportsOneMissingBlock)
{
    Sweep();
}

INSTANTIATE_TEST_SUITE_P(Operations, MemorySweep, testing::ValuesIn(Operations().begin(), Operations().end()),
                         NameOfOperation);

} // namespace
