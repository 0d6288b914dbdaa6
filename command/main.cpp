// vtncfg.exe: the settings of the agents from a command line.
#include "command/CodePage.h"
#include "command/CommandError.h"
#include "command/Commands.h"
#include "command/ConsoleStreams.h"
#include "command/ErrorLines.h"
#include "sysaccess/core/ExceptionMemory.h"

#include <new>

// The arguments are taken as they are: names with * and ? are for the program.
extern "C" int _dowildcard;
int _dowildcard = 0;

extern "C" int wmain(int count, wchar_t** arguments);

int wmain(int count, wchar_t** arguments)
{
    PrepareExceptions();
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
