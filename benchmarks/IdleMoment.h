// The moment at which a sheet has been shown and painted: its message loop asks for a message and there is
// none.
#pragma once

#include "imports/ImportHook.h"

#include <chrono>
#include <initializer_list>
#include <memory>
#include <vector>
#include <windows.h>

// Stands before the GetMessageW of the modules that run message loops. At the first idle moment it notes the
// time and cancels the sheet. One at a time.
class IdleMoment
{
  public:
    using Clock = std::chrono::steady_clock;

    explicit IdleMoment(std::initializer_list<HMODULE> loops) : m_turn(this)
    {
        for (const HMODULE loop : loops)
            m_imports.push_back(std::make_unique<support::ReplacedImport>(loop, "GetMessageW", &GetNext));
    }

    [[nodiscard]] Clock::time_point When() const { return m_when; }

  private:
    static BOOL WINAPI GetNext(MSG* message, HWND window, UINT first, UINT last)
    {
        support::Turn<IdleMoment>::Active().Look();
        return GetMessageW(message, window, first, last);
    }

    void Look()
    {
        MSG message;
        if (m_when != Clock::time_point() || PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE) != FALSE)
            return;
        m_when = Clock::now();
        PostMessageW(GetActiveWindow(), WM_COMMAND, IDCANCEL, 0);
    }

    support::Turn<IdleMoment> m_turn;
    std::vector<std::unique_ptr<support::ReplacedImport>> m_imports;
    Clock::time_point m_when;
};
