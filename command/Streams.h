// What a command reads and writes besides the settings.
#pragma once

#include <string>
#include <string_view>

// Each operation but WriteError throws CommandError when it fails.
class Streams
{
  public:
    virtual ~Streams() = default;

    // All of standard input.
    virtual std::string ReadInput() = 0;
    // All of a file; its name is in UTF-8.
    virtual std::string ReadFile(const std::string& name) = 0;
    // Writes to standard output at once.
    virtual void Write(const std::string& text) = 0;
    // Writes to standard error, without memory for it. There is nobody to report a failure to.
    virtual void WriteError(std::string_view text) = 0;
};
