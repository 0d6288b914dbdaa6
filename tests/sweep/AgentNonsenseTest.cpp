// Libraries that other programs install, and that answer what makes no sense: counts below zero, names
// without an end, nothing at all. The sheet must show its pages and close all the same.
#include "machine/SweepMachine.h"
#include "resources/resource.h"

#include <cstdio>
#include <cstdlib>

namespace {

using namespace sweep;

// What GetTaskList answers next: the count it claims, and how many records there are, each full of one
// character.
struct TaskAnswer
{
    std::uint32_t count;
    std::size_t records;
    char character;
};

const TaskAnswer taskAnswers[] = {
    {0xFFFFFFFF, 1, 'x'}, // minus one
    {0x80000000, 2, 'x'}, {0xFFFFFFFF, 0, 0}, {3, 0, 0}, {0, 2, 'x'}, {2, 2, '\xFF'}, {2, 2, '\t'}, {1, 1, 0},
};
TaskAnswer taskAnswer{};

TaskRecord* AnswerTasks(std::uint32_t* count)
{
    *count = taskAnswer.count;
    if (taskAnswer.records == 0)
        return nullptr;
    auto* const records = static_cast<TaskRecord*>(std::calloc(taskAnswer.records, sizeof(TaskRecord)));
    for (std::size_t i = 0; i < taskAnswer.records; ++i)
        records[i].name.fill(taskAnswer.character);
    return records;
}

// What the board answers next, and what it leaves in the record.
struct BoardAnswer
{
    DWORD status;
    DWORD content;
};

const BoardAnswer boardAnswers[] = {{0, 0},          {0, 2},          {0, 0xFFFFFFFF},
                                    {0xFFFFFFFF, 1}, {0x80000000, 0}, {1, 7}};
BoardAnswer boardAnswer{};

DWORD AnswerBoard(BoardData* data)
{
    *data = {boardAnswer.content, boardAnswer.content, boardAnswer.content, boardAnswer.content};
    return boardAnswer.status;
}

DWORD trapAnswer = 0;

DWORD AnswerTrap(const char* /*text*/)
{
    return trapAnswer;
}

class AgentNonsense : public testing::Test
{
  protected:
    // Shows the page, and closes the sheet with OK.
    support::DialogDriver Open(const char* tab)
    {
        m_subject.host.Open();
        return m_subject.host.Page(tab);
    }
    void Close()
    {
        m_subject.host.PressOk();
        EXPECT_TRUE(m_subject.host.Thread().Windows().empty());
    }

    Subject m_subject;
    Settings m_settings{m_subject};
    CallRecorder m_recorder;
    StandIns m_standIns{m_subject.host.Module(), m_settings, m_recorder};
};

// Names as full as their records come back as what they are; a count that cannot be gives no name at all.
TEST_F(AgentNonsense, ProcessListsThatCannotBeAddNoNames)
{
    m_standIns.Libraries().SetEntry(support::hostUtilityLibrary, "GetTaskList", &AnswerTasks);
    for (const TaskAnswer& answer : taskAnswers) {
        SCOPED_TRACE(testing::Message() << answer.count << " claimed, " << answer.records << " there");
        taskAnswer = answer;
        const support::DialogDriver page = Open("Process Monitor");
        const bool isPossible = answer.records != 0 && answer.count <= answer.records;
        const std::size_t names = isPossible && answer.count != 0 ? 1 : 0; // all alike
        EXPECT_EQ(page.Items(IDC_PROCMON_LIST).size(), 1 + names);
        Close();
    }
    std::printf("process lists tried: %zu\n", std::size(taskAnswers));
}

TEST_F(AgentNonsense, TheBoardIsShownOnSuccessOnly)
{
    m_standIns.Libraries().SetEntry(support::boardLibrary, "Rb4CpReadData", &AnswerBoard);
    for (const BoardAnswer& answer : boardAnswers) {
        SCOPED_TRACE(testing::Message() << "status " << answer.status << ", content " << answer.content);
        boardAnswer = answer;
        m_subject.host.Open();
        const std::vector<std::string> tabs = m_subject.host.Tabs();
        EXPECT_EQ(tabs.back() == "Remote Lumora", answer.status == ERROR_SUCCESS);
        if (answer.status == ERROR_SUCCESS) {
            const support::DialogDriver page = m_subject.host.Page("Remote Lumora");
            EXPECT_EQ(page.IsEnabled(IDC_BOARD_BATTERY), answer.content <= 1);
            EXPECT_EQ(page.IsChecked(IDC_BOARD_REMOTE_ALERTING), answer.content != 0);
        }
        Close();
    }
    std::printf("board answers tried: %zu\n", std::size(boardAnswers));
}

TEST_F(AgentNonsense, ATrapIsSentOnZeroOnly)
{
    m_standIns.Libraries().SetEntry("VTNMHOST.DLL", "sendVtnUserTrap", &AnswerTrap);
    for (const DWORD status : {DWORD{0}, DWORD{1}, DWORD{0x80000000}, DWORD{0xFFFFFFFF}}) {
        SCOPED_TRACE(status);
        trapAnswer = status;
        Open("SNMP Settings").Click(IDC_SNMP_TEST_TRAP);
        const std::string expected =
            status == 0 ? "The following trap has been sent:" : "The trap could not be generated.";
        EXPECT_TRUE(m_standIns.UserTexts().back().starts_with(expected));
        Close();
    }
}

} // namespace
