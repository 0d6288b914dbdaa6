// Functions of the C++ library that the applet has its own of, a hundred kilobytes smaller with what they
// bring along. The linker takes each from whoever defines it first.
#include <bits/functexcept.h>
#include <exception>
#include <new>
#include <windows.h>

namespace __gnu_cxx {

// An exception that nobody can catch any more, as one out of a destructor, ends the process at once. The C
// runtime's abort would show a message first, whose loop runs handlers in a state that cannot be trusted, and
// the library would print its name first, for a reader whom a Control Panel host does not have.
void __verbose_terminate_handler()
{
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(STATUS_FATAL_APP_EXIT));
    __builtin_trap();
}

} // namespace __gnu_cxx

namespace std {

// What containers and texts throw. The library's exceptions carry a text of two kinds, for readers whom there
// are none of. A length that no memory can hold is memory that runs out.
void __throw_bad_alloc()
{
    throw bad_alloc();
}

void __throw_bad_array_new_length()
{
    throw bad_array_new_length();
}

void __throw_length_error(const char* /*where*/)
{
    throw bad_alloc();
}

// A position beyond the end, and a text made of a null pointer.
void __throw_out_of_range_fmt(const char* /*format*/, ...)
{
    throw bad_exception();
}

void __throw_logic_error(const char* /*where*/)
{
    throw bad_exception();
}

} // namespace std
