// restart_bench: how long a restart of the agents takes when their services start and stop at once, compared
// with the pauses that the restart is made of. Ends with 1 when it takes more than 5 % longer, with 2 when it
// does not restart them all. Once: nearly all of its time is pauses, and 20 restarts would take five minutes.
#include "support/MessageBoxScript.h"
#include "support/ServiceScript.h"
#include "sysaccess/AgentRestart.h"

#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr double allowedExcess = 5; // percent
// Before each stop and each start, and for the last text of the please-wait dialog; in milliseconds.
constexpr double pauseLength = 1000;

const std::vector<std::string> dependents{"VtMgHost", "VtMgServ", "VtMgStor", "VTNNicMgmt"};

// The demo machine's services, all running; returns how many.
std::size_t AddServices(support::ServiceScript& manager)
{
    const support::ScriptedService running{.displayName = "Norvale Agent",
                                           .states = {support::ServiceState(SERVICE_RUNNING)}};
    for (const std::string& name : dependents)
        manager.Add(name, running);
    manager.Add("VtnWebWmi", running);
    support::ScriptedService snmp = running;
    snmp.dependents = dependents;
    manager.Add("SNMP", snmp);
    return dependents.size() + 2;
}

double Milliseconds()
{
    LARGE_INTEGER frequency{};
    LARGE_INTEGER now{};
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&now);
    return 1000 * static_cast<double>(now.QuadPart) / static_cast<double>(frequency.QuadPart);
}

double TimeOfRestart()
{
    const double start = Milliseconds();
    RestartAgentServices(nullptr);
    return Milliseconds() - start;
}

} // namespace

int main()
{
    const HMODULE self = GetModuleHandleA(nullptr);
    support::ServiceScript manager(self);
    support::MessageBoxScript user(self);
    user.Answer(IDYES);
    const std::size_t services = AddServices(manager);
    const double pauses = pauseLength * static_cast<double>(2 * services + 1);

    const double measured = TimeOfRestart();
    const std::size_t starts = manager.Log().CallsOf({"StartServiceA"}).size();
    const double excess = 100 * (measured / pauses - 1);
    std::printf(
        "services restarted: %u of %u\npauses: %.0f ms\nmeasured: %.0f ms (%+.2f %%, allowed %.0f %%)\n",
        static_cast<unsigned>(starts), static_cast<unsigned>(services), pauses, measured, excess,
        allowedExcess);
    if (starts != services)
        return 2;
    return excess <= allowedExcess ? 0 : 1;
}
