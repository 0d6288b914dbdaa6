// The command that compares the machine with a document, and those that need no machine.
#include "CommandMachine.h"

#include "command/Version.h"

#include <algorithm>
#include <set>
#include <stdexcept>

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
    EXPECT_EQ(Run({"test"}, R"({"_inDesiredState":true,"snmp":{"serverRole":"files"}})").lines.at(1),
              Json({"snmp"}));
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
    EXPECT_EQ(members["snmp"]["properties"]["collectionIntervalSeconds"]["enum"],
              Json({5, 10, 15, 20, 30, 60, 120, 180, 240, 300, 600, 1200, 1800, 2400, 3000, 3600}));
    EXPECT_EQ(members["storage"]["properties"].size(), 4);
    EXPECT_EQ(members["board"]["properties"].size(), 3);
    EXPECT_EQ(members["desktopManagement"]["properties"].size(), 2);
    EXPECT_EQ(members["agents"]["properties"].size(), agentServices.size());
    EXPECT_EQ(members["_inDesiredState"]["readOnly"], true);
}

// Fails unless the schema has known keywords alone: a misspelt one would be ignored by whoever checks a
// document with it. A description is a sentence, and a type is one of those that members have.
void ExpectUsable(const Json& schema)
{
    const std::set<std::string> keywords = {"$schema", "title",      "description",
                                            "type",    "properties", "additionalProperties",
                                            "enum",    "const",      "readOnly"};
    for (const auto& [keyword, value] : schema.items())
        EXPECT_TRUE(keywords.contains(keyword)) << keyword;
    EXPECT_TRUE(schema.value("description", ".").ends_with('.')) << schema["description"].dump();
    const std::set<Json> types = {"object", "boolean", "string", Json::array({"boolean", "null"})};
    EXPECT_TRUE(types.contains(schema.value("type", Json("object")))) << schema["type"].dump();
    const Json members = schema.value("properties", Json::object());
    for (const auto& [name, member] : members.items())
        ExpectUsable(member);
    if (schema.contains("additionalProperties") && schema["additionalProperties"].is_object())
        ExpectUsable(schema["additionalProperties"]);
}

TEST(Schema, HasKnownKeywordsAloneAndAllowsNoOtherMembers)
{
    TestStreams streams;
    ASSERT_EQ(RunCommand({"schema"}, streams), ExitCode::Done);
    const Json schema = Json::parse(streams.output);
    ExpectUsable(schema);
    EXPECT_EQ(schema["type"], "object");
    EXPECT_EQ(schema["title"], "Configuration of the Norvale Management Agents");
    for (const char* section : {"snmp", "storage", "board", "desktopManagement", "agents"}) {
        EXPECT_EQ(schema["properties"][section]["type"], "object") << section;
        EXPECT_EQ(schema["properties"][section]["additionalProperties"], false) << section;
    }
    const Json& processes = schema["properties"]["processMonitor"];
    EXPECT_EQ(processes["properties"]["*"]["const"], "none");
    EXPECT_EQ(processes["additionalProperties"]["enum"],
              Json::array({"none", "start", "stop", "startAndStop"}));
}

// What `vtncfg` prints about a command, each run of blanks as one.
std::string HelpOf(std::vector<std::string> command)
{
    command.emplace_back("--help");
    TestStreams streams;
    EXPECT_EQ(RunCommand(command, streams), ExitCode::Done);
    std::string help = streams.output;
    const auto areBlanks = [](char left, char right) { return left == ' ' && right == ' '; };
    help.erase(std::unique(help.begin(), help.end(), areBlanks), help.end());
    return help;
}

struct Described
{
    std::vector<std::string> command;
    std::vector<std::string> lines; // their ends, in this order
};

class Help : public testing::TestWithParam<Described>
{
};

TEST_P(Help, DescribesTheCommandAndItsOptions)
{
    const std::string help = HelpOf(GetParam().command);
    std::size_t place = 0;
    for (const std::string& line : GetParam().lines) {
        const std::size_t found = help.find(line + "\n", place);
        ASSERT_NE(found, std::string::npos) << line << "\nis not in\n" << help.substr(place);
        place = found + line.size();
    }
}

INSTANTIATE_TEST_SUITE_P(
    Commands, Help,
    testing::Values(
        Described{{},
                  {"Reads and writes the settings of the Norvale Management Agents on this machine.",
                   "Usage: vtncfg [OPTIONS] SUBCOMMAND",
                   " --json-errors Errors as JSON, for programs that read them.",
                   " --version Display program version information and exit",
                   " get Prints the settings of this machine as one document.",
                   " set Applies a document; prints the state after it and what has changed.",
                   " test Prints the state, whether it is as a document says, and what differs.",
                   " restart Restarts the agents' services.",
                   " schema Prints the JSON Schema of the document.",
                   "Exit codes: 0 done; 1 refused or failed; 2 wrong usage or document; 3 'test --exit-code' "
                   "found a difference."}},
        Described{{"get"}, {" --pretty In lines, indented, for people."}},
        Described{{"set"},
                  {" FILE TEXT The document; without it, or for -, standard input.",
                   " --changes Also prints every changed member, old and new.",
                   " --what-if Prints the same and writes nothing.",
                   " --restart Restarts the agents when something has changed."}},
        Described{{"test"},
                  {" FILE TEXT The document; without it, or for -, standard input.",
                   " --exit-code Ends with exit code 3 when something differs."}},
        Described{{"schema"}, {" --pretty In lines, indented, for people."}}),
    [](const testing::TestParamInfo<Described>& described) {
        return described.param.command.empty() ? "program" : described.param.command.front();
    });

TEST(Version, IsTheProductsOwn)
{
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--version"}, {"get", "--version"}})
    {
        TestStreams streams;
        EXPECT_EQ(RunCommand(arguments, streams), ExitCode::Done);
        EXPECT_EQ(streams.output, std::string("vtncfg ") + productVersion + "\n");
    }
}

TEST(ExitCodes, AreThoseOfTheHelp)
{
    EXPECT_EQ(static_cast<int>(ExitCode::Done), 0);
    EXPECT_EQ(static_cast<int>(ExitCode::Failed), 1);
    EXPECT_EQ(static_cast<int>(ExitCode::WrongUse), 2);
    EXPECT_EQ(static_cast<int>(ExitCode::Different), 3);
}

// Standard input that breaks off.
class BrokenStreams : public TestStreams
{
  public:
    std::string ReadInput() override { throw std::runtime_error("the input is gone"); }
};

TEST(UnforeseenErrors, EndACommandWithTheirReason)
{
    BrokenStreams streams;
    EXPECT_EQ(RunCommand({"set"}, streams), ExitCode::Failed);
    EXPECT_EQ(streams.errors, "vtncfg: cannot go on: the input is gone\n");
}

TEST(Pretty, IsForPeople)
{
    TestStreams streams;
    EXPECT_EQ(RunCommand({"schema", "--pretty"}, streams), ExitCode::Done);
    EXPECT_TRUE(streams.output.starts_with("{\n  \"$schema\""));
    EXPECT_EQ(streams.output, Json::parse(streams.output).dump(2) + "\n");
}

} // namespace
