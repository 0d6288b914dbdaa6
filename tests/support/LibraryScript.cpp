// See the header.
#include "support/LibraryScript.h"

#include <algorithm>
#include <cctype>

namespace support {
namespace {

std::string Key(const std::string& path)
{
    std::string name = path.substr(path.find_last_of("\\/") + 1);
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name;
}

} // namespace

LibraryScript::LibraryScript(HMODULE module)
    : m_turn(this), m_load(module, "LoadLibraryA", &Load), m_findEntry(module, "GetProcAddress", &FindEntry),
      m_free(module, "FreeLibrary", &Free)
{
    if (!m_load.IsImported() || !m_findEntry.IsImported() || !m_free.IsImported())
        throw std::runtime_error("not imported: the functions that load libraries");
}

LibraryScript::~LibraryScript() = default;

void LibraryScript::Add(const std::string& fileName)
{
    const std::lock_guard lock(m_mutex);
    m_libraries[Key(fileName)] = {};
}

void LibraryScript::Remove(const std::string& fileName)
{
    const std::lock_guard lock(m_mutex);
    m_libraries[Key(fileName)].isThere = false;
}

void LibraryScript::Put(const std::string& fileName, const std::string& entry, void* function)
{
    const std::lock_guard lock(m_mutex);
    m_libraries.at(Key(fileName)).entries[entry] = function;
}

int LibraryScript::Loads(const std::string& fileName) const
{
    const std::lock_guard lock(m_mutex);
    return m_libraries.at(Key(fileName)).loads;
}

int LibraryScript::Held(const std::string& fileName) const
{
    const std::lock_guard lock(m_mutex);
    const Library& library = m_libraries.at(Key(fileName));
    return library.loads - library.releases;
}

std::string LibraryScript::Path(const std::string& fileName) const
{
    const std::lock_guard lock(m_mutex);
    return m_libraries.at(Key(fileName)).path;
}

LibraryScript::Library* LibraryScript::Find(HMODULE module)
{
    for (auto& [name, library] : m_libraries) {
        if (reinterpret_cast<HMODULE>(&library) == module)
            return &library;
    }
    return nullptr;
}

HMODULE WINAPI LibraryScript::Load(LPCSTR path)
{
    LibraryScript& self = Turn<LibraryScript>::Active();
    const std::lock_guard lock(self.m_mutex);
    const auto found = self.m_libraries.find(Key(path));
    if (found == self.m_libraries.end())
        return self.m_load.Original<decltype(LoadLibraryA)>()(path);
    Library& library = found->second;
    library.path = path;
    if (!library.isThere) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return nullptr;
    }
    ++library.loads;
    return reinterpret_cast<HMODULE>(&library);
}

FARPROC WINAPI LibraryScript::FindEntry(HMODULE module, LPCSTR name)
{
    LibraryScript& self = Turn<LibraryScript>::Active();
    const std::lock_guard lock(self.m_mutex);
    const Library* const library = self.Find(module);
    if (library == nullptr)
        return self.m_findEntry.Original<decltype(GetProcAddress)>()(module, name);
    const auto entry = library->entries.find(name);
    return entry == library->entries.end() ? nullptr : reinterpret_cast<FARPROC>(entry->second);
}

BOOL WINAPI LibraryScript::Free(HMODULE module)
{
    LibraryScript& self = Turn<LibraryScript>::Active();
    const std::lock_guard lock(self.m_mutex);
    Library* const library = self.Find(module);
    if (library == nullptr)
        return self.m_free.Original<decltype(FreeLibrary)>()(module);
    ++library->releases;
    return TRUE;
}

} // namespace support
