// What get shows and set writes, member by member.
#include "CommandMachine.h"

#include "command/ErrorTexts.h"
#include "resources/resource.h"

namespace {

using support::ExpectDword;
using support::ExpectMultiString;
using support::ExpectString;

using SetCommand = CommandMachine;
using GetCommand = CommandMachine;

std::string OneLineOf(const Json& value)
{
    return value.dump();
}

// An agent that keeps its flags to itself.
LSTATUS WINAPI RefuseSetsEnabled(HKEY /*key*/, LPCSTR name, DWORD /*reserved*/, DWORD /*type*/,
                                 const BYTE* /*data*/, DWORD /*size*/)
{
    return std::string(name) == "SetsEnabled" ? ERROR_ACCESS_DENIED : ERROR_SUCCESS;
}

// A service as its key has it.
support::ScriptedService StoredConfig(const support::TestKey& key)
{
    support::ScriptedService service{.startType = SERVICE_DISABLED};
    if (const auto startType = key.Value("Start"))
        service.startType = startType->bytes.front();
    if (const auto names = key.Value("DependOnService")) {
        const char* name = reinterpret_cast<const char*>(names->bytes.data());
        for (; *name != '\0'; name += service.dependencies.back().size() + 1)
            service.dependencies.emplace_back(name);
    }
    return service;
}

// Documents that change this machine, each alone.
const std::vector<std::string> changingDocuments = {
    R"({"agents":{"VtMgHost":{"VTNPERF":true}}})",
    R"({"agents":{"VTNNicMgmt":{"VTNMNIC":true}}})",
    R"({"snmp":{"serverRole":"file server"}})",
    R"({"snmp":{"collectionIntervalSeconds":300}})",
    R"({"snmp":{"setsEnabled":true}})",
    R"({"snmp":{"setsEnabled":true,"remoteReboot":true}})",
    R"({"snmp":{"exceptionTrap":true}})",
    R"({"snmp":{"telnetDetection":false}})",
    R"({"snmp":{"rackTraps":false}})",
    R"({"storage":{"fibreTapeSupport":false}})",
    R"({"storage":{"quentaTapeSupport":false}})",
    R"({"storage":{"sasTapeSupport":false}})",
    R"({"storage":{"quentaPerformanceMonitoring":false}})",
    R"({"processMonitor":{"nvbackup.exe":"start"}})",
    R"({"desktopManagement":{"enabled":true}})",
    R"({"board":{"battery":false}})",
    R"({"board":{"remoteAlerting":false}})",
    R"({"board":{"serverResetPending":true}})",
};

TEST_F(GetCommand, ShowsAMachineOfDefaults)
{
    const Json expected = Json::parse(R"({
        "agents": {"VtMgHost": {"VTNMHOST": true, "VTNPERF": false},
                   "VtMgServ": {"VTNHEALTH": false, "VTNRACK": false},
                   "VtMgStor": {"VTNFCA": true, "VTNMIDA": true, "VTNSAS": true},
                   "VTNNicMgmt": {"VTNMNIC": false, "VTNNICS": false, "VTNVLAN": false}},
        "snmp": {"serverRole": "", "collectionIntervalSeconds": 5, "setsEnabled": false, "remoteReboot": false,
                 "exceptionTrap": false, "telnetDetection": true, "rackTraps": true},
        "processMonitor": {"*": "none"},
        "storage": {"fibreTapeSupport": true, "quentaTapeSupport": true, "sasTapeSupport": true,
                    "quentaPerformanceMonitoring": true},
        "board": {"battery": true, "remoteAlerting": true, "serverResetPending": false}})");
    EXPECT_EQ(Get(), expected);
}

TEST_F(GetCommand, ShowsTheLoginScriptOnADomainController)
{
    MakeDomainController();
    const Json shown = Get()["desktopManagement"];
    EXPECT_EQ(shown["enabled"], false);
    EXPECT_EQ(shown["loginScript"], m_scripts.File("LOGIN.BAT"));
}

TEST_F(GetCommand, ShowsNoBatteryWhereTheBoardHasNone)
{
    m_board.record.battery = 2;
    EXPECT_FALSE(Get()["board"].contains("battery"));
    m_libraries.Remove(support::boardLibrary);
    EXPECT_FALSE(Get().contains("board"));
}

TEST_F(GetCommand, ShowsRemoteRebootAsOffWhileSetsAre)
{
    m_agents.Service("VtMgHost").Subkey("VTNSNMP").SetDword("SetsEnabled", 2);
    EXPECT_EQ(Get()["snmp"]["remoteReboot"], false);
}

TEST_F(GetCommand, ShowsWatchedProcessesInThePagesOrder)
{
    using namespace std::string_literals;
    Store("\x03Services.EXE\0\x81named.exe\0\x80typed.exe\0\x04later.exe\0\x02services.exe\0"s);
    EXPECT_EQ(OneLineOf(Get()["processMonitor"]),
              R"({"*":"none","named.exe":"start","services.exe":"startAndStop"})");
}

TEST_F(GetCommand, PrintsForPeopleInAsciiToo)
{
    m_role.SetString("ServerRole", "Caf\xE9");
    TestStreams streams;
    EXPECT_EQ(RunCommand({"get", "--pretty"}, streams), ExitCode::Done);
    EXPECT_NE(streams.output.find("    \"serverRole\": \"Caf\\u00e9\",\n"), std::string::npos)
        << streams.output;
}

TEST_F(GetCommand, WritesNothingAndAsksForNoShareWhereThereIsNoDomain)
{
    Get();
    EXPECT_EQ(m_shares.Calls(), std::vector<std::string>());
    EXPECT_EQ(Writes(), std::vector<std::string>());
}

TEST_F(GetCommand, SaysWhichSettingsMayNotBeRead)
{
    m_agents.Service("VtMgStor").Subkey("VTNSAS").Delete();
    const Answer answer = Run({"get"});
    EXPECT_EQ(answer.code, ExitCode::Failed);
    EXPECT_EQ(answer.errors, "vtncfg: storage: " + ErrorText(IDS_ACCESS_DENIED) +
                                 " Run as an administrator, where the agents are installed.\n");
}

TEST_F(SetCommand, ChangesEachMemberAloneAndThenNothingMore)
{
    MakeDomainController();
    for (const std::string& document : changingDocuments) {
        const Json before = Get();
        const Answer first = Set(document, {"--changes"});
        ASSERT_EQ(first.code, ExitCode::Done) << document << first.errors;
        Json expected = before;
        expected.merge_patch(Json::parse(document));
        EXPECT_EQ(first.lines[1].size(), 1) << document;
        EXPECT_EQ(first.lines[1][0], Json::parse(document).begin().key());
        EXPECT_FALSE(first.lines[2].empty());
        expected["agents"]["VTNNicMgmt"]["VTNNICS"] = expected["agents"]["VTNNicMgmt"]["VTNMNIC"];
        EXPECT_EQ(first.lines[0], expected) << document;

        ForgetCalls();
        const Answer second = Set(document, {"--changes"});
        EXPECT_EQ(second.lines, (std::vector<Json>{first.lines[0], Json::array(), Json::array()}))
            << document;
        EXPECT_EQ(Writes(), std::vector<std::string>()) << document;
    }
}

TEST_F(SetCommand, PredictsExactlyWhatItDoesAndWritesNothingForIt)
{
    MakeDomainController();
    for (const std::string& document : changingDocuments) {
        ForgetCalls();
        const Answer predicted = Set(document, {"--changes", "--what-if"});
        EXPECT_EQ(Writes(), std::vector<std::string>()) << document;
        EXPECT_FALSE(support::FileExists(m_scripts.File("LOGIN.BAT")) &&
                     document.find("enabled") != std::string::npos);
        EXPECT_EQ(Set(document, {"--changes"}).lines, predicted.lines) << document;
    }
}

TEST_F(SetCommand, WritesAllOfThemTogether)
{
    MakeDomainController();
    Json all = Json::object();
    for (const std::string& document : changingDocuments)
        all.merge_patch(Json::parse(document));
    const Answer answer = Set(all.dump());
    ASSERT_EQ(answer.code, ExitCode::Done) << answer.errors;
    EXPECT_EQ(answer.lines[1],
              Json({"agents", "snmp", "processMonitor", "storage", "desktopManagement", "board"}));
    const support::TestKey host = m_agents.Service("VtMgHost");
    ExpectMultiString(m_agents.Parameters("VtMgHost"), "SubServices", {"VTNMHOST", "VTNPERF"});
    ExpectMultiString(m_agents.Parameters("VTNNicMgmt"), "SubServices", {"VTNMNIC", "VTNNICS"});
    ExpectMultiString(host, "DependOnService", {"VtMgStor", "VTNNicMgmt", "SNMP"});
    ExpectDword(m_agents.Service("VtMgServ"), "Start", SERVICE_DISABLED);
    ExpectString(m_role, "ServerRole", "file server");
    ExpectDword(host.Subkey("VTNSNMP"), "SetsEnabled", 7);
    ExpectDword(host.Subkey("VTNPERF"), "Timeout", 300'000);
    ExpectDword(host.Subkey("VTNMHOST"), "HostFlags", 1);
    ExpectString(m_debugger, "Debugger", "vtndbg -p %ld -e %ld -g");
    ExpectDword(m_agents.Service("VtMgStor").Subkey("VTNMIDA"), "DisableFlags", 3);
    ExpectDword(m_agents.Service("VtMgStor").Subkey("VTNSAS"), "DisableFlags", 5);
    ExpectString(host.Subkey("VTNMHOST"), "ClientIni", m_scripts.File("LOGIN.BAT"));
    EXPECT_TRUE(m_shares.Find("VTNDATA").has_value());
}

TEST_F(SetCommand, TouchesOnlyWhatIsNamed)
{
    Set(R"({"snmp":{"collectionIntervalSeconds":60}})");
    support::ExpectAbsent(m_role, "ServerRole");
    support::ExpectAbsent(m_agents.Service("VtMgStor").Subkey("VTNFCA"), "DisableFlags");
    support::ExpectAbsent(m_agents.Service("VtMgHost").Subkey("VTNSNMP"), "SetsEnabled");
    m_agents.Service("VtMgHost").Subkey("VTNPERF").Clear();
    Set(R"({"snmp":{"telnetDetection":false}})");
    support::ExpectAbsent(m_agents.Service("VtMgHost").Subkey("VTNPERF"), "Timeout");
}

TEST_F(SetCommand, TakesAServerRoleOfAllTheBytesThatThereAre)
{
    const std::string role(64, 'r');
    EXPECT_EQ(Set(R"({"snmp":{"serverRole":")" + role + "\"}}").errors, "");
    ExpectString(m_role, "ServerRole", role);
}

TEST_F(SetCommand, LeavesAloneWhatIsStoredJustSoBesideAChange)
{
    m_services.Add("VtMgStor", {.startType = SERVICE_AUTO_START});
    m_services.Add("VtMgServ", {.startType = SERVICE_DEMAND_START});
    Set(R"({"agents":{"VtMgHost":{"VTNPERF":true}}})");
    m_services.Add("VtMgServ", {.startType = SERVICE_DISABLED});
    ForgetCalls();
    Set(R"({"agents":{"VtMgHost":{"VTNPERF":false}}})");
    const std::string hostParameters = "HKLM\\" + m_agents.Parameters("VtMgHost").Path();
    EXPECT_EQ(Writes(), std::vector<std::string>{"RegSetValueExA " + hostParameters + ", SubServices"});
}

// A manager that answers from the registry, while it goes by what it was configured with.
TEST_F(SetCommand, ConfiguresAManagerThatReadsItsAnswersFromTheRegistry)
{
    for (const char* name : {"VtMgHost", "VtMgServ"})
        m_services.Add(name, {.startType = SERVICE_DISABLED});
    const auto answer = support::HookImport<decltype(QueryServiceConfigA)>(
        GetModuleHandleA(nullptr), "QueryServiceConfigA", [&](auto original, auto... arguments) {
            for (const char* name : {"VtMgHost", "VtMgServ"})
                m_services.Add(name, StoredConfig(m_agents.Service(name)));
            return original(arguments...);
        });

    EXPECT_EQ(Set(R"({"agents":{"VtMgServ":{"VTNHEALTH":true}}})").errors, "");

    const std::vector<std::string> expected = {
        "ChangeServiceConfigA VtMgHost startType=2", "ChangeServiceConfigA VtMgServ startType=2",
        "ChangeServiceConfigA VtMgHost dependencies=VtMgServ/VtMgStor/SNMP/"};
    EXPECT_EQ(m_log.CallsOf({"ChangeServiceConfigA"}), expected);
}

TEST_F(SetCommand, SwitchesRemoteRebootOffWithSets)
{
    Set(R"({"snmp":{"setsEnabled":true,"remoteReboot":true}})");
    const Answer answer = Set(R"({"snmp":{"setsEnabled":false}})", {"--changes"});
    EXPECT_EQ(answer.lines[2].size(), 2);
    ExpectDword(m_agents.Service("VtMgHost").Subkey("VTNSNMP"), "SetsEnabled", 0);
}

TEST_F(SetCommand, MarksAProcessThatDoesNotRunAsAddedByHand)
{
    using namespace std::string_literals;
    m_tasks.names = {"Running.exe"};
    Set(R"({"processMonitor":{"RUNNING.exe":"stop"," Typed.exe ":"start"}})");
    const std::string stored = "\x02running.exe\0\x81typed.exe\0"s;
    support::ExpectBinary(m_agents.Parameters("VtMgHost"), "ProcMon", {stored.begin(), stored.end()});
}

TEST_F(SetCommand, ShowsAProcessThatIsNotListedAsOneWithoutMonitoring)
{
    const auto changeTo = [this](const std::string& option) {
        return Set(R"({"processMonitor":{"typed.exe":")" + option + "\"}}", {"--changes"}).lines.at(2);
    };
    const Json listed = {{"path", "processMonitor.typed.exe"}, {"old", "none"}, {"new", "stop"}};
    const Json gone = {{"path", "processMonitor.typed.exe"}, {"old", "stop"}, {"new", "none"}};
    EXPECT_EQ(changeTo("stop"), Json::array({listed}));
    EXPECT_EQ(changeTo("none"), Json::array({gone}));
}

TEST_F(SetCommand, KeepsMarksAndOptionsWithoutNames)
{
    using namespace std::string_literals;
    Store("\x83typed.exe\0\x02plain.exe\0\x15later.exe\0"s);
    Set(R"({"processMonitor":{"*":"none"}})");
    const std::string stored = "\x15later.exe\0\x80typed.exe\0"s;
    support::ExpectBinary(m_agents.Parameters("VtMgHost"), "ProcMon", {stored.begin(), stored.end()});
}

TEST_F(SetCommand, ChangesOptionsAndKeepsTheMarksOfTheirProcesses)
{
    using namespace std::string_literals;
    Store("\x83typed.exe\0\x01plain.exe\0"s);
    Set(R"({"processMonitor":{"typed.exe":"start","plain.exe":"stop"}})");
    const std::string stored = "\x02plain.exe\0\x81typed.exe\0"s;
    support::ExpectBinary(m_agents.Parameters("VtMgHost"), "ProcMon", {stored.begin(), stored.end()});
}

TEST_F(SetCommand, StoresNoProcessThatIsNotToBeWatched)
{
    using namespace std::string_literals;
    Set(R"({"processMonitor":{"a.exe":"stop","new.exe":"none"}})");
    const std::string stored = "\x82\x61.exe\0"s;
    support::ExpectBinary(m_agents.Parameters("VtMgHost"), "ProcMon", {stored.begin(), stored.end()});
}

TEST_F(SetCommand, WritesNoBatteryToABoardThatHasNone)
{
    m_board.record = {.battery = 2, .remoteAlerting = 1, .serverResetPending = 1, .resetRequest = 0};
    Set(R"({"board":{"remoteAlerting":false}})");
    ASSERT_EQ(m_board.written.size(), 1);
    EXPECT_EQ(m_board.written[0].battery, 0);
    EXPECT_EQ(m_board.written[0].remoteAlerting, 0);
    EXPECT_EQ(m_board.written[0].serverResetPending, 1);
}

TEST_F(SetCommand, TakesADocumentFromAFile)
{
    TestStreams streams;
    streams.files["settings.json"] = R"({"snmp":{"serverRole":"files"}})";
    EXPECT_EQ(RunCommand({"set", "settings.json"}, streams), ExitCode::Done);
    ExpectString(m_role, "ServerRole", "files");
}

TEST_F(SetCommand, TakesAHyphenForStandardInput)
{
    EXPECT_EQ(Run({"set", "-"}, R"({"snmp":{"serverRole":"files"}})").lines.size(), 2);
    ExpectString(m_role, "ServerRole", "files");
}

TEST_F(SetCommand, TakesASlashForTheBeginningOfAPath)
{
    TestStreams streams;
    streams.files["/restart"] = "{}";
    EXPECT_EQ(RunCommand({"set", "/restart"}, streams), ExitCode::Done) << streams.errors;
}

TEST_F(SetCommand, SaysWhatWasWrittenBeforeAFailure)
{
    MakeDomainController();
    m_shares.Fail("NetShareAdd", ERROR_ACCESS_DENIED);
    const Answer answer = Set(R"({"snmp":{"telnetDetection":false},"desktopManagement":{"enabled":true}})");
    EXPECT_EQ(answer.code, ExitCode::Failed);
    EXPECT_TRUE(answer.lines.empty());
    EXPECT_TRUE(answer.errors.starts_with("vtncfg: desktopManagement: ")) << answer.errors;
    EXPECT_TRUE(
        answer.errors.ends_with(" Written before: snmp.telnetDetection and desktopManagement.enabled.\n"))
        << answer.errors;
}

TEST_F(SetCommand, SaysWhenTheBoardDoesNotTakeItsSettings)
{
    m_boardStatus = ERROR_NOT_READY;
    const Answer answer = Set(R"({"board":{"battery":false}})");
    EXPECT_EQ(answer.code, ExitCode::Failed);
    EXPECT_EQ(answer.errors,
              "vtncfg: board: the board did not take its settings (code 21); try again when it "
              "answers. Nothing had been written before.\n");
}

TEST_F(SetCommand, SaysWhenAnAgentPassedOverAValue)
{
    const support::ReplacedImport refuse(GetModuleHandleA(nullptr), "RegSetValueExA", +RefuseSetsEnabled);
    const Answer answer = Set(R"({"snmp":{"setsEnabled":true}})");
    EXPECT_EQ(answer.code, ExitCode::Failed);
    EXPECT_EQ(answer.errors, "vtncfg: snmp.setsEnabled: was written and is false all the same; check who may "
                             "change it. Nothing had been "
                             "written before.\n");
}

TEST_F(SetCommand, SaysWhenWhatWasWrittenBeforeAFailureCannotBeRead)
{
    const auto refuse = support::HookImport<decltype(RegSetValueExA)>(
        GetModuleHandleA(nullptr), "RegSetValueExA", [&](auto /*original*/, auto... /*arguments*/) {
            m_agents.Service("VtMgStor").Subkey("VTNSAS").Delete();
            return LSTATUS{ERROR_ACCESS_DENIED};
        });
    EXPECT_EQ(
        Set(R"({"snmp":{"setsEnabled":true}})").errors,
        "vtncfg: snmp.setsEnabled: was written and is false all the same; check who may change it. What "
        "had been written before cannot be read; run 'vtncfg get'.\n");
}

TEST_F(SetCommand, TakesBackWhatWasShownBesideAStoredProcessWithoutAName)
{
    Store(std::string("\x01\0\x02 b\0", 6));
    const Json before = Get();
    EXPECT_EQ(before["processMonitor"].dump(), R"({"*":"none"," b":"stop"})");
    EXPECT_EQ(Set(before.dump()).lines.at(1).dump(), "[]");
}

} // namespace
