// Conditions of the pages.
#include "applet/PageConditions.h"

#include "pages/BoardLibrary.h"
#include "sysaccess/CommandLine.h"
#include "sysaccess/RegistryKey.h"

#include <cstring>

bool IsDesktopMgmtOffered()
{
    return IsDomainController() || CommandLineContains(clientSwitch);
}

bool IsProcessMonitorOffered()
{
    return !CommandLineContains(setupSwitch);
}

bool IsRemoteLumoraOffered()
{
    BoardData data{};
    return ReadBoardData(data) == ERROR_SUCCESS;
}

bool IsDomainController()
try {
    CRegistryKey options(HKEY_LOCAL_MACHINE, "System\\CurrentControlSet\\Control\\ProductOptions");
    std::string productType;
    return options.GetString("ProductType", productType, REG_SZ, 0) == ERROR_SUCCESS &&
           _stricmp(productType.c_str(), "Lanmannt") == 0;
} catch (ConfigurationError) {
    return false; // the page is left out without a word
}
