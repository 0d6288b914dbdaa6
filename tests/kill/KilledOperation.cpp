// The table of operations, and how each begins.
#include "kill/KilledOperation.h"

#include "desktop/core/LoginScript.h"
#include "kill/KilledProcess.h"
#include "resources/resource.h"
#include "sysaccess/core/ComputerName.h"

#include <algorithm>
#include <stdexcept>

namespace sweep {
namespace {

using support::AppletHost;
using support::DialogDriver;

// --- what the user edits

void Touch(const DialogDriver& page, int box, bool isChecked)
{
    page.Click(box);
    if (page.IsChecked(box) != isChecked)
        page.Click(box);
}

// Away and back when it is active already.
void MoveAgent(AppletHost& host)
{
    const DialogDriver page = host.Page("Services");
    const auto select = [&](int list) {
        const std::vector<std::string> rows = page.Items(list);
        const auto row = std::ranges::find(rows, "VTNHOST2 Agent");
        if (row != rows.end())
            page.Select(list, static_cast<int>(row - rows.begin()));
        return row != rows.end();
    };
    if (select(IDC_SERVICES_ACTIVE_LIST))
        page.Click(IDC_SERVICES_REMOVE);
    if (!select(IDC_SERVICES_INACTIVE_LIST))
        throw std::runtime_error("the agent is in no list");
    page.Click(IDC_SERVICES_ADD);
}

void EditSnmpSettings(AppletHost& host)
{
    const DialogDriver page = host.Page("SNMP Settings");
    page.Select(IDC_SNMP_INTERVAL, 7);
    Touch(page, IDC_SNMP_SETS, true);
    Touch(page, IDC_SNMP_REMOTE_REBOOT, true);
    Touch(page, IDC_SNMP_DISABLE_RACK_TRAPS, true);
    Touch(page, IDC_SNMP_DISABLE_TELNET, false);
    Touch(page, IDC_SNMP_EXCEPTION_TRAP, true);
    page.SetText(IDC_SNMP_SERVER_ROLE, "Files");
}

void EditSnmpSettingsOtherwise(AppletHost& host)
{
    const DialogDriver page = host.Page("SNMP Settings");
    page.Select(IDC_SNMP_INTERVAL, 3);
    Touch(page, IDC_SNMP_SETS, false);
    page.SetText(IDC_SNMP_SERVER_ROLE, "Print");
}

void SwitchTrapOff(AppletHost& host)
{
    Touch(host.Page("SNMP Settings"), IDC_SNMP_EXCEPTION_TRAP, false);
}

void EditStorage(AppletHost& host)
{
    const DialogDriver page = host.Page("Storage");
    for (const int box : {IDC_STORAGE_FIBRE_TAPE, IDC_STORAGE_ARRAY_TAPE, IDC_STORAGE_SAS_TAPE})
        Touch(page, box, true);
    Touch(page, IDC_STORAGE_ARRAY_PERFORMANCE, false);
}

void SwitchClients(AppletHost& host)
{
    host.Page("Desktop Mgmt").Click(IDC_DESKTOP_ENABLE);
}

void WatchAProcess(AppletHost& host)
{
    const DialogDriver page = host.Page("Process Monitor");
    const std::vector<std::string> rows = page.Items(IDC_PROCMON_LIST);
    const auto row =
        std::ranges::find_if(rows, [](const std::string& text) { return text.starts_with("explorer.exe"); });
    page.Select(IDC_PROCMON_LIST, static_cast<int>(row - rows.begin()));
    page.Click(IDC_PROCMON_STOP);
}

void SwitchBattery(AppletHost& host)
{
    Touch(host.Page("Remote Lumora"), IDC_BOARD_BATTERY, false);
}

void EditAllPages(AppletHost& host)
{
    for (const auto edit :
         {MoveAgent, EditSnmpSettings, EditStorage, SwitchClients, WatchAProcess, SwitchBattery})
        edit(host);
}

void TurnToSnmp(AppletHost& host)
{
    host.Page("SNMP Settings");
}

// --- what is counted

void PressOk(AppletHost& host)
{
    host.PressOk();
}

void Clear(AppletHost& host)
{
    host.ActivePage().Click(IDC_SNMP_CLEAR_THRESHOLDS);
}

// The agents that the process had stopped before it ended start with the offer after OK.
void StartAgents(AppletHost& host)
{
    Touch(host.Page("SNMP Settings"), IDC_SNMP_DISABLE_TELNET, true);
    host.PressOk();
}

constexpr char wanted[] =
    R"({"agents":{"VtMgHost":{"VTNHOST2":true}},)"
    R"("snmp":{"serverRole":"Files","collectionIntervalSeconds":300,"setsEnabled":false,"remoteReboot":false,)"
    R"("rackTraps":false,"telnetDetection":false,"exceptionTrap":true},)"
    R"("processMonitor":{"explorer.exe":"stop"},)"
    R"("storage":{"fibreTapeSupport":false,"quentaTapeSupport":true,"sasTapeSupport":false},)"
    R"("desktopManagement":{"enabled":true},"board":{"battery":false}})";
constexpr char unwanted[] =
    R"({"agents":{"VtMgHost":{"VTNHOST2":false}},)"
    R"("snmp":{"serverRole":"Mail","collectionIntervalSeconds":30,"setsEnabled":true,"remoteReboot":false,)"
    R"("rackTraps":true,"telnetDetection":true,"exceptionTrap":false},)"
    R"("processMonitor":{"explorer.exe":"none"},)"
    R"("storage":{"fibreTapeSupport":true,"quentaTapeSupport":false,"sasTapeSupport":true},)"
    R"("desktopManagement":{"enabled":false},"board":{"battery":true}})";

constexpr auto untouched = Clients::Untouched;
constexpr auto on = Clients::SwitchedOn;
constexpr auto off = Clients::SwitchedOff;

// clang-format off: a table
constexpr KilledOperation operations[] = {
    {"save Services", false, untouched, Script::Small, false, nullptr, MoveAgent, PressOk, nullptr},
    {"save SNMP Settings", false, untouched, Script::Small, false, nullptr, EditSnmpSettings, PressOk,
     nullptr},
    {"save other SNMP Settings", false, untouched, Script::Small, false, nullptr, EditSnmpSettingsOtherwise,
     PressOk, nullptr},
    {"save SNMP Settings without the trap", true, untouched, Script::Small, false, nullptr, SwitchTrapOff,
     PressOk, nullptr, true},
    {"save Storage", false, untouched, Script::Small, false, nullptr, EditStorage, PressOk, nullptr},
    {"save Process Monitor", false, untouched, Script::Small, false, nullptr, WatchAProcess, PressOk,
     nullptr},
    {"save Remote Lumora", false, untouched, Script::Small, false, nullptr, SwitchBattery, PressOk, nullptr},
    {"save all pages", true, on, Script::Small, false, nullptr, EditAllPages, PressOk, nullptr},
    {"switch on without a script", false, on, Script::Absent, false, nullptr, SwitchClients, PressOk,
     nullptr},
    {"switch on", false, on, Script::Small, false, nullptr, SwitchClients, PressOk, nullptr},
    {"switch on in a large script", true, on, Script::Large, false, nullptr, SwitchClients, PressOk, nullptr},
    {"switch on in a protected script", false, on, Script::ReadOnly, false, nullptr, SwitchClients, PressOk,
     nullptr},
    {"switch on beside two blocks", false, on, Script::TwoBlocks, false, nullptr, SwitchClients, PressOk,
     nullptr},
    {"switch off without a script", false, off, Script::Absent, false, nullptr, SwitchClients, PressOk,
     nullptr},
    {"switch off", false, off, Script::Small, false, nullptr, SwitchClients, PressOk, nullptr},
    {"switch off in a large script", false, off, Script::Large, false, nullptr, SwitchClients, PressOk,
     nullptr},
    {"switch off in a protected script", false, off, Script::ReadOnly, false, nullptr, SwitchClients, PressOk,
     nullptr},
    {"switch off with two blocks", false, off, Script::TwoBlocks, false, nullptr, SwitchClients, PressOk,
     nullptr},
    {"restart the agents", false, untouched, Script::Small, true, "OpenSCManagerA", EditStorage, PressOk,
     nullptr},
    {"clear the thresholds", false, untouched, Script::Small, true, nullptr, TurnToSnmp, Clear, StartAgents},
    {"set with vtncfg", true, on, Script::Small, false, nullptr, nullptr, nullptr, nullptr, false, wanted,
     unwanted},
};
// clang-format on

std::string LinesOf40Kilobytes()
{
    std::string lines;
    for (int i = 0; lines.size() < 40'960; ++i)
        lines += "if exist share" + std::to_string(i) + " goto next\r\n";
    return lines;
}

// The script after an update, made by itself in a directory of its own; empty for a script that is gone.
std::string Updated(const std::string& script, bool isOn)
{
    const support::TestDirectory directory;
    const std::string path = directory.File("LOGIN.BAT");
    if (!script.empty())
        support::WriteBytes(path, script);
    UpdateLoginScript(path, ComputerName(), isOn);
    return support::ReadBytes(path).value_or("");
}

std::string TextOf(Script script)
{
    const std::string house = "@echo off\r\nnet use h: \\\\server\\home\r\n";
    switch (script) {
    case Script::Absent:
        return {};
    case Script::Large:
        return LinesOf40Kilobytes();
    case Script::TwoBlocks:
        return BlockOfScript() + house + BlockOfScript() + "rem the end\r\n";
    default:
        return house;
    }
}

void PutScript(const KilledOperation& operation, const std::string& path)
{
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    DeleteFileA(path.c_str());
    std::string text = TextOf(operation.script);
    if (operation.clients == Clients::SwitchedOff && operation.script != Script::TwoBlocks &&
        operation.script != Script::Absent)
        text = Updated(text, true);
    if (operation.script != Script::Absent)
        support::WriteBytes(path, text);
    if (operation.script == Script::ReadOnly)
        SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
}

} // namespace

std::span<const KilledOperation> KilledOperations()
{
    return operations;
}

const KilledOperation& OperationNamed(const std::string& name)
{
    const auto* const found =
        std::ranges::find_if(operations, [&](const KilledOperation& row) { return name == row.name; });
    if (found == std::end(operations))
        throw std::out_of_range("no operation " + name);
    return *found;
}

Json PrepareMachine(const KilledOperation& operation, Settings& settings)
{
    if (operation.startsWithTrap)
        settings.SwitchExceptionTrapOn();
    const bool wasOn = operation.clients == Clients::SwitchedOff;
    if (wasOn)
        settings.SwitchDesktopManagementOn();
    PutScript(operation, settings.ScriptDirectory() + "\\LOGIN.BAT");
    return wasOn ? Json{{"share", ToJson(support::SharedDirectory{.path = "anywhere"})}} : Json::object();
}

std::string BlockOfScript()
{
    return Updated({}, true);
}

std::vector<std::string> ScriptStages(const KilledOperation& operation, const std::string& before)
{
    constexpr int mostPasses = 6;
    std::vector<std::string> stages = {before};
    if (operation.clients == Clients::Untouched)
        return stages;
    for (int pass = 0; pass < mostPasses; ++pass) {
        const std::string script = stages.back();
        stages.push_back(Updated(script, false));
        if (operation.clients == Clients::SwitchedOn)
            stages.push_back(Updated(script, true));
    }
    return stages;
}

} // namespace sweep
