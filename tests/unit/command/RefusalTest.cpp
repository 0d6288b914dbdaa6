// What a document must not say: each refusal names the member and the reason, and nothing is written.
#include "CommandMachine.h"

namespace {

using Refusal = CommandMachine;

TEST_F(Refusal, OfMembersThatDoNotExist)
{
    ExpectRefused(R"({"snmmp":{}})",
                  "snmmp: there is no such member; there are agents, snmp, processMonitor, storage, "
                  "desktopManagement and board");
    ExpectRefused(
        R"({"storage":{"sas":true}})",
        "storage.sas: there is no such member; there are fibreTapeSupport, quentaTapeSupport, sasTapeSupport "
        "and quentaPerformanceMonitoring");
    ExpectRefused(
        R"({"agents":{"VtMgXyz":{}}})",
        "agents.VtMgXyz: there is no such agent service; there are VtMgHost, VtMgServ, VtMgStor and "
        "VTNNicMgmt");
    ExpectRefused(
        R"({"agents":{"VtMgHost":{"VTNSNMP":true}}})",
        "agents.VtMgHost.VTNSNMP: there is no such sub-agent on this machine; there are VTNMHOST and "
        "VTNPERF");
    ExpectRefused(
        R"({"agents":{"VtMgHost":{"VTNMHOST\u0000":true}}})",
        "agents.VtMgHost.VTNMHOST\\u0000: there is no such sub-agent on this machine; there are VTNMHOST "
        "and VTNPERF");
}

TEST_F(Refusal, OfOtherTypes)
{
    ExpectRefused(R"({"snmp":true})", "snmp: must be an object, not boolean");
    ExpectRefused(R"({"agents":[]})", "agents: must be an object, not array");
    ExpectRefused(R"({"processMonitor":[]})", "processMonitor: must be an object, not array");
    ExpectRefused(R"({"agents":{"VtMgHost":1}})", "agents.VtMgHost: must be an object, not number");
    ExpectRefused(R"({"agents":{"VtMgHost":{"VTNPERF":1}}})",
                  "agents.VtMgHost.VTNPERF: must be true or false, not number");
    ExpectRefused(R"({"snmp":{"serverRole":7}})", "snmp.serverRole: must be a string, not number");
    ExpectRefused(R"({"snmp":{"setsEnabled":"true"}})",
                  "snmp.setsEnabled: must be true or false, not string");
    ExpectRefused(R"({"snmp":{"collectionIntervalSeconds":"60"}})",
                  "snmp.collectionIntervalSeconds: must be a number of seconds, not string");
    ExpectRefused(R"({"processMonitor":{"a.exe":null}})", "processMonitor.a.exe: must be a string, not null");
    ExpectRefused(R"({"board":{"battery":null}})", "board.battery: must be true or false, not null");
}

TEST_F(Refusal, OfValuesThatDoNotExist)
{
    const std::string intervals =
        " is none of 5, 10, 15, 20, 30, 60, 120, 180, 240, 300, 600, 1200, 1800, 2400, 3000 "
        "and 3600";
    for (const char* number : {"90", "0", "-5", "5.5", "18446744073709551615", "1e+300"})
        ExpectRefused(std::string(R"({"snmp":{"collectionIntervalSeconds":)") + number + "}}",
                      std::string("snmp.collectionIntervalSeconds: ") + number + intervals);
    ExpectRefused(R"({"processMonitor":{"a.exe":"both"}})",
                  "processMonitor.a.exe: \"both\" is none of none, start, stop and startAndStop");
    ExpectRefused(R"({"processMonitor":{"*":"stop"}})",
                  "processMonitor.*: all other processes can only be \"none\"");
}

TEST_F(Refusal, OfAProcessWhoseStoredOptionHasNoName)
{
    Store(std::string("\x04"
                      "abc\0",
                      5));
    ExpectRefused(R"({"processMonitor":{"abc":"none"}})",
                  "processMonitor.abc: has an option that vtncfg does not know; choose another on the page");
}

TEST_F(Refusal, OfMoreMembersThanAnyMachineHas)
{
    std::string document = R"({"processMonitor":{"first":"stop")";
    for (int i = 0; i < 8192; ++i)
        document += ",\"p" + std::to_string(i) + "\":\"stop\"";
    ExpectRefused(document + "}}", "the document has an object of more than 8192 members");
}

TEST_F(Refusal, OfTextsThatTheSettingsCannotHold)
{
    ExpectRefused(R"({"snmp":{"serverRole":"a\u0000b"}})", "snmp.serverRole: must not hold a zero character");
    ExpectRefused("{\"snmp\":{\"serverRole\":\"\xF0\x9F\x98\x80\"}}",
                  "snmp.serverRole: holds a character that the code page of this system does not have");
    ExpectRefused("{\"snmp\":{\"serverRole\":\"" + std::string(65, 'r') + "\"}}",
                  "snmp.serverRole: takes 65 bytes in the code page of this system; 64 are the most");
    ExpectRefused(R"({"snmp":{"serverRole":"a\nb"}})",
                  "snmp.serverRole: holds line ends or other control characters");
    ExpectRefused(R"({"processMonitor":{" ":"stop"}})", "processMonitor. : a process has a name");
    ExpectRefused(R"({"processMonitor":{"a\tb":"stop"}})",
                  "processMonitor.a\\tb: the name of a process holds neither tabs nor zero characters");
    ExpectRefused(
        "{\"processMonitor\":{\"\xF0\x9F\x98\x80\":\"stop\"}}",
        "processMonitor.\\ud83d\\ude00: holds a character that the code page of this system does not have");
}

TEST_F(Refusal, OfNamesThatAreTheSame)
{
    ExpectRefused(R"({"processMonitor":{"a.exe":"stop","A.EXE":"stop"}})",
                  "processMonitor.A.EXE: stands there twice, in different writing; leave one of them out");
    ExpectRefused(
        R"({"agents":{"VtMgHost":{"VTNPERF":true,"vtnperf":true}}})",
        "agents.VtMgHost.vtnperf: stands there twice, in different letter case; leave one of them out");
}

TEST_F(Refusal, OfWhatThePagesDoNotAllow)
{
    ExpectRefused(R"({"snmp":{"remoteReboot":true}})",
                  "snmp.remoteReboot: needs SNMP sets; set setsEnabled to true as well");
    ExpectRefused(
        R"({"agents":{"VTNNicMgmt":{"VTNMNIC":true,"VTNNICS":false}}})",
        "agents.VTNNicMgmt.VTNMNIC: is switched together with VTNNICS, which the document sets to the "
        "opposite");
    m_agents.Service("VtMgServ").Subkey("VTNRACK").Delete();
    ExpectRefused(R"({"snmp":{"rackTraps":false}})",
                  "snmp.rackTraps: can be changed only where the rack infrastructure agent is installed");
    m_board.record.battery = 2;
    ExpectRefused(R"({"board":{"battery":true}})",
                  "board.battery: this board has no battery that can be switched");
}

TEST_F(Refusal, OfWhatIsNotOnThisMachine)
{
    ExpectRefused(R"({"desktopManagement":{}})",
                  "desktopManagement: cannot be set, since this machine is no domain controller");
    m_libraries.Remove(support::boardLibrary);
    ExpectRefused(R"({"board":{}})",
                  "board: cannot be set, since no remote management board answers on this machine");
    m_agents.Parameters("VTNNicMgmt").Delete();
    ExpectRefused(R"({"agents":{"VTNNicMgmt":{}}})",
                  "agents.VTNNicMgmt: this service has no sub-agents here that could be read");
}

TEST_F(Refusal, OfOneMemberKeepsTheOthersFromBeingWritten)
{
    ExpectRefused(R"({"snmp":{"telnetDetection":false},"storage":{"sasTapeSupport":0}})",
                  "storage.sasTapeSupport: must be true or false, not number");
}

TEST_F(Refusal, IsJsonWhereThatIsAskedFor)
{
    EXPECT_EQ(Run({"set", "--json-errors"}, R"({"snmp":{"setsEnabled":"é"}})").errors,
              "{\"error\":\"snmp.setsEnabled: must be true or false, not string\"}\n");
    EXPECT_EQ(Run({"--json-errors", "sett"}).errors.front(), '{');
}

TEST_F(Refusal, OfCommandLinesThatAreWrong)
{
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {}, {"gets"}, {"get", "file"}, {"get", "--changes"}, {"set", "a", "b"}, {"restart", "now"}})
    {
        const Answer answer = Run(arguments);
        EXPECT_EQ(answer.code, ExitCode::WrongUse);
        EXPECT_TRUE(answer.errors.starts_with("vtncfg: ")) << answer.errors;
        EXPECT_TRUE(answer.errors.ends_with("; 'vtncfg --help' says what there is\n")) << answer.errors;
        EXPECT_EQ(std::count(answer.errors.begin(), answer.errors.end(), '\n'), 1);
    }
}

} // namespace
