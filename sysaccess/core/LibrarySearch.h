// Where Windows looks for a library that is named without its directory.
#pragma once

#include <string>

// The directory of Windows' own libraries, without a backslash at its end; empty when Windows does not report
// it.
[[nodiscard]] std::string SystemDirectory();

// Takes the current directory, in which anybody may have put a library, out of the search for as long as it
// lives. The search is the process's: what its program had set is put back.
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
    std::string m_before; // empty when nothing was set
    bool m_isInForce = false;
};
