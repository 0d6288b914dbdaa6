// ControlPanel.exe APPLET [ARGUMENT...]: opens an applet just as control.exe does, and lends it what Wine's
// service manager lacks: the list of a service's dependents.
#include "../support/Error.h"
#include "Dependents.h"
#include "tests/support/ImportHook.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <windows.h>

// Exported by shell32, declared nowhere: what control.exe and rundll32 call to open an applet.
extern "C" void WINAPI Control_RunDLLA(HWND owner, HINSTANCE instance, LPCSTR command, DWORD show);

namespace {

// The manifest in an applet that says which common controls it is made for.
constexpr WORD manifestId = 123;

// Loads the applet as the one that opens it will find it: with the common controls of its manifest.
HMODULE LoadApplet(const char* path)
{
    ACTCTXA wanted{};
    wanted.cbSize = sizeof wanted;
    wanted.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
    wanted.lpSource = path;
    wanted.lpResourceName = MAKEINTRESOURCEA(manifestId);
    const HANDLE context = CreateActCtxA(&wanted);
    ULONG_PTR cookie = 0;
    const bool isActive = context != INVALID_HANDLE_VALUE && ActivateActCtx(context, &cookie) != FALSE;
    const HMODULE applet = LoadLibraryA(path);
    if (isActive)
        DeactivateActCtx(0, cookie);
    demo::RequireCall(applet != nullptr, std::string("loading ") + path);
    return applet;
}

void Open(int argc, char** argv)
{
    const support::ReplacedImport dependents(LoadApplet(argv[1]), "EnumDependentServicesA",
                                             &demo::ListDependents);
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
