// CWnd: which object stands for which window, and how the two come together and part.
#include "afxwin.h"
#include "CreationHook.h"
#include "HandlerScope.h"
#include "ThreadState.h"
#include "WndHelpers.h"

#include <utility>

IMPLEMENT_DYNAMIC(CWnd, CCmdTarget)

CWnd::~CWnd()
{
    if (m_binding == Binding::Created)
        ::DestroyWindow(m_hWnd);
    // Still bound: not created here, or destroyed by somebody who may not, another thread for example.
    if (m_binding != Binding::None)
        Unbind();
}

CWnd* CWnd::FromHandlePermanent(HWND hWnd)
{
    return CThreadState::Get().FindPermanent(hWnd);
}

CWnd* CWnd::FromHandle(HWND hWnd)
{
    if (hWnd == nullptr)
        return nullptr;
    CWnd* permanent = FromHandlePermanent(hWnd);
    return permanent != nullptr ? permanent : CThreadState::Get().MakeTemporary(hWnd);
}

bool CWnd::Bind(HWND hWnd, Binding binding)
{
    CThreadState& state = CThreadState::Get();
    if (m_hWnd != nullptr || !state.m_permanent.emplace(hWnd, this).second)
        return false;
    m_hWnd = hWnd;
    m_binding = binding;
    m_loopDepth = state.LoopDepth();
    return true;
}

bool CWnd::TakeProcedure(HWND hWnd) const
{
    std::map<HWND, CThreadState::Super>& supers = CThreadState::Get().m_super;
    // Given back earlier, but under somebody else's subclassing: our procedure is still in the chain.
    if (supers.contains(hWnd))
        return true;
    const bool isUnicode = TakesUnicode();
    const auto set = isUnicode ? &::SetWindowLongPtrW : &::SetWindowLongPtrA;
    // The place first: without memory for it the window would have lost its procedure.
    const auto super = supers.try_emplace(hWnd).first;
    const LONG_PTR before = set(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc));
    if (before == 0)
        supers.erase(super);
    else
        super->second = {reinterpret_cast<WNDPROC>(before), isUnicode};
    return before != 0;
}

// When somebody has subclassed the window after us, our procedure stays in the chain and passes everything
// on.
static void GiveProcedureBack(HWND hWnd)
{
    std::map<HWND, CThreadState::Super>& supers = CThreadState::Get().m_super;
    const auto super = supers.find(hWnd);
    if (super == supers.end())
        return;
    const bool isUnicode = super->second.isUnicode;
    const auto get = isUnicode ? &::GetWindowLongPtrW : &::GetWindowLongPtrA;
    const auto set = isUnicode ? &::SetWindowLongPtrW : &::SetWindowLongPtrA;
    if (get(hWnd, GWLP_WNDPROC) != reinterpret_cast<LONG_PTR>(&AfxWndProc))
        return;
    set(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(super->second.procedure));
    supers.erase(super);
}

HWND CWnd::Unbind()
{
    GiveProcedureBack(m_hWnd);
    CThreadState::Get().m_permanent.erase(m_hWnd);
    m_binding = Binding::None;
    return std::exchange(m_hWnd, nullptr);
}

BOOL CWnd::Attach(HWND hWndNew)
{
    return hWndNew != nullptr && Bind(hWndNew, Binding::Attached);
}

HWND CWnd::Detach()
{
    return m_binding == Binding::None ? std::exchange(m_hWnd, nullptr) : Unbind();
}

BOOL CWnd::SubclassWindow(HWND hWnd)
{
    if (hWnd != nullptr && m_hWnd == hWnd)
        return TRUE;
    const bool isOurs = ::GetWindowThreadProcessId(hWnd, nullptr) == ::GetCurrentThreadId();
    if (!isOurs || !Bind(hWnd, Binding::Subclassed))
        return FALSE;
    if (TakeProcedure(hWnd))
        return TRUE;
    Unbind();
    return FALSE;
}

BOOL CWnd::SubclassDlgItem(UINT nID, CWnd* pParent)
{
    return SubclassWindow(::GetDlgItem(AfxHandleOf(pParent), static_cast<int>(nID)));
}

HWND CWnd::UnsubclassWindow()
{
    return Detach();
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle,
                    const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    CHandlerScope scope(*this);
    const CRect place(rect);
    {
        const CCreationHook hook(*this, lpszClassName);
        if (hook.IsInstalled())
            ::CreateWindowExA(dwExStyle, lpszClassName, lpszWindowName, dwStyle, place.left, place.top,
                              place.Width(), place.Height(), AfxHandleOf(pParentWnd),
                              reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)), AfxGetInstanceHandle(),
                              nullptr);
    }
    if (scope.HasFailed())
        DestroyWindow();
    scope.Rethrow();
    return m_hWnd != nullptr;
}

BOOL CWnd::DestroyWindow()
{
    return m_hWnd != nullptr && ::DestroyWindow(m_hWnd);
}
