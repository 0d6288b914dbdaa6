// The per-thread state and the scopes that exceptions are kept for.
#include "ThreadState.h"

#include "afxwin.h"

#include <new>
#include <utility>

namespace {

// Where each thread's state hangs. Windows' own slots rather than thread_local, whose values are gone before
// DllMain hears of a thread's end and whose destructors would keep the library from being unloaded.
class CThreadSlot
{
  public:
    CThreadSlot() : m_index(::TlsAlloc())
    {
        if (m_index == TLS_OUT_OF_INDEXES)
            throw std::bad_alloc();
    }
    ~CThreadSlot()
    {
        Set(nullptr);
        ::TlsFree(m_index);
    }
    CThreadSlot(const CThreadSlot&) = delete;
    CThreadSlot& operator=(const CThreadSlot&) = delete;

    [[nodiscard]] CThreadState* Get() const { return static_cast<CThreadState*>(::TlsGetValue(m_index)); }
    void Set(CThreadState* state)
    {
        delete Get();
        ::TlsSetValue(m_index, state);
    }

  private:
    DWORD m_index;
};

CThreadSlot& Slot()
{
    static CThreadSlot slot;
    return slot;
}

} // namespace

CThreadState& CThreadState::Get()
{
    if (Slot().Get() == nullptr)
        Slot().Set(new CThreadState);
    return *Slot().Get();
}

void CThreadState::Release()
{
    Slot().Set(nullptr);
}

CWnd* CThreadState::FindPermanent(HWND hWnd) const
{
    const auto found = m_permanent.find(hWnd);
    return found == m_permanent.end() ? nullptr : found->second;
}

CWnd* CThreadState::MakeTemporary(HWND hWnd)
{
    Temporary& temporary = m_temporaries[hWnd];
    if (temporary.object == nullptr) {
        temporary.object = std::make_unique<CWnd>();
        temporary.object->m_hWnd = hWnd;
        temporary.depth = LoopDepth();
    }
    return temporary.object.get();
}

void CThreadState::FreeTemporaries(unsigned depth)
{
    std::erase_if(m_temporaries, [depth](const auto& entry) { return entry.second.depth >= depth; });
}

LRESULT CThreadState::CallSuper(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam) const
{
    const auto found = m_super.find(hWnd);
    if (found == m_super.end())
        return ::DefWindowProcA(hWnd, message, wParam, lParam);
    const auto call = found->second.isUnicode ? &::CallWindowProcW : &::CallWindowProcA;
    return call(found->second.procedure, hWnd, message, wParam, lParam);
}

unsigned CThreadState::LoopDepth() const
{
    return m_scope == nullptr ? 0 : m_scope->Depth();
}

bool CThreadState::IsBetweenMessages() const
{
    return m_scope != nullptr && m_messageDepth == m_scope->MessageDepth();
}

bool CThreadState::HasFailed(unsigned depth) const
{
    return m_scope != nullptr && m_scope->HasFailed() && depth >= m_scope->Depth();
}

void CThreadState::KeepException() noexcept
{
    if (m_scope != nullptr)
        m_scope->Keep(std::current_exception());
    else if (m_stray == nullptr)
        m_stray = std::current_exception();
}

void AfxThrowKeptException()
{
    if (std::exception_ptr kept = std::exchange(CThreadState::Get().m_stray, nullptr))
        std::rethrow_exception(std::move(kept));
}

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
