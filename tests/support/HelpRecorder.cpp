// The recorder's answers.
#include "support/HelpRecorder.h"

#include <ostream>

namespace support {
namespace {

constexpr WORD entryOrdinal = 14;

bool IsHelpLibrary(const std::string& name)
{
    return name.size() >= 10 && _stricmp(name.c_str() + name.size() - 10, "hhctrl.ocx") == 0;
}

} // namespace

std::ostream& operator<<(std::ostream& out, const HelpRequest& request)
{
    return out << request.file << " " << request.topic << " (command " << request.command << ")";
}

HelpRecorder::HelpRecorder(HMODULE module)
    : m_turn(this), m_loadLibrary(module, "LoadLibraryA", &Load),
      m_getProcAddress(module, "GetProcAddress", &FindEntry)
{
}

std::vector<HelpRequest> HelpRecorder::Requests() const
{
    const std::lock_guard lock(m_mutex);
    return m_requests;
}

std::vector<std::string> HelpRecorder::LoadedLibraries() const
{
    const std::lock_guard lock(m_mutex);
    return m_libraries;
}

void HelpRecorder::Clear()
{
    const std::lock_guard lock(m_mutex);
    m_requests.clear();
    m_libraries.clear();
}

HMODULE WINAPI HelpRecorder::Load(LPCSTR name)
{
    HelpRecorder& self = Turn<HelpRecorder>::Active();
    if (!IsHelpLibrary(name))
        return self.m_loadLibrary.Original<decltype(LoadLibraryA)>()(name);
    const std::lock_guard lock(self.m_mutex);
    self.m_libraries.emplace_back(name);
    // Any library that is there can be freed as often as it is loaded.
    return self.m_hasLibrary ? LoadLibraryA("user32.dll") : nullptr;
}

FARPROC WINAPI HelpRecorder::FindEntry(HMODULE library, LPCSTR name)
{
    HelpRecorder& self = Turn<HelpRecorder>::Active();
    if (name != MAKEINTRESOURCEA(entryOrdinal))
        return self.m_getProcAddress.Original<decltype(GetProcAddress)>()(library, name);
    return self.m_hasEntry ? reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Show)) : nullptr;
}

HWND WINAPI HelpRecorder::Show(HWND owner, LPCSTR file, UINT command, DWORD_PTR topic)
{
    HelpRecorder& self = Turn<HelpRecorder>::Active();
    const std::lock_guard lock(self.m_mutex);
    self.m_requests.push_back({owner, file, command, reinterpret_cast<const char*>(topic)});
    return nullptr;
}

} // namespace support
