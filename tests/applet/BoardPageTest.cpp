// The Remote Lumora page through its window: the board's settings and their saving.
#include "applet/BoardPageTest.h"

namespace {

using support::boardLibrary;

using BoardPageShow = BoardPageTest;
using BoardPageSave = BoardPageTest;

// --- whether it is there

TEST_F(BoardPageShow, IsOfferedWhenTheBoardAnswers)
{
    EXPECT_TRUE(Offered());
}

TEST_F(BoardPageShow, IsNotOfferedWithoutTheLibrary)
{
    m_libraries.Remove(boardLibrary);
    EXPECT_FALSE(Offered());
}

TEST_F(BoardPageShow, IsNotOfferedWithoutTheReadEntry)
{
    m_libraries.SetEntry<void()>(boardLibrary, "Rb4CpReadData", nullptr);
    EXPECT_FALSE(Offered());
    EXPECT_EQ(m_libraries.Held(boardLibrary), 0);
}

TEST_F(BoardPageShow, IsNotOfferedWhenTheReadFails)
{
    m_board.readStatuses = {notReady};
    EXPECT_FALSE(Offered());
}

// --- what it shows

TEST_F(BoardPageShow, ShowsWhatTheBoardHolds)
{
    m_board.record = {1, 0, 7, 0};
    Open();
    EXPECT_EQ(Checked(), (std::array{true, false, true}));
    EXPECT_TRUE(Page().IsEnabled(IDC_BOARD_BATTERY));
    m_host.PressCancel();
}

TEST_F(BoardPageShow, ABatteryThatIsOffCanBeSwitchedOn)
{
    m_board.record = {0, 1, 0, 0};
    Open();
    EXPECT_EQ(Checked(), (std::array{false, true, false}));
    EXPECT_TRUE(Page().IsEnabled(IDC_BOARD_BATTERY));
    m_host.PressCancel();
}

TEST_F(BoardPageShow, ABoardWithoutABatterySettingDisablesItsBox)
{
    m_board.record = {2, 1, 1, 0};
    Open();
    EXPECT_EQ(Checked(), (std::array{false, true, true}));
    EXPECT_FALSE(Page().IsEnabled(IDC_BOARD_BATTERY));
    m_host.PressCancel();
}

TEST_F(BoardPageShow, AFailedReadLeavesTheBoxesClear)
{
    m_board.record = {1, 1, 1, 0};
    m_board.readStatuses = {ERROR_SUCCESS, notReady};
    Open();
    EXPECT_EQ(Checked(), (std::array{false, false, false}));
    m_host.PressCancel();
}

TEST_F(BoardPageShow, ShowsItsHelpTopic)
{
    support::HelpRecorder help(m_host.Module());
    Open();
    m_host.Sheet().Click(IDHELP);
    ASSERT_EQ(help.Requests().size(), 1U);
    EXPECT_EQ(help.Requests()[0].topic, "html\\vtnm6cmd.htm");
    m_host.PressCancel();
}

// --- saving

TEST_F(BoardPageSave, WritesTheBoxesWithoutAResetRequest)
{
    m_board.record = {1, 0, 5, 0};
    Open();
    Page().Check(IDC_BOARD_REMOTE_ALERTING);
    m_host.PressOk();
    ExpectWritten({1, 1, 1, 0});
}

TEST_F(BoardPageSave, AnUnchangedPageWritesNothing)
{
    m_board.record = {1, 1, 1, 0};
    Open();
    m_host.PressOk();
    EXPECT_TRUE(m_board.written.empty());
}

class BoardPageBox : public BoardPageTest, public testing::WithParamInterface<int>
{
};

TEST_P(BoardPageBox, CountsAsAChangeWhenItIsClicked)
{
    Open();
    Page().Click(GetParam());
    m_host.PressOk();
    EXPECT_FALSE(m_board.written.empty());
}

INSTANTIATE_TEST_SUITE_P(Boxes, BoardPageBox,
                         testing::Values(IDC_BOARD_BATTERY, IDC_BOARD_REMOTE_ALERTING,
                                         IDC_BOARD_SERVER_RESET));

TEST_F(BoardPageSave, WritesBatteryOffWithoutABatterySetting)
{
    m_board.record = {2, 0, 0, 0};
    Open();
    Page().Check(IDC_BOARD_SERVER_RESET);
    m_host.PressOk();
    ExpectWritten({0, 0, 1, 0});
}

TEST_F(BoardPageSave, AMissingWriteEntryIsNotReported)
{
    m_libraries.SetEntry<void()>(boardLibrary, "Rb4CpWriteData", nullptr);
    Open();
    Page().Check(IDC_BOARD_REMOTE_ALERTING);
    const int loads = m_libraries.Loads(boardLibrary);
    EXPECT_EQ(m_host.PressOk(), 0);
    EXPECT_GT(m_libraries.Loads(boardLibrary), loads);
    EXPECT_EQ(m_libraries.Held(boardLibrary), 0);
}

TEST_F(BoardPageSave, ALibraryThatIsGoneIsNotReported)
{
    Open();
    Page().Check(IDC_BOARD_REMOTE_ALERTING);
    m_libraries.Remove(boardLibrary);
    EXPECT_EQ(m_host.PressOk(), 0);
    EXPECT_TRUE(m_board.written.empty());
}

TEST_F(BoardPageSave, ARefusedWriteIsNotReported)
{
    m_board.writeStatuses = {notReady, notReady};
    Open();
    Page().Check(IDC_BOARD_REMOTE_ALERTING);
    EXPECT_EQ(m_host.PressOk(), 0);
}

} // namespace
