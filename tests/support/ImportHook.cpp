// Walks and changes import tables; see the header.
#include "support/ImportHook.h"

#include <cstdint>
#include <cstring>

namespace support {
namespace {

template <typename T>
T* At(HMODULE module, DWORD offset)
{
    return reinterpret_cast<T*>(reinterpret_cast<std::uintptr_t>(module) + offset);
}

const IMAGE_IMPORT_DESCRIPTOR* FirstImportDescriptor(HMODULE module)
{
    const auto* dos = At<IMAGE_DOS_HEADER>(module, 0);
    const auto* headers = At<IMAGE_NT_HEADERS>(module, static_cast<DWORD>(dos->e_lfanew));
    const DWORD offset = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    return offset == 0 ? nullptr : At<IMAGE_IMPORT_DESCRIPTOR>(module, offset);
}

void** FindInLibrary(HMODULE module, const IMAGE_IMPORT_DESCRIPTOR& library, const char* function)
{
    const auto* name = At<IMAGE_THUNK_DATA>(module, library.OriginalFirstThunk);
    auto* address = At<IMAGE_THUNK_DATA>(module, library.FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++address) {
        if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal))
            continue;
        const auto* import = At<IMAGE_IMPORT_BY_NAME>(module, static_cast<DWORD>(name->u1.AddressOfData));
        if (std::strcmp(&import->Name[0], function) == 0)
            return reinterpret_cast<void**>(&address->u1.Function);
    }
    return nullptr;
}

} // namespace

void** FindImport(HMODULE module, const char* function)
{
    const IMAGE_IMPORT_DESCRIPTOR* library = FirstImportDescriptor(module);
    for (; library != nullptr && library->Name != 0; ++library) {
        if (void** slot = FindInLibrary(module, *library, function))
            return slot;
    }
    return nullptr;
}

void* ExchangeImport(void** slot, void* address)
{
    DWORD protection = 0;
    VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
    void* const previous = std::exchange(*slot, address);
    VirtualProtect(slot, sizeof *slot, protection, &protection);
    return previous;
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
