// The table of operations: what the user edits, and what is swept.
#include "resources/resource.h"
#include "sweep/Operation.h"

#include <algorithm>
#include <stdexcept>

namespace sweep {
namespace {

using support::AppletHost;
using support::DialogDriver;

constexpr char services[] = "Services";
constexpr char snmpSettings[] = "SNMP Settings";
constexpr char storage[] = "Storage";
constexpr char desktopMgmt[] = "Desktop Mgmt";
constexpr char processMonitor[] = "Process Monitor";
constexpr char remoteLumora[] = "Remote Lumora";

// --- what the user edits before

void EditNothing(AppletHost& /*host*/) {}

// Moves an agent from one list to the other, if it is there.
void MoveAgent(const DialogDriver& page, const std::string& agent, int list, int button)
{
    const std::vector<std::string> agents = page.Items(list);
    const auto found = std::find(agents.begin(), agents.end(), agent);
    if (found == agents.end())
        return;
    page.Select(list, static_cast<int>(found - agents.begin()));
    page.Click(button);
}

// Also one that is active already, after a failure in the middle of a save.
void ActivateAgent(AppletHost& host)
{
    const DialogDriver page = host.ActivePage();
    MoveAgent(page, "VTNHOST2 Agent", IDC_SERVICES_ACTIVE_LIST, IDC_SERVICES_REMOVE);
    MoveAgent(page, "VTNHOST2 Agent", IDC_SERVICES_INACTIVE_LIST, IDC_SERVICES_ADD);
}

void DeactivateAgent(AppletHost& host)
{
    const DialogDriver page = host.ActivePage();
    MoveAgent(page, "VTNHOST1 Agent", IDC_SERVICES_INACTIVE_LIST, IDC_SERVICES_ADD);
    MoveAgent(page, "VTNHOST1 Agent", IDC_SERVICES_ACTIVE_LIST, IDC_SERVICES_REMOVE);
}

// Clicks a box, once or twice, until it is ticked, or is not, so that it counts as changed; unless it is
// disabled, as after a failed opening.
void Tick(const DialogDriver& page, int box)
{
    if (!page.IsEnabled(box))
        return;
    page.Uncheck(box);
    page.Check(box);
}

void Untick(const DialogDriver& page, int box)
{
    if (!page.IsEnabled(box))
        return;
    page.Check(box);
    page.Uncheck(box);
}

void EditSnmpSettings(AppletHost& host)
{
    const DialogDriver page = host.ActivePage();
    page.Select(IDC_SNMP_INTERVAL, 7);
    for (const int box : {IDC_SNMP_REMOTE_REBOOT, IDC_SNMP_EXCEPTION_TRAP, IDC_SNMP_DISABLE_RACK_TRAPS})
        Tick(page, box);
    Untick(page, IDC_SNMP_DISABLE_TELNET);
    page.SetText(IDC_SNMP_SERVER_ROLE, "Files");
}

void EditSnmpSettingsTheOtherWay(AppletHost& host)
{
    const DialogDriver page = host.ActivePage();
    page.Select(IDC_SNMP_INTERVAL, 0);
    Tick(page, IDC_SNMP_SETS); // without them the reboot is disabled
    for (const int box : {IDC_SNMP_REMOTE_REBOOT, IDC_SNMP_SETS, IDC_SNMP_DISABLE_RACK_TRAPS})
        Untick(page, box);
    Tick(page, IDC_SNMP_DISABLE_TELNET);
    page.SetText(IDC_SNMP_SERVER_ROLE, "");
}

// Also when it is off already, after a failure between the two debuggers.
void SwitchTrapOff(AppletHost& host)
{
    const DialogDriver page = host.ActivePage();
    page.Check(IDC_SNMP_EXCEPTION_TRAP);
    page.Uncheck(IDC_SNMP_EXCEPTION_TRAP);
}

void TickStorageBoxes(AppletHost& host)
{
    const DialogDriver page = host.ActivePage();
    for (const int box : {IDC_STORAGE_FIBRE_TAPE, IDC_STORAGE_ARRAY_TAPE, IDC_STORAGE_SAS_TAPE})
        Tick(page, box);
    Untick(page, IDC_STORAGE_ARRAY_PERFORMANCE);
}

void UntickStorageBoxes(AppletHost& host)
{
    const DialogDriver page = host.ActivePage();
    for (const int box : {IDC_STORAGE_FIBRE_TAPE, IDC_STORAGE_ARRAY_TAPE, IDC_STORAGE_SAS_TAPE})
        Untick(page, box);
    Tick(page, IDC_STORAGE_ARRAY_PERFORMANCE);
}

void SwitchClients(AppletHost& host)
{
    host.ActivePage().Click(IDC_DESKTOP_ENABLE);
}

// A user who sees that the script's directory is missing, or that all is as wished, goes no further.
void SwitchClientsTo(const AppletHost& host, bool on)
{
    const DialogDriver page = host.ActivePage();
    if (page.Text(IDC_DESKTOP_SCRIPT).starts_with("\\") || page.IsChecked(IDC_DESKTOP_ENABLE) == on)
        throw std::runtime_error("the page does not show what is to be switched");
    page.Click(IDC_DESKTOP_ENABLE);
}

void SwitchClientsOn(AppletHost& host)
{
    SwitchClientsTo(host, true);
}

void SwitchClientsOff(AppletHost& host)
{
    SwitchClientsTo(host, false);
}

void WatchAProcess(AppletHost& host)
{
    const DialogDriver page = host.ActivePage();
    if (page.Items(IDC_PROCMON_LIST).size() < 2)
        throw std::runtime_error("the process is not listed");
    page.Select(IDC_PROCMON_LIST, 1);
    page.Check(IDC_PROCMON_STOP);
}

void ForgetAProcess(AppletHost& host)
{
    const DialogDriver page = host.ActivePage();
    page.Select(IDC_PROCMON_LIST, 0);
    page.Check(IDC_PROCMON_NONE);
}

void SwitchBattery(AppletHost& host)
{
    Untick(host.ActivePage(), IDC_BOARD_BATTERY);
}

// --- what is swept

void PressOk(AppletHost& host)
{
    host.Sheet().Click(IDOK);
}

// Unlike AppletHost::Open, this takes it that no sheet may appear.
void OpenSheet(AppletHost& host)
{
    host.DoubleClick();
    const auto isOver = [&] { return host.HasEnded() || !host.Thread().Windows().empty(); };
    if (!support::WaitUntil(isOver))
        throw std::runtime_error("no sheet appears");
    if (!host.HasEnded())
        host.Thread().Settle();
}

template <const auto& tab>
void Show(AppletHost& host)
{
    // A page that cannot be shown ends the sheet; that it did is seen afterwards.
    if (!host.TurnTo(&tab[0]))
        ADD_FAILURE() << "the Services page does not let go";
}

// Opens the sheet, turns to a page, edits it and presses OK. A sheet that does not show what is to be edited
// stays open.
template <const auto& tab, auto edit>
void OpenAndSave(AppletHost& host)
{
    OpenSheet(host);
    try {
        if (host.HasEnded() || !host.TurnTo(&tab[0]))
            return;
        edit(host);
    } catch (const std::runtime_error&) {
        return;
    }
    PressOk(host);
    (void)support::WaitUntil([&] { return host.HasEnded(); });
}

template <int button>
void Press(AppletHost& host)
{
    host.ActivePage().Click(button);
}

// clang-format off: a table
constexpr Operation operations[] = {
    {"open the sheet", nullptr, Before::Nothing, false, nullptr, nullptr, nullptr, OpenSheet},
    {"show SNMP Settings", nullptr, Before::Nothing, false, nullptr, nullptr, EditNothing,
     Show<snmpSettings>},
    {"show Storage", nullptr, Before::Nothing, false, nullptr, nullptr, EditNothing, Show<storage>},
    {"show Desktop Mgmt", nullptr, Before::Nothing, false, nullptr, nullptr, EditNothing, Show<desktopMgmt>},
    {"show Process Monitor", nullptr, Before::Nothing, false, nullptr, nullptr, EditNothing,
     Show<processMonitor>},
    {"show Remote Lumora", nullptr, Before::Nothing, false, nullptr, nullptr, EditNothing,
     Show<remoteLumora>},
    {"save Storage", storage, Before::Nothing, false, nullptr, "UnhookWindowsHookEx", TickStorageBoxes,
     PressOk, true},
    {"save Services", services, Before::Nothing, false, nullptr, "UnhookWindowsHookEx", ActivateAgent,
     PressOk, true},
    {"save Services with one agent less", services, Before::Nothing, false, nullptr, "UnhookWindowsHookEx",
     DeactivateAgent, PressOk, true},
    {"save Storage the other way", storage, Before::Nothing, false, nullptr, "UnhookWindowsHookEx",
     UntickStorageBoxes, PressOk, true},
    {"save SNMP Settings the other way", snmpSettings, Before::Nothing, false, nullptr, "UnhookWindowsHookEx",
     EditSnmpSettingsTheOtherWay, PressOk, true},
    {"save Process Monitor with one less", processMonitor, Before::Nothing, false, nullptr,
     "UnhookWindowsHookEx", ForgetAProcess, PressOk, true},
    {"save SNMP Settings", snmpSettings, Before::Nothing, false, nullptr, "UnhookWindowsHookEx",
     EditSnmpSettings, PressOk, true},
    {"save SNMP Settings without the trap", snmpSettings, Before::ExceptionTrap, false, nullptr,
     "UnhookWindowsHookEx", SwitchTrapOff, PressOk, true},
    {"save Process Monitor", processMonitor, Before::Nothing, false, nullptr, "UnhookWindowsHookEx",
     WatchAProcess, PressOk, true},
    {"save Remote Lumora", remoteLumora, Before::Nothing, false, nullptr, "UnhookWindowsHookEx",
     SwitchBattery, PressOk},
    {"switch desktop management on", desktopMgmt, Before::Nothing, false, nullptr, "UnhookWindowsHookEx",
     SwitchClients, PressOk},
    {"switch desktop management off", desktopMgmt, Before::Clients, false, nullptr, "UnhookWindowsHookEx",
     SwitchClients, PressOk},
    {"switch desktop management off in a protected script", desktopMgmt,
     Before::ClientsUntilTheScriptIsReadOnly, false, nullptr, "UnhookWindowsHookEx", SwitchClients, PressOk},
    {"type the name of a process", processMonitor, Before::Nothing, false, nullptr, nullptr, EditNothing,
     Press<IDC_PROCMON_ADD>},
    {"restart the agents", storage, Before::Nothing, true, "OpenSCManagerA", nullptr, TickStorageBoxes,
     PressOk, true},
    {"send the test trap", snmpSettings, Before::Nothing, false, nullptr, nullptr, EditNothing,
     Press<IDC_SNMP_TEST_TRAP>},
    {"clear the thresholds", snmpSettings, Before::Nothing, true, nullptr, nullptr, EditNothing,
     Press<IDC_SNMP_CLEAR_THRESHOLDS>},
    {"reset the board", remoteLumora, Before::Nothing, true, nullptr, nullptr, EditNothing,
     Press<IDC_BOARD_RESET>},
};
// clang-format on

// clang-format off: a table
constexpr Operation openAndSave[] = {
    {"open and save Services", nullptr, Before::Nothing, false, nullptr, nullptr, nullptr,
     OpenAndSave<services, ActivateAgent>, true},
    {"open and save SNMP Settings", nullptr, Before::Nothing, false, nullptr, nullptr, nullptr,
     OpenAndSave<snmpSettings, EditSnmpSettings>, true},
    {"open and save the trap alone", nullptr, Before::ExceptionTrap, false, nullptr, nullptr, nullptr,
     OpenAndSave<snmpSettings, SwitchTrapOff>, true},
    {"open and save Storage", nullptr, Before::Nothing, false, nullptr, nullptr, nullptr,
     OpenAndSave<storage, TickStorageBoxes>, true},
    {"open and save Process Monitor", nullptr, Before::Nothing, false, nullptr, nullptr, nullptr,
     OpenAndSave<processMonitor, WatchAProcess>, true},
    {"open and save Remote Lumora", nullptr, Before::Nothing, false, nullptr, nullptr, nullptr,
     OpenAndSave<remoteLumora, SwitchBattery>},
    {"open and save without an edit", nullptr, Before::Nothing, false, nullptr, nullptr, nullptr,
     OpenAndSave<snmpSettings, EditNothing>, true},
    {"open and switch desktop management on", nullptr, Before::Nothing, false, nullptr, nullptr, nullptr,
     OpenAndSave<desktopMgmt, SwitchClientsOn>},
    {"open and switch desktop management off", nullptr, Before::Clients, false, nullptr, nullptr, nullptr,
     OpenAndSave<desktopMgmt, SwitchClientsOff>},
};
// clang-format on

} // namespace

std::ostream& operator<<(std::ostream& out, const Operation& operation)
{
    return out << operation.name;
}

std::span<const Operation> Operations()
{
    return operations;
}

std::span<const Operation> OpenAndSaveOperations()
{
    return openAndSave;
}

} // namespace sweep
