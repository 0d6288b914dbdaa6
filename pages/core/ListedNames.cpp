// The search without the list box.
#include "pages/core/ListedNames.h"

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
    m_beginnings.emplace(bare, true);
    // List boxes take a line that begins with "[" for a directory or, with "[-", for a drive, and look behind
    // the marks as well.
    if (bare.starts_with("["))
        m_beginnings.emplace(bare.substr(1), false);
    if (bare.starts_with("[-"))
        m_beginnings.emplace(bare.substr(2), false);
}

ListedNames::FirstMatch ListedNames::Find(const std::string& name) const
{
    const auto [first, last] = m_beginnings.equal_range(name);
    if (std::none_of(first, last, [](const auto& beginning) { return beginning.second; }))
        return FirstMatch::AnotherOrNone;
    // List boxes have rules of their own for other letters and for an empty text.
    if (name.empty() || !IsAscii(name))
        return FirstMatch::AskTheList;
    const bool isLast = last == m_beginnings.end() || !last->first.starts_with(name);
    return isLast && std::next(first) == last ? FirstMatch::TheName : FirstMatch::AskTheList;
}
