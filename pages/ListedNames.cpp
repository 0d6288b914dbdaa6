// The search without the list box.
#include "pages/ListedNames.h"

#include <algorithm>
#include <iterator>

namespace {

bool IsAscii(const std::string& text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

} // namespace

void ListedNames::Add(const std::string& name)
{
    const std::string bare = name.substr(0, name.find('\t'));
    m_names.insert(bare);
    m_beginnings.insert(bare);
    // List boxes take a line that begins with "[" for a directory or, with "[-", for a drive, and look behind
    // the marks as well.
    if (bare.starts_with("["))
        m_beginnings.insert(bare.substr(1));
    if (bare.starts_with("[-"))
        m_beginnings.insert(bare.substr(2));
}

ListedNames::FirstMatch ListedNames::Find(const std::string& name) const
{
    if (!m_names.contains(name))
        return FirstMatch::AnotherOrNone;
    // How a list box compares other letters, and what it finds for an empty text, is its own affair.
    if (name.empty() || !IsAscii(name))
        return FirstMatch::AskTheList;
    const auto next = std::next(m_beginnings.lower_bound(name));
    const bool isAlone = next == m_beginnings.end() || !next->starts_with(name);
    return isAlone ? FirstMatch::TheName : FirstMatch::AskTheList;
}
