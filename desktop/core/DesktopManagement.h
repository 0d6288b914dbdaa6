// Desktop management of the domain's clients, without a window: the login script, the record of it, the
// client files and the share. Shown by the Desktop Mgmt page.
#pragma once

#include <string>
#include <windows.h>

// Longest script path in bytes while desktop management is on.
inline constexpr int scriptPathLimit = 256;

// The login script that is proposed while none is recorded: LOGIN.BAT in the script directory.
[[nodiscard]] std::string ProposedScript(const std::string& scriptDirectory);

// What has changed since loading, as bits.
enum DesktopChange : DWORD
{
    SwitchChanged = 0x1, // desktop management was switched on or off an odd number of times
    ScriptChanged = 0x2, // the script or the switch was touched
};

// The page's settings; the fields are what the user chose, or else what Load found.
class DesktopManagement
{
  public:
    // Finds the script: the recorded one, or else LOGIN.BAT where this system keeps login scripts. Throws
    // ConfigurationError when the agents' key cannot be opened.
    void Load();

    // Whether desktop management is on at this moment. A record that may not be read counts as one, on
    // purpose: who may not read it can at least switch off what may be on.
    [[nodiscard]] static bool IsRecorded();

    // Does what the bits of `changes` ask for: the script and its record, then the client files and the
    // share. Gives the same result when repeated. The first step that fails throws its text as
    // ConfigurationError; what was done stays.
    void Save(DWORD changes) const;

    std::string scriptPath;
    // Where the client files go, without a backslash at its end. It stays as loaded when another script is
    // chosen.
    std::string scriptDirectory;
    bool isOn = false;

  private:
    void SaveScript() const;
    void SwitchOn() const;
    void SwitchOff() const;
};
