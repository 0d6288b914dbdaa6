// Answers for a long list box what its own search for a name would find, without looking at every line.
#pragma once

#include <map>
#include <string>

// The names of the lines that a list box was filled with; the name of a line ends before its first tab.
class ListedNames
{
  public:
    // What the list's search for a name comes to.
    enum class FirstMatch
    {
        AnotherOrNone, // not a line of just this name, which is nowhere in the list
        TheName,
        AskTheList, // several lines begin with the name, and the list's order decides
    };

    // A line with this name, in lower case, is in the list now.
    void Add(const std::string& name);

    // For the first line that begins with `name`, in lower case.
    [[nodiscard]] FirstMatch Find(const std::string& name) const;

  private:
    // Every text that a search compares with the beginning of what it looks for, and whether it is a whole
    // name.
    std::multimap<std::string, bool> m_beginnings;
};
