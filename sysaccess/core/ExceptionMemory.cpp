// Memory for exceptions in flight, with a reserve for when there is none. The C++ library's own reserve is
// behind a lock that takes memory when it is first used; without memory the lock throws an exception, for
// which the reserve is asked, and so on until the stack of the Control Panel host is full. The linker takes
// these functions instead.
#include "sysaccess/core/ExceptionMemory.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <cxxabi.h>
#include <exception>
#include <new>

namespace {

// Room for what the library keeps before an exception (160 bytes in GCC 12), zero at first.
constexpr std::size_t headSize = 256;

struct alignas(std::max_align_t) ReserveBlock
{
    std::array<std::byte, 512> bytes;
};

// As many exceptions as can be in flight, or kept, at a time: a few for each modal loop.
constexpr std::size_t reserveSize = 32;
std::array<ReserveBlock, reserveSize> reserve;
std::array<std::atomic_flag, reserveSize> isTaken;

// Null when it is too large or the reserve is used up.
void* TakeFromReserve(std::size_t size)
{
    for (std::size_t i = 0; i < reserveSize && size <= sizeof(ReserveBlock); ++i) {
        if (!isTaken.at(i).test_and_set())
            return &reserve.at(i);
    }
    return nullptr;
}

char* Take(std::size_t size)
{
    void* block = std::malloc(size);
    if (block == nullptr)
        block = TakeFromReserve(size);
    if (block == nullptr)
        std::terminate();
    return static_cast<char*>(std::memset(block, 0, headSize));
}

void GiveBack(void* block)
{
    for (std::size_t i = 0; i < reserveSize; ++i) {
        if (block == &reserve.at(i)) {
            isTaken.at(i).clear();
            return;
        }
    }
    std::free(block);
}

} // namespace

void PrepareExceptions()
try {
    throw std::bad_alloc();
} catch (const std::bad_alloc&) {
}

namespace __cxxabiv1 {
extern "C" {

void* __cxa_allocate_exception(std::size_t size) noexcept
{
    return Take(headSize + size) + headSize;
}

void __cxa_free_exception(void* exception) noexcept
{
    GiveBack(static_cast<char*>(exception) - headSize);
}

// What a rethrown exception is made of: a head alone.
__cxa_dependent_exception* __cxa_allocate_dependent_exception() noexcept
{
    return reinterpret_cast<__cxa_dependent_exception*>(Take(headSize));
}

void __cxa_free_dependent_exception(__cxa_dependent_exception* exception) noexcept
{
    GiveBack(exception);
}
}
} // namespace __cxxabiv1
