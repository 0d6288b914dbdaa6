// Loading the applet and asking it what Control Panel asks of every library (1, 2, 3), beside a library that
// answers the same and does nothing else.
#include "Measure.h"
#include "support/ProgramPath.h"

#include <string>
#include <windows.h>

// It needs windows.h before it.
#include <cpl.h>

namespace {

double LoadAndAsk(const std::string& path)
{
    return TimeOf([&] {
        const HMODULE library = LoadLibraryA(path.c_str());
        const auto applet =
            reinterpret_cast<APPLET_PROC>(reinterpret_cast<void*>(GetProcAddress(library, "CPlApplet")));
        CPLINFO info{};
        applet(nullptr, CPL_INIT, 0, 0);
        applet(nullptr, CPL_GETCOUNT, 0, 0);
        applet(nullptr, CPL_INQUIRE, 0, reinterpret_cast<LPARAM>(&info));
        FreeLibrary(library);
    });
}

} // namespace

int main()
{
    // Control Panel holds the system's common libraries anyway.
    for (const char* const library : {"user32.dll", "comctl32.dll", "advapi32.dll", "shell32.dll"})
        LoadLibraryA(library);
    const std::string applet = support::BesideThisProgram("..\\vtnmgmt.cpl");
    const std::string empty = support::BesideThisProgram("empty.cpl");
    PrintRow("load, answer 1, 2, 3: an empty library",
             MeasureInTurn([&] { return LoadAndAsk(applet); }, [&] { return LoadAndAsk(empty); }), "ms", 2.0);
    return 0;
}
