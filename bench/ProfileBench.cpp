// Time and memory of the profile engine: opens a file, inserts three lines and saves it, beside Windows' own
// way of setting one key in a file of the same size. Prints one row for each size; fails when the time per
// line grows.
#include "desktop/ProfileEngine.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
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

// A section with entries of 40 characters each, so that both ways of editing can deal with it.
void MakeFile(const std::string& path, int lineCount)
{
    const UniqueFile file(std::fopen(path.c_str(), "wb"));
    std::fputs("[Options]\r\n", file.get());
    for (int i = 1; i < lineCount; ++i) {
        std::string line = "key" + std::to_string(i) + "=";
        line.resize(lineLength, 'v');
        std::fprintf(file.get(), "%s\r\n", line.c_str());
    }
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

// The shortest of several runs, each on a fresh file, in milliseconds; negative when one failed.
double Measure(int lineCount, bool (*edit)(const std::string& path))
{
    const std::string path = Path();
    double shortest = 1e9;
    for (int run = 0; run < 7; ++run) {
        MakeFile(path, lineCount);
        const Clock::time_point start = Clock::now();
        const bool isDone = edit(path);
        const std::chrono::duration<double, std::milli> time = Clock::now() - start;
        DeleteFileA(path.c_str());
        if (!isDone)
            return -1;
        shortest = std::min(shortest, time.count());
    }
    return shortest;
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

// What an open file takes, in bytes.
std::size_t MemoryOf(int lineCount)
{
    const std::string path = Path();
    MakeFile(path, lineCount);
    const std::size_t before = BytesInUse();
    ProfileRequest request{};
    const bool isOpen = ProfileOpen(path.c_str(), request) == PROF_OK;
    const std::size_t taken = BytesInUse() - before;
    ProfileClose(request);
    DeleteFileA(path.c_str());
    return isOpen ? taken : 0;
}

} // namespace

int main()
{
    std::printf("  lines  engine ms  us/line  Windows ms   memory B  allowed B\n");
    std::vector<double> perLine;
    bool isWithin = true;
    for (const int count : lineCounts) {
        const double engine = Measure(count, InsertThreeLines);
        const double windows = Measure(count, SetOneKey);
        const std::size_t memory = MemoryOf(count);
        const std::size_t allowed = static_cast<std::size_t>(count) * (3 * (lineLength + 2) + 64);
        perLine.push_back(engine * 1000 / count);
        std::printf("%7d  %9.2f  %7.3f  %10.2f  %9zu  %9zu\n", count, engine, perLine.back(), windows, memory,
                    allowed);
        isWithin = isWithin && engine > 0 && windows > 0 && memory > 0 && memory <= allowed;
    }
    const double growth = perLine.back() / perLine.front();
    std::printf("time per line, largest file against smallest: %.2f (allowed %.1f)\n", growth, allowedGrowth);
    return isWithin && growth <= allowedGrowth ? 0 : 1;
}
