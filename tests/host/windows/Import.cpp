// The list of all slots, and the module functions that look into it.
#include "Import.h"

#include "imports/ImportHook.h"

#include <cstring>
#include <string>
#include <utility>

namespace {

// Filled before main, by the constructors of the slots.
standin::ImportSlot* first = nullptr;

} // namespace

namespace standin {

ImportSlot::ImportSlot(const char* name, void* function)
    : address(function), original(function), m_name(name), m_next(std::exchange(first, this))
{
}

ImportSlot* ImportSlot::Find(const char* name)
{
    ImportSlot* slot = first;
    while (slot != nullptr && std::strcmp(slot->m_name, name) != 0)
        slot = slot->m_next;
    return slot;
}

} // namespace standin

namespace support {

void** FindImport(HMODULE /*module*/, const char* function)
{
    standin::ImportSlot* const slot = standin::ImportSlot::Find(function);
    return slot == nullptr ? nullptr : &slot->address;
}

void* ExchangeImport(void** slot, void* address)
{
    return std::exchange(*slot, address);
}

ReplacedImport::ReplacedImport(HMODULE module, const char* function, void* replacement)
    : m_slot(FindImport(module, function))
{
    if (m_slot != nullptr)
        m_original = ExchangeImport(m_slot, replacement);
}

ReplacedImport::~ReplacedImport()
{
    if (m_slot != nullptr)
        ExchangeImport(m_slot, m_original);
}

} // namespace support

namespace {

// Goes around hooks, as on Windows.
FARPROC FindEntry(HMODULE /*module*/, LPCSTR name)
{
    const standin::ImportSlot* const slot = standin::ImportSlot::Find(name);
    if (slot != nullptr)
        return reinterpret_cast<FARPROC>(slot->original);
    SetLastError(ERROR_PROC_NOT_FOUND);
    return nullptr;
}

HMODULE LoadNone(LPCSTR /*path*/)
{
    SetLastError(ERROR_MOD_NOT_FOUND);
    return nullptr;
}

BOOL Free(HMODULE /*module*/)
{
    return TRUE;
}

UINT GiveSystemDirectory(LPSTR directory, UINT size)
{
    constexpr char path[] = "C:\\windows\\system32";
    if (size < sizeof path)
        return sizeof path;
    std::memcpy(directory, &path[0], sizeof path);
    return sizeof path - 1;
}

std::string libraryDirectory;

// A buffer that is too short gets the size needed.
DWORD GiveLibraryDirectory(DWORD size, LPSTR directory)
{
    const auto length = static_cast<DWORD>(libraryDirectory.size());
    if (size <= length)
        return length + 1;
    std::strcpy(directory, libraryDirectory.c_str());
    return length;
}

BOOL SetLibraryDirectory(LPCSTR directory)
{
    libraryDirectory = directory == nullptr ? "" : directory;
    return TRUE;
}

const standin::Import<decltype(GetProcAddress)> findEntryImport("GetProcAddress", FindEntry);
const standin::Import<decltype(LoadLibraryA)> loadImport("LoadLibraryA", LoadNone);
const standin::Import<decltype(FreeLibrary)> freeImport("FreeLibrary", Free);
const standin::Import<decltype(GetSystemDirectoryA)> systemDirectoryImport("GetSystemDirectoryA",
                                                                           GiveSystemDirectory);
const standin::Import<decltype(GetDllDirectoryA)> getDirectoryImport("GetDllDirectoryA",
                                                                     GiveLibraryDirectory);
const standin::Import<decltype(SetDllDirectoryA)> setDirectoryImport("SetDllDirectoryA", SetLibraryDirectory);

} // namespace

// There is one module, the program with all of Windows in it.
HMODULE GetModuleHandleA(LPCSTR /*name*/)
{
    return reinterpret_cast<HMODULE>(&first);
}

FARPROC GetProcAddress(HMODULE module, LPCSTR name)
{
    return findEntryImport(module, name);
}

HMODULE LoadLibraryA(LPCSTR path)
{
    return loadImport(path);
}

BOOL FreeLibrary(HMODULE module)
{
    return freeImport(module);
}

UINT GetSystemDirectoryA(LPSTR directory, UINT size)
{
    return systemDirectoryImport(directory, size);
}

DWORD GetDllDirectoryA(DWORD size, LPSTR directory)
{
    return getDirectoryImport(size, directory);
}

BOOL SetDllDirectoryA(LPCSTR directory)
{
    return setDirectoryImport(directory);
}
