// The value "ProcMon" of the host agent.
#include "pages/core/ProcessMonitorSettings.h"

#include "pages/core/HostAgentParameters.h"

#include <algorithm>

void DropHalfCharacter(std::string& name)
{
    std::size_t position = 0;
    while (position < name.size()) {
        const bool isPair = IsDBCSLeadByte(static_cast<BYTE>(name[position])) != FALSE;
        position += isPair ? 2 : 1;
    }
    if (position > name.size())
        name.pop_back();
}

std::vector<MonitoredProcess> ParseMonitoredProcesses(std::span<const BYTE> stored)
{
    std::vector<MonitoredProcess> processes;
    if (stored.empty() || stored.front() == 0)
        return processes;
    for (auto position = stored.begin(); position != stored.end();) {
        const BYTE option = *position++;
        const auto end = std::find(position, stored.end(), BYTE{0});
        processes.push_back({option, std::string(position, end)});
        DropHalfCharacter(processes.back().name);
        position = end == stored.end() ? end : end + 1;
    }
    return processes;
}

std::vector<BYTE> FormatMonitoredProcesses(const std::vector<MonitoredProcess>& processes)
{
    std::vector<BYTE> stored;
    for (const MonitoredProcess& process : processes) {
        if (process.option == 0 || process.name.empty())
            continue;
        stored.push_back(process.option);
        stored.insert(stored.end(), process.name.begin(), process.name.end());
        stored.push_back(0);
    }
    return stored;
}

std::vector<MonitoredProcess> LoadMonitoredProcesses()
{
    RegistryData data;
    DWORD size = 0;
    // Data of another type is handed over, too, and is none of ours.
    const DWORD found = RequireMemory(HostAgentParameters().GetBinary(processesValue, data, size));
    if (found != ERROR_SUCCESS || data == nullptr)
        return {};
    return ParseMonitoredProcesses({data.get(), size});
}

void SaveMonitoredProcesses(const std::vector<MonitoredProcess>& processes)
{
    const std::vector<BYTE> stored = FormatMonitoredProcesses(processes);
    HostAgentParameters().SetBinary(processesValue, stored.data(), static_cast<DWORD>(stored.size()));
}
