// What the library keeps per thread: which object stands for which window, the modal loops and creations in
// progress, the message in progress. For the library's own sources only.
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
