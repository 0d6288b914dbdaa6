// The SNMP Settings page's test trap button.
#include "applet/SnmpActions.h"
#include "machine/HostAgent.h"

namespace {

constexpr char errorCaption[] = "Management Agents Error";

class TestTrapButton : public SnmpActions
{
  protected:
    // The one box that the button shows.
    void ExpectBox(const std::string& text, const std::string& caption, UINT style,
                   support::Location where = support::Location::current())
    {
        m_boxes.Answer(IDOK, where);
        Press(IDC_SNMP_TEST_TRAP, where);
        support::ExpectBoxes(m_boxes, {{nullptr, text, caption, style}}, where);
    }
};

constexpr char sendingLibrary[] = "..\\unit\\snmp\\host_agent_stand_in.dll";
constexpr char notGenerated[] =
    "The trap could not be generated.\n\nPlease insure that the Host Agent is enabled and running.";

TEST_F(TestTrapButton, ReportsThatTheAlerterIsNotReady)
{
    ExpectBox("The Management Agents Remote Alerter agent has not finished initializing or is not enabled.  "
              "The test "
              "trap was not sent.",
              appletCaption, MB_ICONINFORMATION);
}

TEST_F(TestTrapButton, ReportsThatTheTrapCouldNotBeGenerated)
{
    support::InstalledHostAgent::Remove();
    const support::ReadyAlerter alerter;
    ExpectBox(notGenerated, errorCaption, MB_ICONEXCLAMATION);
}

TEST_F(TestTrapButton, ReportsThatTheHostAgentRefusedTheTrap)
{
    const support::ReadyAlerter alerter;
    const support::InstalledHostAgent hostAgent(sendingLibrary, 1);
    ExpectBox(notGenerated, errorCaption, MB_ICONEXCLAMATION);
}

TEST_F(TestTrapButton, ShowsTheTrapThatWasSent)
{
    const support::ReadyAlerter alerter;
    const support::InstalledHostAgent hostAgent(sendingLibrary);
    m_boxes.Answer(IDOK);
    Press(IDC_SNMP_TEST_TRAP);
    const std::string text = support::InstalledHostAgent::SentText();
    EXPECT_TRUE(text.starts_with("Management Agents Test Trap sent - ")) << text;
    support::ExpectBoxes(m_boxes, {{nullptr, "The following trap has been sent:\n\n\"" + text + "\"",
                                    appletCaption, MB_ICONINFORMATION}});
}

TEST_F(TestTrapButton, ReportsAnotherLibraryAndKeepsIt)
{
    const support::ReadyAlerter alerter;
    const support::InstalledHostAgent hostAgent("..\\unit\\snmp\\host_agent_without_entry.dll");
    ExpectBox(notGenerated, errorCaption, MB_ICONEXCLAMATION);
    EXPECT_TRUE(support::InstalledHostAgent::IsLoaded());
    FreeLibrary(GetModuleHandleA("VTNMHOST.DLL"));
}

// Whatever the user leaves open for how long: the host agent can be updated meanwhile.
TEST_F(TestTrapButton, UnloadsTheLibraryBeforeItReports)
{
    const support::ReadyAlerter alerter;
    const auto unload = support::HookImport<decltype(FreeLibrary)>(m_host.Module(), "FreeLibrary",
                                                                   [&](auto original, HMODULE library) {
                                                                       m_log.Add("FreeLibrary");
                                                                       return original(library);
                                                                   });
    for (const DWORD status : {0U, 1U}) {
        const support::InstalledHostAgent hostAgent(sendingLibrary, status);
        m_boxes.Answer(IDOK);
        Press(IDC_SNMP_TEST_TRAP);
        const Calls calls = m_log.CallsOf({"FreeLibrary", "MessageBoxA"});
        ASSERT_EQ(calls.size(), 2) << status;
        EXPECT_EQ(calls.front(), "FreeLibrary") << status;
    }
}

TEST_F(TestTrapButton, ChangesNoSetting)
{
    m_boxes.Answer(IDOK);
    m_machine.hostSnmp.SetDword("SetsEnabled", 0x1F);
    m_host.Open();
    m_host.Page("SNMP Settings").Click(IDC_SNMP_TEST_TRAP);
    m_host.PressOk();
    support::ExpectDword(m_machine.hostSnmp, "SetsEnabled", 0x1F);
}

} // namespace
