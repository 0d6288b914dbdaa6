// The memory that one module takes from the C runtime: what it holds, and what it does when there is none.
// For sweeps and long runs of a built library, whose own operator new no test can replace, or of the test
// program itself.
#pragma once

#include "imports/ImportHook.h"
#include "support/Mutex.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <new>
#include <set>
#include <windows.h>

namespace support {

// Memory of the process heap, which no ModuleMemory stands before.
template <typename Value>
struct HeapAllocator
{
    using value_type = Value;

    HeapAllocator() = default;
    template <typename Other>
    explicit HeapAllocator(const HeapAllocator<Other>& /*other*/)
    {
    }

    Value* allocate(std::size_t count)
    {
        void* const block = HeapAlloc(GetProcessHeap(), 0, count * sizeof(Value));
        if (block == nullptr)
            throw std::bad_alloc();
        return static_cast<Value*>(block);
    }
    void deallocate(Value* block, std::size_t /*count*/) { HeapFree(GetProcessHeap(), 0, block); }
    bool operator==(const HeapAllocator& /*other*/) const { return true; }
};

// Stands before malloc, calloc, realloc and _strdup of one module, through which its operator new goes as
// well, and before LocalAlloc, of modules that call it. One object at a time; throws std::runtime_error when
// the module does not import malloc and free. The heaps of the process show less: Wine's own controls leave
// something in them with each sheet that is closed.
class ModuleMemory
{
  public:
    explicit ModuleMemory(HMODULE module);
    ModuleMemory(const ModuleMemory&) = delete;
    ModuleMemory& operator=(const ModuleMemory&) = delete;

    // Counts from now on. Allocation number `first` (from 1) fails, and those behind it until `count` have
    // failed; none for 0. With `thread`, other threads are not looked at.
    void Arm(std::size_t first, std::size_t count = 1, DWORD thread = 0);
    // All allocations succeed again and are not counted.
    void Disarm();
    // While it lives, allocations succeed and are not counted: of what stands in for Windows.
    class Pause
    {
      public:
        explicit Pause(ModuleMemory& memory) : m_memory(memory) { ++m_memory.m_pauses; }
        ~Pause() { --m_memory.m_pauses; }
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

      private:
        ModuleMemory& m_memory;
    };
    // Allocations since the last Arm, those that failed among them.
    [[nodiscard]] std::size_t Taken() const;

    // The blocks that the module has taken since this object was made and not given back.
    [[nodiscard]] std::size_t Held() const;

  private:
    static ModuleMemory& Self() { return Turn<ModuleMemory>::Active(); }
    // Counts an allocation; true when it is to fail.
    bool Begin();
    void* Take(void* block);
    // Also of blocks that others took.
    void Give(void* block);

    static void* Malloc(std::size_t size);
    static void* Calloc(std::size_t count, std::size_t size);
    static void* Realloc(void* block, std::size_t size);
    static char* Strdup(const char* text);
    static void Free(void* block);
    static HLOCAL WINAPI Local(UINT flags, SIZE_T size);

    mutable Mutex m_mutex;
    std::set<void*, std::less<>, HeapAllocator<void*>> m_blocks;
    std::size_t m_taken = 0;
    std::size_t m_first = 0;
    std::size_t m_count = 0;
    DWORD m_thread = 0;
    std::atomic<int> m_pauses = 0;
    bool m_isArmed = false;
    Turn<ModuleMemory> m_turn;
    ReplacedImport m_malloc;
    ReplacedImport m_calloc;
    ReplacedImport m_realloc;
    ReplacedImport m_strdup;
    ReplacedImport m_free;
    ReplacedImport m_localAlloc;
};

} // namespace support
