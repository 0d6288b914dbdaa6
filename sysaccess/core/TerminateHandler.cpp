// What happens to an exception that nobody can catch any more, as one out of a destructor. The linker takes
// this handler instead of the C++ library's, which would print the exception's name, for an administrator to
// whom it means nothing, and brings along a tenth of the program.
#include <exception>
#include <windows.h>

namespace __gnu_cxx {

// Ends the process at once: the C runtime's abort would show a message in Control Panel, whose loop runs
// handlers in a state that cannot be trusted, and would end the command line with 3, which means a difference
// there.
void __verbose_terminate_handler()
{
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(STATUS_FATAL_APP_EXIT));
    __builtin_trap();
}

} // namespace __gnu_cxx
