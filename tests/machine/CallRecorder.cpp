// See the header.
#include "machine/CallRecorder.h"

namespace sweep {

void CallRecorder::ArmLasting(std::size_t first, std::map<std::string, DWORD> functions, const char* from,
                              const char* until)
{
    Arm(first, 0, from, until);
    const std::lock_guard lock(m_mutex);
    m_lasting = std::move(functions);
}

DWORD CallRecorder::CodeOf(const std::string& function) const
{
    const auto lasting = m_lasting.find(function);
    return lasting == m_lasting.end() ? m_code : lasting->second;
}

bool CallRecorder::Fails(const std::string& function)
{
    if (m_lasting.empty())
        return m_calls.size() + 1 == m_failing;
    return m_lasting.contains(function) && ++m_lastingCalls >= m_failing;
}

void CallRecorder::Arm(std::size_t failing, DWORD code, const char* from, const char* until)
{
    const std::lock_guard lock(m_mutex);
    m_calls.clear();
    m_lasting.clear();
    m_lastingCalls = 0;
    m_failing = failing;
    m_code = code;
    m_from = from == nullptr ? "" : from;
    m_until = until == nullptr ? "" : until;
    m_isArmed = true;
}

void CallRecorder::Disarm()
{
    const std::lock_guard lock(m_mutex);
    m_isArmed = false;
}

bool CallRecorder::Begin(Call call)
{
    std::unique_lock lock(m_mutex);
    if (!m_isArmed || (m_calls.empty() && !m_from.empty() && call.function != m_from))
        return false;
    call.boxes = m_boxes;
    m_isArmed = call.function != m_until;
    call.hasFailed = Fails(call.function);
    m_calls.push_back(std::move(call));
    const bool isFailing = m_calls.back().hasFailed;
    lock.unlock();
    if (!isFailing || !m_instead)
        return isFailing;
    m_instead();
    return false;
}

bool CallRecorder::IsFailingNext() const
{
    const std::lock_guard lock(m_mutex);
    return m_isArmed && m_calls.size() + 1 == m_failing;
}

void CallRecorder::Open(const void* handle, const std::string& place)
{
    const std::lock_guard lock(m_mutex);
    m_open[handle] = place;
}

void CallRecorder::Close(const void* handle)
{
    const std::lock_guard lock(m_mutex);
    m_open.erase(handle);
}

std::string CallRecorder::NameOf(const void* handle) const
{
    if (handle == HKEY_LOCAL_MACHINE)
        return "HKLM";
    const std::lock_guard lock(m_mutex);
    const auto found = m_open.find(handle);
    return found == m_open.end() ? std::string() : found->second;
}

void CallRecorder::NoteChange() const
{
    if (m_isArmed && m_look)
        m_look();
}

void CallRecorder::CountBox()
{
    const std::lock_guard lock(m_mutex);
    ++m_boxes;
}

std::vector<Call> CallRecorder::Calls() const
{
    const std::lock_guard lock(m_mutex);
    return m_calls;
}

std::map<const void*, std::string> CallRecorder::OpenHandles() const
{
    const std::lock_guard lock(m_mutex);
    return m_open;
}

} // namespace sweep
