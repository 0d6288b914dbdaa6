// Lets every single allocation of each command fail: it ends as with all the memory it needs, or with exit
// code 1 and a line that says why, and never claims what is not so. Where the library for JSON takes memory
// in a destructor, the program ends at once. A sample of eight each time; all with VTN_THOROUGH in the
// environment.
#include "CommandMachine.h"

#include "support/ModuleMemory.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <memory>
#include <sstream>

namespace {

using support::ServiceState;

constexpr char everything[] =
    R"({"agents":{"VtMgHost":{"VTNPERF":true}},"snmp":{"serverRole":"mail","collectionIntervalSeconds":60,)"
    R"("setsEnabled":true,"exceptionTrap":true},"processMonitor":{"a.exe":"stop"},)"
    R"("storage":{"sasTapeSupport":false},"desktopManagement":{"enabled":true},"board":{"battery":false}})";

struct Command
{
    const char* name;
    std::vector<std::string> arguments;
    const char* input;
    bool writes = true;
};

std::ostream& operator<<(std::ostream& out, const Command& command)
{
    return out << command.name;
}

// How one run ended.
struct End
{
    bool isEndedAtOnce = false; // by the terminate handler
    ExitCode code = ExitCode::Done;
    std::string output;
    std::string errors;
    std::map<std::string, std::string> stored;
    std::vector<DWORD> services; // their states
    std::size_t allocations = 0;
};

// Runs `command` in a thread of its own, which std::terminate ends instead of the program; false when it did.
class TerminableThread
{
  public:
    explicit TerminableThread(std::function<void()> command)
        : m_command(std::move(command)), m_handler(std::set_terminate([] { ExitThread(terminated); }))
    {
    }
    ~TerminableThread() { std::set_terminate(m_handler); }
    TerminableThread(const TerminableThread&) = delete;
    TerminableThread& operator=(const TerminableThread&) = delete;

    [[nodiscard]] bool Run()
    {
        const HANDLE thread = CreateThread(nullptr, 0, &Main, this, 0, nullptr);
        WaitForSingleObject(thread, INFINITE);
        DWORD code = terminated;
        GetExitCodeThread(thread, &code);
        CloseHandle(thread);
        return code != terminated;
    }

  private:
    static constexpr DWORD terminated = 1;

    static DWORD WINAPI Main(void* self)
    {
        static_cast<TerminableThread*>(self)->m_command();
        return 0;
    }

    std::function<void()> m_command;
    std::terminate_handler m_handler;
};

// The machine of one run.
class OneMachine : public CommandMachine
{
  public:
    OneMachine()
    {
        MakeDomainController();
        m_services.Add("SNMP", {.displayName = "SNMP Service",
                                .states = {ServiceState(SERVICE_RUNNING)},
                                .dependents = {"VtMgStor", "VtMgHost"}});
        for (const char* name : {"VtMgHost", "VtMgStor"})
            m_services.Add(name, {.displayName = name, .states = {ServiceState(SERVICE_RUNNING)}});
    }
    void TestBody() override {}

    // Runs the command while allocation number `failing` (from 1) fails; none for 0.
    End Run(const Command& command, std::size_t failing)
    {
        TestStreams streams;
        streams.input = command.input;
        End end;
        {
            support::ModuleMemory memory(GetModuleHandleA(nullptr));
            // The stand-ins' own memory must not fail in a destructor.
            const auto keys = support::HookImport<decltype(RegCloseKey)>(
                GetModuleHandleA(nullptr), "RegCloseKey", [&](auto original, HKEY key) {
                    const support::ModuleMemory::Pause pause(memory);
                    return original(key);
                });
            const auto services = support::HookImport<decltype(CloseServiceHandle)>(
                GetModuleHandleA(nullptr), "CloseServiceHandle", [&](auto original, SC_HANDLE handle) {
                    const support::ModuleMemory::Pause pause(memory);
                    return original(handle);
                });
            TerminableThread thread([&] {
                memory.Arm(failing, 1, GetCurrentThreadId());
                end.code = RunCommand(command.arguments, streams);
            });
            end.isEndedAtOnce = !thread.Run();
            memory.Disarm();
            end.allocations = memory.Taken();
        }
        end.output = WithoutDirectory(streams.output);
        end.errors = streams.errors;
        end.stored = Stored();
        for (const char* name : {"SNMP", "VtMgHost", "VtMgStor"})
            end.services.push_back(m_services.Service(name).states.front().dwCurrentState);
        return end;
    }

    [[nodiscard]] std::map<std::string, std::string> Stored() const
    {
        std::map<std::string, std::string> stored;
        for (const char* service : {"VtMgHost", "VtMgServ", "VtMgStor", "VTNNicMgmt"})
            Add(stored, support::TestKey(std::string("SYSTEM\\CurrentControlSet\\Services\\") + service));
        for (const support::TestKey* key : {static_cast<const support::TestKey*>(&m_role),
                                            static_cast<const support::TestKey*>(&m_debugger),
                                            static_cast<const support::TestKey*>(&m_server)})
            Add(stored, *key);
        stored["script"] = support::ReadBytes(m_scripts.File("LOGIN.BAT")).value_or("");
        return stored;
    }

  private:
    // The script's directory is another in each run.
    [[nodiscard]] std::string WithoutDirectory(std::string output) const
    {
        const std::string quoted = Json(m_scripts.Path()).dump();
        const std::string directory = quoted.substr(1, quoted.size() - 2);
        for (std::size_t at = output.find(directory); at != std::string::npos; at = output.find(directory))
            output.erase(at, directory.size());
        return output;
    }

    static void Add(std::map<std::string, std::string>& stored, const support::TestKey& key)
    {
        for (const std::string& name : key.ValueNames())
            stored[key.Path() + ", " + name] =
                name == "ClientIni" ? "the script" : testing::PrintToString(*key.Value(name));
        for (const std::string& name : key.SubkeyNames())
            Add(stored, key.Subkey(name));
    }
};

class MissingMemory : public testing::TestWithParam<Command>
{
  protected:
    End Run(std::size_t failing)
    {
        if (GetParam().writes)
            m_machine.reset();
        if (m_machine == nullptr)
            m_machine = std::make_unique<OneMachine>();
        return m_machine->Run(GetParam(), failing);
    }

    void Check(const End& reference, const End& found) const
    {
        if (found.isEndedAtOnce) {
            CheckStored(reference, found);
            return;
        }
        const bool isSame = found.code == reference.code && found.output == reference.output;
        EXPECT_TRUE(isSame || found.code == ExitCode::Failed)
            << "exit code " << static_cast<int>(found.code) << '\n'
            << found.errors << found.output;
        if (found.code == ExitCode::Failed) {
            CheckFailure(reference, found);
            return;
        }
        EXPECT_EQ(found.services, reference.services);
        EXPECT_EQ(WithoutScript(found.stored), WithoutScript(reference.stored));
    }

    // A line says why; all are in the form that was asked for.
    void CheckFailure(const End& reference, const End& found) const
    {
        EXPECT_TRUE(found.errors.ends_with('\n')) << found.errors;
        const bool isJson = std::ranges::count(GetParam().arguments, "--json-errors") != 0;
        std::istringstream lines(found.errors);
        for (std::string line; std::getline(lines, line);)
            EXPECT_TRUE(isJson ? Json::accept(line) : line.starts_with("vtncfg: ")) << line;
        EXPECT_EQ(found.errors.find("bad_alloc"), std::string::npos) << found.errors;
        CheckStored(reference, found);
    }

    // Each value is the old one or the new one.
    void CheckStored(const End& reference, const End& found) const
    {
        for (const auto& [item, content] : WithoutScript(found.stored)) {
            const auto before = m_before.find(item);
            const auto after = reference.stored.find(item);
            EXPECT_TRUE((before != m_before.end() && before->second == content) ||
                        (after != reference.stored.end() && after->second == content))
                << item << " is now: " << content;
        }
    }

    // The script is edited line by line, and saved as far as that went.
    static std::map<std::string, std::string> WithoutScript(std::map<std::string, std::string> stored)
    {
        stored.erase("script");
        return stored;
    }

    std::map<std::string, std::string> m_before = OneMachine().Stored();
    std::unique_ptr<OneMachine> m_machine;
};

TEST_P(MissingMemory, NeverEndsInAFalseSuccess)
{
    const End reference = Run(0);
    ASSERT_FALSE(reference.isEndedAtOnce);
    const std::size_t step = std::getenv("VTN_THOROUGH") != nullptr ? 1 : reference.allocations / 8 + 1;
    std::size_t tried = 0;
    std::size_t endedAtOnce = 0;
    for (std::size_t failing = (step + 1) / 2; failing <= reference.allocations; failing += step, ++tried) {
        SCOPED_TRACE("allocation " + std::to_string(failing));
        const End found = Run(failing);
        Check(reference, found);
        endedAtOnce += found.isEndedAtOnce ? 1 : 0;
    }
    std::printf("%s: %zu allocations, %zu failed, %zu of them ended the program at once\n", GetParam().name,
                reference.allocations, tried, endedAtOnce);
}

std::string NameOf(const testing::TestParamInfo<Command>& info)
{
    return info.param.name;
}

const Command commands[] = {
    {"Get", {"get"}, "", false},
    {"GetPretty", {"get", "--pretty"}, "", false},
    {"Schema", {"schema"}, "", false},
    {"Set", {"set", "--changes"}, everything},
    {"SetWithJsonErrors", {"set", "--json-errors"}, everything},
    {"SetAndRestart", {"set", "--restart"}, R"({"snmp":{"serverRole":"mail"}})"},
    {"WhatIf", {"set", "--what-if", "--changes"}, everything, false},
    {"TestOfADifference", {"test", "--exit-code"}, everything, false},
    {"TestOfNone", {"test", "--exit-code"}, R"({"snmp":{"telnetDetection":true}})", false},
    {"Restart", {"restart"}, ""},
};

INSTANTIATE_TEST_SUITE_P(Commands, MissingMemory, testing::ValuesIn(commands), NameOf);

} // namespace
