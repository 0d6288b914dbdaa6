// Loads and saves desktop management: the order of the steps, and the text of each that fails.
#include "desktop/core/DesktopManagement.h"

#include "desktop/core/ClientFiles.h"
#include "desktop/core/DiscoveryShare.h"
#include "desktop/core/LoginScript.h"
#include "desktop/core/LoginScriptLocation.h"
#include "desktop/core/NullSessionShares.h"
#include "sysaccess/core/AgentNames.h"
#include "sysaccess/core/ComputerName.h"
#include "sysaccess/core/RegistryKey.h"

namespace {

void Require(bool isDone, ConfigurationError failure)
{
    if (!isDone)
        throw failure;
}

} // namespace

std::string ProposedScript(const std::string& scriptDirectory)
{
    return scriptDirectory + "\\LOGIN.BAT";
}

void DesktopManagement::Load()
{
    CRegistryKey agent(HKEY_LOCAL_MACHINE, hostAgentKey);
    RequireMemory(agent.GetString(clientIniValue, scriptPath, REG_SZ, 0));
    if (!scriptPath.empty()) {
        scriptDirectory = DirectoryOf(scriptPath);
        return;
    }
    scriptDirectory = FindScriptDirectory();
    scriptPath = ProposedScript(scriptDirectory);
}

bool DesktopManagement::IsRecorded()
try {
    std::string path;
    CRegistryKey agent(HKEY_LOCAL_MACHINE, hostAgentKey);
    return RequireMemory(agent.GetString(clientIniValue, path, REG_SZ, 0)) == ERROR_SUCCESS;
} catch (ConfigurationError) {
    return true;
}

void DesktopManagement::Save(DWORD changes) const
{
    if ((changes & ScriptChanged) != 0)
        SaveScript();
    if ((changes & SwitchChanged) == 0)
        return;
    if (isOn)
        SwitchOn();
    else
        SwitchOff();
}

void DesktopManagement::SaveScript() const
{
    if (IsBatchFile(scriptPath)) {
        const std::string computer = ComputerName();
        // It stands in the lines that are removed and inserted.
        Require(!computer.empty(), IDS_SCRIPT_UPDATE_FAILED);
        UpdateLoginScript(scriptPath, computer, isOn);
    }
    CRegistryKey agent(HKEY_LOCAL_MACHINE, hostAgentKey);
    if (isOn)
        agent.SetString(clientIniValue, scriptPath);
    else
        agent.DeleteValue(clientIniValue);
}

void DesktopManagement::SwitchOn() const
{
    Require(InstallClient(scriptDirectory), IDS_CLIENT_COPY_FAILED);
    Require(AddDiscoveryShare(), IDS_SHARE_ADD_FAILED);
    Require(WriteReportPath(scriptDirectory), IDS_CLIENT_PROFILE_FAILED);
    OpenShareToAnonymous();
}

void DesktopManagement::SwitchOff() const
{
    Require(RemoveClient(scriptDirectory), IDS_CLIENT_DELETE_FAILED);
    Require(DeleteDiscoveryShare(), IDS_SHARE_DELETE_FAILED);
    RemoveReportPath(scriptDirectory);
    CloseShareToAnonymous();
}
