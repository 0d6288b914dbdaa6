// Names on the Services page that are longer than its lists are wide.
#include "applet/ServicesPageTest.h"

namespace {

class ServicesPageLongName : public ServicesPage
{
  protected:
    // The first agent is active and has a long name.
    ServicesPageLongName()
    {
        AddAgents("VtMgHost", {"VTNA", "VTNMHOST"}, {"VTNA"});
        m_agents.Service("VtMgHost").Subkey("VTNA").SetString("DisplayName", m_name);
    }

    // The style says whether there is a scroll bar at the time.
    static void ExpectScrollBar(const DialogDriver& page, int list, bool isThere,
                                support::Location where = support::Location::current())
    {
        const LONG style = GetWindowLongA(page.Control(list), GWL_STYLE);
        support::ExpectEqual(isThere, (style & WS_HSCROLL) != 0, "scroll bar of " + std::to_string(list),
                             where);
    }

    // Pixels that the name takes in the list's font.
    [[nodiscard]] int WidthOfName(HWND list) const
    {
        const HDC context = GetDC(nullptr);
        const auto font = reinterpret_cast<HGDIOBJ>(support::SendWithin(list, WM_GETFONT));
        const HGDIOBJ former = SelectObject(context, font);
        SIZE size{};
        GetTextExtentPoint32A(context, m_name.data(), static_cast<int>(m_name.size()), &size);
        SelectObject(context, former);
        ReleaseDC(nullptr, context);
        return static_cast<int>(size.cx);
    }

    const std::string m_name = "Norvale Fibre Channel Host Bus Adapter and Switch Fabric Agent";
};

TEST_F(ServicesPageLongName, CanBeScrolledToItsEnd)
{
    const HWND list = Open().Control(activeList);
    const auto extent = static_cast<int>(support::SendWithin(list, LB_GETHORIZONTALEXTENT));
    EXPECT_GT(extent, WidthOfName(list));
    EXPECT_LT(extent, WidthOfName(list) + 12);
    m_host.PressCancel();
}

TEST_F(ServicesPageLongName, GivesAScrollBarToItsListAlone)
{
    const DialogDriver page = Open();
    ExpectScrollBar(page, activeList, true);
    ExpectScrollBar(page, inactiveList, false);
    m_host.PressCancel();
}

TEST_F(ServicesPageLongName, TakesTheScrollBarAlongWhenItIsMoved)
{
    const DialogDriver page = Open();
    page.Click(removeButton);
    ExpectScrollBar(page, activeList, false);
    ExpectScrollBar(page, inactiveList, true);
    page.Select(inactiveList, 1);
    page.Click(addButton);
    ExpectScrollBar(page, activeList, true);
    ExpectScrollBar(page, inactiveList, false);
    m_host.PressCancel();
}

} // namespace
