// The application object and the applet record.
#include "applet/VtnCpl.h"

#include "resources/resource.h"
#include "sysaccess/Help.h"

#include <cstdlib>
#include <cstring>

CVtnCPL theApp("VTNMGMT.CPL");

BOOL CVtnCPL::InitInstance()
{
    m_instance = AfxGetInstanceHandle();
    return TRUE;
}

int CVtnCPL::ExitInstance()
{
    return CWinApp::ExitInstance();
}

void CVtnCPL::CopyHelpFilePath()
{
    // The base class frees its path, so it gets one from the C runtime.
    std::free(const_cast<char*>(m_pszHelpFilePath));
    m_pszHelpFilePath = _strdup(HelpFilePath());
}

void CVtnCPL::UseAppletNameAsCaption()
{
    m_appletName.LoadString(IDS_APPLET_NAME);
    m_pszAppName = m_appletName;
}

void CVtnCPL::RegisterShellHelpMessage()
{
    m_shellHelpMessage = RegisterWindowMessageA("ShellHelp");
}

const AppletRecord& TheAppletRecord()
{
    static const AppletRecord record = {.iconId = IDI_APPLET,
                                        .nameId = IDS_APPLET_NAME,
                                        .descriptionId = IDS_APPLET_DESCRIPTION,
                                        .flags = 1,
                                        .helpContext = 0x20086,
                                        .helpFilePath = HelpFilePath()};
    return record;
}
