// What the compiler's check for overrun buffers on the stack needs: the value that stands between a
// function's buffers and its return address, and what happens when it was overwritten. The compiler's own
// library would load Windows' cryptography for the value, which takes longer than loading the applet, and
// print to a console that nobody sees.
#include <cstdint>
#include <windows.h>

extern "C" {

extern std::uintptr_t __stack_chk_guard;
std::uintptr_t __stack_chk_guard = 0;
[[noreturn]] void __stack_chk_fail();

// The process ends here: neither its data nor its way back can be trusted.
void __stack_chk_fail()
{
    TerminateProcess(GetCurrentProcess(), STATUS_STACK_BUFFER_OVERRUN);
    __builtin_trap();
}

} // extern "C"

namespace {

// From what another process cannot foretell: the clocks, and where Windows has put process, thread and stack.
// Runs while no checked function is active. The zero in the lowest byte ends a text that is copied over it.
[[gnu::constructor, gnu::no_stack_protector]] void SetStackGuard()
{
    FILETIME time{};
    GetSystemTimeAsFileTime(&time);
    LARGE_INTEGER counter{};
    QueryPerformanceCounter(&counter);
    std::uintptr_t guard = (std::uintptr_t{time.dwHighDateTime} << 32) ^ time.dwLowDateTime;
    guard ^= static_cast<std::uintptr_t>(counter.QuadPart) * 0x9E3779B97F4A7C15;
    guard ^= (std::uintptr_t{GetCurrentProcessId()} << 32) ^ GetCurrentThreadId();
    guard ^= reinterpret_cast<std::uintptr_t>(&counter) ^ reinterpret_cast<std::uintptr_t>(&__stack_chk_guard)
                                                              << 16;
    __stack_chk_guard = guard & ~std::uintptr_t{0xFF};
}

} // namespace
