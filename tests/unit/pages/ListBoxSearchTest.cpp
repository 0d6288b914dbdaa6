// The search without the list box agrees with the search of a real one.
#include "pages/core/ListedNames.h"

#include <gtest/gtest.h>
#include <random>
#include <windows.h>

namespace {

using FirstMatch = ListedNames::FirstMatch;

// A sorted list box on a window of its own, and what its own search answers.
class SortedList
{
  public:
    SortedList()
        : m_window(CreateWindowExA(0, "LISTBOX", "", WS_POPUP | LBS_SORT | LBS_HASSTRINGS | LBS_USETABSTOPS,
                                   0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr))
    {
    }
    ~SortedList() { DestroyWindow(m_window); }
    SortedList(const SortedList&) = delete;
    SortedList& operator=(const SortedList&) = delete;

    void Add(const std::string& name)
    {
        SendMessageA(m_window, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>((name + "\tNone").c_str()));
    }

    // Whether the first line that begins with the name is a line of just this name.
    [[nodiscard]] bool FindsFirst(const std::string& name) const
    {
        const LRESULT found = SendMessageA(m_window, LB_FINDSTRING, static_cast<WPARAM>(-1),
                                           reinterpret_cast<LPARAM>(name.c_str()));
        if (found == LB_ERR)
            return false;
        char line[64] = "";
        SendMessageA(m_window, LB_GETTEXT, static_cast<WPARAM>(found), reinterpret_cast<LPARAM>(&line[0]));
        return std::string(&line[0]).substr(0, std::string(&line[0]).find('\t')) == name;
    }

  private:
    HWND m_window;
};

// Short names over few characters: many begin alike, repeat, hold brackets, tabs, blanks and hyphens.
std::string RandomName(std::mt19937& random)
{
    constexpr std::string_view characters = "aab.[-] \t'1\xE4";
    std::string name;
    for (auto length = random() % 5; length > 0; --length)
        name += characters[random() % characters.size()];
    return name;
}

TEST(ListedNames, AgreesWithTheSearchOfASortedListBox)
{
    std::mt19937 random(20);
    int decided = 0;
    for (int round = 0; round < 200; ++round) {
        SortedList list;
        ListedNames listed;
        for (int i = 0; i < 30; ++i) {
            const std::string name = RandomName(random);
            const FirstMatch match = listed.Find(name);
            if (match != FirstMatch::AskTheList) {
                EXPECT_EQ(match == FirstMatch::TheName, list.FindsFirst(name)) << "name \"" << name << "\"";
                decided += match == FirstMatch::TheName;
            }
            list.Add(name);
            listed.Add(name);
        }
    }
    EXPECT_GT(decided, 50);
}

} // namespace
