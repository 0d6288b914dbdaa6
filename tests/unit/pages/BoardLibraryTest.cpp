// Calls of the board library and the reset of the board.
#include "pages/core/BoardLibrary.h"

#include "machine/BoardScript.h"
#include "support/FakeClock.h"
#include "support/ThisProgram.h"

#include <gtest/gtest.h>

namespace {

using support::boardLibrary;

using support::thisProgram;

constexpr DWORD notReady = ERROR_NOT_READY;

class Board : public testing::Test
{
  protected:
    Board() { m_board.record = {1, 2, 0, 0}; }

    // Statuses of reads that fail `count` times.
    static std::deque<DWORD> Failing(std::size_t count) { return std::deque<DWORD>(count, notReady); }

    DWORD Reset() { return ResetBoard(m_data); }

    support::LibraryScript m_libraries{thisProgram};
    support::BoardScript m_board{m_libraries};
    support::FakeClock m_clock{thisProgram};
    BoardData m_data{};
};

using BoardCall = Board;
using BoardReset = Board;

TEST_F(BoardCall, ReadsTheRecord)
{
    EXPECT_EQ(ReadBoardData(m_data), 0U);
    EXPECT_EQ(m_data.battery, 1U);
    EXPECT_EQ(m_data.remoteAlerting, 2U);
}

TEST_F(BoardCall, SendsTheRecord)
{
    m_data = {1, 0, 1, 0};
    EXPECT_EQ(WriteBoardData(m_data), 0U);
    ASSERT_EQ(m_board.written.size(), 1U);
    EXPECT_EQ(m_board.written[0].serverResetPending, 1U);
}

TEST_F(BoardCall, GivesTheLibrarysStatus)
{
    m_board.readStatuses = {31};
    m_board.writeStatuses = {32};
    EXPECT_EQ(ReadBoardData(m_data), 31U);
    EXPECT_EQ(WriteBoardData(m_data), 32U);
}

TEST_F(BoardCall, LoadsAndReleasesTheSystemsLibrary)
{
    EXPECT_EQ(ReadBoardData(m_data), 0U);
    EXPECT_STRCASEEQ(m_libraries.Path(boardLibrary).c_str(), "C:\\windows\\system32\\RB4USER.DLL");
    EXPECT_EQ(m_libraries.Loads(boardLibrary), 1);
    EXPECT_EQ(m_libraries.Held(boardLibrary), 0);
}

TEST_F(BoardCall, WithoutTheLibraryThereIsNoBoard)
{
    m_libraries.Remove(boardLibrary);
    EXPECT_EQ(ReadBoardData(m_data), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(WriteBoardData(m_data), DWORD{ERROR_FILE_NOT_FOUND});
}

TEST_F(BoardCall, WithoutOneEntryTheOtherWorks)
{
    m_libraries.SetEntry<void()>(boardLibrary, "Rb4CpWriteData", nullptr);
    EXPECT_EQ(ReadBoardData(m_data), 0U);
    EXPECT_EQ(WriteBoardData(m_data), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(m_libraries.Held(boardLibrary), 0);
}

TEST_F(BoardCall, WithoutBothEntriesThereIsNoBoard)
{
    m_libraries.Add(boardLibrary);
    EXPECT_EQ(ReadBoardData(m_data), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(WriteBoardData(m_data), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(m_libraries.Held(boardLibrary), 0);
}

TEST_F(BoardReset, AsksWithTheSettingsThatTheBoardHolds)
{
    EXPECT_EQ(Reset(), 0U);
    ASSERT_EQ(m_board.written.size(), 1U);
    EXPECT_EQ(m_board.written[0].battery, 1U);
    EXPECT_EQ(m_board.written[0].remoteAlerting, 2U);
    EXPECT_EQ(m_board.written[0].serverResetPending, 0U);
    EXPECT_EQ(m_board.written[0].resetRequest, 1U);
}

TEST_F(BoardReset, ReadsAnAnsweringBoardOnceWithoutAPause)
{
    EXPECT_EQ(Reset(), 0U);
    EXPECT_EQ(m_board.reads, 2);
    EXPECT_TRUE(m_clock.Sleeps().empty());
    EXPECT_EQ(m_data.resetRequest, 0U);
}

TEST_F(BoardReset, AFailedFirstReadWritesNothing)
{
    m_board.readStatuses = {notReady};
    EXPECT_EQ(Reset(), notReady);
    EXPECT_TRUE(m_board.written.empty());
    EXPECT_EQ(m_board.reads, 1);
}

TEST_F(BoardReset, ARefusedRequestIsNotWaitedFor)
{
    m_board.writeStatuses = {notReady};
    EXPECT_EQ(Reset(), notReady);
    EXPECT_EQ(m_board.reads, 1);
    EXPECT_TRUE(m_clock.Sleeps().empty());
}

class BoardResetWait : public Board, public testing::WithParamInterface<std::size_t>
{
};

TEST_P(BoardResetWait, PausesAfterEachReadThatFails)
{
    m_board.readStatuses = Failing(GetParam());
    m_board.readStatuses.push_front(ERROR_SUCCESS);
    EXPECT_EQ(Reset(), 0U);
    EXPECT_EQ(m_clock.Sleeps(), std::vector<DWORD>(GetParam(), 3000));
}

INSTANTIATE_TEST_SUITE_P(FailedReads, BoardResetWait, testing::Values(1U, 2U, 9U));

TEST_F(BoardReset, GivesUpAfterTenReadsAndThirtySeconds)
{
    m_board.readStatuses = Failing(10);
    m_board.readStatuses.push_front(ERROR_SUCCESS);
    EXPECT_EQ(Reset(), notReady);
    EXPECT_EQ(m_board.reads, 11);
    EXPECT_EQ(m_clock.Sleeps(), std::vector<DWORD>(10, 3000));
}

} // namespace
