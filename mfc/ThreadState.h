// What the library keeps per thread: which object stands for which window, the modal loops and creations in
// progress with the exceptions kept for them, the message in progress. For the library's own sources only.
#pragma once

#include "afxwnd.h"

#include <exception>
#include <map>
#include <memory>

class CCreationHook;
class CHandlerScope;
struct AFX_MODULE_STATE;

// The procedure of every window that an object has taken over or created.
LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);

// One thread's share.
class CThreadState
{
  public:
    // A message as a window procedure gets it.
    struct Message
    {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
    };

    // The calling thread's, made on first use.
    static CThreadState& Get();
    // Frees the calling thread's, for a thread that ends; its windows must be gone.
    static void Release();

    CThreadState() = default;
    CThreadState(const CThreadState&) = delete;
    CThreadState& operator=(const CThreadState&) = delete;

    // The window's permanent object, null when it has none.
    [[nodiscard]] CWnd* FindPermanent(HWND hWnd) const;
    // The window's temporary object, made on first use.
    CWnd* MakeTemporary(HWND hWnd);
    // Deletes the temporary objects made in the modal loop of that depth and in those inside it.
    void FreeTemporaries(unsigned depth);
    // For tests.
    [[nodiscard]] size_t CountTemporaries() const { return m_temporaries.size(); }

    // What a window did before AfxWndProc took its place.
    LRESULT CallSuper(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam) const;

    // Nesting of modal loops and creations; 0 outside all of them.
    [[nodiscard]] unsigned LoopDepth() const;
    // Whether there is a modal loop and none of its messages is being handled.
    [[nodiscard]] bool IsBetweenMessages() const;
    // Whether a handler has failed in the innermost loop and windows bound at this depth belong to it.
    [[nodiscard]] bool HasFailed(unsigned depth) const;
    // Keeps the exception being handled, unless there is one already, and ends the innermost loop.
    void KeepException() noexcept;

    // What a window did before, and whether it takes its messages in Unicode.
    struct Super
    {
        WNDPROC procedure;
        bool isUnicode;
    };

    std::map<HWND, CWnd*> m_permanent;
    std::map<HWND, Super> m_super;
    CHandlerScope* m_scope = nullptr;    // the innermost
    std::exception_ptr m_stray;          // thrown outside every loop and creation
    CCreationHook* m_creation = nullptr; // waiting for its window
    Message m_message = {};              // in progress
    unsigned m_messageDepth = 0;
    int m_waitCursors = 0;
    HCURSOR m_cursorBefore = nullptr;
    AFX_MODULE_STATE* m_moduleState = nullptr; // null: the module's own

  private:
    struct Temporary
    {
        std::unique_ptr<CWnd> object;
        unsigned depth;
    };
    std::map<HWND, Temporary> m_temporaries;
};

// Records the message in progress for the length of its handling. When no other message of the same modal
// loop is being handled, the temporary objects made meanwhile go with it.
class CMessageFrame
{
  public:
    // The message becomes the one in progress, until the end of the scope.
    CMessageFrame(UINT message, WPARAM wParam, LPARAM lParam);
    ~CMessageFrame();
    CMessageFrame(const CMessageFrame&) = delete;
    CMessageFrame& operator=(const CMessageFrame&) = delete;

  private:
    CThreadState& m_state;
    CThreadState::Message m_before;
};

// A modal loop, or the creation of a window: the C++ call that handlers run under and
// that rethrows what they throw.
class CHandlerScope
{
  public:
    // `window` is told to end its loop when a handler fails. Throws the exception kept for the enclosing
    // scope when there is one: what is being ended starts nothing new.
    explicit CHandlerScope(CWnd& window);
    ~CHandlerScope();
    CHandlerScope(const CHandlerScope&) = delete;
    CHandlerScope& operator=(const CHandlerScope&) = delete;

    // Whether an exception is kept.
    [[nodiscard]] bool HasFailed() const { return m_exception != nullptr; }
    // Keeps it for Rethrow.
    void Keep(std::exception_ptr exception);
    // Throws the kept exception, if any; to be called when every window of the scope is gone.
    void Rethrow() const;

    // The window whose loop, or creation, it is.
    [[nodiscard]] CWnd& Window() const { return m_window; }
    // How many scopes, and messages in progress, there are up to this one.
    [[nodiscard]] unsigned Depth() const { return m_depth; }
    [[nodiscard]] unsigned MessageDepth() const { return m_messageDepth; }

  private:
    CThreadState& m_state;
    CHandlerScope* m_outer;
    CWnd& m_window;
    unsigned m_depth;
    unsigned m_messageDepth;
    std::exception_ptr m_exception;
};

// Binds an object to the next window of a class that this thread creates, before the window's first message.
class CCreationHook
{
  public:
    // Waits from now on; the class name is kept by address.
    CCreationHook(CWnd& window, LPCSTR className);
    ~CCreationHook();
    CCreationHook(const CCreationHook&) = delete;
    CCreationHook& operator=(const CCreationHook&) = delete;

    // False when Windows refuses the hook: the object would never learn of its window, so none must be made.
    [[nodiscard]] bool IsInstalled() const { return m_hook != nullptr; }

  private:
    static LRESULT CALLBACK CbtProc(int code, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] bool Awaits(HWND hWnd) const;
    bool Take(HWND hWnd);
    void End();

    CThreadState& m_state;
    CWnd& m_window;
    LPCSTR m_className;
    HHOOK m_hook;
};

// The class that Windows gives dialogs, pages and sheets.
constexpr LPCSTR AfxDialogClass = "#32770";

// A window's whole text.
void AfxReadText(HWND window, CString& text);

// The handle of an object that may be missing.
inline HWND AfxHandleOf(const CWnd* window)
{
    return window == nullptr ? nullptr : window->m_hWnd;
}

// The top-level window that stands for `parent`, or for the application's main window when parent is null:
// what a dialog has as its owner.
HWND AfxOwnerFor(const CWnd* parent);

// Runs `call`; a C++ exception that leaves it is kept, and `failed` is the answer.
template <typename Call, typename Answer>
Answer AfxGuard(Call call, Answer failed)
{
    try {
        return call();
    } catch (...) {
        CThreadState::Get().KeepException();
    }
    return failed;
}
