// libFuzzer's entry for the configuration of watched processes: any stored bytes are taken apart within their
// size, as a reader that knows only the format takes them, and what is put together again reads the same.
#include "pages/core/ProcessMonitorSettings.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Processes = std::vector<MonitoredProcess>;

void Require(bool isSo, const char* what)
{
    if (isSo)
        return;
    std::fprintf(stderr, "wrong: %s\n", what);
    std::abort();
}

// One byte after the other: the first of an entry is its option, every other one that is not 0 its name's.
Processes ReadByteByByte(std::span<const BYTE> stored)
{
    Processes processes;
    bool isFirst = true;
    for (const BYTE value : stored) {
        if (isFirst)
            processes.push_back({value, {}});
        else if (value != 0)
            processes.back().name.push_back(static_cast<char>(value));
        isFirst = !isFirst && value == 0;
    }
    return processes.empty() || processes.front().option == 0 ? Processes() : processes;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // A copy of exactly the size, so that the sanitizer sees every byte that is read beyond it.
    const std::vector<BYTE> stored(data, data + size);
    const Processes processes = ParseMonitoredProcesses(stored);
    Require(processes == ReadByteByByte(stored), "processes");

    Processes kept = processes;
    std::erase_if(
        kept, [](const MonitoredProcess& process) { return process.option == 0 || process.name.empty(); });
    const std::vector<BYTE> formatted = FormatMonitoredProcesses(processes);
    Require(ParseMonitoredProcesses(formatted) == kept, "what is saved");
    const bool isWhole = !stored.empty() && stored.back() == 0 && kept == processes && !kept.empty();
    Require(!isWhole || formatted == stored, "bytes that nothing was to be left out of");
    return 0;
}
