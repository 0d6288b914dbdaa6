// The replaced operator new.
#include "support/FailingAllocations.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr int unlimited = std::numeric_limits<int>::max();

thread_local int allowedAllocations = unlimited;
thread_local int failingAllocations = 0;
thread_local bool hasFailed = false;

// False when the count is used up.
bool TakeOneOf(int& count)
{
    if (count == 0)
        return false;
    if (count != unlimited)
        --count;
    return true;
}

void* Allocate(std::size_t size)
{
    if (TakeOneOf(allowedAllocations) || !TakeOneOf(failingAllocations))
        return std::malloc(size == 0 ? 1 : size);
    hasFailed = true;
    return nullptr;
}

void* AllocateOrThrow(std::size_t size)
{
    void* const memory = Allocate(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

} // namespace

namespace support {

FailingAllocations::FailingAllocations(int allowed, int failing)
{
    hasFailed = false;
    allowedAllocations = allowed;
    failingAllocations = failing;
}

FailingAllocations::~FailingAllocations()
{
    allowedAllocations = unlimited;
}

bool FailingAllocations::HasFailed() const
{
    return hasFailed;
}

} // namespace support

void* operator new(std::size_t size)
{
    return AllocateOrThrow(size);
}

void* operator new[](std::size_t size)
{
    return AllocateOrThrow(size);
}

void* operator new(std::size_t size, const std::nothrow_t& /*unused*/) noexcept
{
    return Allocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t& /*unused*/) noexcept
{
    return Allocate(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}
