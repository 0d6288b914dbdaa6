// The streams of a command that runs inside the test program: in memory.
#pragma once

#include "command/Streams.h"

#include <map>
#include <string>
#include <string_view>

class TestStreams : public Streams
{
  public:
    std::string ReadInput() override { return input; }
    std::string ReadFile(const std::string& name) override { return files.at(name); }
    void Write(const std::string& text) override { output += text; }
    void WriteError(std::string_view text) override { errors += text; }

    std::string input;
    std::map<std::string, std::string> files;
    std::string output;
    std::string errors;
};
