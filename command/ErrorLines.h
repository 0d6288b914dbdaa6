// Lines on standard error: errors, and what is being done meanwhile.
#pragma once

#include "command/Streams.h"

#include <string>

class ErrorLines
{
  public:
    // As JSON, or as plain lines that begin with the program's name.
    ErrorLines(Streams& streams, bool isJson) : m_streams(streams), m_isJson(isJson) {}

    // Each writes one line of ASCII; `text` is in UTF-8.
    void Error(const std::string& text) { Write("error", text); }
    void Note(const std::string& text) { Write("info", text); }
    // An error that needs no memory for its text; it adds that the changes are there when `isWritten`.
    void OutOfMemory(bool isWritten);

  private:
    void Write(const char* kind, const std::string& text);

    Streams& m_streams;
    bool m_isJson;
};
