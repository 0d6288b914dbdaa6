// Time and memory of the profile engine: opens a file, inserts three lines and saves it, beside Windows' own
// way of setting one key in a file of the same size. Prints one row for each size; fails when the time per
// line grows or an open file takes too much memory.
#include "desktop/core/ProfileEngine.h"
#include "Measure.h"

#include <array>
#include <cstdio>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>
#include <windows.h>

namespace {

constexpr int lineCounts[] = {1000, 10000, 100000};
constexpr std::size_t lineLength = 40;

// The time per line may grow by this from the smallest file to the largest.
constexpr double allowedGrowth = 1.5;

struct CloseFile
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using UniqueFile = std::unique_ptr<std::FILE, CloseFile>;

std::string Path()
{
    std::array<char, MAX_PATH> directory{};
    GetTempPathA(MAX_PATH, directory.data());
    return std::string(directory.data()) + "vtnmgmt-bench.ini";
}

// A section with entries of 40 characters each, so that both ways of editing can deal with it. Returns the
// size in bytes.
std::size_t MakeFile(const std::string& path, int lineCount)
{
    std::string content = "[Options]\r\n";
    for (int i = 1; i < lineCount; ++i) {
        std::string line = "key" + std::to_string(i) + "=";
        line.resize(lineLength, 'v');
        content += line + "\r\n";
    }
    const UniqueFile file(std::fopen(path.c_str(), "wb"));
    return std::fwrite(content.data(), 1, content.size(), file.get());
}

bool InsertThreeLines(const std::string& path)
{
    ProfileRequest request{};
    bool isDone = ProfileOpen(path.c_str(), request) == PROF_OK;
    request.operation = PROF_INSERT_FIRST;
    for (const char* line : {"rem three", "rem two", "rem one"}) {
        request.key = line;
        isDone = isDone && ProfileExecute(request) == PROF_OK;
    }
    isDone = isDone && ProfileSave(request) == PROF_OK;
    ProfileClose(request);
    return isDone;
}

bool SetOneKey(const std::string& path)
{
    return WritePrivateProfileStringA("Options", "key500", "changed", path.c_str()) != FALSE &&
           WritePrivateProfileStringA(nullptr, nullptr, nullptr, path.c_str()) ==
               FALSE; // flushes, answers FALSE
}

// The time of one edit of a fresh file in milliseconds; throws std::runtime_error when it fails.
double TimeOfEdit(int lineCount, bool (*edit)(const std::string& path))
{
    const std::string path = Path();
    MakeFile(path, lineCount);
    bool isDone = false;
    const double time = TimeOf([&] { isDone = edit(path); });
    DeleteFileA(path.c_str());
    if (!isDone)
        throw std::runtime_error("a file cannot be edited");
    return time;
}

// The times of both ways in files of one size, one for each round.
struct Times
{
    std::vector<double> engine;
    std::vector<double> windows;
};

// Both ways and all sizes in turn, so that other work on the machine meets all. The first round warms up.
std::array<Times, std::size(lineCounts)> Measure()
{
    std::array<Times, std::size(lineCounts)> times;
    for (int round = 0; round <= measuredRounds; ++round) {
        for (std::size_t i = 0; i < times.size(); ++i) {
            const double engine = TimeOfEdit(lineCounts[i], InsertThreeLines);
            const double windows = TimeOfEdit(lineCounts[i], SetOneKey);
            if (round == 0)
                continue;
            times[i].engine.push_back(engine);
            times[i].windows.push_back(windows);
        }
    }
    return times;
}

// Bytes in use of one heap, with the heap's own records.
std::size_t BytesInUse(HANDLE heap)
{
    std::size_t bytes = 0;
    PROCESS_HEAP_ENTRY entry{};
    HeapLock(heap);
    while (HeapWalk(heap, &entry)) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0)
            bytes += entry.cbData + entry.cbOverhead;
    }
    HeapUnlock(heap);
    return bytes;
}

// The C runtime may have a heap of its own.
std::size_t BytesInUse()
{
    std::array<HANDLE, 16> heaps{};
    const DWORD count = GetProcessHeaps(heaps.size(), heaps.data());
    std::size_t bytes = 0;
    for (DWORD i = 0; i < count; ++i)
        bytes += BytesInUse(heaps[i]);
    return bytes;
}

// What an open file takes, and what it may take, in bytes.
struct Memory
{
    std::size_t taken;
    std::size_t allowed;
};

Memory MemoryOf(int lineCount)
{
    const std::string path = Path();
    const std::size_t size = MakeFile(path, lineCount);
    const std::size_t before = BytesInUse();
    ProfileRequest request{};
    const bool isOpen = ProfileOpen(path.c_str(), request) == PROF_OK;
    const std::size_t taken = BytesInUse() - before;
    ProfileClose(request);
    DeleteFileA(path.c_str());
    return {isOpen ? taken : std::numeric_limits<std::size_t>::max(),
            3 * size + 64 * static_cast<std::size_t>(lineCount)};
}

} // namespace

int main()
try {
    std::printf("  lines  engine ms  us/line  Windows ms  engine/Windows   memory B  allowed B\n");
    std::vector<double> perLine;
    bool isWithin = true;
    const auto times = Measure();
    for (std::size_t i = 0; i < times.size(); ++i) {
        const int count = lineCounts[i];
        const double engine = Median(times[i].engine);
        const double windows = Median(times[i].windows);
        const Memory memory = MemoryOf(count);
        perLine.push_back(engine * 1000 / count);
        std::printf("%7d  %9.2f  %7.3f  %10.2f  %14.3f  %9zu  %9zu\n", count, engine, perLine.back(), windows,
                    engine / windows, memory.taken, memory.allowed);
        isWithin = isWithin && memory.taken <= memory.allowed;
    }
    const double growth = perLine.back() / perLine.front();
    std::printf("time per line, largest file against smallest: %.2f (allowed %.1f)\n", growth, allowedGrowth);
    return isWithin && growth <= allowedGrowth ? 0 : 1;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 2;
}
