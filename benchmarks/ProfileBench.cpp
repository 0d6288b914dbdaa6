// Time and memory of the profile engine: opens a file, inserts three lines and saves it, beside Windows' own
// way of setting one key in a file of the same size. Prints one row for each size; fails when the time per
// line grows or an open file takes too much memory.
#include "desktop/ProfileEngine.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <limits>
#include <memory>
#include <string>
#include <vector>
#include <windows.h>

namespace {

constexpr int lineCounts[] = {1000, 10000, 100000};
constexpr std::size_t lineLength = 40;

// The time per line may grow by this from the smallest file to the largest.
constexpr double allowedGrowth = 1.5;

using Clock = std::chrono::steady_clock;

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

// The time of one edit of a fresh file in milliseconds; more than any other when it fails.
double TimeOf(int lineCount, bool (*edit)(const std::string& path))
{
    const std::string path = Path();
    MakeFile(path, lineCount);
    const Clock::time_point start = Clock::now();
    const bool isDone = edit(path);
    const std::chrono::duration<double, std::milli> time = Clock::now() - start;
    DeleteFileA(path.c_str());
    return isDone ? time.count() : std::numeric_limits<double>::infinity();
}

// The shortest times of several runs, of both kinds in turn, so that other work on the machine meets both.
struct Times
{
    double engine = std::numeric_limits<double>::infinity();
    double windows = std::numeric_limits<double>::infinity();
};

Times Measure(int lineCount)
{
    Times times;
    for (int run = 0; run < 7; ++run) {
        times.engine = std::min(times.engine, TimeOf(lineCount, InsertThreeLines));
        times.windows = std::min(times.windows, TimeOf(lineCount, SetOneKey));
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
{
    std::printf("  lines  engine ms  us/line  Windows ms  engine/Windows   memory B  allowed B\n");
    std::vector<double> perLine;
    bool isWithin = true;
    for (const int count : lineCounts) {
        const Times times = Measure(count);
        const Memory memory = MemoryOf(count);
        perLine.push_back(times.engine * 1000 / count);
        std::printf("%7d  %9.2f  %7.3f  %10.2f  %14.3f  %9zu  %9zu\n", count, times.engine, perLine.back(),
                    times.windows, times.engine / times.windows, memory.taken, memory.allowed);
        isWithin = isWithin && std::isfinite(times.engine + times.windows) && memory.taken <= memory.allowed;
    }
    const double growth = perLine.back() / perLine.front();
    std::printf("time per line, largest file against smallest: %.2f (allowed %.1f)\n", growth, allowedGrowth);
    return isWithin && growth <= allowedGrowth ? 0 : 1;
}
