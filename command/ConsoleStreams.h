// The program's standard handles and the files of the machine.
#pragma once

#include "command/Streams.h"

// Bytes pass as they are: lines end with a line feed alone.
class ConsoleStreams : public Streams
{
  public:
    std::string ReadInput() override;
    std::string ReadFile(const std::string& name) override;
    void Write(const std::string& text) override;
    void WriteError(std::string_view text) override;
};
