// Opening applets in a process of their own, as rundll32 and control.exe do: from the start of the process to
// the first moment at which the sheet has been painted and waits for its user. The applet beside six empty
// pages of the same templates, and beside two applets of the system, each pair in turn. The program starts
// itself for each opening, since only in the process can the moment be seen.
#include "demo/controlpanel/LoadApplet.h"
#include "IdleMoment.h"
#include "Measure.h"
#include "support/ProgramPath.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <windows.h>

// Exported by shell32, declared nowhere: what control.exe and rundll32 call to open an applet.
extern "C" void WINAPI Control_RunDLLA(HWND owner, HINSTANCE instance, LPCSTR command, DWORD show);

namespace {

using Clock = IdleMoment::Clock;

constexpr DWORD limit = 30000; // milliseconds

bool HasMessageLoop(HMODULE applet)
{
    return support::FindImport(applet, "GetMessageA") != nullptr ||
           support::FindImport(applet, "GetMessageW") != nullptr;
}

// The module whose message loop runs the sheet of `applet`: the applet's own, or the system's.
HMODULE LoopOf(HMODULE applet)
{
    HMODULE loop = applet;
    for (const char* const function : {"PropertySheetA", "PropertySheetW"}) {
        void** const slot = support::FindImport(applet, function);
        if (slot != nullptr && !HasMessageLoop(applet))
            GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                   GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                               static_cast<LPCSTR>(*slot), &loop);
    }
    return loop;
}

// In the process of its own: opens the applet, and returns the microseconds from `start` to the idle moment.
int OpenHere(const char* path, Clock::rep start)
{
    const IdleMoment idle({LoopOf(LoadApplet(path))});
    Control_RunDLLA(GetDesktopWindow(), GetModuleHandleA(nullptr), path, SW_SHOW);
    const auto time = idle.When() - Clock::time_point(Clock::duration(start));
    return static_cast<int>(std::chrono::duration_cast<std::chrono::microseconds>(time).count());
}

// Milliseconds; throws when the process does not come to an end by itself.
double Open(const std::string& path)
{
    const auto start = Clock::now().time_since_epoch().count();
    std::string command = support::ProgramPath() + " --open " + path + " " + std::to_string(start);
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process))
        throw std::runtime_error("no process was started");
    const bool hasEnded = WaitForSingleObject(process.hProcess, limit) == WAIT_OBJECT_0;
    DWORD microseconds = 0;
    GetExitCodeProcess(process.hProcess, &microseconds);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    if (!hasEnded || microseconds == 0 || microseconds > limit * 1000)
        throw std::runtime_error("no sheet was shown: " + path);
    return microseconds / 1000.0;
}

void Compare(const char* name, const std::string& applet, const std::string& other, double target)
{
    PrintRow(name, MeasureInTurn([&] { return Open(applet); }, [&] { return Open(other); }), "ms", target);
}

} // namespace

// control_panel_bench APPLET BARE: the paths of the two libraries.
int main(int count, char** arguments)
try {
    if (count == 4 && std::string_view(arguments[1]) == "--open")
        return OpenHere(arguments[2], std::stoll(arguments[3]));
    if (count != 3)
        throw std::runtime_error("usage: control_panel_bench APPLET BARE");
    Compare("a process with the sheet: with six empty pages", arguments[1], arguments[2], 1.15);
    Compare("a process with the sheet: with Wine's inetcpl.cpl", arguments[1], "inetcpl.cpl", 0.95);
    Compare("a process with the sheet: with Wine's joy.cpl", arguments[1], "joy.cpl", 0.85);
    return 0;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 2;
}
