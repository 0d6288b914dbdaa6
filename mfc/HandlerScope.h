// What handlers run in: the message in progress, and the modal loop or creation that rethrows what they
// throw. For the library's own sources only.
#pragma once

#include "ThreadState.h"

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

// A modal loop, or the creation of a window: the C++ call that handlers run under
// and that rethrows what they throw.
class CHandlerScope
{
  public:
    // `window` ends its loop when a handler fails. Throws the exception kept for the enclosing
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
