// The table of operations, and their runs.
#include "sweep/Operation.h"

#include "machine/WatchedImports.h"
#include "resources/resource.h"
#include "support/ModuleMemory.h"
#include "support/SystemFunction.h"
#include "sweep/SheetPicture.h"

#include <algorithm>
#include <functional>
#include <optional>

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
    {"open the sheet", nullptr, Before::Nothing, false, nullptr, nullptr, EditNothing, OpenSheet},
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
    {"open and save Services", nullptr, Before::Nothing, false, nullptr, nullptr, EditNothing,
     OpenAndSave<services, ActivateAgent>, true},
    {"open and save SNMP Settings", nullptr, Before::Nothing, false, nullptr, nullptr, EditNothing,
     OpenAndSave<snmpSettings, EditSnmpSettings>, true},
    {"open and save the trap alone", nullptr, Before::ExceptionTrap, false, nullptr, nullptr, EditNothing,
     OpenAndSave<snmpSettings, SwitchTrapOff>, true},
    {"open and save Storage", nullptr, Before::Nothing, false, nullptr, nullptr, EditNothing,
     OpenAndSave<storage, TickStorageBoxes>, true},
    {"open and save Process Monitor", nullptr, Before::Nothing, false, nullptr, nullptr, EditNothing,
     OpenAndSave<processMonitor, WatchAProcess>, true},
    {"open and save Remote Lumora", nullptr, Before::Nothing, false, nullptr, nullptr, EditNothing,
     OpenAndSave<remoteLumora, SwitchBattery>},
    {"open and save without an edit", nullptr, Before::Nothing, false, nullptr, nullptr, EditNothing,
     OpenAndSave<snmpSettings, EditNothing>, true},
    {"open and switch desktop management on", nullptr, Before::Nothing, false, nullptr, nullptr, EditNothing,
     OpenAndSave<desktopMgmt, SwitchClientsOn>},
    {"open and switch desktop management off", nullptr, Before::Clients, false, nullptr, nullptr, EditNothing,
     OpenAndSave<desktopMgmt, SwitchClientsOff>},
};
// clang-format on

// --- one run

Picture Look(const Settings& settings, const StandIns& standIns)
{
    Picture picture;
    settings.AddTo(picture);
    standIns.AddTo(picture);
    return picture;
}

void Add(std::map<std::string, std::set<std::string>>& seen, const Picture& picture)
{
    for (const auto& [item, content] : picture)
        seen[item].insert(content);
    // What was there before and is gone.
    for (auto& [item, contents] : seen) {
        if (!picture.contains(item))
            contents.emplace();
    }
}

// What was not there before was absent.
void AddAbsence(std::map<std::string, std::set<std::string>>& seen, const Picture& before)
{
    for (auto& [item, contents] : seen) {
        if (!before.contains(item))
            contents.emplace();
    }
}

// A fault may have ended the sheet, or kept it from appearing, under the user's hands.
void Do(AppletHost& host, void (*action)(AppletHost& host))
try {
    action(host);
} catch (const std::runtime_error&) {
    if (!support::WaitUntil([&] { return host.HasEnded(); }))
        throw;
}

void Prepare(AppletHost& host, const Operation& operation)
{
    const auto opensItself = [&](const Operation& other) { return other.act == operation.act; };
    if (operation.act == OpenSheet || std::ranges::any_of(openAndSave, opensItself))
        return;
    host.Open();
    if (operation.tab != nullptr && !host.TurnTo(operation.tab))
        throw std::runtime_error("the Services page does not let go");
    operation.edit(host);
}

// Closes the sheet if it is still there; what left CPlApplet.
std::string Finish(AppletHost& host)
try {
    if (host.HasEnded())
        host.WaitForEnd();
    else
        host.PressCancel();
    return {};
} catch (const std::exception& failure) {
    return failure.what();
}

// The user opens the sheet anew and does the same.
void TryAgain(AppletHost& host, const Operation& operation)
{
    Prepare(host, operation);
    operation.act(host);
    host.WaitForEnd();
}

// The test tidies up behind the applet, so that the next case starts from nothing.
void CloseAll(const std::map<const void*, std::string>& handles)
{
    const auto close = support::SystemFunction<decltype(RegCloseKey)>("advapi32.dll", "RegCloseKey");
    for (const auto& [handle, place] : handles) {
        if (place.starts_with("HKLM"))
            close(static_cast<HKEY>(const_cast<void*>(handle)));
    }
}

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

Picture Difference(const Picture& expected, const Picture& found)
{
    Picture difference;
    for (const auto& [item, content] : found) {
        const auto same = expected.find(item);
        if (same == expected.end() || same->second != content)
            difference[item] = content;
    }
    for (const auto& [item, content] : expected) {
        if (!found.contains(item))
            difference[item] = "";
    }
    return difference;
}

Outcome Perform(Subject& subject, const Operation& operation, const Fault& fault, bool watchChanges)
{
    AppletHost& host = subject.host;
    Outcome outcome;
    Settings settings(subject);
    const bool hasClients =
        operation.before == Before::Clients || operation.before == Before::ClientsUntilTheScriptIsReadOnly;
    if (hasClients)
        settings.SwitchDesktopManagementOn();
    if (operation.before == Before::ExceptionTrap)
        settings.SwitchExceptionTrapOn();
    CallRecorder recorder;
    support::ModuleMemory memory(host.Module());
    {
        StandIns standIns(host.Module(), settings, recorder);
        if (hasClients)
            standIns.Shares().Add("VTNDATA", {.path = "anywhere"});
        std::optional<ReadOnlyWhileEdited> other;
        if (operation.before == Before::ClientsUntilTheScriptIsReadOnly)
            other.emplace(host.Module(), settings.ScriptDirectory() + "\\LOGIN.BAT");
        if (!operation.agrees)
            standIns.User().Decline();
        const WatchedImports watches(host.Module(), recorder);
        Prepare(host, operation);
        outcome.before = Look(settings, standIns);
        if (watchChanges)
            recorder.OnChange([&] { Add(outcome.seen, Look(settings, standIns)); });
        Add(outcome.seen, outcome.before);
        if (fault.lasting.empty())
            recorder.Arm(fault.call, fault.code, operation.from, operation.until);
        else
            recorder.ArmLasting(fault.call, fault.lasting, operation.from, operation.until);
        memory.Arm(fault.allocation, fault.allocations);
        Do(host, operation.act);
        outcome.shown = LookAtSheet(host);
        outcome.thrown = Finish(host);
        outcome.allocations = memory.Taken();
        memory.Disarm();
        recorder.Disarm();
        outcome.after = Look(settings, standIns);
        outcome.boxes = standIns.User().Texts();
        Add(outcome.seen, outcome.after);
        AddAbsence(outcome.seen, outcome.before);
        const bool hasFailed = fault.call != 0 || fault.allocation != 0;
        if (operation.settles && hasFailed) {
            TryAgain(host, operation);
            outcome.settled = Look(settings, standIns);
        }
    }
    outcome.blocksLeft = memory.Held();
    outcome.calls = recorder.Calls();
    outcome.windowsLeft = host.Thread().Windows().size();
    for (const auto& [handle, place] : recorder.OpenHandles())
        outcome.leftOpen.push_back(place);
    CloseAll(recorder.OpenHandles());
    return outcome;
}

} // namespace sweep
