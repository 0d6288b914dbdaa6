// The members of "desktopManagement", and what the login script must be.
#include "command/DesktopSection.h"

#include "command/CodePage.h"
#include "desktop/core/LoginScript.h"
#include "desktop/core/LoginScriptLocation.h"
#include "sysaccess/core/DomainController.h"
#include "sysaccess/core/Handles.h"

#include <array>

namespace {

constexpr char scriptMember[] = "loginScript";

void TakeScript(DesktopManagement& settings, const Json& value, const std::string& path)
{
    settings.scriptPath = RequireLocalText(value, path);
}

constexpr std::array<Member<DesktopManagement>, 2> desktopMembers = {{
    FlagMember<&DesktopManagement::isOn, false, DesktopManagement>(
        "enabled", "Clients that log on to the domain run the discovery client."),
    {scriptMember, "The login script, a .BAT file; can be changed while desktop management is on.",
     TextSchema, [](const DesktopManagement& settings) -> Json { return ToUtf8(settings.scriptPath); },
     TakeScript},
}};

// Whether a file could be opened or made, as far as that shows without making it.
bool CouldBeOpened(const std::string& path)
{
    const UniqueObject file =
        OwnUnlessInvalid(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                     OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    return file || GetLastError() == ERROR_FILE_NOT_FOUND;
}

} // namespace

DesktopSection::DesktopSection()
    : TableSection("desktopManagement", "The Desktop Mgmt page; there only on a domain controller.",
                   desktopMembers)
{
}

void DesktopSection::Load()
{
    m_isHere = IsDomainController();
    if (!m_isHere)
        return;
    m_settings.Load();
    m_settings.isOn = DesktopManagement::IsRecorded();
    m_loaded = m_settings;
}

std::string DesktopSection::WhyNotHere() const
{
    return m_isHere ? "" : "this machine is no domain controller";
}

void DesktopSection::Take(const Json& wanted)
{
    TableSection::Take(wanted);
    if (!m_settings.isOn)
        TakeSwitchedOff();
    else if (IsSwitched() || IsScriptChanged())
        RequireUsableScript();
}

// Switched off it proposes the script of its own choice again.
void DesktopSection::TakeSwitchedOff()
{
    const std::string script = IsSwitched() ? ProposedScript(FindScriptDirectory()) : m_loaded.scriptPath;
    if (IsScriptChanged() && m_settings.scriptPath != script)
        RefuseMember(PathOf(scriptMember), "can be changed only while desktop management is on");
    m_settings.scriptPath = script;
}

void DesktopSection::RequireUsableScript() const
{
    const std::string path = PathOf(scriptMember);
    if (m_settings.scriptPath.size() > static_cast<std::size_t>(scriptPathLimit))
        RefuseMember(path, "is longer than " + std::to_string(scriptPathLimit) + " bytes");
    if (!IsBatchFile(m_settings.scriptPath))
        RefuseMember(path, "only batch files, which end in .BAT, are allowed");
    if (!CouldBeOpened(m_settings.scriptPath))
        RefuseMember(path, "the file cannot be opened or made; check its directory");
}

void DesktopSection::Prepare()
{
    const bool isTouched = IsSwitched() || IsScriptChanged();
    if (m_settings.isOn && isTouched && !IsUsableLoginScript(m_settings.scriptPath))
        throw CommandError(ExitCode::Failed,
                           PathOf(scriptMember) +
                               ": the file cannot be opened or made; check who may do that");
}

void DesktopSection::Save()
{
    DesktopManagement saved = m_settings;
    // What is taken back is taken back where it was put in.
    if (!m_settings.isOn)
        saved.scriptPath = m_loaded.scriptPath;
    DWORD changes = ScriptChanged;
    if (IsSwitched())
        changes |= SwitchChanged;
    saved.Save(changes);
}
