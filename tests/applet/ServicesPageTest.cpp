// The Services page through its window: the two lists, and moving agents with the mouse.
#include "applet/ServicesPageTest.h"

#include "imports/ImportHook.h"
#include "support/HelpRecorder.h"

#include <set>

namespace {

// --- the lists

TEST_F(ServicesPage, ShowsTheAgentsOfAllServicesInTheirOrder)
{
    AddAgents("VtMgHost", {"VTNA", "VTNB"}, {"VTNB"});
    AddAgents("VtMgServ", {"VTNC", "VTND"}, {"VTNC"});
    AddAgents("VTNNicMgmt", {"VTNE"}, {"VTNE"});
    const DialogDriver page = Open();
    ExpectLists(page, {"VTNB", "VTNC", "VTNE"}, {"VTNA", "VTNMHOST", "VTND"});
    m_host.PressCancel();
}

TEST_F(ServicesPage, ShowsDisplayNamesWhereThereAreAny)
{
    AddAgents("VtMgHost", {"VTNA", "VTNB", "VTNC"}, {"VTNA"});
    m_agents.Service("VtMgHost").Subkey("VTNA").SetString("DisplayName", "Zone Agent");
    m_agents.Service("VtMgHost").Subkey("VTNC").SetExpandString("DisplayName", "%SystemRoot%");
    ExpectLists(Open(), {"Zone Agent"}, {"VTNB", "VTNC", "VTNMHOST"});
    m_host.PressCancel();
}

TEST_F(ServicesPage, ShowsNoSubkeysThatAreNoAgents)
{
    AddAgents("VtMgHost", {"VTNA", "LINKAGE", "apptrap", "VtnSnmp", "vtnups"}, {"LINKAGE"});
    ExpectLists(Open(), {}, {"VTNA", "VTNMHOST"});
    m_host.PressCancel();
}

TEST_F(ServicesPage, LeavesOutAnUnreadableServiceSilently)
{
    AddAgents("VtMgHost", {"VTNA"}, {});
    AddAgents("VTNNicMgmt", {"VTNE"}, {});
    m_agents.Service("VtMgServ").Delete();
    ExpectLists(Open(), {}, {"VTNA", "VTNMHOST", "VTNE"});
    m_host.PressCancel();
    EXPECT_TRUE(m_boxes.Shown().empty());
}

TEST_F(ServicesPage, IsEmptyWhenNoServiceHasAgents)
{
    auto end = support::HookImport<decltype(RegEnumKeyA)>(
        m_host.Module(), "RegEnumKeyA",
        [](auto, HKEY, DWORD, LPSTR, DWORD) -> LSTATUS { return ERROR_NO_MORE_ITEMS; });
    const DialogDriver page = Open();
    ExpectLists(page, {}, {});
    ExpectActiveEnabled(page, false);
    ExpectInactiveEnabled(page, false);
    m_host.PressCancel();
}

TEST_F(ServicesPage, KeepsWithEachItemWhereItsEntryIs)
{
    m_agents.SetActive("VtMgHost", {"VTNMHOST"});
    AddAgents("VtMgServ", {"VTNA", "VTNB"}, {});
    AddAgents("VTNNicMgmt", {"VTNE"}, {});
    const DialogDriver page = Open();
    Names places;
    for (WPARAM row = 0; row < 3; ++row)
        places.push_back(
            std::to_string(support::SendWithin(page.Control(inactiveList), LB_GETITEMDATA, row)));
    // The entries are counted with the hidden ones, here the parameters; the storage service is left out.
    EXPECT_EQ(places, (Names{"65537", "65538", "131073"}));
    m_host.PressCancel();
}

TEST_F(ServicesPage, SelectsTheFirstAgentOfEachList)
{
    AddAgents("VtMgHost", {"VTNA", "VTNB", "VTNC"}, {"VTNC"});
    const DialogDriver page = Open();
    EXPECT_EQ(page.Selection(activeList), 0);
    EXPECT_EQ(page.Selection(inactiveList), 0);
    m_host.PressCancel();
}

// --- moving

TEST_F(ServicesPageMove, AddAppendsTheAgentToTheActiveOnes)
{
    const DialogDriver page = Open();
    page.Select(inactiveList, 1);
    page.Click(addButton);
    ExpectLists(page, {"VTNA", "VTNB", "VTNMHOST"}, {"VTNC"});
    m_host.PressCancel();
}

TEST_F(ServicesPageMove, RemoveAppendsTheAgentToTheInactiveOnes)
{
    const DialogDriver page = Open();
    page.Click(removeButton);
    ExpectLists(page, {"VTNB"}, {"VTNC", "VTNMHOST", "VTNA"});
    m_host.PressCancel();
}

TEST_F(ServicesPageMove, ADoubleClickMovesTheAgentUnderTheMouse)
{
    const DialogDriver page = Open();
    DoubleClick(page, inactiveList, 1);
    ExpectLists(page, {"VTNA", "VTNB", "VTNMHOST"}, {"VTNC"});
    DoubleClick(page, activeList, 1);
    ExpectLists(page, {"VTNA", "VTNMHOST"}, {"VTNC", "VTNB"});
    m_host.PressCancel();
}

// A double-click on the empty part of a list that has no selection.
void DoubleClickNothing(const DialogDriver& page, int list)
{
    support::SendWithin(page.Control(list), LB_SETCURSEL, static_cast<WPARAM>(-1));
    support::SendWithin(page.Window(), WM_COMMAND, MAKEWPARAM(list, LBN_DBLCLK),
                        reinterpret_cast<LPARAM>(page.Control(list)));
}

TEST_F(ServicesPageMove, ADoubleClickWithoutASelectionDoesNothing)
{
    const DialogDriver page = Open();
    DoubleClickNothing(page, activeList);
    DoubleClickNothing(page, inactiveList);
    ExpectLists(page, {"VTNA", "VTNB"}, {"VTNC", "VTNMHOST"});
    m_host.PressOk();
    support::ExpectAbsent(m_agents.Service("VtMgHost"), "Start");
}

TEST_F(ServicesPageMove, AMoveAfterAnEmptyDoubleClickAppends)
{
    const DialogDriver page = Open();
    DoubleClickNothing(page, activeList);
    page.Select(inactiveList, 0);
    page.Click(addButton);
    ExpectLists(page, {"VTNA", "VTNB", "VTNC"}, {"VTNMHOST"});
    m_host.PressCancel();
}

TEST_F(ServicesPageMove, AMovedAgentKeepsItsEntry)
{
    const DialogDriver page = Open();
    page.Click(removeButton);
    EXPECT_EQ(support::SendWithin(page.Control(inactiveList), LB_GETITEMDATA, 2), 2);
    m_host.PressCancel();
}

TEST_F(ServicesPageMove, TheSideItCameFromSelectsItsFirstAgent)
{
    const DialogDriver page = Open();
    page.Select(inactiveList, 1);
    page.Click(addButton);
    EXPECT_EQ(page.Selection(inactiveList), 0);
    EXPECT_EQ(page.Selection(activeList), 0);
    m_host.PressCancel();
}

TEST_F(ServicesPageMove, TheOtherSideKeepsItsSelection)
{
    const DialogDriver page = Open();
    page.Select(activeList, 1);
    page.Click(addButton);
    EXPECT_EQ(page.Selection(activeList), 1);
    m_host.PressCancel();
}

TEST_F(ServicesPageMove, TurningToAnotherPageAndBackKeepsTheLists)
{
    Open().Click(removeButton);
    m_host.Page("Storage");
    ExpectLists(m_host.Page("Services"), {"VTNB"}, {"VTNC", "VTNMHOST", "VTNA"});
    m_host.PressCancel();
}

// --- what can be used

TEST_F(ServicesPageMove, AnEmptiedListIsDisabledUntilAnAgentReturns)
{
    const DialogDriver page = Open();
    page.Click(removeButton);
    ExpectActiveEnabled(page, true);
    page.Click(removeButton);
    ExpectActiveEnabled(page, false);
    ExpectInactiveEnabled(page, true);
    page.Click(addButton);
    ExpectActiveEnabled(page, true);
    m_host.PressCancel();
}

TEST_F(ServicesPageMove, AnEmptyInactiveListIsDisabled)
{
    const DialogDriver page = Open();
    page.Click(addButton);
    page.Click(addButton);
    ExpectInactiveEnabled(page, false);
    ExpectActiveEnabled(page, true);
    m_host.PressCancel();
}

TEST_F(ServicesPageMove, TheFocusLeavesAnEmptiedList)
{
    const DialogDriver page = Open();
    DoubleClick(page, inactiveList, 0);
    EXPECT_EQ(Focus(), inactiveList);
    DoubleClick(page, inactiveList, 0);
    EXPECT_EQ(Focus(), activeList);
    m_host.PressCancel();
}

class ServicesPageLastAgent : public ServicesPage
{
  protected:
    // Presses a button that has the focus, as the space key does.
    void Press(const DialogDriver& page, int button)
    {
        page.Focus(button);
        m_host.PressKey(VK_SPACE);
    }
};

TEST_F(ServicesPageLastAgent, TakesTheFocusFromAddToRemove)
{
    const DialogDriver page = Open();
    Press(page, addButton);
    ExpectLists(page, {"VTNMHOST"}, {});
    EXPECT_EQ(Focus(), removeButton);
    ExpectInactiveEnabled(page, false);
    m_host.PressCancel();
}

TEST_F(ServicesPageLastAgent, TakesTheFocusFromRemoveToAdd)
{
    m_agents.SetActive("VtMgHost", {"VTNMHOST"});
    const DialogDriver page = Open();
    Press(page, removeButton);
    ExpectLists(page, {}, {"VTNMHOST"});
    EXPECT_EQ(Focus(), addButton);
    Press(page, addButton);
    EXPECT_EQ(Focus(), removeButton);
    m_host.PressCancel();
}

TEST_F(ServicesPageLastAgent, LeavesTheFocusWhereItIsElsewhere)
{
    m_agents.SetActive("VtMgHost", {"VTNMHOST"});
    const DialogDriver page = Open();
    m_host.Sheet().Focus(IDCANCEL);
    support::SendWithin(page.Window(), WM_COMMAND, MAKEWPARAM(removeButton, BN_CLICKED),
                        reinterpret_cast<LPARAM>(page.Control(removeButton)));
    ExpectLists(page, {}, {"VTNMHOST"});
    EXPECT_EQ(Focus(), IDCANCEL);
    m_host.PressCancel();
}

// --- help

TEST_F(ServicesPage, ShowsItsHelpTopic)
{
    support::HelpRecorder help(m_host.Module());
    Open();
    m_host.Sheet().Click(IDHELP);
    ASSERT_EQ(help.Requests().size(), 1U);
    EXPECT_EQ(help.Requests()[0].topic, "html\\vtnm7ktv.htm");
    m_host.PressCancel();
}

// A list box paints itself again with each item.
TEST_F(ServicesPage, FillsItsListsWhileTheyAreNotPainted)
{
    AddAgents("VtMgHost", {"VTNA", "VTNB"}, {"VTNA"});
    std::set<HWND> unpainted;
    int filled = 0;
    const auto note = support::HookImport<decltype(SendMessageA)>(
        m_host.Module(), "SendMessageA",
        [&](auto original, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
            if (message == WM_SETREDRAW && wParam == FALSE)
                unpainted.insert(window);
            if (message == WM_SETREDRAW && wParam != FALSE)
                unpainted.erase(window);
            if (message == LB_INSERTSTRING) {
                ++filled;
                EXPECT_TRUE(unpainted.contains(window)) << reinterpret_cast<LPCSTR>(lParam);
            }
            return original(window, message, wParam, lParam);
        });
    Open();
    EXPECT_EQ(filled, 3);
    EXPECT_TRUE(unpainted.empty());
    m_host.PressCancel();
}

// --- a list box that has no room for another item

class ServicesPageRoom : public ServicesPage
{
  protected:
    ServicesPageRoom() { AddAgents("VtMgHost", {"VTNA", "VTNB"}, {"VTNA", "VTNB"}); }

    // From now on the lists take `room` items together.
    auto Limit(int room)
    {
        return support::HookImport<decltype(SendMessageA)>(
            m_host.Module(), "SendMessageA",
            [=](auto original, HWND window, UINT message, WPARAM wParam, LPARAM lParam) mutable {
                const bool isRefused = message == LB_INSERTSTRING && room-- <= 0;
                return isRefused ? LRESULT{LB_ERRSPACE} : original(window, message, wParam, lParam);
            });
    }
};

TEST_F(ServicesPageRoom, KeepsAnAgentWhenTheOtherListIsFull)
{
    const DialogDriver page = Open();
    const auto limit = Limit(0);
    page.Click(removeButton);
    ExpectLists(page, {"VTNA", "VTNB"}, {"VTNMHOST"});
    EXPECT_EQ(m_host.PressOk(), 0);
    support::ExpectAbsent(m_agents.Service("VtMgHost"), "Start");
}

TEST_F(ServicesPageRoom, RefusesAgentsThatItCannotListAll)
{
    const auto limit = Limit(1);
    m_boxes.Answer(IDOK);
    m_host.DoubleClick();
    EXPECT_EQ(m_host.WaitForEnd(), 0);
    ASSERT_EQ(m_boxes.Shown().size(), 1U);
    EXPECT_EQ(m_boxes.Shown()[0].caption, "Management Agents Error");
    support::ExpectMultiString(m_agents.Parameters("VtMgHost"), "SubServices", {"VTNA", "VTNB"});
}

} // namespace
