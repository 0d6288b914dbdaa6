// vtncfg.exe: the settings of the agents from a command line.
#include "command/CodePage.h"
#include "command/CommandError.h"
#include "command/Commands.h"
#include "command/ConsoleStreams.h"
#include "command/ErrorLines.h"

#include <new>
#include <windows.h>

// The arguments are taken as they are: names with * and ? are for the program.
extern "C" int _dowildcard;
int _dowildcard = 0;

// The language's support would otherwise print uncaught exceptions, as out of a destructor, by their names: a
// tenth of the program. The C runtime's abort would end with 3, which means a difference here.
namespace __gnu_cxx {
void __verbose_terminate_handler()
{
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(STATUS_FATAL_APP_EXIT));
    __builtin_trap();
}
} // namespace __gnu_cxx

extern "C" int wmain(int count, wchar_t** arguments);

int wmain(int count, wchar_t** arguments)
{
    ConsoleStreams streams;
    try {
        std::vector<std::string> texts;
        for (int i = 1; i < count; ++i)
            texts.push_back(Narrow(arguments[i]));
        return static_cast<int>(RunCommand(texts, streams));
    } catch (const std::bad_alloc&) {
        ErrorLines(streams, false).OutOfMemory(false);
        return static_cast<int>(ExitCode::Failed);
    }
}
