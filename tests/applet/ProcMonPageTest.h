// What the tests of the Process Monitor page share: the page with made-up processes, as its user sees it.
#pragma once

#include "applet/AppletTest.h"
#include "machine/TaskListScript.h"
#include "resources/resource.h"
#include "support/LibraryScript.h"

#include <string>
#include <vector>

using Rows = std::vector<std::string>;

class ProcMonPageTest : public AppletTest
{
  protected:
    static constexpr char tab[] = "Process Monitor";

    // The stored configuration.
    void Store(const std::string& entries)
    {
        m_machine.hostParameters.SetBinary("ProcMon", support::Bytes(entries.begin(), entries.end()));
    }
    void ExpectStored(const std::string& entries, support::Location where = support::Location::current())
    {
        support::ExpectBinary(m_machine.hostParameters, "ProcMon",
                              support::Bytes(entries.begin(), entries.end()), where);
    }

    support::DialogDriver Open()
    {
        m_host.Open();
        return m_host.Page(tab);
    }

    [[nodiscard]] support::DialogDriver Page() const { return m_host.ActivePage(); }
    [[nodiscard]] Rows Items() const { return Page().Items(IDC_PROCMON_LIST); }
    void Select(int row) const { Page().Select(IDC_PROCMON_LIST, row); }

    // The text of the checked option; empty when none is.
    [[nodiscard]] std::string CheckedOption() const
    {
        for (int id = IDC_PROCMON_NONE; id <= IDC_PROCMON_START_STOP; ++id) {
            if (Page().IsChecked(id))
                return Page().Text(id);
        }
        return {};
    }

    // The in-place edit; null when it is not open over the list.
    [[nodiscard]] HWND InPlaceEdit() const
    {
        return GetDlgItem(Page().Control(IDC_PROCMON_LIST), IDC_PROCMON_NEW_NAME);
    }

    // Presses the left mouse button over a point of a window, from its client area's corner, and lets go.
    void ClickAt(HWND window, LPARAM point, UINT pressed = WM_LBUTTONDOWN) const
    {
        PostMessageA(window, pressed, MK_LBUTTON, point);
        PostMessageA(window, WM_LBUTTONUP, 0, point);
        m_host.Thread().Settle();
    }
    void ClickRow(int row) const
    {
        const HWND list = Page().Control(IDC_PROCMON_LIST);
        RECT place{};
        support::SendWithin(list, LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
        ClickAt(list, MAKELPARAM(place.right - 5, place.top + 3));
    }

    void PressAdd() const { Page().Click(IDC_PROCMON_ADD); }
    void Press(WORD key) const { m_host.PressKey(key); }

    // Types into the control that has the focus.
    void Type(const std::string& text) const
    {
        for (const char character : text)
            PostMessageA(m_host.Thread().Focus(), WM_CHAR, static_cast<BYTE>(character), 1);
        m_host.Thread().Settle();
    }

    // Adds a name and moves on to the list.
    void Add(const std::string& name) const
    {
        PressAdd();
        Type(name);
        Page().Focus(IDC_PROCMON_LIST);
        m_host.Thread().Settle();
    }

    support::LibraryScript m_libraries{m_host.Module()};
    support::TaskListScript m_tasks{m_libraries};
};
