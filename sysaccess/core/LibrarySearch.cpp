// The search for libraries; see the header.
#include "sysaccess/core/LibrarySearch.h"

#include <array>
#include <windows.h>

namespace {

// Windows then searches that directory in the current one's place.
bool HasLibraryDirectory()
{
    return GetDllDirectoryA(0, nullptr) > 1; // the size needed, with the zero
}

} // namespace

std::string SystemDirectory()
{
    std::array<char, MAX_PATH> directory{};
    const UINT length = GetSystemDirectoryA(directory.data(), MAX_PATH);
    return length < MAX_PATH ? directory.data() : "";
}

UniqueLibrary LoadSystemLibrary(const std::string& fileName)
{
    const std::string directory = SystemDirectory();
    return UniqueLibrary(directory.empty() ? nullptr : LoadLibraryA((directory + '\\' + fileName).c_str()));
}

// An empty directory would do on Windows, but not under Wine; the system's is searched anyway.
SearchWithoutCurrentDirectory::SearchWithoutCurrentDirectory() : m_isInForce(HasLibraryDirectory())
{
    if (m_isInForce)
        return;
    const std::string system = SystemDirectory();
    m_isInForce = m_isOurs = !system.empty() && SetDllDirectoryA(system.c_str()) != FALSE;
}

SearchWithoutCurrentDirectory::~SearchWithoutCurrentDirectory()
{
    if (m_isOurs)
        SetDllDirectoryA(nullptr);
}
