// The commands and their options.
#include "command/Arguments.h"

#include "command/CommandError.h"
#include "command/Version.h"

#include <algorithm>
#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

namespace {

constexpr char jsonErrors[] = "--json-errors";

constexpr char footer[] =
    "Exit codes: 0 done; 1 refused or failed; 2 wrong usage or document; 3 'test --exit-code' found a "
    "difference.";

void AddFile(CLI::App& command, Arguments& parsed)
{
    command.add_option("FILE", parsed.file, "The document; without it, or for -, standard input.");
}

// Each command says in `parsed` that it was asked for.
CLI::App& AddCommand(CLI::App& program, Arguments& parsed, Arguments::Command command, const char* name,
                     const char* description)
{
    CLI::App& added = *program.add_subcommand(name, description);
    added.callback([&parsed, command] { parsed.command = command; });
    added.fallthrough();
    return added;
}

void AddCommands(CLI::App& program, Arguments& parsed)
{
    using enum Arguments::Command;
    constexpr char pretty[] = "In lines, indented, for people.";
    AddCommand(program, parsed, Get, "get", "Prints the settings of this machine as one document.")
        .add_flag("--pretty", parsed.isPretty, pretty);

    CLI::App& set = AddCommand(program, parsed, Set, "set",
                               "Applies a document; prints the state after it and what has changed.");
    AddFile(set, parsed);
    set.add_flag("--changes", parsed.showsChanges, "Also prints every changed member, old and new.");
    set.add_flag("--what-if", parsed.isWhatIf, "Prints the same and writes nothing.");
    set.add_flag("--restart", parsed.restartsAgents, "Restarts the agents when something has changed.");

    CLI::App& test = AddCommand(program, parsed, Test, "test",
                                "Prints the state, whether it is as a document says, and what differs.");
    AddFile(test, parsed);
    test.add_flag("--exit-code", parsed.hasExitCode, "Ends with exit code 3 when something differs.");

    AddCommand(program, parsed, Restart, "restart", "Restarts the agents' services.");
    AddCommand(program, parsed, Schema, "schema", "Prints the JSON Schema of the document.")
        .add_flag("--pretty", parsed.isPretty, pretty);
}

} // namespace

bool WantsJsonErrors(const std::vector<std::string>& arguments)
{
    return std::ranges::find(arguments, jsonErrors) != arguments.end();
}

Arguments ParseArguments(const std::vector<std::string>& arguments)
{
    Arguments parsed;
    CLI::App program("Reads and writes the settings of the Norvale Management Agents on this machine.",
                     "vtncfg");
    program.footer(footer);
    bool hasJsonErrors = false; // WantsJsonErrors looks for it
    program.add_flag(jsonErrors, hasJsonErrors, "Errors as JSON, for programs that read them.");
    program.set_version_flag("--version", std::string("vtncfg ") + productVersion);
    program.allow_windows_style_options(false); // a name may begin with a slash
    program.require_subcommand(1);
    AddCommands(program, parsed);
    try {
        program.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend())); // the last one first
    } catch (const CLI::CallForVersion& version) {
        parsed.text = std::string(version.what()) + "\n";
    } catch (const CLI::CallForHelp&) {
        parsed.text = program.help();
    } catch (const CLI::ParseError& error) {
        throw CommandError(ExitCode::WrongUse,
                           std::string(error.what()) + "; 'vtncfg --help' says what there is");
    }
    return parsed;
}
