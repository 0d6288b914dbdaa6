// The search for libraries; see the header.
#include "sysaccess/core/LibrarySearch.h"

#include <array>
#include <windows.h>

namespace {

std::string LibraryDirectory()
{
    // The size needed, with the zero.
    std::string directory(GetDllDirectoryA(0, nullptr), '\0');
    const DWORD length = GetDllDirectoryA(static_cast<DWORD>(directory.size()), directory.data());
    return length < directory.size() ? directory.c_str() : "";
}

} // namespace

std::string SystemDirectory()
{
    std::array<char, MAX_PATH> directory{};
    const UINT length = GetSystemDirectoryA(directory.data(), MAX_PATH);
    return length < MAX_PATH ? directory.data() : "";
}

// The directory that is set stands in the current one's place. An empty text would do on Windows, but not
// under Wine; the system's directory is searched anyway.
SearchWithoutCurrentDirectory::SearchWithoutCurrentDirectory() : m_before(LibraryDirectory())
{
    const std::string system = SystemDirectory();
    m_isInForce = !system.empty() && SetDllDirectoryA(system.c_str()) != FALSE;
}

SearchWithoutCurrentDirectory::~SearchWithoutCurrentDirectory()
{
    SetDllDirectoryA(m_before.empty() ? nullptr : m_before.c_str());
}
