// The scopes that exceptions are kept for.
#include "HandlerScope.h"

#include <utility>

CMessageFrame::CMessageFrame(UINT message, WPARAM wParam, LPARAM lParam)
    : m_state(CThreadState::Get()), m_before(m_state.m_message)
{
    m_state.m_message = {message, wParam, lParam};
    ++m_state.m_messageDepth;
}

CMessageFrame::~CMessageFrame()
{
    m_state.m_message = m_before;
    --m_state.m_messageDepth;
    // Outside every loop the temporary objects belong to the program, whose loop it is.
    if (!m_state.IsBetweenMessages())
        return;
    m_state.FreeTemporaries(m_state.LoopDepth());
    m_state.m_scope->Window().AfterMessage();
}

CHandlerScope::CHandlerScope(CWnd& window)
    : m_state(CThreadState::Get()), m_outer(m_state.m_scope), m_window(window),
      m_depth(m_state.LoopDepth() + 1), m_messageDepth(m_state.m_messageDepth)
{
    if (m_outer != nullptr)
        m_outer->Rethrow();
    m_state.m_scope = this;
}

CHandlerScope::~CHandlerScope()
{
    m_state.FreeTemporaries(m_depth);
    m_state.m_scope = m_outer;
    // This loop has handled the messages of the one around, too.
    if (m_state.IsBetweenMessages())
        m_outer->m_window.AfterMessage();
}

void CHandlerScope::Keep(std::exception_ptr exception)
{
    if (m_exception != nullptr)
        return;
    m_exception = std::move(exception);
    m_window.EndFailedLoop();
}

void CHandlerScope::Rethrow() const
{
    if (m_exception != nullptr)
        std::rethrow_exception(m_exception);
}
