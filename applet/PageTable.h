// The pages of the sheet in one table: when the user sees each, its place among the tabs and in the saving,
// and what its change means for the restart. The sheet and the restart decision follow it.
#pragma once

#include "applet/PageConditions.h"

#include <algorithm>
#include <array>
#include <cstddef>

// What a page of the sheet is about.
enum class PageRole
{
    Services,
    Storage,
    Snmp,
    Desktop,
    Board,
    ProcessMonitor,
};

// When the sheet saves a page.
enum class PageSave
{
    Always,
    WhenChanged,
};

// What must be restarted before a page's change takes effect.
enum class PageRestart
{
    Agents,
    AgentsAndMachine,
};

// One page; places are counted from 0.
struct PageRule
{
    PageRole role;
    bool (*isOffered)();   // whether the user sees it; asked when the sheet is put together
    std::size_t tabPlace;  // from left to right, counted without regard to pages that are not offered
    std::size_t savePlace; // from first to last
    PageSave save;
    PageRestart restart;
};

// In the order of the roles, in which the pages are constructed. The save returns the board's result, so the
// board comes last.
inline constexpr std::array pageTable = {
    PageRule{PageRole::Services, IsAlwaysOffered, 0, 0, PageSave::Always, PageRestart::Agents},
    PageRule{PageRole::Storage, IsAlwaysOffered, 2, 3, PageSave::Always, PageRestart::Agents},
    PageRule{PageRole::Snmp, IsAlwaysOffered, 1, 1, PageSave::Always, PageRestart::Agents},
    PageRule{PageRole::Desktop, IsDesktopOffered, 3, 4, PageSave::Always, PageRestart::AgentsAndMachine},
    PageRule{PageRole::Board, IsBoardOffered, 5, 5, PageSave::WhenChanged, PageRestart::Agents},
    PageRule{PageRole::ProcessMonitor, IsProcessMonitorOffered, 4, 2, PageSave::WhenChanged,
             PageRestart::Agents},
};

using PageOrder = std::array<const PageRule*, pageTable.size()>;

// The rows by one of their places; null where no row has the place.
constexpr PageOrder PagesByPlace(std::size_t PageRule::*place)
{
    PageOrder order{};
    for (const PageRule& page : pageTable)
        order[page.*place] = &page;
    return order;
}

// The pages in the order of the tabs, and in that of the saving.
inline constexpr PageOrder pagesByTab = PagesByPlace(&PageRule::tabPlace);
inline constexpr PageOrder pagesBySave = PagesByPlace(&PageRule::savePlace);
static_assert(std::ranges::find(pagesByTab, nullptr) == pagesByTab.end(), "two pages have one tab");
static_assert(std::ranges::find(pagesBySave, nullptr) == pagesBySave.end(), "two pages are saved at once");
