// Conditions of the pages.
#include "applet/PageConditions.h"

#include "pages/core/BoardLibrary.h"
#include "sysaccess/core/CommandLine.h"
#include "sysaccess/core/DomainController.h"

bool IsAlwaysOffered()
{
    return true;
}

bool IsDesktopOffered()
{
    return IsDomainController() || CommandLineContains(clientSwitch);
}

bool IsProcessMonitorOffered()
{
    return !CommandLineContains(setupSwitch);
}

bool IsBoardOffered()
{
    BoardData data{};
    return ReadBoardData(data) == ERROR_SUCCESS;
}
