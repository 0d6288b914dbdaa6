// CWnd: the way of a message from Windows through the object's handlers.
#include "afxdd_.h"
#include "afxwin.h"
#include "HandlerScope.h"
#include "ThreadState.h"

#include <utility>

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
END_MESSAGE_MAP()

LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    CThreadState& state = CThreadState::Get();
    CWnd* window = state.FindPermanent(hWnd);
    const LRESULT answer = window != nullptr ? window->DispatchMessageToObject(message, wParam, lParam)
                                             : state.CallSuper(hWnd, message, wParam, lParam);
    if (message == WM_NCDESTROY)
        state.m_super.erase(hWnd);
    return answer;
}

LRESULT CWnd::DispatchMessageToObject(UINT message, WPARAM wParam, LPARAM lParam)
{
    const CMessageFrame frame(message, wParam, lParam);
    const LRESULT answer = GuardedProc(message, wParam, lParam);
    if (message == WM_NCDESTROY)
        FinishDestruction();
    return answer;
}

// Messages that are not even passed on to Windows while a failed loop is being ended: what Windows would do
// on them is create windows or call other handlers.
static bool IsRefusedAfterFailure(UINT message)
{
    return message == WM_NCCREATE || message == WM_CREATE || message == WM_INITDIALOG ||
           message == WM_COMMAND || message == WM_NOTIFY;
}

LRESULT CWnd::GuardedProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    CThreadState& state = CThreadState::Get();
    if (state.HasFailed(m_loopDepth))
        return IsRefusedAfterFailure(message) ? FailureAnswer(message, wParam, lParam)
                                              : state.CallSuper(m_hWnd, message, wParam, lParam);
    const HWND window = m_hWnd;
    try {
        return WindowProc(message, wParam, lParam);
    } catch (...) {
        state.KeepException();
    }
    // The handler may have destroyed the window, and that may have deleted this object.
    const CWnd* object = state.FindPermanent(window);
    return object == nullptr ? 0 : object->FailureAnswer(message, wParam, lParam);
}

LRESULT CWnd::FailureAnswer(UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) const
{
    return message == WM_CREATE ? -1 : 0;
}

void CWnd::FinishDestruction()
{
    Unbind();
    AfxGuard(
        [this] {
            PostNcDestroy();
            return 0;
        },
        0);
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    return OnWndMsg(message, wParam, lParam, &result) ? result : DefWindowProc(message, wParam, lParam);
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message == WM_COMMAND) {
        *pResult = OnCommand(wParam, lParam);
        return *pResult != 0;
    }
    if (message == WM_NOTIFY)
        return OnNotify(wParam, lParam, pResult);
    const AFX_MSGMAP_ENTRY* entry = AfxFindMessageEntry(GetMessageMap(), message, 0, 0);
    if (entry == nullptr)
        return FALSE;
    *pResult = entry->pfn(*this, wParam, lParam);
    return TRUE;
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const auto control = reinterpret_cast<HWND>(lParam);
    if (control == nullptr)
        return OnCmdMsg(LOWORD(wParam), CN_COMMAND, nullptr, nullptr);
    if (m_exchanging)
        return TRUE;
    if (ReflectToControl(control, wParam))
        return TRUE;
    return OnCmdMsg(LOWORD(wParam), HIWORD(wParam), control, nullptr);
}

bool CWnd::ReflectToControl(HWND control, WPARAM wParam)
{
    CWnd* object = FromHandlePermanent(control);
    if (object == nullptr)
        return false;
    const AFX_MSGMAP_ENTRY* entry =
        AfxFindMessageEntry(object->GetMessageMap(), WM_REFLECT_BASE + WM_COMMAND, HIWORD(wParam), 0);
    if (entry == nullptr)
        return false;
    entry->pfn(*object, wParam, reinterpret_cast<LPARAM>(control));
    return true;
}

BOOL CWnd::OnNotify(WPARAM /*wParam*/, LPARAM /*lParam*/, LRESULT* /*pResult*/)
{
    return FALSE;
}

BOOL CWnd::RouteToParent(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    // Notifications concern the dialog alone; commands, whose ids begin at 0x8000, may be anybody's.
    if (nCode != static_cast<int>(CN_COMMAND) || nID < 0x8000 || nID > 0xEFFF)
        return FALSE;
    CWnd* parent = GetParent();
    if (parent != nullptr && parent->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    CWinApp* application = AfxGetApp();
    return application != nullptr && application->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    return CThreadState::Get().CallSuper(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default()
{
    const CThreadState::Message message = CThreadState::Get().m_message;
    return DefWindowProc(message.message, message.wParam, message.lParam);
}

int CWnd::OnCreate(LPCREATESTRUCT /*lpCreateStruct*/)
{
    return static_cast<int>(Default());
}

void CWnd::OnDestroy()
{
    Default();
}

void CWnd::OnChar(UINT /*nChar*/, UINT /*nRepCnt*/, UINT /*nFlags*/)
{
    Default();
}

void CWnd::OnLButtonDown(UINT /*nFlags*/, CPoint /*point*/)
{
    Default();
}

void CWnd::DoDataExchange(CDataExchange* /*pDX*/) {}

// Marks a window as exchanging for the length of a scope, nested exchanges included.
class CExchanging
{
  public:
    explicit CExchanging(bool& flag) : m_flag(flag), m_before(std::exchange(flag, true)) {}
    ~CExchanging() { m_flag = m_before; }
    CExchanging(const CExchanging&) = delete;
    CExchanging& operator=(const CExchanging&) = delete;

  private:
    bool& m_flag;
    bool m_before;
};

BOOL CWnd::UpdateData(BOOL bSaveAndValidate)
{
    CDataExchange exchange(this, bSaveAndValidate);
    const CExchanging exchanging(m_exchanging);
    try {
        DoDataExchange(&exchange);
    } catch (const CUserException&) {
        return FALSE;
    }
    return TRUE;
}
