// What a command prints when memory is missing in one of its steps.
#include "CommandMachine.h"

#include <new>

namespace {

// Streams one of whose operations has no memory.
class StreamsWithoutMemory : public TestStreams
{
  public:
    std::string ReadInput() override { return hasInput ? TestStreams::ReadInput() : throw std::bad_alloc(); }
    void Write(const std::string& /*text*/) override { throw std::bad_alloc(); }

    bool hasInput = true;
};

class MemoryError : public CommandMachine
{
  protected:
    // What `set` prints that has no memory for its input or, with input, for its output.
    std::string ErrorsOf(const std::vector<std::string>& arguments, bool hasInput)
    {
        StreamsWithoutMemory streams;
        streams.input = R"({"snmp":{"serverRole":"files"}})";
        streams.hasInput = hasInput;
        EXPECT_EQ(RunCommand(arguments, streams), ExitCode::Failed);
        return streams.errors;
    }
};

TEST_F(MemoryError, BeforeTheChangesIsPlain)
{
    EXPECT_EQ(ErrorsOf({"set"}, false), "vtncfg: there is not enough memory to go on\n");
    EXPECT_EQ(ErrorsOf({"set", "--what-if"}, true), "vtncfg: there is not enough memory to go on\n");
    support::ExpectAbsent(m_role, "ServerRole");
}

TEST_F(MemoryError, AfterTheChangesSaysThatTheyAreWritten)
{
    EXPECT_EQ(ErrorsOf({"set"}, true),
              "vtncfg: the changes are written, but there is not enough memory to go on\n");
    support::ExpectString(m_role, "ServerRole", "files");
}

TEST_F(MemoryError, BetweenTheChangesSaysWhatIsWritten)
{
    const auto write = support::HookImport<decltype(RegSetValueExA)>(
        GetModuleHandleA(nullptr), "RegSetValueExA", [](auto original, HKEY key, LPCSTR name, auto... more) {
            return std::string(name) == "HostFlags" ? throw std::bad_alloc() : original(key, name, more...);
        });
    EXPECT_EQ(Set(R"({"snmp":{"serverRole":"files","telnetDetection":false}})").errors,
              "vtncfg: There is not enough memory to go on. Written before: snmp.serverRole.\n");
    EXPECT_EQ(Set(R"({"snmp":{"telnetDetection":false}})").errors,
              "vtncfg: There is not enough memory to go on. Nothing had been written before.\n");
}

} // namespace
