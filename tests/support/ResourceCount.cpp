// See the header. Wine answers 0 where Windows counts GDI objects and handles, so the tables behind them are
// read. Windows is expected to have the same tables.
#include "support/ResourceCount.h"

#include "support/SystemFunction.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <span>
#include <stdexcept>
#include <vector>
#include <winternl.h>

namespace support {
namespace {

BOOL CALLBACK CountWindow(HWND window, LPARAM count)
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId())
        ++*reinterpret_cast<int*>(count);
    return TRUE;
}

BOOL CALLBACK CountWithChildren(HWND window, LPARAM count)
{
    CountWindow(window, count);
    EnumChildWindows(window, &CountWindow, count);
    return TRUE;
}

int CountWindows()
{
    int count = 0;
    const auto argument = reinterpret_cast<LPARAM>(&count);
    EnumWindows(&CountWithChildren, argument);
    HWND hidden = nullptr;
    while ((hidden = FindWindowExA(HWND_MESSAGE, hidden, nullptr, nullptr)) != nullptr)
        CountWithChildren(hidden, argument);
    return count;
}

// An entry of the table of GDI objects that every process can read.
struct GdiEntry
{
    std::uint64_t object;
    std::uint16_t process;
    std::uint16_t count;
    std::uint16_t unique;
    std::uint8_t type;
    std::uint8_t flags;
    std::uint64_t userPointer;
};

// What a program makes to draw with. Device contexts with their regions and bitmaps are left out: Wine keeps
// them for later windows and makes more of them as it likes.
bool IsDrawingTool(const GdiEntry& entry)
{
    constexpr std::uint8_t palette = 0x08;
    constexpr std::uint8_t font = 0x0A;
    constexpr std::uint8_t brushOrPen = 0x10;
    return entry.type == palette || entry.type == font || entry.type == brushOrPen;
}

std::uintptr_t EnvironmentBlock()
{
    PROCESS_BASIC_INFORMATION info{};
    const auto query =
        SystemFunction<decltype(NtQueryInformationProcess)>("ntdll.dll", "NtQueryInformationProcess");
    query(GetCurrentProcess(), ProcessBasicInformation, &info, sizeof info, nullptr);
    return reinterpret_cast<std::uintptr_t>(info.PebBaseAddress);
}

int CountGdiObjects()
{
    if (const DWORD count = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS); count != 0)
        return static_cast<int>(count);
    // The table's place in the process environment block of 64-bit Windows, and its size there.
    constexpr std::size_t place = 0xF8;
    constexpr std::size_t entries = 0x4000;
    const auto* table = *reinterpret_cast<const GdiEntry* const*>(EnvironmentBlock() + place);
    return static_cast<int>(std::ranges::count_if(std::span(table, entries), &IsDrawingTool));
}

struct HandleEntry
{
    void* object;
    ULONG_PTR process;
    ULONG_PTR handle;
    ULONG access;
    USHORT creator;
    USHORT type;
    ULONG attributes;
    ULONG reserved;
};

struct HandleTable
{
    ULONG_PTR count;
    ULONG_PTR reserved;
    HandleEntry entries[1];
};

// The handles of all processes, as NtQuerySystemInformation tells them.
std::vector<BYTE> ReadHandleTable()
{
    using Query = LONG WINAPI(int kind, void* buffer, ULONG size, ULONG* needed);
    constexpr int extendedHandles = 64;
    constexpr auto tooSmall = static_cast<LONG>(0xC0000004);
    const auto query = SystemFunction<Query>("ntdll.dll", "NtQuerySystemInformation");
    std::vector<BYTE> buffer(0x10000);
    ULONG needed = 0;
    while (query(extendedHandles, buffer.data(), static_cast<ULONG>(buffer.size()), &needed) == tooSmall)
        buffer.resize(buffer.size() * 2);
    return buffer;
}

int CountHandles()
{
    const std::vector<BYTE> buffer = ReadHandleTable();
    const auto* table = reinterpret_cast<const HandleTable*>(buffer.data());
    const std::span entries(&table->entries[0], table->count);
    const auto isOurs = [](const HandleEntry& entry) { return entry.process == GetCurrentProcessId(); };
    return static_cast<int>(std::ranges::count_if(entries, isOurs));
}

} // namespace

ResourceCount ResourceCount::Now()
{
    return {CountWindows(), CountGdiObjects(), CountHandles()};
}

std::ostream& operator<<(std::ostream& out, const ResourceCount& count)
{
    return out << count.windows << " windows, " << count.gdiObjects << " GDI objects, " << count.kernelHandles
               << " handles";
}

bool HasGrown(const ResourceCount& before, const ResourceCount& now)
{
    return now.windows > before.windows || now.gdiObjects > before.gdiObjects ||
           now.kernelHandles > before.kernelHandles;
}

void ExpectNoLeak(const ResourceCount& before, Location where)
{
    const ResourceCount now = ResourceCount::Now();
    // Fewer is no leak: what Windows kept for itself may go at any time.
    if (HasGrown(before, now))
        ExpectEqual(before, now, "resources of the process", where);
}

WindowsHookCount::WindowsHookCount(HMODULE module)
    : m_turn(this), m_install(module, "SetWindowsHookExA", &Install),
      m_remove(module, "UnhookWindowsHookEx", &Remove)
{
    if (!m_install.IsImported() || !m_remove.IsImported())
        throw std::runtime_error("not imported: SetWindowsHookExA, UnhookWindowsHookEx");
}

HHOOK WindowsHookCount::Install(int kind, HOOKPROC procedure, HINSTANCE module, DWORD thread)
{
    WindowsHookCount& self = Turn<WindowsHookCount>::Active();
    const HHOOK hook =
        self.m_install.Original<decltype(SetWindowsHookExA)>()(kind, procedure, module, thread);
    if (hook != nullptr)
        ++self.m_installed;
    return hook;
}

BOOL WindowsHookCount::Remove(HHOOK hook)
{
    WindowsHookCount& self = Turn<WindowsHookCount>::Active();
    const BOOL isRemoved = self.m_remove.Original<decltype(UnhookWindowsHookEx)>()(hook);
    if (isRemoved != FALSE)
        ++self.m_removed;
    return isRemoved;
}

} // namespace support
