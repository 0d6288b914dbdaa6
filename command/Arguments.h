// The command line.
#pragma once

#include <string>
#include <vector>

// What is to be done.
struct Arguments
{
    // The commands of the program.
    enum class Command
    {
        Get,
        Set,
        Test,
        Restart,
        Schema,
        Print, // a text that the command line asked for: help, or the version
    };

    Command command = Command::Print;
    std::string text;      // of Print
    std::string file;      // the document; empty or "-" for standard input
    bool isPretty = false; // for people: in lines, indented
    bool showsChanges = false;
    bool isWhatIf = false;
    bool restartsAgents = false;
    bool hasExitCode = false; // a difference is to be seen from the exit code
};

// Whether errors are to be written as JSON, which must be known of a command line that is wrong, too.
[[nodiscard]] bool WantsJsonErrors(const std::vector<std::string>& arguments);

// Takes the arguments apart, those after the program's name, in UTF-8. Throws CommandError.
[[nodiscard]] Arguments ParseArguments(const std::vector<std::string>& arguments);
