// The reset of the board on the Remote Lumora page.
#include "applet/BoardPageTest.h"

namespace {

using support::boardLibrary;
using support::ScriptedService;
using support::ServiceState;

constexpr char question[] = "Resetting the Remote Lumora Management Board may result in the loss of a remote "
                            "connection.\n\nDo you want to continue?";
constexpr char unreachable[] = "Cannot communicate with the Remote Lumora Manager Board Driver.";

class BoardPageReset : public BoardPageTest
{
  protected:
    static support::ShownBox UnreachableBox()
    {
        return {nullptr, unreachable, "Management Agents Error", MB_ICONEXCLAMATION};
    }
    static support::ShownBox QuestionBox()
    {
        return {nullptr, question, "Norvale Management Agents", MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2};
    }
};

// --- the reset button

struct AgentState
{
    DWORD state;
    bool canReset;
};

class BoardPageAgentState : public BoardPageTest, public testing::WithParamInterface<AgentState>
{
};

TEST_P(BoardPageAgentState, DecidesWhetherTheBoardCanBeReset)
{
    m_services.Add("VtMgServ", ScriptedService{.states = {ServiceState(GetParam().state)}});
    Open();
    EXPECT_EQ(Page().IsEnabled(IDC_BOARD_RESET), GetParam().canReset);
    m_host.PressCancel();
}

INSTANTIATE_TEST_SUITE_P(
    States, BoardPageAgentState,
    testing::Values(AgentState{SERVICE_STOPPED, true}, AgentState{SERVICE_START_PENDING, false},
                    AgentState{SERVICE_STOP_PENDING, true}, AgentState{SERVICE_RUNNING, false},
                    AgentState{SERVICE_CONTINUE_PENDING, false}, AgentState{SERVICE_PAUSE_PENDING, false},
                    AgentState{SERVICE_PAUSED, false}));

TEST_F(BoardPageReset, IsPossibleWithoutTheServerAgent)
{
    Open();
    EXPECT_TRUE(Page().IsEnabled(IDC_BOARD_RESET));
    m_host.PressCancel();
}

TEST_F(BoardPageReset, IsImpossibleWhenTheServicesCannotBeAsked)
{
    m_services.Fail("OpenSCManagerA", "", ERROR_ACCESS_DENIED);
    Open();
    EXPECT_FALSE(Page().IsEnabled(IDC_BOARD_RESET));
    m_host.PressCancel();
}

// --- the reset

TEST_F(BoardPageReset, NoStopsItBeforeTheBoardIsAsked)
{
    Open();
    const int reads = m_board.reads;
    m_boxes.Answer(IDNO);
    Page().Click(IDC_BOARD_RESET);
    support::ExpectBoxes(m_boxes, {QuestionBox()});
    EXPECT_EQ(m_board.reads, reads);
    EXPECT_TRUE(m_board.written.empty());
    m_host.PressCancel();
}

TEST_F(BoardPageReset, AnsweredAtOnceKeepsTheMessageForASecond)
{
    m_board.record = {1, 3, 0, 0};
    Open();
    const int reads = m_board.reads;
    Reset();
    ExpectWritten({1, 3, 0, 1});
    EXPECT_EQ(m_board.reads, reads + 2);
    EXPECT_EQ(m_clock.Sleeps(), std::vector<DWORD>{1000});
    support::ExpectBoxes(m_boxes, {QuestionBox()});
    m_host.PressCancel();
}

TEST_F(BoardPageReset, ShowsThePleaseWaitDialogMeanwhile)
{
    Open();
    FailReadsOfTheReset(1);
    std::string shown;
    m_clock.OnSleep([&](DWORD) {
        const HWND dialog = FindWindowA(nullptr, "Management Agents");
        shown = dialog == nullptr ? "none" : support::WindowText(GetDlgItem(dialog, IDC_PLEASE_WAIT_TEXT));
    });
    Reset();
    EXPECT_EQ(shown, "Please wait...\n\nResetting the Remote Lumora Management Board.");
    EXPECT_EQ(FindWindowA(nullptr, "Management Agents"), nullptr);
    m_host.PressCancel();
}

TEST_F(BoardPageReset, IsNotBegunTwiceByASentMessage)
{
    Open();
    FailReadsOfTheReset(3);
    const HWND page = Page().Window();
    const HWND button = Page().Control(IDC_BOARD_RESET);
    std::size_t boxes = 0;
    m_clock.OnSleep([&](DWORD milliseconds) {
        if (milliseconds != 3000)
            return;
        if (m_clock.Sleeps().size() == 1)
            support::SendFromElsewhere(page, WM_COMMAND, IDC_BOARD_RESET, reinterpret_cast<LPARAM>(button));
        boxes = m_boxes.Shown().size();
    });
    m_boxes.Answer(IDYES).Answer(IDNO);
    Page().Click(IDC_BOARD_RESET);
    ASSERT_TRUE(m_boxes.WaitForBoxes(2));
    EXPECT_EQ(boxes, 1U);
    m_host.PressCancel();
}

class BoardPageResetWait : public BoardPageReset, public testing::WithParamInterface<std::size_t>
{
};

TEST_P(BoardPageResetWait, EndsWithTheReadThatSucceeds)
{
    Open();
    FailReadsOfTheReset(GetParam());
    m_board.record = {1, 1, 0, 0};
    Reset();
    EXPECT_EQ(m_clock.Sleeps(), std::vector<DWORD>(GetParam(), 3000));
    EXPECT_EQ(Checked(), (std::array{true, true, false}));
    support::ExpectBoxes(m_boxes, {QuestionBox()});
    m_host.PressCancel();
}

INSTANTIATE_TEST_SUITE_P(FailedReads, BoardPageResetWait, testing::Values(2U, 9U));

TEST_F(BoardPageReset, ReportsABoardThatNeverComesBack)
{
    Open();
    FailReadsOfTheReset(10);
    m_boxes.Answer(IDYES).Answer(IDOK);
    Page().Click(IDC_BOARD_RESET);
    EXPECT_EQ(m_clock.Sleeps(), std::vector<DWORD>(10, 3000));
    support::ExpectBoxes(m_boxes, {QuestionBox(), UnreachableBox()});
    m_host.PressCancel();
}

TEST_F(BoardPageReset, ReportsAFailedReadAndWritesNothing)
{
    Open();
    m_board.readStatuses = {notReady};
    m_boxes.Answer(IDYES).Answer(IDOK);
    Page().Click(IDC_BOARD_RESET);
    support::ExpectBoxes(m_boxes, {QuestionBox(), UnreachableBox()});
    EXPECT_TRUE(m_board.written.empty());
    m_host.PressCancel();
}

TEST_F(BoardPageReset, ReportsAFailedWrite)
{
    Open();
    const int reads = m_board.reads;
    m_board.writeStatuses = {notReady};
    m_boxes.Answer(IDYES).Answer(IDOK);
    Page().Click(IDC_BOARD_RESET);
    support::ExpectBoxes(m_boxes, {QuestionBox(), UnreachableBox()});
    EXPECT_EQ(m_board.reads, reads + 1);
    m_host.PressCancel();
}

class BoardPageResetEntry : public BoardPageReset, public testing::WithParamInterface<const char*>
{
};

TEST_P(BoardPageResetEntry, IsReportedWhenItIsMissing)
{
    Open();
    m_libraries.SetEntry<void()>(boardLibrary, GetParam(), nullptr);
    m_boxes.Answer(IDYES).Answer(IDOK);
    Page().Click(IDC_BOARD_RESET);
    support::ExpectBoxes(m_boxes, {QuestionBox(), UnreachableBox()});
    EXPECT_TRUE(m_board.written.empty());
    EXPECT_EQ(m_libraries.Held(boardLibrary), 0);
    m_host.PressCancel();
}

INSTANTIATE_TEST_SUITE_P(Entries, BoardPageResetEntry, testing::Values("Rb4CpReadData", "Rb4CpWriteData"));

TEST_F(BoardPageReset, ReportsAMissingLibrary)
{
    Open();
    m_libraries.Remove(boardLibrary);
    m_boxes.Answer(IDYES).Answer(IDOK);
    Page().Click(IDC_BOARD_RESET);
    support::ExpectBoxes(m_boxes, {QuestionBox(), UnreachableBox()});
    m_host.PressCancel();
}

TEST_F(BoardPageReset, ForgetsTheUsersChanges)
{
    m_board.record = {0, 0, 0, 0};
    Open();
    Page().Check(IDC_BOARD_BATTERY);
    Page().Check(IDC_BOARD_REMOTE_ALERTING);
    Reset();
    EXPECT_EQ(Checked(), (std::array{false, false, false}));
    m_board.written.clear();
    m_host.PressOk();
    EXPECT_TRUE(m_board.written.empty());
}

TEST_F(BoardPageReset, AFailureKeepsTheUsersChanges)
{
    Open();
    Page().Check(IDC_BOARD_REMOTE_ALERTING);
    m_board.readStatuses = {notReady};
    m_boxes.Answer(IDYES).Answer(IDOK);
    Page().Click(IDC_BOARD_RESET);
    m_host.PressOk();
    ExpectWritten({0, 1, 0, 0});
}

TEST_F(BoardPageReset, SavesALaterChangeWithTheBoardsOtherSettings)
{
    Open();
    m_board.record = {1, 1, 0, 0};
    Reset();
    Page().Check(IDC_BOARD_SERVER_RESET);
    m_host.PressOk();
    ExpectWritten({1, 1, 1, 0});
}

TEST_F(BoardPageReset, DisablesTheBoxOfAMissingBatterySetting)
{
    m_board.record = {1, 0, 0, 0};
    Open();
    m_board.record = {2, 1, 0, 0};
    Reset();
    EXPECT_FALSE(Page().IsEnabled(IDC_BOARD_BATTERY));
    EXPECT_EQ(Checked(), (std::array{true, true, false}));
    Page().Check(IDC_BOARD_SERVER_RESET);
    m_host.PressOk();
    ExpectWritten({1, 1, 1, 0});
}

TEST_F(BoardPageReset, ABatterySettingThatAppearsIsShown)
{
    m_board.record = {2, 0, 0, 0};
    Open();
    m_board.record = {1, 0, 0, 0};
    Reset();
    EXPECT_TRUE(Page().IsEnabled(IDC_BOARD_BATTERY));
    EXPECT_EQ(Checked(), (std::array{true, false, false}));
    Page().Check(IDC_BOARD_SERVER_RESET);
    m_host.PressOk();
    ExpectWritten({1, 0, 1, 0});
}

} // namespace
