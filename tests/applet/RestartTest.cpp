// What follows an OK: the offer to restart the agents and the restart itself, on a scripted service manager.
#include "applet/AppletTest.h"
#include "resources/resource.h"
#include "support/CallLog.h"
#include "support/FakeClock.h"
#include "support/ServiceScript.h"

namespace {

using support::ServiceState;
using Calls = std::vector<std::string>;

class Restart : public AppletTest
{
  protected:
    Restart() { AddAgents(SERVICE_RUNNING); }

    // SNMP and the agents' host, which depends on it.
    void AddAgents(DWORD state)
    {
        m_services.Add(
            "SNMP",
            {.displayName = "SNMP Service", .states = {ServiceState(state)}, .dependents = {"VtMgHost"}});
        m_services.Add("VtMgHost", {.displayName = "Host Agents", .states = {ServiceState(state)}});
    }

    void OpenAndTickABox()
    {
        m_host.Open();
        m_host.Page("Storage").Check(IDC_STORAGE_FIBRE_TAPE);
    }

    // Texts of the message boxes so far.
    [[nodiscard]] Calls Shown() const
    {
        Calls texts;
        for (const support::ShownBox& box : m_boxes.Shown())
            texts.push_back(box.text);
        return texts;
    }
    [[nodiscard]] Calls Operations() const { return m_log.CallsOf({"StartServiceA", "ControlService"}); }

    support::CallLog m_log;
    support::ServiceScript m_services{m_host.Module(), &m_log};
    support::FakeClock m_clock{m_host.Module(), 1000, &m_log};
};

constexpr char startQuestion[] = "The Management Agents configuration has been changed.\n\n"
                                 "Would you like to start the Management Agents now?";

TEST_F(Restart, IsOfferedAfterAChangeAndDoneOnYes)
{
    OpenAndTickABox();
    m_boxes.Answer(IDYES);
    m_host.PressOk();
    EXPECT_EQ(Shown(), Calls{restartQuestion});
    EXPECT_EQ(Operations(), (Calls{"ControlService VtMgHost 1", "ControlService SNMP 1", "StartServiceA SNMP",
                                   "StartServiceA VtMgHost"}));
}

TEST_F(Restart, AsksOverTheControlPanelAfterTheSheet)
{
    OpenAndTickABox();
    m_boxes.Answer(IDNO);
    m_host.PressOk();
    EXPECT_EQ(m_boxes.Shown().at(0).owner, m_host.Frame());
    EXPECT_EQ(m_boxes.Shown().at(0).caption, "Norvale Management Agents");
    EXPECT_EQ(m_boxes.Shown().at(0).style, UINT{MB_YESNO | MB_ICONINFORMATION});
}

TEST_F(Restart, LeavesEveryServiceAsItIsOnNo)
{
    OpenAndTickABox();
    m_boxes.Answer(IDNO);
    m_host.PressOk();
    EXPECT_EQ(Operations(), Calls{});
}

TEST_F(Restart, IsAStartWhileTheHostAgentIsStopped)
{
    AddAgents(SERVICE_STOPPED);
    OpenAndTickABox();
    m_boxes.Answer(IDYES);
    m_host.PressOk();
    EXPECT_EQ(Shown(), Calls{startQuestion});
    EXPECT_EQ(Operations(), (Calls{"StartServiceA SNMP", "StartServiceA VtMgHost"}));
}

TEST_F(Restart, IsNotOfferedWhenNothingWasChanged)
{
    m_host.Open();
    m_host.PressOk();
    EXPECT_EQ(Shown(), Calls{});
}

TEST_F(Restart, IsOfferedForABoxTickedAndCleared)
{
    OpenAndTickABox();
    m_host.Page("Storage").Uncheck(IDC_STORAGE_FIBRE_TAPE);
    m_boxes.Answer(IDNO);
    m_host.PressOk();
    EXPECT_EQ(Shown(), Calls{restartQuestion});
}

TEST_F(Restart, IsNotOfferedAfterCancel)
{
    OpenAndTickABox();
    m_host.PressCancel();
    EXPECT_EQ(Shown(), Calls{});
}

TEST_F(Restart, IsNotOfferedAfterARefusedSave)
{
    OpenAndTickABox();
    m_machine.sasAgent.Delete();
    m_boxes.Answer(IDOK);
    m_host.PressOk();
    EXPECT_EQ(Shown(), Calls{accessDenied});
}

class RestartDuringInstallation : public Restart, public testing::WithParamInterface<const char*>
{
};

TEST_P(RestartDuringInstallation, IsNotOfferedAndTheSaveIsDone)
{
    m_host.SetCommandLine(GetParam());
    OpenAndTickABox();
    m_log.Clear();
    m_host.PressOk();
    EXPECT_EQ(Shown(), Calls{});
    EXPECT_EQ(m_services.Calls(), Calls{});
    support::ExpectDword(m_machine.fibreAgent, "DisableFlags", 1);
}

INSTANTIATE_TEST_SUITE_P(LetterCases, RestartDuringInstallation,
                         testing::Values("control.exe vtnmgmt.cpl /SETUP", "control.exe /setup vtnmgmt.cpl",
                                         "control.exe vtnmgmt.cpl,/Setup"));

TEST_F(Restart, LeavesNoHandleOfTheServiceManagerOpen)
{
    OpenAndTickABox();
    m_boxes.Answer(IDYES);
    m_host.PressOk();
    EXPECT_EQ(m_services.OpenHandles(), 0);
}

} // namespace
