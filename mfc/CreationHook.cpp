// Binding an object to its window while Windows is creating it.
#include "CreationHook.h"
#include "HandlerScope.h"
#include "ThreadState.h"

#include <iterator>

CCreationHook::CCreationHook(CWnd& window, LPCSTR className)
    : m_state(CThreadState::Get()), m_window(window), m_className(className),
      m_hook(::SetWindowsHookExA(WH_CBT, &CbtProc, nullptr, ::GetCurrentThreadId()))
{
    m_state.m_creation = this;
}

CCreationHook::~CCreationHook()
{
    End();
}

void CCreationHook::End()
{
    if (m_state.m_creation == this)
        m_state.m_creation = nullptr;
    if (m_hook != nullptr)
        ::UnhookWindowsHookEx(m_hook);
    m_hook = nullptr;
}

bool CCreationHook::Awaits(HWND hWnd) const
{
    // Windows may create others first, for the input method for example.
    char name[64] = "";
    ::GetClassNameA(hWnd, name, static_cast<int>(std::size(name)));
    return ::lstrcmpiA(name, m_className) == 0;
}

bool CCreationHook::Take(HWND hWnd)
{
    // Before anything else, since the window's own handlers may create windows.
    End();
    return m_window.Bind(hWnd, CWnd::Binding::Created) && m_window.TakeProcedure(hWnd);
}

LRESULT CALLBACK CCreationHook::CbtProc(int code, WPARAM wParam, LPARAM lParam)
{
    const LRESULT refused = ::CallNextHookEx(nullptr, code, wParam, lParam);
    const auto window = reinterpret_cast<HWND>(wParam);
    CCreationHook* creation = CThreadState::Get().m_creation;
    if (refused != 0 || code != HCBT_CREATEWND || creation == nullptr || !creation->Awaits(window))
        return refused;
    return AfxGuard([&]() -> LRESULT { return creation->Take(window) ? 0 : 1; }, LRESULT{1});
}
