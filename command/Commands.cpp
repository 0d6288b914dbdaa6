// What each command reads, does and prints.
#include "command/Commands.h"

#include "command/Arguments.h"
#include "command/ErrorLines.h"
#include "command/Machine.h"
#include "command/Restart.h"

#include <exception>
#include <new>

namespace {

void PrintLine(Streams& streams, const Json& value)
{
    streams.Write(OneLine(value) + "\n");
}

void Print(Streams& streams, const Json& value, bool isPretty)
{
    constexpr int indent = 2;
    if (isPretty)
        streams.Write(value.dump(indent, ' ', true, Json::error_handler_t::replace) + "\n");
    else
        PrintLine(streams, value);
}

Json ReadDocument(const Arguments& arguments, Streams& streams)
{
    const bool isInput = arguments.file.empty() || arguments.file == "-";
    return ParseDocument(isInput ? streams.ReadInput() : streams.ReadFile(arguments.file));
}

Json ListOf(const std::vector<MemberChange>& changes)
{
    Json list = Json::array();
    for (const MemberChange& change : changes)
        list.push_back({{"path", change.path}, {"old", change.before}, {"new", change.after}});
    return list;
}

ExitCode Get(const Arguments& arguments, Streams& streams)
{
    Machine machine;
    machine.Load();
    Print(streams, machine.Show(), arguments.isPretty);
    return ExitCode::Done;
}

// The state as it is afterwards, read anew unless nothing was written.
Json StateAfter(const Machine& machine, bool isWhatIf)
{
    if (isWhatIf)
        return machine.Show();
    Machine after;
    after.Load();
    return after.Show();
}

// Restarts the agents before anything is printed: a reader who is gone must not keep them from what was
// written.
ExitCode Finish(const Arguments& arguments, const Machine& machine, const std::vector<MemberChange>& changes,
                Streams& streams, ErrorLines& errors)
{
    const bool restarts = arguments.restartsAgents && !arguments.isWhatIf && !changes.empty();
    const ExitCode code = restarts ? RestartAgents(errors) : ExitCode::Done;
    PrintLine(streams, StateAfter(machine, arguments.isWhatIf));
    PrintLine(streams, ChangedSections(changes));
    if (arguments.showsChanges)
        PrintLine(streams, ListOf(changes));
    return code;
}

ExitCode Set(const Arguments& arguments, Streams& streams, ErrorLines& errors)
{
    const Json document = ReadDocument(arguments, streams);
    Machine machine;
    machine.Load();
    machine.Take(document);
    const std::vector<MemberChange> changes = machine.Changes();
    if (!arguments.isWhatIf)
        machine.Save();
    try {
        return Finish(arguments, machine, changes, streams, errors);
    } catch (const std::bad_alloc&) {
        errors.OutOfMemory(!arguments.isWhatIf);
        return ExitCode::Failed;
    }
}

ExitCode Test(const Arguments& arguments, Streams& streams)
{
    const Json document = ReadDocument(arguments, streams);
    Machine machine;
    machine.Load();
    Json state = machine.Show();
    machine.Take(document);
    const std::vector<MemberChange> differences = machine.Changes();
    state["_inDesiredState"] = differences.empty();
    PrintLine(streams, state);
    PrintLine(streams, ChangedSections(differences));
    return arguments.hasExitCode && !differences.empty() ? ExitCode::Different : ExitCode::Done;
}

ExitCode Run(const Arguments& arguments, Streams& streams, ErrorLines& errors)
{
    switch (arguments.command) {
    case Arguments::Command::Get:
        return Get(arguments, streams);
    case Arguments::Command::Set:
        return Set(arguments, streams, errors);
    case Arguments::Command::Test:
        return Test(arguments, streams);
    case Arguments::Command::Restart:
        return RestartAgents(errors);
    case Arguments::Command::Schema:
        Print(streams, Machine().Schema(), arguments.isPretty);
        return ExitCode::Done;
    case Arguments::Command::Print:
        streams.Write(arguments.text);
        return ExitCode::Done;
    }
    return ExitCode::WrongUse;
}

ExitCode RunReporting(const std::vector<std::string>& arguments, Streams& streams, ErrorLines& errors)
try {
    return Run(ParseArguments(arguments), streams, errors);
} catch (const CommandError& error) {
    errors.Error(error.Text());
    return error.Code();
} catch (const std::bad_alloc&) {
    throw;
} catch (const std::exception& error) {
    errors.Error(std::string("cannot go on: ") + error.what());
    return ExitCode::Failed;
}

} // namespace

ExitCode RunCommand(const std::vector<std::string>& arguments, Streams& streams)
{
    ErrorLines errors(streams, WantsJsonErrors(arguments));
    try {
        return RunReporting(arguments, streams, errors);
    } catch (const std::bad_alloc&) {
        errors.OutOfMemory(false);
        return ExitCode::Failed;
    }
}
