// Writes the settings that a healthy server's agents have after some months of use.
#include "Settings.h"

#include "../support/Error.h"
#include "../support/Registry.h"
#include "sysaccess/core/AgentNames.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <string>

namespace demo {

namespace {

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
    Key::Create(hostAgentKey).SetDword(hostFlagsValue, 0);
    auto parameters = Key::Create(hostParametersKey);
    // For each process a byte, what to report (1 start, 2 stop, 3 both, 0x80 added by hand), and its name.
    parameters.SetBinary(processesValue, "\x03"
                                         "dns.exe\0"
                                         "\x02lsass.exe\0"
                                         "\x02ntfrs.exe\0"
                                         "\x83nvbackup.exe\0"
                                         "\x01tlntsvr.exe\0"s);
    parameters.SetStrings(computersValue, {"OPERATIONS", "STANDBY"});
    parameters.SetString(userNameValue, "nvevents");
    parameters.SetBinary(passwordValue, Scrambled("lumora") + '\0');
}

void MakeStorageSettings()
{
    Key::Create(fibreAgentKey).SetDword(disableFlagsValue, 0);
    Key::Create(arrayAgentKey).SetDword(disableFlagsValue, 2);
    Key::Create(sasAgentKey).SetDword(disableFlagsValue, 0);
}

// The system has its own debugger; the agents' one is parked.
void MakeDebuggers()
{
    Key::Create(activeDebuggerKey).SetString(debuggerValue, "drwtsn32 -p %ld -e %ld -g");
    Key::Create(parkedDebuggerKey).SetString(debuggerValue, "vtndbg -p %ld -e %ld -g");
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
    Key::Create(trapKey).SetBinary(trapDataValue, std::string(16, '\0'));
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
    Key::Create(servicesKey + std::string("\\LanmanServer\\Shares"))
        .SetStrings("NETLOGON",
                    {"CSCFlags=0", "MaxUses=4294967295", "Path=" + directory.string(), "Permissions=127",
                     "Remark=Logon server share", "ShareName=NETLOGON", "Type=0"});
    Key::Create(fileServerKey).SetStrings(nullSessionSharesValue, {"COMCFG", "DFS$"});
}

} // namespace

void SetServerKind(ServerKind kind)
{
    Key::Create(productOptionsKey)
        .SetString(productTypeValue, kind == ServerKind::DomainController ? "LanmanNT" : "ServerNT");
}

void MakeSettings()
{
    Key::Create(productKey).SetString(serverRoleValue, "Domain controller, building 2");
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
