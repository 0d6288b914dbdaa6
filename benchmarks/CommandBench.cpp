// `vtncfg get` from the start of the process to its end, beside a console program that reads the same values.
#include "Measure.h"
#include "support/ProgramPath.h"

#include <cstdlib>
#include <string>
#include <windows.h>

namespace {

constexpr double mostMore = 30; // milliseconds

// Its output goes nowhere.
double RunToItsEnd(const std::string& commandLine)
{
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    const HANDLE nowhere =
        CreateFileA("NUL", GENERIC_WRITE, FILE_SHARE_WRITE, &inherited, OPEN_EXISTING, 0, nullptr);
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = nowhere;
    startup.hStdError = nowhere;
    PROCESS_INFORMATION process{};
    DWORD code = EXIT_FAILURE;
    const double time = TimeOf([&] {
        std::string line = commandLine;
        if (CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                           &process) == 0)
            std::exit(2);
        WaitForSingleObject(process.hProcess, INFINITE);
    });
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    CloseHandle(nowhere);
    if (code != EXIT_SUCCESS)
        std::exit(2);
    return time;
}

} // namespace

int main()
{
    const std::string program = "\"" + support::BesideThisProgram("..\\vtncfg.exe") + "\" get";
    const std::string reader = "\"" + support::BesideThisProgram("read_settings.exe") + "\"";
    const Medians medians =
        MeasureInTurn([&] { return RunToItsEnd(program); }, [&] { return RunToItsEnd(reader); });
    PrintRow("vtncfg get: a program that reads the same values", medians, "ms", 1.3);
    const double more = medians.applet - medians.other;
    std::printf("row\tvtncfg get, beyond that program: the most\t%.2f ms\t%.2f ms\t%.2f\t1.00\n", more,
                mostMore, more / mostMore);
    return 0;
}
