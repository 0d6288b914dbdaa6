// See the header.
#include "support/ModuleMemory.h"

#include <cstdlib>
#include <cstring>
#include <mutex>
#include <stdexcept>

namespace support {

ModuleMemory::ModuleMemory(HMODULE module)
    : m_turn(this), m_malloc(module, "malloc", &Malloc), m_calloc(module, "calloc", &Calloc),
      m_realloc(module, "realloc", &Realloc), m_strdup(module, "_strdup", &Strdup),
      m_free(module, "free", &Free), m_localAlloc(module, "LocalAlloc", &Local)
{
    if (!m_malloc.IsImported() || !m_free.IsImported())
        throw std::runtime_error("not imported: malloc, free");
}

void ModuleMemory::Arm(std::size_t first, std::size_t count, DWORD thread)
{
    const std::lock_guard lock(m_mutex);
    m_taken = 0;
    m_first = first;
    m_count = count;
    m_thread = thread;
    m_isArmed = true;
}

void ModuleMemory::Disarm()
{
    const std::lock_guard lock(m_mutex);
    m_isArmed = false;
}

std::size_t ModuleMemory::Taken() const
{
    const std::lock_guard lock(m_mutex);
    return m_taken;
}

std::size_t ModuleMemory::Held() const
{
    const std::lock_guard lock(m_mutex);
    return m_blocks.size();
}

bool ModuleMemory::Begin()
{
    const std::lock_guard lock(m_mutex);
    if (!m_isArmed || m_pauses > 0 || (m_thread != 0 && m_thread != GetCurrentThreadId()))
        return false;
    ++m_taken;
    return m_first != 0 && m_taken >= m_first && m_taken - m_first < m_count;
}

void* ModuleMemory::Take(void* block)
{
    const std::lock_guard lock(m_mutex);
    if (block != nullptr)
        m_blocks.insert(block);
    return block;
}

void ModuleMemory::Give(void* block)
{
    const std::lock_guard lock(m_mutex);
    m_blocks.erase(block);
}

void* ModuleMemory::Malloc(std::size_t size)
{
    return Self().Begin() ? nullptr : Self().Take(Self().m_malloc.Original<decltype(std::malloc)>()(size));
}

void* ModuleMemory::Calloc(std::size_t count, std::size_t size)
{
    return Self().Begin() ? nullptr
                          : Self().Take(Self().m_calloc.Original<decltype(std::calloc)>()(count, size));
}

void* ModuleMemory::Realloc(void* block, std::size_t size)
{
    if (Self().Begin())
        return nullptr;
    Self().Give(block);
    return Self().Take(Self().m_realloc.Original<decltype(std::realloc)>()(block, size));
}

char* ModuleMemory::Strdup(const char* text)
{
    return Self().Begin()
               ? nullptr
               : static_cast<char*>(Self().Take(Self().m_strdup.Original<decltype(_strdup)>()(text)));
}

void ModuleMemory::Free(void* block)
{
    Self().Give(block);
    Self().m_free.Original<decltype(std::free)>()(block);
}

HLOCAL ModuleMemory::Local(UINT flags, SIZE_T size)
{
    if (!Self().Begin())
        return Self().m_localAlloc.Original<decltype(LocalAlloc)>()(flags, size);
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

} // namespace support
