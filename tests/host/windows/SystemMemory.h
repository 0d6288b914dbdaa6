// Memory of the stand-in itself. It is not the program's: a test that makes the program's allocations fail
// leaves the system alone.
#pragma once

#include <cstddef>
#include <new>
#include <string>

extern "C" {
// What malloc and free are without the slots of the stand-in.
void* __real_malloc(std::size_t size);
void free(void* memory);
// The leak check's own; null in builds without one.
__attribute__((weak)) void __lsan_ignore_object(const void* memory);
}

namespace standin {

// The product leaves this block unfreed on purpose: the leak check does not report it.
inline void LeaveUnfreed(const void* memory)
{
    if (__lsan_ignore_object != nullptr)
        __lsan_ignore_object(memory);
}

// Allocator of the containers in which the stand-in keeps its state.
template <typename T>
struct SystemMemory
{
    using value_type = T;

    SystemMemory() = default;
    template <typename Other>
    SystemMemory(const SystemMemory<Other>& /*other*/)
    {
    }

    T* allocate(std::size_t count)
    {
        void* const memory = __real_malloc(count * sizeof(T));
        if (memory == nullptr)
            throw std::bad_alloc();
        return static_cast<T*>(memory);
    }
    void deallocate(T* memory, std::size_t /*count*/) { free(memory); }

    bool operator==(const SystemMemory& /*other*/) const { return true; }
};

using SystemString = std::basic_string<char, std::char_traits<char>, SystemMemory<char>>;

} // namespace standin
