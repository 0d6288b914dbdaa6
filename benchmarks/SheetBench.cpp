// Opening and saving the sheet with all its pages, beside a sheet of plain Windows with the same templates,
// beside two sheets of the system, and beside the registry calls alone. All in one process, on one thread, in
// turn.
#include "BareSheet.h"
#include "IdleMoment.h"
#include "machine/SweepMachine.h"
#include "machine/WatchedImports.h"
#include "Measure.h"
#include "RegistryWork.h"

#include <functional>
#include <optional>
#include <string_view>

namespace {

using namespace sweep;

// Something that shows a sheet when it is called on the UI thread.
using Show = std::function<LONG(HWND frame)>;

// An applet of a Control Panel library.
Show AppletOf(HMODULE library)
{
    const auto applet =
        reinterpret_cast<APPLET_PROC>(reinterpret_cast<void*>(GetProcAddress(library, "CPlApplet")));
    return [applet](HWND frame) {
        CPLINFO info{};
        applet(frame, CPL_INIT, 0, 0);
        applet(frame, CPL_INQUIRE, 0, reinterpret_cast<LPARAM>(&info));
        return applet(frame, CPL_DBLCLK, 0, info.lData);
    };
}

// The module whose message loop runs a sheet of `library`: the applet has its own, others leave it to the
// system.
HMODULE LoopOf(HMODULE library, const char* function)
{
    HMODULE loop = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<LPCSTR>(*support::FindImport(library, function)), &loop);
    return loop;
}

// Milliseconds until the thread has nothing more to do; the sheet is closed then.
double Open(support::UiThread& thread, const Show& show, HMODULE loop)
{
    const IdleMoment idle({loop});
    const auto start = std::chrono::steady_clock::now();
    thread.Start([&] { return show(thread.Frame()); }).get();
    return Milliseconds(idle.When() - start).count();
}

// A machine of its own with the applet's sheet open on it.
class OpenedSheet
{
  public:
    explicit OpenedSheet(Subject& subject) : m_host(subject.host), m_settings(subject)
    {
        m_standIns.User().Decline();
        m_host.Open();
    }

    // Shows every page, and changes something on all that save only what was changed.
    void EditAll()
    {
        m_host.Page("Services").Click(IDC_SERVICES_ADD);
        const support::DialogDriver snmp = m_host.Page("SNMP Settings");
        snmp.Select(IDC_SNMP_INTERVAL, 7);
        for (const int box : {IDC_SNMP_REMOTE_REBOOT, IDC_SNMP_EXCEPTION_TRAP, IDC_SNMP_DISABLE_RACK_TRAPS})
            snmp.Check(box);
        snmp.Uncheck(IDC_SNMP_DISABLE_TELNET);
        m_host.Page("Storage").Check(IDC_STORAGE_SAS_TAPE);
        m_host.Page("Desktop Mgmt");
        m_host.Page("Remote Lumora").Uncheck(IDC_BOARD_BATTERY);
        const support::DialogDriver processes = m_host.Page("Process Monitor");
        processes.Select(IDC_PROCMON_LIST, 1);
        processes.Check(IDC_PROCMON_STOP);
    }

    double Save()
    {
        return TimeOf([this] { m_host.PressOk(); });
    }

  private:
    support::AppletHost& m_host;
    Settings m_settings;
    CallRecorder m_recorder;
    StandIns m_standIns{m_host.Module(), m_settings, m_recorder};
};

// The applet's opening beside that of another sheet, in turn. `prepare` comes before the other one and
// counts.
class Openings
{
  public:
    explicit Openings(Subject& subject) : m_applet(subject.host.Module()), m_settings(subject) {}

    void Compare(
        const char* name, const Show& other, HMODULE loop, double target,
        const std::function<void()>& prepare = [] {})
    {
        const auto openOther = [&] { return TimeOf(prepare) + Open(m_thread, other, loop); };
        PrintRow(name, MeasureInTurn([&] { return Open(m_thread, AppletOf(m_applet), m_applet); }, openOther),
                 "ms", target);
    }
    void CompareWithBareSheet(
        const char* name, double target, const std::function<void()>& prepare = [] {})
    {
        Compare(
            name, [this](HWND frame) { return ShowBareSheet(m_applet, frame); },
            LoopOf(GetModuleHandleA(nullptr), "PropertySheetA"), target, prepare);
    }

  private:
    HMODULE m_applet;
    Settings m_settings;
    CallRecorder m_recorder;
    StandIns m_standIns{m_applet, m_settings, m_recorder};
    support::UiThread m_thread;
};

void CompareOpenings(Subject& subject)
{
    Openings openings(subject);
    openings.CompareWithBareSheet("open the sheet: a bare sheet", 1.10);
}

// The title bears the version of the library's own file.
void ReadVersion(HMODULE module)
{
    std::array<char, MAX_PATH> path{};
    GetModuleFileNameA(module, path.data(), MAX_PATH);
    DWORD ignored = 0;
    std::vector<BYTE> version(GetFileVersionInfoSizeA(path.data(), &ignored));
    GetFileVersionInfoA(path.data(), 0, static_cast<DWORD>(version.size()), version.data());
}

// The same with the registry calls and the reading of the version before the bare sheet.
void CompareOpeningWithRegistry(Subject& subject, const std::vector<Call>& calls)
{
    Openings openings(subject);
    RegistryReplay replay(calls);
    openings.CompareWithBareSheet("open the sheet: a bare sheet and what it must ask", 0, [&] {
        replay.Run();
        ReadVersion(subject.host.Module());
    });
}

void PrintCalls(const char* name, std::size_t calls, std::size_t least)
{
    PrintRow(name, {static_cast<double>(calls), static_cast<double>(least)}, "calls", 1.0);
}

// What the applet asks of the registry while it opens, and while it saves all pages.
struct RegistryWork
{
    std::vector<Call> opening;
    std::vector<Call> save;
    std::size_t leastOfSave = 0;
};

RegistryWork WatchRegistry(Subject& subject)
{
    RegistryWork work;
    CallRecorder recorder;
    const WatchedImports watches(subject.host.Module(), recorder);
    recorder.Arm(0, 0);
    OpenedSheet sheet(subject);
    work.opening = RegistryCallsAmong(recorder.Calls());
    sheet.EditAll();
    // The framework asks each page that has been shown to save all of them.
    work.leastOfSave = LeastCallsOfSave() * subject.host.Tabs().size();
    recorder.Arm(0, 0);
    sheet.Save();
    work.save = RegistryCallsAmong(recorder.Calls());
    return work;
}

void CompareRegistryWork(Subject& subject)
{
    const RegistryWork work = WatchRegistry(subject);
    {
        const Settings settings(subject);
        PrintCalls("registry calls of an opening: the least", work.opening.size(), LeastCallsOfOpening());
    }
    PrintCalls("registry calls of a save, six pages shown: the least", work.save.size(), work.leastOfSave);
    const auto save = [&] {
        OpenedSheet sheet(subject);
        sheet.EditAll();
        return sheet.Save();
    };
    RegistryReplay replay(work.save);
    PrintRow("save all pages: the registry calls alone",
             MeasureInTurn(save, [&] { return TimeOf([&] { replay.Run(); }); }), "ms", 0);
    CompareOpeningWithRegistry(subject, work.opening);
}

// Holds a sheet open for a look at the process from outside.
int Hold(Subject& subject, std::string_view which)
{
    const Settings settings(subject);
    CallRecorder recorder;
    const StandIns standIns(subject.host.Module(), settings, recorder);
    support::UiThread thread;
    const Show show = which == "bare"
                          ? [&](HWND frame) { return ShowBareSheet(subject.host.Module(), frame); }
                          : AppletOf(subject.host.Module());
    auto ended = thread.Start([&] { return show(thread.Frame()); });
    if (!support::WaitUntil([&] { return !thread.Windows().empty(); }))
        return 1;
    thread.Settle();
    std::printf("ready\n");
    std::fflush(stdout);
    std::getchar();
    PostMessageA(thread.Windows().front(), WM_COMMAND, IDCANCEL, 0);
    return static_cast<int>(ended.get());
}

} // namespace

int main(int count, char** arguments)
{
    Subject subject;
    if (count > 1)
        return Hold(subject, arguments[1]);
    CompareOpenings(subject);
    CompareRegistryWork(subject);
    return 0;
}
