// What the tests of the Remote Lumora page share: the page with a made-up board and services, as its user
// sees it.
#pragma once

#include "applet/AppletTest.h"
#include "machine/BoardScript.h"
#include "resources/resource.h"
#include "support/FakeClock.h"
#include "support/ServiceScript.h"

#include <algorithm>
#include <array>

class BoardPageTest : public AppletTest
{
  protected:
    static constexpr char tab[] = "Remote Lumora";
    static constexpr DWORD notReady = ERROR_NOT_READY; // what the board answers while it cannot

    support::DialogDriver Open()
    {
        m_host.Open();
        return m_host.Page(tab);
    }

    [[nodiscard]] support::DialogDriver Page() const { return m_host.ActivePage(); }

    // States of the three boxes.
    [[nodiscard]] std::array<bool, 3> Checked() const
    {
        return {Page().IsChecked(IDC_BOARD_BATTERY), Page().IsChecked(IDC_BOARD_REMOTE_ALERTING),
                Page().IsChecked(IDC_BOARD_SERVER_RESET)};
    }

    [[nodiscard]] bool Offered()
    {
        m_host.Open();
        const std::vector<std::string> tabs = m_host.Tabs();
        m_host.PressCancel();
        return std::find(tabs.begin(), tabs.end(), tab) != tabs.end();
    }

    // Presses the reset button, says yes, and waits for the end of the reset.
    void Reset()
    {
        m_boxes.Answer(IDYES);
        Page().Click(IDC_BOARD_RESET);
    }

    // The next `count` reads fail, after the one that the reset begins with.
    void FailReadsOfTheReset(std::size_t count)
    {
        m_board.readStatuses.assign(count, notReady);
        m_board.readStatuses.push_front(ERROR_SUCCESS);
    }

    void ExpectWritten(const BoardData& data, support::Location where = support::Location::current())
    {
        ASSERT_FALSE(m_board.written.empty());
        const BoardData& last = m_board.written.back();
        support::ExpectEqual(data.battery, last.battery, "battery", where);
        support::ExpectEqual(data.remoteAlerting, last.remoteAlerting, "remote alerting", where);
        support::ExpectEqual(data.serverResetPending, last.serverResetPending, "server reset pending", where);
        support::ExpectEqual(data.resetRequest, last.resetRequest, "reset request", where);
    }

    support::LibraryScript m_libraries{m_host.Module()};
    support::BoardScript m_board{m_libraries};
    support::ServiceScript m_services{m_host.Module()};
    support::FakeClock m_clock{m_host.Module()};
};
