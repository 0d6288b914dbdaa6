// The Desktop Mgmt page of a domain controller, for the tests that open it.
#pragma once

#include "applet/AppletTest.h"
#include "resources/resource.h"
#include "support/ShareScript.h"
#include "support/TestDirectory.h"

inline const support::ShownBox enabledNote{
    nullptr,
    "Enabling Desktop Management will only update an existing script or create a new script.  It will not "
    "setup login script processing.\n\nPlease use the User Manager for Domains application to setup login "
    "script processing.",
    "Norvale Management Agents", MB_ICONINFORMATION};
inline const support::ShownBox nameRefusal{
    nullptr, "Filename error or file could not be opened.  Only batch (.BAT) files are allowed.",
    "Norvale Management Agents", MB_ICONEXCLAMATION};

// A domain controller whose NETLOGON share is a directory of the test; the sheet asks nothing at its end.
class ClientPage : public AppletTest
{
  protected:
    ClientPage()
    {
        m_machine.productOptions.SetString(productTypeValue, "LanmanNT");
        m_shares.Add("NETLOGON", {.path = m_scripts.Path()});
        CreateDirectoryA(m_windows.File("system32").c_str(), nullptr);
        CreateDirectoryA(m_windows.File("system32\\vtnmgmt").c_str(), nullptr);
        support::WriteBytes(m_windows.File("system32\\vtnmgmt\\VTNCLNT.EXE"), "the client");
        m_host.SetCommandLine("control.exe vtnmgmt.cpl /SETUP");
    }

    support::DialogDriver Open()
    {
        m_host.Open();
        return m_host.Page(m_host.Tabs().at(3)); // by number, since its name depends on the language
    }

    // The page of a machine on which desktop management is on.
    support::DialogDriver OpenSwitchedOn()
    {
        m_machine.hostAgent.SetString(clientIniValue, m_script);
        return Open();
    }

    // Opens the page of a machine on which desktop management is off, and switches it on.
    support::DialogDriver OpenAndSwitchOn()
    {
        const support::DialogDriver page = Open();
        m_boxes.Answer(IDOK);
        page.Check(IDC_DESKTOP_ENABLE);
        return page;
    }

    // Fails the test at the caller's line unless all of the path in the field is selected.
    static void ExpectWholePathSelected(const support::DialogDriver& page,
                                        support::Location where = support::Location::current())
    {
        const LRESULT selection = support::SendWithin(page.Control(IDC_DESKTOP_SCRIPT), EM_GETSEL);
        support::ExpectEqual<LRESULT>(MAKELONG(0, page.Text(IDC_DESKTOP_SCRIPT).size()), selection,
                                      "selection", where);
    }

    void ExpectSwitchedOff()
    {
        support::ExpectAbsent(m_machine.hostAgent, clientIniValue);
        EXPECT_FALSE(support::FileExists(m_scripts.File("VTNCLNT.EXE")));
        EXPECT_FALSE(m_shares.Find("VTNDATA"));
    }

    support::TestDirectory m_windows;
    support::TestDirectory m_scripts;
    support::SavedVariable m_systemRoot{"SystemRoot", m_windows.Path()};
    support::SavedKey m_server{fileServerKey};
    support::ShareScript m_shares{m_host.Module()};
    std::string m_script = m_scripts.File("LOGIN.BAT");
};
