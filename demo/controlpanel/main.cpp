// ControlPanel.exe APPLET [ARGUMENT...]: opens an applet just as control.exe does, and lends it what Wine's
// service manager lacks: the list of a service's dependents.
#include "../support/Error.h"
#include "Dependents.h"
#include "imports/ImportHook.h"
#include "LoadApplet.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <windows.h>

// Exported by shell32, declared nowhere: what control.exe and rundll32 call to open an applet.
extern "C" void WINAPI Control_RunDLLA(HWND owner, HINSTANCE instance, LPCSTR command, DWORD show);

namespace {

void Open(int argc, char** argv)
{
    const HMODULE applet = LoadApplet(argv[1]);
    demo::RequireCall(applet != nullptr, std::string("loading ") + argv[1]);
    const support::ReplacedImport dependents(applet, "EnumDependentServicesA", &demo::ListDependents);
    std::string command = argv[1];
    for (int i = 2; i < argc; ++i)
        command.append(" ").append(argv[i]);
    Control_RunDLLA(GetDesktopWindow(), GetModuleHandleA(nullptr), command.c_str(), SW_SHOW);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fputs("usage: ControlPanel APPLET [ARGUMENT...]\n", stderr);
        return 2;
    }
    try {
        Open(argc, argv);
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "ControlPanel: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
