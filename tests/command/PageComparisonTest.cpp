// What the command line writes beside what the applet's pages write for the same change, byte for byte.
#include "applet/AppletTest.h"
#include "command/Commands.h"
#include "command/TestStreams.h"
#include "machine/BoardScript.h"
#include "machine/TaskListScript.h"
#include "resources/resource.h"
#include "support/ServiceScript.h"
#include "support/ShareScript.h"
#include "support/TestDirectory.h"

#include <functional>
#include <map>
#include <optional>

namespace {

using support::DialogDriver;

// Every value of the machine's keys, by path, and the files of the login script.
using Picture = std::map<std::string, std::optional<support::StoredValue>>;

void AddTo(Picture& picture, const support::TestKey& key)
{
    for (const std::string& name : key.ValueNames())
        picture[key.Path() + ", " + name] = key.Value(name);
    for (const std::string& name : key.SubkeyNames())
        AddTo(picture, key.Subkey(name));
}

// A domain controller on which every value is stored that the pages write with each OK.
struct Scene
{
    explicit Scene(HMODULE module) : shares(module), libraries(module), services(module)
    {
        machine.productOptions.SetString("ProductType", "LanmanNT");
        FillAgents();
        FillSettings();
        shares.Add("NETLOGON", {.path = scripts.Path()});
        support::WriteBytes(scripts.File("LOGIN.BAT"), "@echo off\r\n");
        CreateDirectoryA(windows.File("system32").c_str(), nullptr);
        CreateDirectoryA(windows.File("system32\\vtnmgmt").c_str(), nullptr);
        support::WriteBytes(windows.File("system32\\vtnmgmt\\VTNCLNT.EXE"), "the client");
        board.record = {1, 1, 0, 0};
        tasks.names = {"Explorer.exe"};
    }

    void FillAgents() const
    {
        for (const char* agent : {"VTNPERF", "VTNTHRSH", "vtnups"})
            machine.hostAgents.Subkey(agent).Create();
        machine.hostParameters.SetMultiString("SubServices", {"vtnmhost", "VTNGONE"});
        for (const char* agent : {"Parameters", "VTNSNMP", "VTNRACK", "VTNHEALTH"})
            machine.serverAgents.Subkey(agent).Create();
        machine.storageAgents.Subkey("Parameters").SetMultiString("SubServices", {"VTNFCA", "VTNSAS"});
        machine.storageAgents.Subkey("VTNSNMP").Create();
        for (const char* agent : {"Parameters", "VTNNISNMP", "VTNMNIC", "VTNNICS", "VTNVLAN"})
            machine.nicAgents.Subkey(agent).Create();
    }

    void FillSettings() const
    {
        using namespace std::string_literals;
        const std::string processes = "\x03services.exe\0\x02rpcss.exe\0\x83nvbackup.exe\0"s;
        machine.hostParameters.SetBinary("ProcMon", {processes.begin(), processes.end()});
        machine.product.SetString("ServerRole", "files");
        machine.hostSnmp.SetDword("SetsEnabled", 0x19);
        machine.hostSnmp.SetDword("Timeout", 45'000);
        machine.hostAgent.SetDword("HostFlags", 0xF0);
        machine.activeDebugger.SetString("Debugger", "drwtsn32 -p %ld -e %ld -g");
        machine.arrayAgent.SetDword("DisableFlags", 0x12);
        server.SetMultiString("NullSessionShares", {"COMCFG"});
    }

    [[nodiscard]] Picture Look() const
    {
        Picture picture;
        for (const support::TestKey* key : {static_cast<const support::TestKey*>(&machine.hostAgents),
                                            static_cast<const support::TestKey*>(&machine.serverAgents),
                                            static_cast<const support::TestKey*>(&machine.storageAgents),
                                            static_cast<const support::TestKey*>(&machine.nicAgents),
                                            static_cast<const support::TestKey*>(&machine.product),
                                            static_cast<const support::TestKey*>(&machine.activeDebugger),
                                            static_cast<const support::TestKey*>(&server)})
            AddTo(picture, *key);
        for (const char* name : {"LOGIN.BAT", "VTNCLNT.EXE", "VTNCLNT.INI"}) {
            const std::string bytes = support::ReadBytes(scripts.File(name)).value_or("none");
            picture[name] = support::StoredValue{REG_NONE, {bytes.begin(), bytes.end()}};
        }
        for (const BoardData& data : board.written)
            picture["board"] = support::StoredValue{
                REG_NONE,
                {static_cast<BYTE>(data.battery), static_cast<BYTE>(data.remoteAlerting),
                 static_cast<BYTE>(data.serverResetPending), static_cast<BYTE>(data.resetRequest)}};
        return picture;
    }

    TestMachine machine;
    support::SavedKey server{"SYSTEM\\CurrentControlSet\\Services\\LanmanServer\\Parameters"};
    support::ShareScript shares;
    support::LibraryScript libraries;
    support::BoardScript board{libraries};
    support::TaskListScript tasks{libraries};
    support::ServiceScript services;
    // Of names that do not change: they are stored.
    const support::TestDirectory& windows = Windows();
    const support::TestDirectory& scripts = Scripts();
    support::SavedVariable systemRoot{"SystemRoot", Windows().Path()};

    static const support::TestDirectory& Windows()
    {
        static const support::TestDirectory directory;
        return directory;
    }
    static const support::TestDirectory& Scripts()
    {
        static const support::TestDirectory directory;
        return directory;
    }
};

// One change: the page and what its user does there, and the document for it.
struct Change
{
    std::string tab;
    std::function<void(const DialogDriver& page)> act;
    std::string document;
};

void ClearScripts()
{
    for (const char* name : {"LOGIN.BAT", "VTNCLNT.EXE", "VTNCLNT.INI"})
        DeleteFileA(Scene::Scripts().File(name).c_str());
}

Picture AfterThePage(const Change& change)
{
    support::AppletHost host(appletPath);
    support::MessageBoxScript boxes(host.Module());
    ClearScripts();
    const Scene scene(host.Module());
    // Its note, and the reboot that it asks for.
    if (change.tab == "Desktop Mgmt") {
        boxes.Answer(IDOK);
        boxes.Answer(IDOK);
    }
    host.Open();
    change.act(host.Page(change.tab));
    host.Sheet().Click(IDOK);
    host.WaitForEnd();
    return scene.Look();
}

Picture AfterTheCommand(const std::string& document)
{
    ClearScripts();
    const Scene scene(GetModuleHandleA(nullptr));
    TestStreams streams;
    streams.input = document;
    EXPECT_EQ(RunCommand({"set"}, streams), ExitCode::Done) << document;
    EXPECT_EQ(streams.errors, "") << document;
    return scene.Look();
}

void ExpectSame(const Picture& page, const Picture& command, const std::string& document)
{
    for (const auto& [name, value] : page)
        EXPECT_EQ(command.contains(name) ? command.at(name) : std::nullopt, value)
            << document << ": " << name;
    for (const auto& [name, value] : command)
        EXPECT_TRUE(page.contains(name)) << document << ": " << name;
}

Change Box(const char* tab, int id, const std::string& document)
{
    return {tab, [id](const DialogDriver& page) { page.Click(id); }, document};
}

int RowOf(const DialogDriver& page, int list, const std::string& name)
{
    const std::vector<std::string> rows = page.Items(list);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].substr(0, rows[i].find('\t')) == name)
            return static_cast<int>(i);
    }
    throw std::runtime_error("no row " + name);
}

Change Move(int list, int button, const char* agent, const std::string& document)
{
    return {"Services",
            [=](const DialogDriver& page) {
                page.Select(list, RowOf(page, list, agent));
                page.Click(button);
            },
            document};
}

Change Option(const char* process, int radio, const std::string& document)
{
    return {"Process Monitor",
            [=](const DialogDriver& page) {
                page.Select(IDC_PROCMON_LIST, RowOf(page, IDC_PROCMON_LIST, process));
                page.Click(radio);
            },
            document};
}

const std::vector<Change>& Changes()
{
    static const std::vector<Change> changes = {
        Move(IDC_SERVICES_INACTIVE_LIST, IDC_SERVICES_ADD, "VTNPERF",
             R"({"agents":{"VtMgHost":{"VTNPERF":true}}})"),
        Move(IDC_SERVICES_ACTIVE_LIST, IDC_SERVICES_REMOVE, "VTNMHOST",
             R"({"agents":{"VtMgHost":{"VTNMHOST":false}}})"),
        Move(IDC_SERVICES_INACTIVE_LIST, IDC_SERVICES_ADD, "VTNNICS",
             R"({"agents":{"VTNNicMgmt":{"VTNNICS":true}}})"),
        {"SNMP Settings", [](const DialogDriver& page) { page.SetText(IDC_SNMP_SERVER_ROLE, "mail"); },
         R"({"snmp":{"serverRole":"mail"}})"},
        {"SNMP Settings", [](const DialogDriver& page) { page.Select(IDC_SNMP_INTERVAL, 9); },
         R"({"snmp":{"collectionIntervalSeconds":300}})"},
        Box("SNMP Settings", IDC_SNMP_SETS, R"({"snmp":{"setsEnabled":false}})"),
        Box("SNMP Settings", IDC_SNMP_REMOTE_REBOOT, R"({"snmp":{"remoteReboot":true}})"),
        Box("SNMP Settings", IDC_SNMP_EXCEPTION_TRAP, R"({"snmp":{"exceptionTrap":true}})"),
        Box("SNMP Settings", IDC_SNMP_DISABLE_TELNET, R"({"snmp":{"telnetDetection":false}})"),
        Box("SNMP Settings", IDC_SNMP_DISABLE_RACK_TRAPS, R"({"snmp":{"rackTraps":false}})"),
        Box("Storage", IDC_STORAGE_FIBRE_TAPE, R"({"storage":{"fibreTapeSupport":false}})"),
        Box("Storage", IDC_STORAGE_ARRAY_TAPE, R"({"storage":{"quentaTapeSupport":false}})"),
        Box("Storage", IDC_STORAGE_SAS_TAPE, R"({"storage":{"sasTapeSupport":false}})"),
        Box("Storage", IDC_STORAGE_ARRAY_PERFORMANCE, R"({"storage":{"quentaPerformanceMonitoring":true}})"),
        Option("rpcss.exe", IDC_PROCMON_START_STOP, R"({"processMonitor":{"RpcSs.exe":"startAndStop"}})"),
        Option("nvbackup.exe", IDC_PROCMON_NONE, R"({"processMonitor":{"nvbackup.exe":"none"}})"),
        Option("services.exe", IDC_PROCMON_NONE, R"({"processMonitor":{"services.exe":"none"}})"),
        Option("explorer.exe", IDC_PROCMON_STOP, R"({"processMonitor":{"Explorer.exe":"stop"}})"),
        {"Desktop Mgmt", [](const DialogDriver& page) { page.Check(IDC_DESKTOP_ENABLE); },
         R"({"desktopManagement":{"enabled":true}})"},
        Box("Remote Lumora", IDC_BOARD_BATTERY, R"({"board":{"battery":false}})"),
        Box("Remote Lumora", IDC_BOARD_REMOTE_ALERTING, R"({"board":{"remoteAlerting":false}})"),
        Box("Remote Lumora", IDC_BOARD_SERVER_RESET, R"({"board":{"serverResetPending":true}})"),
    };
    return changes;
}

TEST(PageComparison, EachMemberIsWrittenAsItsPageWritesIt)
{
    for (const Change& change : Changes())
        ExpectSame(AfterThePage(change), AfterTheCommand(change.document), change.document);
}

} // namespace
