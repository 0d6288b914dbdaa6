// The steps that switch desktop management on and off for the clients.
#include "desktop/core/DiscoveryShare.h"

#include "sysaccess/core/RegistryKey.h"

#include <algorithm>
#include <array>

// It needs windows.h before it.
#include <lm.h>

namespace {

constexpr char shareName[] = "VTNDATA";
constexpr DWORD allPermissions = 127;

constexpr char agentDirectory[] = "%SystemRoot%\\system32\\vtnmgmt";
constexpr char reportDirectory[] = "%SystemRoot%\\system32\\vtnmgmt\\vtndata";
constexpr char clientProgram[] = "\\VTNCLNT.EXE";

constexpr char clientProfile[] = "\\VTNCLNT.INI";
constexpr char profileSection[] = "Options";
constexpr char destinationKey[] = "DestinationDirectory";

// Longest expanded paths in bytes, with their terminating zero.
constexpr DWORD directoryRoom = MAX_PATH;
constexpr DWORD profileRoom = MAX_PATH + 1;

constexpr char serverKey[] = "SYSTEM\\CurrentControlSet\\Services\\LanmanServer\\Parameters";
constexpr char nullSessionShares[] = "NullSessionShares";

// Replaces references to environment variables; empty when that fails or the result does not fit the room,
// which is one of those above.
std::string ExpandPath(const std::string& path, DWORD room)
{
    std::array<char, profileRoom> expanded{};
    const DWORD size = ExpandEnvironmentStringsA(path.c_str(), expanded.data(), room);
    return size == 0 || size > room ? std::string() : expanded.data();
}

std::string ClientPath(const std::string& scriptDirectory)
{
    return scriptDirectory + clientProgram;
}

// Writes or, without a value, takes away where the clients report to.
bool SetDestination(const std::string& scriptDirectory, const char* value)
{
    const std::string profile = ExpandPath(scriptDirectory + clientProfile, profileRoom);
    return !profile.empty() &&
           WritePrivateProfileStringA(profileSection, destinationKey, value, profile.c_str());
}

using Names = std::vector<std::string>;

// The accessor reports a list of another type and one that there was no memory for in the same way.
bool IsOfAnotherType(CRegistryKey& server)
{
    DWORD type = REG_MULTI_SZ;
    RegistryData data;
    DWORD size = 0;
    return server.QueryValue(nullSessionShares, type, data, size) == ERROR_SUCCESS && type != REG_MULTI_SZ;
}

// Written back whether or not it changed. A value that is absent or of another type counts as an empty list,
// as it does for the server. One that could not be read is refused: an empty list would be written over
// somebody else's entries.
template <typename Change>
void ChangeNullSessionShares(Change change)
{
    CRegistryKey server(HKEY_LOCAL_MACHINE, serverKey);
    Names shares;
    const DWORD result = server.GetMultiString(nullSessionShares, shares);
    if (result == ERROR_OUTOFMEMORY || (result == ERROR_INVALID_DATA && !IsOfAnotherType(server)))
        throw configurationRefused;
    change(shares);
    server.SetMultiString(nullSessionShares, shares);
}

} // namespace

std::string ComputerName()
{
    std::array<char, MAX_COMPUTERNAME_LENGTH + 1> name{};
    DWORD size = name.size();
    return GetComputerNameA(name.data(), &size) ? name.data() : "";
}

bool InstallClient(const std::string& scriptDirectory)
{
    const std::string directory = ExpandPath(agentDirectory, directoryRoom);
    if (directory.empty())
        return false; // not to be taken for the root of the drive
    const std::string source = directory + clientProgram;
    const std::string target = ClientPath(scriptDirectory);
    // A hidden or read-only file could not be overwritten, and the copy takes the attributes along. When this
    // fails, the copy tells.
    SetFileAttributesA(source.c_str(), FILE_ATTRIBUTE_NORMAL);
    SetFileAttributesA(target.c_str(), FILE_ATTRIBUTE_NORMAL);
    return CopyFileA(source.c_str(), target.c_str(), FALSE) != FALSE;
}

bool RemoveClient(const std::string& scriptDirectory)
{
    const std::string target = ClientPath(scriptDirectory);
    SetFileAttributesA(target.c_str(), FILE_ATTRIBUTE_NORMAL);
    return DeleteFileA(target.c_str()) || GetLastError() == ERROR_FILE_NOT_FOUND;
}

bool AddDiscoveryShare()
{
    const std::string directory = ExpandPath(reportDirectory, directoryRoom);
    if (directory.empty())
        return false;
    CreateDirectoryA(directory.c_str(), nullptr); // when it is not there afterwards, it cannot be shared
    wchar_t name[] = L"VTNDATA";
    wchar_t remark[] = L"CIM Client Share";
    wchar_t password[] = L"";
    std::array<wchar_t, directoryRoom> path{};
    MultiByteToWideChar(CP_ACP, 0, directory.c_str(), -1, path.data(), directoryRoom);
    SHARE_INFO_2 share{};
    share.shi2_netname = &name[0];
    share.shi2_type = STYPE_DISKTREE;
    share.shi2_remark = &remark[0];
    share.shi2_permissions = allPermissions;
    share.shi2_max_uses = SHI_USES_UNLIMITED;
    share.shi2_path = path.data();
    share.shi2_passwd = &password[0];
    const NET_API_STATUS status = NetShareAdd(nullptr, 2, reinterpret_cast<BYTE*>(&share), nullptr);
    return status == NERR_Success || status == NERR_DuplicateShare;
}

bool DeleteDiscoveryShare()
{
    wchar_t name[] = L"VTNDATA";
    const NET_API_STATUS status = NetShareDel(nullptr, &name[0], 0);
    return status == NERR_Success || status == NERR_NetNameNotFound;
}

bool TellClientsOfShare(const std::string& scriptDirectory)
{
    const std::string computer = ComputerName();
    const std::string networkPath = "\\\\" + computer + "\\" + shareName;
    return !computer.empty() && SetDestination(scriptDirectory, networkPath.c_str());
}

void StopTellingClients(const std::string& scriptDirectory)
{
    SetDestination(scriptDirectory, nullptr);
}

void OpenShareToAnonymous()
{
    ChangeNullSessionShares([](Names& shares) { CRegistryKey::AppendUnique(shares, shareName); });
}

void CloseShareToAnonymous()
{
    ChangeNullSessionShares([](Names& shares) {
        const auto share = std::find(shares.begin(), shares.end(), shareName);
        if (share != shares.end())
            shares.erase(share);
    });
}
