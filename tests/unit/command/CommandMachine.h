// A machine with every agent, made up in the registry and by scripts, and the program's commands run on it.
// For the tests of the command line without a process of its own.
#pragma once

#include "command/Commands.h"
#include "command/Json.h"
#include "command/TestStreams.h"
#include "machine/AgentMachine.h"
#include "machine/BoardScript.h"
#include "machine/TaskListScript.h"
#include "support/CallLog.h"
#include "support/FakeClock.h"
#include "support/RegistryCalls.h"
#include "support/ServiceScript.h"
#include "support/ShareScript.h"
#include "support/TestDirectory.h"

#include <gtest/gtest.h>
#include <optional>

// What a command left behind.
struct Answer
{
    ExitCode code = ExitCode::Done;
    std::vector<Json> lines; // of standard output
    std::string errors;
};

class CommandMachine : public testing::Test
{
  protected:
    CommandMachine();

    // Runs a command with `input` on its standard input.
    Answer Run(const std::vector<std::string>& arguments, const std::string& input = {});
    // The document of this machine.
    Json Get();
    Answer Set(const std::string& document, const std::vector<std::string>& options = {});
    // Fails the test at the caller's line unless the document is refused just so, and nothing written.
    void ExpectRefused(const std::string& document, const std::string& error,
                       support::Location where = support::Location::current());

    // Everything that wrote: to the registry, the service manager, the shares and the board.
    [[nodiscard]] std::vector<std::string> Writes() const;
    void ForgetCalls();

    void Store(const std::string& processes) const;
    void MakeDomainController() const { m_product.SetString("ProductType", "LanmanNT"); }

    support::TestDirectory m_windows;
    support::TestDirectory m_scripts;
    support::SavedVariable m_systemRoot{"SystemRoot", m_windows.Path()};
    support::SavedVariable m_windir{"windir", m_windows.Path()};
    AgentMachine m_agents;
    support::SavedKey m_role{"SOFTWARE\\Vortan Lumora Agent"};
    support::SavedKey m_debugger{"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\AeDebug"};
    support::SavedKey m_product{"SYSTEM\\CurrentControlSet\\Control\\ProductOptions"};
    support::SavedKey m_server{"SYSTEM\\CurrentControlSet\\Services\\LanmanServer\\Parameters"};
    support::CallLog m_log;
    support::RegistryCalls m_registry{GetModuleHandleA(nullptr), &m_log};
    support::ServiceScript m_services{GetModuleHandleA(nullptr), &m_log};
    support::ShareScript m_shares{GetModuleHandleA(nullptr)};
    support::LibraryScript m_libraries{GetModuleHandleA(nullptr)};
    support::BoardScript m_board{m_libraries};
    // A board that keeps what it is given, or answers with another status.
    DWORD WriteBoard(const BoardData& data);
    DWORD m_boardStatus = ERROR_SUCCESS;
    support::Turn<CommandMachine> m_turn{this};
    support::TaskListScript m_tasks{m_libraries};
    support::FakeClock m_clock{GetModuleHandleA(nullptr), 1000, &m_log};
};
