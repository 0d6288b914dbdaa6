// The domain's login script, a batch file that somebody else wrote, and the block of lines in it that makes
// every client which logs on run the discovery client. Used by the settings of desktop management and their
// page.
#pragma once

#include <string>

// True for a path that ends in ".BAT", in any letter case. No other kind of script is ever touched.
[[nodiscard]] bool IsBatchFile(const std::string& path);

// True for a batch file that can be opened, or could be made; none is made that was not there.
[[nodiscard]] bool IsUsableLoginScript(const std::string& path);

// Takes the block out of the script, that of older releases too, wherever its lines stand above the first
// line that begins with "["; when `isOn`, puts it in front of all other lines. Those keep their order and
// text and end with CR LF afterwards. A missing script is made, and one without any line left is deleted.
//
// `computerName` is the domain controller whose NETLOGON share the block names. Throws
// IDS_SCRIPT_UPDATE_FAILED as ConfigurationError at the first step that fails; what was saved before stays.
void UpdateLoginScript(const std::string& path, const std::string& computerName, bool isOn);
