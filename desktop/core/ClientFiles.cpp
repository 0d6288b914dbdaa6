// Copies and deletes the client's files.
#include "desktop/core/ClientFiles.h"

#include "desktop/core/DiscoveryShare.h"
#include "sysaccess/core/ComputerName.h"
#include "sysaccess/core/Environment.h"

#include <array>
#include <windows.h>

namespace {

constexpr char agentDirectory[] = "%SystemRoot%\\system32\\vtnmgmt";
constexpr char clientProgram[] = "\\VTNCLNT.EXE";

constexpr char clientProfile[] = "\\VTNCLNT.INI";
constexpr char profileSection[] = "Options";
constexpr char destinationKey[] = "DestinationDirectory";

// Writes the destination of the reports or, without a value, takes it out. A path that is too long is not
// written to.
bool SetDestination(const std::string& scriptDirectory, const char* value)
{
    std::array<char, MAX_PATH + 1> profile{};
    const std::string path = scriptDirectory + clientProfile;
    return ExpandEnvironment(path.c_str(), profile) &&
           WritePrivateProfileStringA(profileSection, destinationKey, value, profile.data());
}

} // namespace

bool InstallClient(const std::string& scriptDirectory)
{
    std::array<char, MAX_PATH> directory{};
    if (!ExpandEnvironment(agentDirectory, directory))
        return false;
    const std::string source = std::string(directory.data()) + clientProgram;
    const std::string target = scriptDirectory + clientProgram;
    // A hidden or read-only file could not be overwritten, and the copy takes the attributes along. When this
    // fails, so does the copy.
    SetFileAttributesA(source.c_str(), FILE_ATTRIBUTE_NORMAL);
    SetFileAttributesA(target.c_str(), FILE_ATTRIBUTE_NORMAL);
    return CopyFileA(source.c_str(), target.c_str(), FALSE) != FALSE;
}

bool RemoveClient(const std::string& scriptDirectory)
{
    const std::string target = scriptDirectory + clientProgram;
    SetFileAttributesA(target.c_str(), FILE_ATTRIBUTE_NORMAL);
    return DeleteFileA(target.c_str()) || GetLastError() == ERROR_FILE_NOT_FOUND;
}

bool WriteReportPath(const std::string& scriptDirectory)
{
    const std::string computer = ComputerName();
    const std::string networkPath = "\\\\" + computer + "\\" + discoveryShareName;
    return !computer.empty() && SetDestination(scriptDirectory, networkPath.c_str());
}

void RemoveReportPath(const std::string& scriptDirectory)
{
    SetDestination(scriptDirectory, nullptr);
}
