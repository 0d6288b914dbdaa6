// CWnd, the window. Controls, dialogs, pages and the sheet derive from it.
#pragma once

#include "afxmsg_.h"
#include "afxstr.h"
#include "afxtypes.h"

class CDataExchange;

// A window and the handlers of its messages. A window has at most one permanent object per thread, bound by
// creating it, taking it over (Subclass...) or Attach. For any other window FromHandle makes a temporary
// object: one made in a handler lasts until that handler returns to its modal loop, one made outside every
// loop stays.
//
// What a handler throws never crosses Windows: it ends the innermost DoModal or Create..., which throws it
// on.
class CWnd : public CCmdTarget
{
    DECLARE_DYNAMIC(CWnd)

  public:
    HWND m_hWnd = nullptr;

    CWnd() = default;
    // Destroys a window that the object created; gives back one that it only took over or was attached to.
    ~CWnd() override;

    // The window, null when the object holds none.
    [[nodiscard]] HWND GetSafeHwnd() const { return m_hWnd; }
    operator HWND() const { return m_hWnd; } // NOLINT(google-explicit-constructor)

    // The window's object, null for no window. FromHandlePermanent answers null
    // rather than make a temporary one.
    static CWnd* FromHandle(HWND hWnd);
    static CWnd* FromHandlePermanent(HWND hWnd);

    // Makes this the window's permanent object without touching its procedure. FALSE when either has another.
    BOOL Attach(HWND hWndNew);
    // The window, which this object then no longer holds.
    HWND Detach();

    // Takes over a window's messages. A window that the object already holds: TRUE, and nothing changes.
    // FALSE when there is no such window on this thread, or one of the two is bound elsewhere.
    BOOL SubclassWindow(HWND hWnd);
    BOOL SubclassDlgItem(UINT nID, CWnd* pParent);
    // Gives the messages back and returns the window.
    HWND UnsubclassWindow();

    // Creates a window of a registered class; its first messages already reach this object. FALSE when
    // Windows or OnCreate refuses. nID is the id of a child, the menu of any other window.
    BOOL CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle,
                  const RECT& rect, CWnd* pParentWnd, UINT nID);
    virtual BOOL DestroyWindow();

    // Relations between windows.
    [[nodiscard]] CWnd* GetDlgItem(int nID) const;
    [[nodiscard]] int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
    [[nodiscard]] CWnd* GetParent() const { return FromHandle(::GetParent(m_hWnd)); }
    // The owner of a top-level window, the parent of any other.
    [[nodiscard]] CWnd* GetOwner() const;
    CWnd* SetParent(CWnd* pWndNewParent);

    // As the functions of Windows: the answer, and whether the message could be posted.
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

    // Texts; lengths in bytes, nMaxCount with the zero.
    void SetWindowText(LPCSTR lpszString) { ::SetWindowTextA(m_hWnd, lpszString); }
    int GetWindowText(LPSTR lpszString, int nMaxCount) const;
    void GetWindowText(CString& rString) const;
    [[nodiscard]] int GetWindowTextLength() const { return ::GetWindowTextLengthA(m_hWnd); }
    void SetDlgItemText(int nID, LPCSTR lpszString) { ::SetDlgItemTextA(m_hWnd, nID, lpszString); }
    int GetDlgItemText(int nID, CString& rString) const;

    // State, place and painting: as the functions of Windows.
    BOOL EnableWindow(BOOL bEnable = TRUE) { return ::EnableWindow(m_hWnd, bEnable); }
    [[nodiscard]] BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
    BOOL ShowWindow(int nCmdShow) { return ::ShowWindow(m_hWnd, nCmdShow); }
    [[nodiscard]] BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    [[nodiscard]] DWORD GetStyle() const;
    // FALSE when nothing changes. nFlags, unless 0, go to SetWindowPos with the flags that
    // leave size, place and order alone.
    BOOL ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);
    BOOL SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags);
    void MoveWindow(const RECT& rect, BOOL bRepaint = TRUE);
    void BringWindowToTop() { ::BringWindowToTop(m_hWnd); }
    void GetWindowRect(LPRECT lpRect) const { ::GetWindowRect(m_hWnd, lpRect); }
    void GetClientRect(LPRECT lpRect) const { ::GetClientRect(m_hWnd, lpRect); }
    void ScreenToClient(LPPOINT lpPoint) const { ::ScreenToClient(m_hWnd, lpPoint); }
    void ScreenToClient(LPRECT lpRect) const;
    void ClientToScreen(LPPOINT lpPoint) const { ::ClientToScreen(m_hWnd, lpPoint); }
    void ClientToScreen(LPRECT lpRect) const;
    void Invalidate(BOOL bErase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, bErase); }
    void UpdateWindow() { ::UpdateWindow(m_hWnd); }
    void SetRedraw(BOOL bRedraw = TRUE) { SendMessage(WM_SETREDRAW, static_cast<WPARAM>(bRedraw)); }
    BOOL RedrawWindow(UINT flags = RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE);
    // Centres the window over pAlternateOwner, or else its parent or owner, or else the screen when that one
    // is hidden or minimised; a top-level window is kept inside the work area of its monitor.
    void CenterWindow(CWnd* pAlternateOwner = nullptr);

    // The window that had the focus, which may be null.
    CWnd* SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
    static CWnd* GetFocus() { return FromHandle(::GetFocus()); }

    // Check boxes and radio buttons of a dialog, by id. GetCheckedRadioButton answers 0 when none is checked.
    void CheckDlgButton(int nID, UINT nCheck) { ::CheckDlgButton(m_hWnd, nID, nCheck); }
    [[nodiscard]] UINT IsDlgButtonChecked(int nID) const { return ::IsDlgButtonChecked(m_hWnd, nID); }
    void CheckRadioButton(int nIDFirst, int nIDLast, int nIDCheck);
    [[nodiscard]] int GetCheckedRadioButton(int nIDFirst, int nIDLast) const;

    // Runs DoDataExchange: from the members into the controls (FALSE), or back with validation. FALSE when a
    // value was refused, with a message to the user. The window's handlers see none of the
    // notifications that the exchange causes.
    BOOL UpdateData(BOOL bSaveAndValidate = TRUE);

    // The wait cursor. Begin and End nest over the whole thread; Restore shows the cursor again after
    // something else changed it.
    static void BeginWaitCursor();
    static void EndWaitCursor();
    static void RestoreWaitCursor();

    // For the library's own sources: the way of every message into this object.
    LRESULT DispatchMessageToObject(UINT message, WPARAM wParam, LPARAM lParam);
    // For the classes that run modal loops: ends this window's, because a handler has failed.
    virtual void EndFailedLoop() {}
    // For the same: a message has been handled, and no other of the loop is being handled.
    virtual void AfterMessage() {}

  protected:
    // The whole of a window's messages pass here; the base consults the message map and then DefWindowProc.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // FALSE when nothing handles the message; else *pResult is the answer.
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    // WM_COMMAND: first the control's own (reflected) handler, then this window's. FALSE when neither exists.
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    // WM_NOTIFY; FALSE when it is not handled.
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    // What the window did before it was taken over.
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // DefWindowProc for the message in progress, just as it came.
    LRESULT Default();

    // One line per bound control, see afxdd_.h.
    virtual void DoDataExchange(CDataExchange* pDX);
    // After the window is gone and the object no longer bound to it; an object may delete itself here.
    virtual void PostNcDestroy() {}

    // Default handlers, to be called by the overriding ones.
    int OnCreate(LPCREATESTRUCT lpCreateStruct);
    void OnDestroy();
    void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    // The point is in client coordinates.
    void OnLButtonDown(UINT nFlags, CPoint point);

    // Whether the window's messages, its characters above all, come in Unicode once it is taken over; else in
    // the code page.
    [[nodiscard]] virtual bool TakesUnicode() const { return false; }

    // What a message is answered that a handler has thrown from, or that is not delivered because one has.
    virtual LRESULT FailureAnswer(UINT message, WPARAM wParam, LPARAM lParam) const;

    // A command that this window has no handler for: its parent window's object, then the application object.
    BOOL RouteToParent(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo);

    DECLARE_MESSAGE_MAP()

  private:
    friend class CCreationHook;
    friend class CThreadState;

    enum class Binding
    {
        None,
        Attached,
        Subclassed,
        Created
    };

    bool Bind(HWND hWnd, Binding binding);
    bool TakeProcedure(HWND hWnd) const;
    HWND Unbind();
    LRESULT GuardedProc(UINT message, WPARAM wParam, LPARAM lParam);
    void FinishDestruction();
    static bool ReflectToControl(HWND control, WPARAM wParam);

    Binding m_binding = Binding::None;
    unsigned m_loopDepth = 0; // of the modal loop or creation in which the window was bound
    bool m_exchanging = false;
};

// A wait cursor for the length of a scope.
class CWaitCursor
{
  public:
    CWaitCursor() { CWnd::BeginWaitCursor(); }
    ~CWaitCursor() { CWnd::EndWaitCursor(); }
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
    // After something else changed the cursor.
    void Restore() { CWnd::RestoreWaitCursor(); }
};
