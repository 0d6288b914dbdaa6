// The command that compares the machine with a document, and those that need no machine.
#include "CommandMachine.h"

namespace {

using TestCommand = CommandMachine;

TEST_F(TestCommand, SaysThatTheMachineIsAsTheDocumentSays)
{
    const Answer answer = Run({"test", "--exit-code"}, R"({"snmp":{"telnetDetection":true}})");
    EXPECT_EQ(answer.code, ExitCode::Done);
    Json state = Get();
    state["_inDesiredState"] = true;
    EXPECT_EQ(answer.lines, (std::vector<Json>{state, Json::array()}));
}

TEST_F(TestCommand, NamesWhatDiffersAndWritesNothing)
{
    const std::string document =
        R"({"board":{"battery":false},"snmp":{"telnetDetection":false,"setsEnabled":false}})";
    const Answer answer = Run({"test"}, document);
    EXPECT_EQ(answer.code, ExitCode::Done);
    EXPECT_EQ(answer.lines[0]["_inDesiredState"], false);
    EXPECT_EQ(answer.lines[0]["snmp"]["telnetDetection"], true);
    EXPECT_EQ(answer.lines[1], Json({"snmp", "board"}));
    EXPECT_EQ(Run({"test", "--exit-code"}, document).code, ExitCode::Different);
    EXPECT_EQ(Writes(), std::vector<std::string>());
}

TEST_F(TestCommand, RefusesWhatCannotBe)
{
    EXPECT_EQ(Run({"test"}, R"({"snmp":{"remoteReboot":true}})").code, ExitCode::WrongUse);
}

TEST_F(TestCommand, TakesItsOwnAnswerForADocument)
{
    const Answer answer = Run({"test"}, "{}");
    EXPECT_EQ(Run({"test", "--exit-code"}, answer.lines[0].dump()).code, ExitCode::Done);
}

TEST(Schema, NamesEveryMemberOfEverySection)
{
    TestStreams streams;
    ASSERT_EQ(RunCommand({"schema"}, streams), ExitCode::Done);
    const Json schema = Json::parse(streams.output);
    EXPECT_EQ(schema["$schema"], "https://json-schema.org/draft/2020-12/schema");
    EXPECT_EQ(schema["additionalProperties"], false);
    const Json& members = schema["properties"];
    EXPECT_EQ(members["snmp"]["properties"].size(), 7);
    EXPECT_EQ(members["snmp"]["properties"]["collectionIntervalSeconds"]["enum"].size(), 16);
    EXPECT_EQ(members["storage"]["properties"].size(), 4);
    EXPECT_EQ(members["board"]["properties"].size(), 3);
    EXPECT_EQ(members["desktopManagement"]["properties"].size(), 2);
    EXPECT_EQ(members["agents"]["properties"].size(), agentServices.size());
    EXPECT_TRUE(members.contains("_inDesiredState"));
}

TEST(Help, NamesEveryCommandAndExitCode)
{
    TestStreams streams;
    EXPECT_EQ(RunCommand({"--help"}, streams), ExitCode::Done);
    for (const char* word :
         {"get", "set", "test", "restart", "schema", "--json-errors", "--version", "Exit codes: 0"})
        EXPECT_NE(streams.output.find(word), std::string::npos) << word;
    TestStreams set;
    EXPECT_EQ(RunCommand({"set", "--help"}, set), ExitCode::Done);
    for (const char* word : {"FILE", "--changes", "--what-if", "--restart"})
        EXPECT_NE(set.output.find(word), std::string::npos) << word;
}

TEST(Version, IsTheProductsOwn)
{
    TestStreams streams;
    EXPECT_EQ(RunCommand({"--version"}, streams), ExitCode::Done);
    EXPECT_TRUE(streams.output.starts_with("vtncfg ")) << streams.output;
    EXPECT_TRUE(streams.output.ends_with("\n"));
}

TEST(Pretty, IsForPeople)
{
    TestStreams streams;
    EXPECT_EQ(RunCommand({"schema", "--pretty"}, streams), ExitCode::Done);
    EXPECT_TRUE(streams.output.starts_with("{\n  \"$schema\""));
}

} // namespace
