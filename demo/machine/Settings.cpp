// Writes the settings that a healthy server's agents have after some months of use.
#include "Settings.h"

#include "../support/Error.h"
#include "../support/Registry.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <string>

namespace demo {

namespace {

const std::string services = "SYSTEM\\CurrentControlSet\\Services\\";

// As the agents keep a password: each byte combined with its place, counted from 32.
std::string Scrambled(std::string password)
{
    unsigned place = 32;
    for (char& byte : password)
        byte = static_cast<char>(static_cast<unsigned char>(byte) ^ place++);
    return password;
}

void MakeHostAgentSettings()
{
    using namespace std::string_literals;
    Key::Create(services + "VtMgHost\\VTNMHOST").SetDword("HostFlags", 0);
    auto parameters = Key::Create(services + "VtMgHost\\Parameters");
    // For each process a byte, what to report (1 start, 2 stop, 3 both, 0x80 added by hand), and its name.
    parameters.SetBinary("ProcMon", "\x03services.exe\0\x02rpcss.exe\0\x83nvbackup.exe\0"s);
    parameters.SetStrings("Destination", {"OPERATIONS", "STANDBY"});
    parameters.SetString("DestinationUsername", "nvevents");
    parameters.SetBinary("DestinationPassword", Scrambled("lumora") + '\0');
}

void MakeStorageSettings()
{
    Key::Create(services + "VtMgStor\\VTNFCA").SetDword("DisableFlags", 0);
    Key::Create(services + "VtMgStor\\VTNMIDA").SetDword("DisableFlags", 2);
    Key::Create(services + "VtMgStor\\VTNSAS").SetDword("DisableFlags", 0);
}

// The system has its own debugger; the agents' one is parked.
void MakeDebuggers()
{
    Key::Create("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\AeDebug")
        .SetString("Debugger", "drwtsn32 -p %ld -e %ld -g");
    Key::Create(services + "VtMgHost\\AppTrap").SetString("Debugger", "vtndbg -p %ld -e %ld -g");
}

void MakeThresholds()
{
    for (const char* key : {"Threshold\\AlarmTable", "Host\\OsPerfTh\\Cache", "Host\\OsPerfTh\\LogicalDisk",
                            "Host\\OsPerfTh\\PagingFile", "Host\\OsPerfTh\\Processor"})
    {
        auto threshold = Key::Create(std::string("SYSTEM\\VortanPermanent\\") + key);
        threshold.SetDword("Rising", 90);
        threshold.SetDword("Falling", 75);
    }
    Key::Create("SYSTEM\\VortanHost\\Host\\Component\\GenericTrap")
        .SetBinary("TrapData", std::string(16, '\0'));
}

void MakeBoard()
{
    auto board = Key::Create("SOFTWARE\\Norvale Demo\\Board");
    board.SetDword("Battery", 1);
    board.SetDword("RemoteAlerting", 1);
    board.SetDword("ServerResetPending", 0);
    board.SetDword("ResetSeconds", 7);
}

std::filesystem::path WindowsDirectory()
{
    std::array<char, MAX_PATH> path{};
    RequireCall(GetWindowsDirectoryA(path.data(), MAX_PATH) != 0, "finding the Windows directory");
    return path.data();
}

void MakeLoginScript(const std::filesystem::path& directory)
{
    std::filesystem::create_directories(directory);
    std::ofstream script(directory / "LOGIN.BAT", std::ios::binary);
    script << "@echo off\r\nrem Norvale house log-on script\r\nnet time \\\\%LOGONSERVER% /set /yes\r\n"
              "net use h: /home\r\n";
}

void ShareScripts(const std::filesystem::path& directory)
{
    Key::Create(services + "LanmanServer\\Shares")
        .SetStrings("NETLOGON",
                    {"CSCFlags=0", "MaxUses=4294967295", "Path=" + directory.string(), "Permissions=127",
                     "Remark=Logon server share", "ShareName=NETLOGON", "Type=0"});
    Key::Create(services + "LanmanServer\\Parameters").SetStrings("NullSessionShares", {"COMCFG", "DFS$"});
}

} // namespace

void SetServerKind(ServerKind kind)
{
    Key::Create("SYSTEM\\CurrentControlSet\\Control\\ProductOptions")
        .SetString("ProductType", kind == ServerKind::DomainController ? "LanmanNT" : "ServerNT");
}

void MakeSettings()
{
    Key::Create("SOFTWARE\\Vortan Lumora Agent").SetString("ServerRole", "Domain controller, building 2");
    MakeHostAgentSettings();
    MakeStorageSettings();
    MakeDebuggers();
    MakeThresholds();
    MakeBoard();
}

void MakeDomainFiles()
{
    const auto windows = WindowsDirectory();
    const auto scripts = windows / "SYSVOL" / "sysvol" / "norvale.example" / "scripts";
    MakeLoginScript(scripts);
    ShareScripts(scripts);
    std::filesystem::create_directories(windows / "system32" / "vtnmgmt" / "vtmghost");
}

} // namespace demo
