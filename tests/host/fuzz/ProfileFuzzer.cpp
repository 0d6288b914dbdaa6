// libFuzzer's entry for the profile engine.
#include "ProfileScenario.h"

#include <cstdio>
#include <cstdlib>
#include <new>

extern "C" {
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
// What malloc and free are without the address sanitizer.
void* __libc_malloc(std::size_t size);
void __libc_free(void* memory);
}

// The engine takes its memory from malloc, which the address sanitizer watches. What `new` makes is the
// model's and the fuzzer's own: watching it would take half of the time.
void* operator new(std::size_t size)
{
    void* const memory = __libc_malloc(size);
    if (memory == nullptr)
        std::abort();
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t& /*noThrow*/) noexcept
{
    return __libc_malloc(size);
}

void operator delete(void* memory) noexcept
{
    __libc_free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    __libc_free(memory);
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string difference = fuzz::RunProfileScenario("M:\\fuzz.ini", data, size);
    if (difference.empty())
        return 0;
    std::fprintf(stderr, "engine and model disagree: %s\n", difference.c_str());
    std::abort();
}
