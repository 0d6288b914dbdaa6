// vtncfg.exe: the settings of the agents from a command line.
#include "command/CodePage.h"
#include "command/Commands.h"
#include "command/ConsoleStreams.h"

#include <cstdlib>
#include <exception>

// The arguments are taken as they are: names with * and ? are for the program.
extern "C" int _dowildcard;
int _dowildcard = 0;

// The language's support would otherwise print uncaught exceptions, of which there are none, by their names:
// a tenth of the program.
namespace __gnu_cxx {
void __verbose_terminate_handler()
{
    std::abort();
}
} // namespace __gnu_cxx

extern "C" int wmain(int count, wchar_t** arguments);

int wmain(int count, wchar_t** arguments)
{
    std::vector<std::string> texts;
    for (int i = 1; i < count; ++i)
        texts.push_back(Narrow(arguments[i]));
    ConsoleStreams streams;
    return static_cast<int>(RunCommand(texts, streams));
}
