// Walks and changes import tables; see the header.
#include "support/ImportHook.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string>

// It needs windows.h before it.
#include <delayimp.h>

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

// The slot of a function in a pair of tables, the names' and the addresses'.
void** FindInTables(HMODULE module, DWORD names, DWORD addresses, const char* function)
{
    const auto* name = At<IMAGE_THUNK_DATA>(module, names);
    auto* address = At<IMAGE_THUNK_DATA>(module, addresses);
    for (; name->u1.AddressOfData != 0; ++name, ++address) {
        if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal))
            continue;
        const auto* import = At<IMAGE_IMPORT_BY_NAME>(module, static_cast<DWORD>(name->u1.AddressOfData));
        if (std::strcmp(&import->Name[0], function) == 0)
            return reinterpret_cast<void**>(&address->u1.Function);
    }
    return nullptr;
}

void** FindImportAtLoadTime(HMODULE module, const char* function)
{
    const IMAGE_IMPORT_DESCRIPTOR* library = FirstImportDescriptor(module);
    for (; library != nullptr && library->Name != 0; ++library) {
        if (void** slot = FindInTables(module, library->OriginalFirstThunk, library->FirstThunk, function))
            return slot;
    }
    return nullptr;
}

// Whether a descriptor of a library that is loaded on demand stands at this place of the module's code. This
// linker enters them into no directory, so they are looked for by their form.
bool IsDelayDescriptor(HMODULE module, DWORD imageSize, const ImgDelayDescr& place)
{
    const auto isOffset = [&](RVA offset) { return offset != 0 && offset < imageSize; };
    if (place.grAttrs != dlattrRva || place.rvaBoundIAT != 0 || place.dwTimeStamp != 0 ||
        !isOffset(place.rvaDLLName) || !isOffset(place.rvaHmod) || !isOffset(place.rvaIAT) ||
        !isOffset(place.rvaINT))
        return false;
    const std::string name(At<char>(module, place.rvaDLLName),
                           strnlen(At<char>(module, place.rvaDLLName), MAX_PATH));
    return name.ends_with(".dll");
}

// Whether the slot still holds the code that loads its library. That code begins by loading the slot's own
// address: lea rax, [rip + distance].
bool IsUnresolved(void* const* slot)
{
    constexpr std::array<BYTE, 3> loadAddress = {0x48, 0x8D, 0x05};
    const auto* const code = static_cast<const BYTE*>(*slot);
    if (!std::equal(loadAddress.begin(), loadAddress.end(), code))
        return false;
    std::int32_t distance = 0;
    std::memcpy(&distance, code + loadAddress.size(), sizeof distance);
    return code + loadAddress.size() + sizeof distance + distance == reinterpret_cast<const BYTE*>(slot);
}

// Puts the function's address in the place of the code that would load its library: that code writes to the
// slot as well and would undo a hook.
void Resolve(HMODULE module, const ImgDelayDescr& library, void** slot, const char* function)
{
    if (!IsUnresolved(slot))
        return;
    std::array<char, MAX_PATH> directory{};
    GetSystemDirectoryA(directory.data(), MAX_PATH);
    const HMODULE loaded =
        LoadLibraryA((std::string(directory.data()) + '\\' + At<char>(module, library.rvaDLLName)).c_str());
    ExchangeImport(slot, reinterpret_cast<void*>(GetProcAddress(loaded, function)));
}

} // namespace

std::vector<const ImgDelayDescr*> DelayedLibraries(HMODULE module)
{
    const auto* dos = At<IMAGE_DOS_HEADER>(module, 0);
    const auto* headers = At<IMAGE_NT_HEADERS>(module, static_cast<DWORD>(dos->e_lfanew));
    const DWORD imageSize = headers->OptionalHeader.SizeOfImage;
    const IMAGE_SECTION_HEADER* code =
        reinterpret_cast<const IMAGE_SECTION_HEADER*>(headers + 1); // the linker puts it first
    std::vector<const ImgDelayDescr*> libraries;
    for (DWORD offset = 0; offset + sizeof(ImgDelayDescr) <= code->Misc.VirtualSize; offset += 4) {
        const auto* place = At<ImgDelayDescr>(module, code->VirtualAddress + offset);
        if (IsDelayDescriptor(module, imageSize, *place))
            libraries.push_back(place);
    }
    return libraries;
}

void** FindImport(HMODULE module, const char* function)
{
    if (void** slot = FindImportAtLoadTime(module, function))
        return slot;
    for (const ImgDelayDescr* library : DelayedLibraries(module)) {
        void** const slot = FindInTables(module, library->rvaINT, library->rvaIAT, function);
        if (slot == nullptr)
            continue;
        Resolve(module, *library, slot, function);
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
