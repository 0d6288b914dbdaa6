// The Desktop Mgmt page of a domain controller, for the tests that open it.
#pragma once

#include "applet/AppletTest.h"
#include "resources/resource.h"
#include "support/ShareScript.h"
#include "support/TestDirectory.h"

// A domain controller whose NETLOGON share is a directory of the test; the sheet asks nothing at its end.
class ClientPage : public AppletTest
{
  protected:
    ClientPage()
    {
        m_machine.productOptions.SetString("ProductType", "LanmanNT");
        m_shares.Add("NETLOGON", {.path = m_scripts.Path()});
        CreateDirectoryA(m_windows.File("system32").c_str(), nullptr);
        CreateDirectoryA(m_windows.File("system32\\vtnmgmt").c_str(), nullptr);
        support::WriteBytes(m_windows.File("system32\\vtnmgmt\\VTNCLNT.EXE"), "the client");
        m_host.SetCommandLine("control.exe vtnmgmt.cpl /SETUP");
    }

    support::DialogDriver Open()
    {
        m_host.Open();
        return m_host.Page("Desktop Mgmt");
    }

    // The page of a machine on which desktop management is on.
    support::DialogDriver OpenSwitchedOn()
    {
        m_machine.hostAgent.SetString("ClientIni", m_script);
        return Open();
    }

    void ExpectSwitchedOff()
    {
        support::ExpectAbsent(m_machine.hostAgent, "ClientIni");
        EXPECT_FALSE(support::FileExists(m_scripts.File("VTNCLNT.EXE")));
        EXPECT_FALSE(m_shares.Find("VTNDATA"));
    }

    support::TestDirectory m_windows;
    support::TestDirectory m_scripts;
    support::SavedVariable m_systemRoot{"SystemRoot", m_windows.Path()};
    support::SavedKey m_server{"SYSTEM\\CurrentControlSet\\Services\\LanmanServer\\Parameters"};
    support::ShareScript m_shares{m_host.Module()};
    std::string m_script = m_scripts.File("LOGIN.BAT");
};
