// Where Windows looks for a library that is named without its directory.
#pragma once

#include "sysaccess/core/Handles.h"

#include <string>

// The directory of Windows' own libraries, without a backslash at its end; empty when Windows does not report
// it.
[[nodiscard]] std::string SystemDirectory();

// Loads a library from that directory alone; null when it is not there.
[[nodiscard]] UniqueLibrary LoadSystemLibrary(const std::string& fileName);

// Takes the current directory, in which anybody may have put a library, out of the search for as long as it
// lives. The search is the process's: that of a program which has set a directory of its own, and thereby
// taken the current one out, stays as it is.
class SearchWithoutCurrentDirectory
{
  public:
    SearchWithoutCurrentDirectory();
    ~SearchWithoutCurrentDirectory();
    SearchWithoutCurrentDirectory(const SearchWithoutCurrentDirectory&) = delete;
    SearchWithoutCurrentDirectory& operator=(const SearchWithoutCurrentDirectory&) = delete;

    // False when Windows refuses; then nothing should be loaded by its name alone.
    [[nodiscard]] bool IsInForce() const { return m_isInForce; }

  private:
    bool m_isInForce;
    bool m_isOurs = false; // and to be put back
};
