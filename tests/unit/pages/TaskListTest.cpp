// The names of the running processes, as the page asks the host utility library for them.
#include "pages/core/TaskList.h"

#include "imports/ImportHook.h"
#include "machine/TaskListScript.h"
#include "support/CodePage932.h"
#include "support/ThisProgram.h"

#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;
using support::hostUtilityLibrary;

using support::thisProgram;

class TaskList : public testing::Test
{
  protected:
    support::LibraryScript m_libraries{thisProgram};
    support::TaskListScript m_tasks{m_libraries};
};

TEST_F(TaskList, GivesTheNamesInTheLibrarysOrder)
{
    m_tasks.names = {"b.exe", "A.exe", "c.exe"};
    EXPECT_EQ(RunningProcessNames(), (Names{"b.exe", "A.exe", "c.exe"}));
}

TEST_F(TaskList, IsEmptyForNoProcesses)
{
    EXPECT_EQ(RunningProcessNames(), Names());
    EXPECT_EQ(m_libraries.Loads(hostUtilityLibrary), 1);
}

TEST_F(TaskList, LeavesOutWhatIsNoProgram)
{
    m_tasks.names = {"_Total", "Idle", "a.exe", "unknown"};
    EXPECT_EQ(RunningProcessNames(), Names{"a.exe"});
}

TEST_F(TaskList, LeavesOutExactlyThoseNames)
{
    m_tasks.names = {"_total", "idle", "Unknown", "Idle.exe"};
    EXPECT_EQ(RunningProcessNames(), m_tasks.names);
}

TEST_F(TaskList, GivesInstancesThatFollowEachOtherOnce)
{
    m_tasks.names = {"a", "a", "a", "b", "a"};
    EXPECT_EQ(RunningProcessNames(), (Names{"a", "b", "a"}));
}

TEST_F(TaskList, InstancesFollowEachOtherAcrossWhatIsNoProgram)
{
    m_tasks.names = {"a", "Idle", "a"};
    EXPECT_EQ(RunningProcessNames(), Names{"a"});
}

TEST_F(TaskList, TakesANameThatFillsItsRecord)
{
    m_tasks.names = {std::string(260, 'n'), "b"};
    EXPECT_EQ(RunningProcessNames(), m_tasks.names);
}

TEST_F(TaskList, TakesOffTheHalfCharacterThatARecordCuts)
{
    const support::CodePage932 japanese(thisProgram);
    const std::string letter = "\x83\x81"; // its second byte could begin another
    std::string cut = "n";
    while (cut.size() < 259)
        cut += letter;
    m_tasks.names = {cut + letter[0], cut, "\x83", letter};
    EXPECT_EQ(RunningProcessNames(), (Names{cut, "", letter}));
}

TEST_F(TaskList, IsEmptyWithoutTheLibrary)
{
    m_libraries.Remove(hostUtilityLibrary);
    EXPECT_EQ(RunningProcessNames(), Names());
}

TEST_F(TaskList, IsEmptyWithoutTheEntryAndReleasesTheLibrary)
{
    m_tasks.names = {"a"};
    m_libraries.Add(hostUtilityLibrary);
    EXPECT_EQ(RunningProcessNames(), Names());
    EXPECT_EQ(m_libraries.Loads(hostUtilityLibrary), 1);
    EXPECT_EQ(m_libraries.Held(hostUtilityLibrary), 0);
}

TEST_F(TaskList, IsEmptyWhenTheLibraryHasNoMemory)
{
    m_tasks.names = {"a"};
    m_tasks.isExhausted = true;
    EXPECT_EQ(RunningProcessNames(), Names());
}

TEST_F(TaskList, LoadsTheLibraryByNameAndReleasesIt)
{
    m_tasks.names = {"a"};
    EXPECT_EQ(RunningProcessNames(), Names{"a"});
    EXPECT_EQ(m_libraries.Path(hostUtilityLibrary), "vthstutl.dll");
    EXPECT_EQ(m_libraries.Held(hostUtilityLibrary), 0);
}

const std::string systemDirectory = "C:\\windows\\system32";

// What the process's search for libraries is set to: each time, and how often the library had been loaded by
// then.
class TaskListSearch : public TaskList
{
  protected:
    Names SettingsWhileNamesAreRead(BOOL answer = TRUE)
    {
        Names settings;
        const auto hook = support::HookImport<decltype(SetDllDirectoryA)>(
            thisProgram, "SetDllDirectoryA", [&](auto, LPCSTR directory) {
                settings.push_back(std::string(directory == nullptr ? "none" : directory) + " after " +
                                   std::to_string(m_libraries.Loads(hostUtilityLibrary)));
                return answer;
            });
        m_read = RunningProcessNames();
        return settings;
    }

    Names m_read;
};

TEST_F(TaskListSearch, LeavesTheCurrentDirectoryOutForTheLoad)
{
    EXPECT_EQ(SettingsWhileNamesAreRead(), (Names{systemDirectory + " after 0", "none after 1"}));
}

TEST_F(TaskListSearch, StaysAsAProgramHasSetIt)
{
    SetDllDirectoryA("C:\\lib");
    EXPECT_EQ(SettingsWhileNamesAreRead(), Names());
    EXPECT_EQ(m_libraries.Loads(hostUtilityLibrary), 1);
    SetDllDirectoryA(nullptr);
}

TEST_F(TaskListSearch, KeepsTheLibraryOutWhenItCannotBeSet)
{
    m_tasks.names = {"a"};
    SettingsWhileNamesAreRead(FALSE);
    EXPECT_EQ(m_read, Names());
    EXPECT_EQ(m_libraries.Loads(hostUtilityLibrary), 0);
}

TEST_F(TaskListSearch, LoadsNothingWithoutASystemDirectory)
{
    m_tasks.names = {"a"};
    const auto hook = support::HookImport<decltype(GetSystemDirectoryA)>(
        thisProgram, "GetSystemDirectoryA", [](auto, LPSTR, UINT) { return 0U; });
    EXPECT_EQ(RunningProcessNames(), Names());
    EXPECT_EQ(m_libraries.Loads(hostUtilityLibrary), 0);
}

} // namespace
