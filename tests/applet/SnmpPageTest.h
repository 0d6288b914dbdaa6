// The SNMP Settings page of the built applet, for the tests of its controls and its keys.
#pragma once

#include "applet/AppletTest.h"
#include "resources/resource.h"

class SnmpPage : public AppletTest
{
  protected:
    support::DialogDriver Open()
    {
        m_host.Open();
        return m_host.Page("SNMP Settings");
    }

    // What the page as it was opened shows, without saving it.
    template <typename Question>
    auto Ask(Question question)
    {
        const auto answer = question(Open());
        m_host.PressCancel();
        return answer;
    }
};
