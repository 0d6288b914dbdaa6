// How a command ends, and the error that ends it.
#pragma once

#include <stdexcept>
#include <string>

// The exit codes of the program.
enum class ExitCode
{
    Done = 0,
    Failed = 1,    // the machine refused, or input or output failed
    WrongUse = 2,  // the command line or the document is wrong
    Different = 3, // the machine is not as the document says, for a test that was asked to say so
};

// Ends a command. The text is one line in UTF-8: where, what, and what to do.
class CommandError : public std::runtime_error
{
  public:
    CommandError(ExitCode code, const std::string& text)
        : std::runtime_error(text), m_code(code), m_text(text)
    {
    }

    // What the program exits with.
    [[nodiscard]] ExitCode Code() const { return m_code; }
    // The whole text: what() ends at a zero character, which a name in a document may hold.
    [[nodiscard]] const std::string& Text() const { return m_text; }

  private:
    ExitCode m_code;
    std::string m_text;
};

// The document's member at `path` cannot be as it says.
[[noreturn]] inline void RefuseMember(const std::string& path, const std::string& reason)
{
    throw CommandError(ExitCode::WrongUse, path + ": " + reason);
}
