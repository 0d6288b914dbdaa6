// The per-thread state.
#include "ThreadState.h"

#include "afxwin.h"
#include "HandlerScope.h"

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
    const auto found = m_temporaries.find(hWnd);
    if (found != m_temporaries.end())
        return found->second.object.get();
    auto object = std::make_unique<CWnd>();
    object->m_hWnd = hWnd;
    return m_temporaries.emplace(hWnd, Temporary{std::move(object), LoopDepth()}).first->second.object.get();
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
