// Finds the login script's directory, which each generation of Windows keeps elsewhere.
#include "desktop/core/LoginScriptLocation.h"

#include "sysaccess/core/AgentNames.h"
#include "sysaccess/core/RegistryKey.h"
#include "sysaccess/core/ServiceQueries.h"

#include <array>

// It needs windows.h before it.
#include <lm.h>

namespace {

constexpr DWORD windows2000 = 5; // major version

constexpr char replicatorKey[] = "SYSTEM\\CurrentControlSet\\Services\\Replicator\\Parameters";
constexpr char netLogonKey[] = "SYSTEM\\CurrentControlSet\\Services\\NetLogon\\Parameters";

void FreeNetBuffer(BYTE* buffer)
{
    NetApiBufferFree(buffer);
}
using UniqueNetBuffer = UniqueHandle<BYTE*, FreeNetBuffer>;

// In the ANSI code page; empty when it does not fit a path.
std::string NarrowPath(const wchar_t* path)
{
    std::array<char, MAX_PATH> narrow{};
    const int length = WideCharToMultiByte(CP_ACP, 0, path, -1, narrow.data(), MAX_PATH, nullptr, nullptr);
    return length == 0 ? "" : narrow.data();
}

std::string NetLogonShareDirectory()
{
    wchar_t shareName[] = L"NETLOGON";
    BYTE* buffer = nullptr;
    if (NetShareGetInfo(nullptr, shareName, 2, &buffer) != NERR_Success)
        return {};
    const UniqueNetBuffer info(buffer);
    return NarrowPath(reinterpret_cast<const SHARE_INFO_2*>(info.Get())->shi2_path);
}

// A refusal counts as a failed read: the user can name a script, so a missing directory is no error.
bool ReadPathAs(CRegistryKey& key, const char* valueName, DWORD type, std::string& path)
try {
    constexpr int expand = 1; // REG_SZ stays as it is all the same
    return RequireMemory(key.GetString(valueName, path, type, expand)) == ERROR_SUCCESS;
} catch (ConfigurationError) {
    return false;
}

// Installers have stored paths as REG_SZ and as REG_EXPAND_SZ. False when neither can be read.
bool ReadPath(const char* subkey, const char* valueName, std::string& path)
{
    CRegistryKey key(HKEY_LOCAL_MACHINE, subkey);
    return ReadPathAs(key, valueName, REG_SZ, path) || ReadPathAs(key, valueName, REG_EXPAND_SZ, path);
}

// Position of the last backslash; npos without one.
std::size_t LastBackslash(const std::string& path)
{
    std::size_t last = std::string::npos;
    for (std::size_t i = 0; i < path.size(); ++i) {
        if (IsDBCSLeadByte(static_cast<BYTE>(path[i])))
            ++i;
        else if (path[i] == '\\')
            last = i;
    }
    return last;
}

std::string ReplicatorDirectory()
{
    std::string path;
    if (!ReadPath(replicatorKey, "ExportPath", path))
        return {};
    const bool endsWithBackslash = !path.empty() && LastBackslash(path) == path.size() - 1;
    return path + (endsWithBackslash ? "Scripts" : "\\Scripts");
}

std::string NetLogonDirectory()
{
    std::string path;
    return ReadPath(netLogonKey, "Scripts", path) ? path : std::string();
}

} // namespace

std::string FindScriptDirectory()
{
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
    // A system that does not report its version is none of the old ones.
    if (!GetVersionExA(&version) || version.dwMajorVersion >= windows2000)
        return NetLogonShareDirectory();
    return IsServiceActive(replicatorServiceName) ? ReplicatorDirectory() : NetLogonDirectory();
}

std::string DirectoryOf(const std::string& path)
{
    const std::size_t end = LastBackslash(path);
    return end == std::string::npos ? std::string() : path.substr(0, end);
}
