// Looks for switches on the host's command line.
#include "sysaccess/core/CommandLine.h"

#include <string>
#include <windows.h>

bool CommandLineContains(const char* text)
{
    std::string commandLine = GetCommandLineA();
    CharUpperBuffA(commandLine.data(), static_cast<DWORD>(commandLine.size()));
    return commandLine.find(text) != std::string::npos;
}
