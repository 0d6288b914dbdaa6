// The Services page on a machine whose agents are the test's. Shared by the tests of its lists and of its
// save.
#pragma once

#include "applet/AppletTest.h"
#include "machine/AgentMachine.h"
#include "resources/resource.h"
#include "support/ServiceScript.h"

#include <array>
#include <string_view>

using support::DialogDriver;
using Names = std::vector<std::string>;

constexpr int activeList = IDC_SERVICES_ACTIVE_LIST;
constexpr int inactiveList = IDC_SERVICES_INACTIVE_LIST;
constexpr int addButton = IDC_SERVICES_ADD;
constexpr int removeButton = IDC_SERVICES_REMOVE;

// The other pages need the subkeys of the host and storage agents. So the host agent stands in the lists,
// too; the storage service lacks its parameters, so that the page leaves it out.
class ServicesPage : public AppletTest
{
  protected:
    ServicesPage()
    {
        for (const support::TestKey& key :
             {m_machine.hostSnmp, m_machine.hostAgent, m_machine.parkedDebugger})
            key.Create();
        for (const support::TestKey& key : {m_machine.fibreAgent, m_machine.arrayAgent, m_machine.sasAgent})
            key.SetDword("DisableFlags", 0);
        m_agents.Parameters("VtMgStor").Delete();
    }

    // Sub-agents of one service, named in the order in which the registry lists them.
    void AddAgents(const std::string& service, const Names& names, const Names& active)
    {
        for (const std::string& name : names)
            m_agents.AddAgent(service, name);
        m_agents.SetActive(service, active);
    }

    DialogDriver Open()
    {
        m_host.Open();
        return m_host.Page("Services");
    }

    // Presses each of the letters' keys with Alt, in the control that has the focus by then.
    void PressAltKeys(std::string_view letters) const
    {
        for (const char letter : letters)
            m_host.PressKeyWithAlt(static_cast<BYTE>(letter));
    }

    // Double-clicks a row as the mouse does.
    void DoubleClick(const DialogDriver& page, int list, int row) const
    {
        const HWND control = page.Control(list);
        const auto height = static_cast<int>(support::SendWithin(control, LB_GETITEMHEIGHT));
        const LPARAM place = MAKELPARAM(5, row * height + height / 2);
        for (const UINT message :
             std::array<UINT, 4>{WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP})
            PostMessageA(control, message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, place);
        m_host.Thread().Settle();
    }

    // Id of the control with the focus.
    [[nodiscard]] int Focus() const { return GetDlgCtrlID(m_host.Thread().Focus()); }

    static void ExpectLists(const DialogDriver& page, const Names& active, const Names& inactive,
                            support::Location where = support::Location::current())
    {
        support::ExpectEqual(active, page.Items(activeList), "active agents", where);
        support::ExpectEqual(inactive, page.Items(inactiveList), "inactive agents", where);
    }

    static void ExpectEnabled(const DialogDriver& page, int list, int label, int button, bool isEnabled,
                              support::Location where = support::Location::current())
    {
        for (const int id : {list, label, button})
            support::ExpectEqual(isEnabled, page.IsEnabled(id), "control " + std::to_string(id), where);
    }
    static void ExpectActiveEnabled(const DialogDriver& page, bool isEnabled,
                                    support::Location where = support::Location::current())
    {
        ExpectEnabled(page, activeList, IDC_SERVICES_ACTIVE_LABEL, removeButton, isEnabled, where);
    }
    static void ExpectInactiveEnabled(const DialogDriver& page, bool isEnabled,
                                      support::Location where = support::Location::current())
    {
        ExpectEnabled(page, inactiveList, IDC_SERVICES_INACTIVE_LABEL, addButton, isEnabled, where);
    }

    AgentMachine m_agents;
    support::ServiceScript m_services{m_host.Module()};
};

// Four agents of the main service, two on each side.
class ServicesPageMove : public ServicesPage
{
  protected:
    ServicesPageMove() { AddAgents("VtMgHost", {"VTNA", "VTNB", "VTNC", "VTNMHOST"}, {"VTNA", "VTNB"}); }
};
