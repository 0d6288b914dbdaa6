// The restart without windows: the same services, order and pauses, in lines.
#include "CommandMachine.h"

#include "command/ErrorTexts.h"
#include "resources/resource.h"

#include <map>

namespace {

using support::ServiceState;
using Calls = std::vector<std::string>;

class RestartCommand : public CommandMachine
{
  protected:
    RestartCommand() { AddAgents(SERVICE_RUNNING); }

    void AddAgents(DWORD state)
    {
        m_services.Add("SNMP", {.displayName = "SNMP Service",
                                .states = {ServiceState(state)},
                                .dependents = {"VtMgStor", "VtMgHost"}});
        for (const char* name : {"VtMgHost", "VtMgStor"})
            m_services.Add(name,
                           {.displayName = std::string(name) + " display", .states = {ServiceState(state)}});
        m_services.Add("VtnWebWmi", {.displayName = "Web", .states = {ServiceState(state)}});
    }

    [[nodiscard]] Calls Actions() const
    {
        return m_log.CallsOf({"Sleep", "StartServiceA", "ControlService"});
    }
};

const Calls wholeRestart{
    "Sleep 1000", "ControlService VtnWebWmi 1", "Sleep 1000", "ControlService VtMgStor 1",
    "Sleep 1000", "ControlService VtMgHost 1",  "Sleep 1000", "ControlService SNMP 1",
    "Sleep 1000", "StartServiceA SNMP",         "Sleep 1000", "StartServiceA VtMgHost",
    "Sleep 1000", "StartServiceA VtMgStor",     "Sleep 1000", "StartServiceA VtnWebWmi"};

TEST_F(RestartCommand, StopsFirstToLastAndStartsLastToFirst)
{
    const Answer answer = Run({"restart"});
    EXPECT_EQ(answer.code, ExitCode::Done);
    EXPECT_EQ(Actions(), wholeRestart);
    EXPECT_EQ(answer.errors, "vtncfg: stopping the Web service\n"
                             "vtncfg: stopping the VtMgStor display service\n"
                             "vtncfg: stopping the VtMgHost display service\n"
                             "vtncfg: stopping the SNMP service\n"
                             "vtncfg: starting the SNMP service\n"
                             "vtncfg: starting the VtMgHost display service\n"
                             "vtncfg: starting the VtMgStor display service\n"
                             "vtncfg: starting the Web service\n");
}

TEST_F(RestartCommand, OnlyStartsAgentsThatAreStopped)
{
    AddAgents(SERVICE_STOPPED);
    EXPECT_EQ(Run({"restart"}).code, ExitCode::Done);
    EXPECT_EQ(m_log.CallsOf({"ControlService"}), Calls());
    EXPECT_EQ(m_log.CallsOf({"StartServiceA"}).size(), 4);
}

TEST_F(RestartCommand, NamesTheServiceThatFailsAndGoesOn)
{
    m_services.Fail("ControlService", "VtMgStor", ERROR_ACCESS_DENIED);
    const Answer answer = Run({"restart", "--json-errors"});
    EXPECT_EQ(answer.code, ExitCode::Failed);
    const Json error = {{"error", "restart: " + ServiceErrorText(IDS_CANNOT_STOP, "VtMgStor display")}};
    EXPECT_NE(answer.errors.find(error.dump() + "\n"), std::string::npos) << answer.errors;
    EXPECT_NE(answer.errors.find("{\"info\":\"stopping the VtMgHost display service\"}"), std::string::npos);
    EXPECT_EQ(m_services.State("VtMgHost"), SERVICE_RUNNING);
}

TEST_F(RestartCommand, NamesTheServiceThatDoesNotStart)
{
    m_services.Fail("StartServiceA", "VtMgStor", ERROR_ACCESS_DENIED);
    const Answer answer = Run({"restart"});
    EXPECT_EQ(answer.code, ExitCode::Failed);
    EXPECT_NE(
        answer.errors.find("vtncfg: restart: " + ServiceErrorText(IDS_CANNOT_START, "VtMgStor display")),
        std::string::npos)
        << answer.errors;
}

TEST_F(RestartCommand, LeavesAgentsAloneThatCannotBeControlled)
{
    const std::map<DWORD, UINT> reasons = {{SERVICE_START_PENDING, IDS_AGENTS_PENDING},
                                           {SERVICE_STOP_PENDING, IDS_AGENTS_PENDING},
                                           {8, IDS_AGENTS_UNKNOWN_STATE}};
    for (const auto& [state, reason] : reasons) {
        AddAgents(state);
        const Answer answer = Run({"restart"});
        EXPECT_EQ(answer.code, ExitCode::Failed);
        EXPECT_EQ(answer.errors, "vtncfg: restart: " + ErrorText(reason) + "\n");
    }
    EXPECT_EQ(Actions(), Calls());
}

TEST_F(RestartCommand, FollowsAChangeThatAsksForIt)
{
    const std::string document = R"({"snmp":{"telnetDetection":false}})";
    EXPECT_EQ(Set(document, {"--restart", "--what-if"}).code, ExitCode::Done);
    EXPECT_EQ(Actions(), Calls());
    EXPECT_EQ(Set(document, {"--restart"}).code, ExitCode::Done);
    EXPECT_EQ(Actions(), wholeRestart);
    ForgetCalls();
    EXPECT_EQ(Set(document, {"--restart"}).code, ExitCode::Done);
    EXPECT_EQ(Actions(), Calls());
}

TEST(RestartWithoutAgents, SaysThatTheyAreNotThere)
{
    support::CallLog log;
    const support::ServiceScript services(GetModuleHandleA(nullptr), &log);
    TestStreams streams;
    EXPECT_EQ(RunCommand({"restart"}, streams), ExitCode::Failed);
    EXPECT_EQ(streams.errors,
              "vtncfg: restart: The host agent's service VtMgHost is not installed or may not be controlled. "
              "Run as an administrator, where the agents are installed.\n");
}

} // namespace
