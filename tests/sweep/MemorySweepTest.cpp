// Lets every single allocation of the applet fail, in everything that the applet does: the user learns of it
// unless all is as it should be. A sample runs each time; every allocation with VTN_THOROUGH in the
// environment.
#include "resources/resource.h"
#include "sweep/Operation.h"
#include "sweep/Sample.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <memory>
#include <numeric>

namespace {

using namespace sweep;

constexpr std::size_t allocationSampleSize = 1; // allocations of each operation

constexpr std::size_t allAllocations = std::numeric_limits<std::size_t>::max();

std::string TextOf(const Subject& subject, UINT id)
{
    std::array<char, 512> text{};
    LoadStringA(subject.host.Module(), id, text.data(), static_cast<int>(text.size()));
    return text.data();
}

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

    // Lets `count` allocations fail, from each on.
    void Sweep(std::size_t count)
    {
        const Operation& operation = GetParam();
        const Outcome reference = Perform(*s_subject, operation, {}, true);
        ASSERT_EQ(reference.thrown, "");
        std::vector<std::size_t> numbers(reference.allocations);
        std::iota(numbers.begin(), numbers.end(), std::size_t{1});
        const std::vector<std::size_t> sample = Sampled(numbers, allocationSampleSize);
        for (const std::size_t number : sample) {
            SCOPED_TRACE(std::string(operation.name) + ", allocation " + std::to_string(number));
            Check(reference, Perform(*s_subject, operation, {.allocation = number, .allocations = count}));
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
        EXPECT_TRUE(found.boxes.back() == TextOf(*s_subject, IDS_OUT_OF_MEMORY) ||
                    found.boxes.back() == TextOf(*s_subject, IDS_SCRIPT_UPDATE_FAILED))
            << testing::PrintToString(found.boxes);
        for (const auto& [item, content] : found.after) {
            const auto seen = reference.seen.find(item);
            ASSERT_NE(seen, reference.seen.end()) << "made: " << item;
            EXPECT_TRUE(seen->second.contains(content) || IsEditedInSilence(item))
                << item << " is now: " << content;
        }
        for (const auto& [item, contents] : reference.seen)
            EXPECT_TRUE(found.after.contains(item) || contents.contains("")) << "gone: " << item;
        Picture left = GetParam().settles ? Difference(reference.after, found.settled) : Picture();
        // Flags that have reached the first agent show as wished, and a second try leaves them alone.
        std::erase_if(left, [](const auto& entry) { return entry.first.ends_with(", SetsEnabled"); });
        EXPECT_EQ(left, Picture()) << "after a second try";
    }

    // The lines of the login script are edited one by one, and the script is saved as far as that went.
    [[nodiscard]] bool IsEditedInSilence(const std::string& item) const
    {
        return item.ends_with("LOGIN.BAT");
    }

    static inline std::unique_ptr<Subject> s_subject;
};

TEST_P(MemorySweep, ReportsOneMissingBlock)
{
    Sweep(1);
}

TEST_P(MemorySweep, ReportsMemoryThatStaysMissing)
{
    Sweep(allAllocations);
}

// A thread's first exception needs more memory than those that follow.
TEST(FirstException, IsReportedWithoutMemory)
{
    Subject subject;
    const Outcome found =
        Perform(subject, Operations().front(), {.allocation = 1, .allocations = allAllocations});
    EXPECT_EQ(found.thrown, "");
    EXPECT_EQ(found.boxes, std::vector<std::string>{TextOf(subject, IDS_OUT_OF_MEMORY)});
}

INSTANTIATE_TEST_SUITE_P(Operations, MemorySweep, testing::ValuesIn(Operations().begin(), Operations().end()),
                         NameOfOperation);

} // namespace
