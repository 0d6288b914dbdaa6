// Counts what this process holds of Windows, for tests of leaks: take a count, do the thing, and compare.
#pragma once

#include "imports/ImportHook.h"
#include "support/Expect.h"

#include <atomic>
#include <iosfwd>
#include <windows.h>

namespace support {

struct ResourceCount
{
    int windows = 0;       // top-level, child and message-only windows
    int gdiObjects = 0;    // under Wine fonts, brushes, pens and palettes alone
    int kernelHandles = 0; // files, registry keys, events, threads, ...

    // The process as it is now.
    [[nodiscard]] static ResourceCount Now();

    bool operator==(const ResourceCount&) const = default;
};

std::ostream& operator<<(std::ostream& out, const ResourceCount& count);

// Whether the process holds more of anything at `now` than it did at `before`. Fewer of one kind makes up for
// no other.
[[nodiscard]] bool HasGrown(const ResourceCount& before, const ResourceCount& now);

// Fails the test at the caller's line when the process holds more of anything than it did at `before`.
void ExpectNoLeak(const ResourceCount& before, Location where = Location::current());

// Counts the Windows hooks that one module installs (SetWindowsHookExA) and removes (UnhookWindowsHookEx),
// which no system call reports. One counter at a time; throws std::runtime_error when the module does not
// import both.
class WindowsHookCount
{
  public:
    explicit WindowsHookCount(HMODULE module);
    WindowsHookCount(const WindowsHookCount&) = delete;
    WindowsHookCount& operator=(const WindowsHookCount&) = delete;

    // Hooks installed since the start.
    [[nodiscard]] int Installed() const { return m_installed; }
    // Those of them that are not removed.
    [[nodiscard]] int Left() const { return m_installed - m_removed; }

  private:
    static HHOOK WINAPI Install(int kind, HOOKPROC procedure, HINSTANCE module, DWORD thread);
    static BOOL WINAPI Remove(HHOOK hook);

    std::atomic<int> m_installed = 0;
    std::atomic<int> m_removed = 0;
    Turn<WindowsHookCount> m_turn;
    ReplacedImport m_install;
    ReplacedImport m_remove;
};

} // namespace support
