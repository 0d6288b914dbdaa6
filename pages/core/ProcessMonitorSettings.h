// Which processes the host agent watches, as the registry holds it, without a window.
#pragma once

#include <span>
#include <string>
#include <vector>
#include <windows.h>

// One byte of the configuration: what is watched in the lower half, and a mark.
enum ProcessOption : BYTE
{
    ProcessOptionNone = 0,
    ProcessOptionStart = 1,
    ProcessOptionStop = 2,
    ProcessOptionStartStop = 3,
    ProcessOptionMask = 0x0F,  // there is room for more than are known
    ProcessAddedByHand = 0x80, // by the administrator, who alone may delete it
};

// A process that the host agent watches, or may watch.
struct MonitoredProcess
{
    BYTE option = 0; // of ProcessOption
    std::string name;

    bool operator==(const MonitoredProcess&) const = default;
};

// Takes the first byte of a character of two off the end of a name that was cut there: it would make one
// character with what follows the name.
void DropHalfCharacter(std::string& name);

// Takes a stored configuration apart: entries of an option byte and a name with its zero, one after the
// other. A first byte of 0 says that there is none. A last name without its zero ends with the data;
// half a character at the end of a name is dropped.
[[nodiscard]] std::vector<MonitoredProcess> ParseMonitoredProcesses(std::span<const BYTE> stored);

// The reverse. Entries with an option of 0 and those without a name are left out.
[[nodiscard]] std::vector<BYTE> FormatMonitoredProcesses(const std::vector<MonitoredProcess>& processes);

// Reads the configuration of the host agent; none when the value is absent or no REG_BINARY. Throws
// ConfigurationError.
[[nodiscard]] std::vector<MonitoredProcess> LoadMonitoredProcesses();

// Writes it, a value of size 0 when nothing is to be kept. Throws ConfigurationError.
void SaveMonitoredProcesses(const std::vector<MonitoredProcess>& processes);
