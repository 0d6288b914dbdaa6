// Functions of the C++ library of which the applet has its own: the library's bring along much code for texts
// that nobody would read. The linker takes each from whoever defines it first.
#include <bits/functexcept.h>
#include <exception>
#include <new>

namespace std {

// What containers and texts throw. A length that no memory can hold is memory that runs out.
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
