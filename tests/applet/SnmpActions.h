// A machine for the SNMP Settings page's two buttons: the test trap, and the clearing of the thresholds.
#pragma once

#include "applet/AppletTest.h"
#include "pages/core/Thresholds.h"
#include "resources/resource.h"
#include "support/FakeClock.h"
#include "support/ServiceScript.h"

using Calls = std::vector<std::string>;

inline constexpr char appletCaption[] = "Norvale Management Agents";

// A machine whose services, clock and user do what the test says, with one log of what happens on it.
class SnmpActions : public testing::Test
{
  protected:
    SnmpActions()
    {
        m_traps.SetBinary(trapDataValue, {1});
        SetHostState(SERVICE_RUNNING);
        m_thresholds.Delete();
        for (const char* key : thresholdKeys)
            support::TestKey(key).SetDword("Rising", 90);
    }

    // SNMP and the two services that depend on it.
    void SetHostState(DWORD state)
    {
        m_services.Add(snmpServiceName, {.displayName = "SNMP Service",
                                         .states = {support::ServiceState(SERVICE_RUNNING)},
                                         .dependents = {storageServiceName, hostServiceName}});
        m_services.Add(hostServiceName,
                       {.displayName = "Host Agents", .states = {support::ServiceState(state)}});
        m_services.Add(storageServiceName,
                       {.displayName = "Storage Agents", .states = {support::ServiceState(SERVICE_RUNNING)}});
    }

    // Presses a button of the page, and closes the sheet when what it does has been done. All boxes that it
    // shows must belong to the page.
    void Press(int button, support::Location where = support::Location::current())
    {
        m_host.Open();
        const support::DialogDriver page = m_host.Page("SNMP Settings");
        const std::size_t earlierBoxes = m_boxes.Shown().size();
        m_log.Clear();
        page.Click(button);
        const std::vector<support::ShownBox> boxes = m_boxes.Shown();
        for (std::size_t i = earlierBoxes; i < boxes.size(); ++i)
            support::ExpectEqual(page.Window(), boxes[i].owner, "owner of " + boxes[i].text, where);
        m_host.PressCancel();
    }

    TestMachine m_machine;
    support::AppletHost m_host{appletPath};
    support::CallLog m_log;
    support::MessageBoxScript m_boxes{m_host.Module(), &m_log};
    support::SavedKey m_traps{trapKey};
    support::SavedKey m_thresholds{"SYSTEM\\VortanPermanent"};
    support::ServiceScript m_services{m_host.Module(), &m_log};
    support::FakeClock m_clock{m_host.Module(), 1000, &m_log};
};
