// The deletion of the thresholds, and what counts as their being cleared.
#include "pages/core/Thresholds.h"

#include "imports/ImportHook.h"
#include "support/TestRegistry.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

constexpr ThresholdCodes noErrors{};

class Thresholds : public testing::Test
{
  protected:
    Thresholds() { m_agents.Delete(); }

    static support::TestKey Key(std::size_t index) { return support::TestKey(thresholdKeys[index]); }

    support::SavedKey m_agents{"SYSTEM\\VortanPermanent"};
};

TEST_F(Thresholds, AreDeletedWithTheirValues)
{
    for (std::size_t i = 0; i < thresholdKeyCount; ++i)
        Key(i).SetDword("Rising", 90);
    EXPECT_EQ(DeleteThresholds(), noErrors);
    for (std::size_t i = 0; i < thresholdKeyCount; ++i)
        EXPECT_FALSE(Key(i).Exists()) << thresholdKeys[i];
}

TEST_F(Thresholds, AreFiveKeysOfTheAgents)
{
    for (const char* key : {"Threshold\\AlarmTable", "Host\\OsPerfTh\\Cache", "Host\\OsPerfTh\\LogicalDisk",
                            "Host\\OsPerfTh\\PagingFile", "Host\\OsPerfTh\\Processor"})
        m_agents.Subkey(key).Create();
    EXPECT_EQ(DeleteThresholds(), noErrors);
    EXPECT_EQ(m_agents.Subkey("Threshold").SubkeyNames(), std::vector<std::string>());
    EXPECT_EQ(m_agents.Subkey("Host\\OsPerfTh").SubkeyNames(), std::vector<std::string>());
}

TEST_F(Thresholds, LeaveTheKeysBesideThemAlone)
{
    Key(1).Create();
    const support::TestKey other = m_agents.Subkey("Host\\OsPerfTh\\Network");
    other.SetDword("Rising", 90);
    EXPECT_EQ(DeleteThresholds(), noErrors);
    support::ExpectDword(other, "Rising", 90);
}

TEST_F(Thresholds, MayBeAbsent)
{
    EXPECT_EQ(DeleteThresholds(), noErrors); // the keys above them, too
    m_agents.Subkey("Threshold").Create();
    m_agents.Subkey("Host\\OsPerfTh").Create();
    EXPECT_EQ(DeleteThresholds(), noErrors);
}

TEST_F(Thresholds, WithSubkeysAreRefusedAndStay)
{
    Key(2).Subkey("C:").Create();
    Key(3).Create();
    const ThresholdCodes codes = DeleteThresholds();
    EXPECT_EQ(codes, (ThresholdCodes{0, 0, ERROR_ACCESS_DENIED, 0, 0}));
    EXPECT_TRUE(Key(2).Exists());
    EXPECT_FALSE(Key(3).Exists());
}

// Deletes while the system answers for each key as the test says.
ThresholdCodes DeleteWithAnswers(const ThresholdCodes& answers)
{
    std::size_t count = 0;
    auto hook = support::HookImport<decltype(RegDeleteKeyA)>(GetModuleHandleA(nullptr), "RegDeleteKeyA",
                                                             [&](auto, HKEY root, LPCSTR key) {
                                                                 EXPECT_EQ(root, HKEY_LOCAL_MACHINE);
                                                                 EXPECT_STREQ(key, thresholdKeys.at(count));
                                                                 return answers.at(count++);
                                                             });
    const ThresholdCodes codes = DeleteThresholds();
    EXPECT_EQ(count, thresholdKeyCount);
    return codes;
}

TEST(ThresholdDeletion, ReportsErrorsButAnAbsentKeyOrPath)
{
    EXPECT_EQ(DeleteWithAnswers({0, 2, 3, 5, 6}), (ThresholdCodes{0, 0, 0, 5, 6}));
    EXPECT_EQ(DeleteWithAnswers({1018, 3, 2, 0, 1}), (ThresholdCodes{1018, 0, 0, 0, 1}));
}

// --- the report

// Bit 0 stands for the first key, and so on: which of the five deletions are refused.
class RefusedDeletions : public testing::TestWithParam<unsigned>
{
  protected:
    static bool IsRefused(unsigned key) { return (GetParam() >> key & 1) != 0; }

    static ThresholdCodes Answers()
    {
        ThresholdCodes answers{};
        for (unsigned key = 0; key < thresholdKeyCount; ++key)
            answers[key] = IsRefused(key) ? ERROR_ACCESS_DENIED : ERROR_SUCCESS;
        return answers;
    }
};

// What the chain of comparisons comes to when every code is 0 or 5: a refused last key always passes; else
// the fourth must not be refused, and either the third is or the first two have fared alike.
TEST_P(RefusedDeletions, AreReportedByTheChainedRule)
{
    const bool expected = IsRefused(4) || (!IsRefused(3) && (IsRefused(2) || IsRefused(0) == IsRefused(1)));
    EXPECT_EQ(AreThresholdsCleared(DeleteWithAnswers(Answers())), expected);
}

INSTANTIATE_TEST_SUITE_P(Combinations, RefusedDeletions, testing::Range(0U, 32U));

TEST(ThresholdReport, PassesWithTheThirdOrFifthErrorAlone)
{
    EXPECT_TRUE(AreThresholdsCleared(noErrors));
    EXPECT_TRUE(AreThresholdsCleared({0, 0, 5, 0, 0}));
    EXPECT_TRUE(AreThresholdsCleared({0, 0, 0, 0, 5}));
}

TEST(ThresholdReport, FailsWithTheFirstSecondOrFourthAlone)
{
    EXPECT_FALSE(AreThresholdsCleared({5, 0, 0, 0, 0}));
    EXPECT_FALSE(AreThresholdsCleared({0, 5, 0, 0, 0}));
    EXPECT_FALSE(AreThresholdsCleared({0, 0, 0, 5, 0}));
}

TEST(ThresholdReport, ComparesACodeOfOneLikeTheChain)
{
    EXPECT_FALSE(AreThresholdsCleared({0, 0, 1, 0, 0}));
    EXPECT_FALSE(AreThresholdsCleared({0, 0, 0, 0, 1}));
    EXPECT_TRUE(AreThresholdsCleared({1, 0, 0, 1, 0}));
    EXPECT_FALSE(AreThresholdsCleared({1, 0, 0, 1, 1}));
}

} // namespace
