// Saves of desktop management that fail: each step has a text of its own, what was done before it stays, and
// what comes after it is not done.
#include "DesktopSaveTest.h"

#include "support/FailNth.h"
#include "support/ThisProgram.h"

namespace {

using support::thisProgram;

using FailComputerName = support::FailNth<"GetComputerNameA", decltype(GetComputerNameA)>;
using FailProfile = support::FailNth<"WritePrivateProfileStringA", decltype(WritePrivateProfileStringA)>;

class DesktopManagementFailure : public DesktopManagementSave
{
  protected:
    // Fails the test at the caller's line unless switching on or off throws this text and leaves the machine
    // as after the first `steps` parts of its state, in their order.
    void ExpectStops(bool isOn, ConfigurationError text, int steps,
                     support::Location where = support::Location::current())
    {
        ExpectThrows(Settings(isOn), everything, text, where);
        support::ExpectEqual(StoppedAfter(steps, isOn), State(), "machine", where);
    }

    // A file that another program reads and lets nobody change.
    static HANDLE HoldOpen(const std::string& path)
    {
        return CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    }

  private:
    // The state that the machine has in the test, and what each part of it becomes.
    [[nodiscard]] DomainState StoppedAfter(int steps, bool isOn) const
    {
        const DomainState& before = isOn ? m_off : m_on;
        const DomainState& after = isOn ? m_on : m_switchedOff;
        return {.script = steps > 0 ? after.script : before.script,
                .record = steps > 1 ? after.record : before.record,
                .clientProgram = steps > 2 ? after.clientProgram : before.clientProgram,
                .share = steps > 3 ? after.share : before.share,
                .clientProfile = steps > 4 ? after.clientProfile : before.clientProfile,
                .nullSessionShares = steps > 5 ? after.nullSessionShares : before.nullSessionShares};
    }

    // Switches on and off once, and leaves no trace of it.
    DomainState Try(bool isOn)
    {
        SwitchOn();
        if (!isOn)
            SwitchOff();
        const DomainState state = State();
        SwitchOff();
        DeleteFileA(m_profile.c_str());
        return state;
    }

    DomainState m_off = State();
    DomainState m_on = Try(true);
    DomainState m_switchedOff = Try(false);
};

// --- switching on

TEST_F(DesktopManagementFailure, OfTheScriptStopsEverythingElse)
{
    const HANDLE holder = HoldOpen(m_script);
    ExpectStops(true, IDS_SCRIPT_UPDATE_FAILED, 0);
    CloseHandle(holder);
}

TEST_F(DesktopManagementFailure, OfTheComputersNameKeepsTheScript)
{
    const FailComputerName fail(thisProgram, 1, FALSE, ERROR_NOT_ENOUGH_MEMORY);
    ExpectStops(true, IDS_SCRIPT_UPDATE_FAILED, 0);
}

TEST_F(DesktopManagementFailure, OfTheRecordKeepsTheScript)
{
    const support::FailNth<"RegSetValueExA", decltype(RegSetValueExA)> refuse(thisProgram, 1,
                                                                              ERROR_ACCESS_DENIED);
    ExpectStops(true, IDS_ACCESS_DENIED, 1);
}

TEST_F(DesktopManagementFailure, OfTheCopyKeepsTheRecord)
{
    DeleteFileA(m_installedProgram.c_str());
    ExpectStops(true, IDS_CLIENT_COPY_FAILED, 2);
}

TEST_F(DesktopManagementFailure, OfTheShareKeepsTheClient)
{
    for (const NET_API_STATUS status :
         {NET_API_STATUS{ERROR_ACCESS_DENIED}, NET_API_STATUS{NERR_UnknownDevDir},
          NET_API_STATUS{NERR_NetNameNotFound}})
    {
        m_shares.Fail("NetShareAdd", status);
        ExpectStops(true, IDS_SHARE_ADD_FAILED, 3);
        SwitchOff();
        DeleteFileA(m_profile.c_str()); // which a system may have made to take nothing out of it
    }
}

TEST_F(DesktopManagementFailure, OfTheProfileKeepsTheShare)
{
    const FailProfile fail(thisProgram, 1, FALSE, ERROR_ACCESS_DENIED);
    ExpectStops(true, IDS_CLIENT_PROFILE_FAILED, 4);
}

TEST_F(DesktopManagementFailure, OfTheNullSessionSharesKeepsEverythingBefore)
{
    const support::FailNth<"RegSetValueExA", decltype(RegSetValueExA)> refuse(thisProgram, 2,
                                                                              ERROR_ACCESS_DENIED);
    ExpectStops(true, IDS_ACCESS_DENIED, 5);
}

TEST_F(DesktopManagementFailure, OfTheNullSessionSharesIncludesMissingSettings)
{
    m_server.Delete();
    ExpectThrows(Settings(true), everything, IDS_ACCESS_DENIED);
    EXPECT_FALSE(m_server.Exists());
}

// --- switching off

TEST_F(DesktopManagementFailure, OfTheScriptKeepsEverythingOn)
{
    SwitchOn();
    const HANDLE holder = HoldOpen(m_script);
    ExpectStops(false, IDS_SCRIPT_UPDATE_FAILED, 0);
    CloseHandle(holder);
}

TEST_F(DesktopManagementFailure, OfTheRecordKeepsEverythingElseOn)
{
    SwitchOn();
    m_agent.Delete();
    ExpectThrows(Settings(false), everything, IDS_ACCESS_DENIED);
    EXPECT_EQ(State().script, "@echo off\r\n");
    EXPECT_TRUE(State().clientProgram);
    EXPECT_TRUE(State().share);
}

TEST_F(DesktopManagementFailure, OfDeletingTheClientKeepsTheShare)
{
    SwitchOn();
    const HANDLE holder = HoldOpen(m_program);
    ExpectStops(false, IDS_CLIENT_DELETE_FAILED, 2);
    CloseHandle(holder);
}

TEST_F(DesktopManagementFailure, OfDeletingTheClientIncludesAMissingDirectory)
{
    SwitchOn();
    const DomainState before = State();
    DesktopManagement settings = Settings(false);
    settings.scriptDirectory = m_scripts.File("absent");
    ExpectThrows(settings, SwitchChanged, IDS_CLIENT_DELETE_FAILED);
    EXPECT_EQ(State(), before);
}

TEST_F(DesktopManagementFailure, OfDeletingTheShareKeepsTheProfile)
{
    SwitchOn();
    for (const NET_API_STATUS status :
         {NET_API_STATUS{ERROR_ACCESS_DENIED}, NET_API_STATUS{NERR_DuplicateShare}}) {
        m_shares.Fail("NetShareDel", status);
        ExpectStops(false, IDS_SHARE_DELETE_FAILED, 3);
    }
}

TEST_F(DesktopManagementFailure, OfClosingTheShareToAnonymousComesLast)
{
    SwitchOn();
    const support::FailNth<"RegSetValueExA", decltype(RegSetValueExA)> refuse(thisProgram, 1,
                                                                              ERROR_ACCESS_DENIED);
    ExpectStops(false, IDS_ACCESS_DENIED, 5);
}

// Whatever stopped it: once that is out of the way, saving again gives what it would have given at once.
TEST_F(DesktopManagementFailure, IsMadeUpForByTheNextSave)
{
    SwitchOn();
    const DomainState on = State();
    SwitchOff();
    const DomainState off = State();
    m_shares.Fail("NetShareAdd", ERROR_ACCESS_DENIED);
    ExpectThrows(Settings(true), everything, IDS_SHARE_ADD_FAILED);
    m_shares.Fail("NetShareAdd", NERR_Success);
    SwitchOn();
    EXPECT_EQ(State(), on);
    m_shares.Fail("NetShareDel", ERROR_ACCESS_DENIED);
    ExpectThrows(Settings(false), everything, IDS_SHARE_DELETE_FAILED);
    m_shares.Fail("NetShareDel", NERR_Success);
    SwitchOff();
    EXPECT_EQ(State(), off);
}

} // namespace
