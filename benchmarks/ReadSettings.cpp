// A console program that reads every value that `vtncfg get` shows, by the same code, and prints how many
// there are: what reading alone takes.
#include "desktop/core/DesktopManagement.h"
#include "pages/core/BoardLibrary.h"
#include "pages/core/ProcessMonitorSettings.h"
#include "pages/core/ServicesSettings.h"
#include "pages/core/SnmpSettings.h"
#include "pages/core/StorageSettings.h"
#include "sysaccess/core/DomainController.h"

#include <cstdio>

int main()
{
    ServicesSettings services;
    services.Load();
    SnmpSettings snmp;
    snmp.Load();
    const std::vector<MonitoredProcess> processes = LoadMonitoredProcesses();
    StorageSettings storage;
    storage.Load();
    DesktopManagement desktop;
    if (IsDomainController()) {
        desktop.Load();
        desktop.isOn = DesktopManagement::IsRecorded();
    }
    BoardData board{};
    const DWORD status = ReadBoardData(board);
    std::printf("%d %s %d %d %s %lu\n", static_cast<int>(services.groups.size()), snmp.serverRole.c_str(),
                static_cast<int>(processes.size()), storage.disabled[0], desktop.scriptPath.c_str(), status);
    return 0;
}
