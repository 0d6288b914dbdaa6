// Both sides: the process that performs an operation, and the one that starts it.
#include "kill/KilledProcess.h"

#include "command/Commands.h"
#include "command/TestStreams.h"
#include "machine/WatchedImports.h"
#include "resources/resource.h"
#include "support/ProgramPath.h"
#include "support/SystemFunction.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <thread>

namespace sweep {
namespace {

using support::AppletHost;

constexpr DWORD endedCode = 42; // of a process that ended where it was to
constexpr DWORD processLimit = 60'000;

// --- the process that performs

struct Request
{
    const KilledOperation& operation;
    Task task;
    Event event;
    Paths paths;
    std::string report;
    Json standIns;
};

Json ToJson(const std::vector<Call>& calls)
{
    Json json = Json::array();
    for (const Call& call : calls)
        json.push_back({call.function, call.place, call.role == Role::Changes});
    return json;
}

void WriteReport(const Request& request, const CallRecorder& recorder, const StandIns& standIns)
{
    const Json report = {{"calls", ToJson(recorder.Calls())},
                         {"boxes", standIns.UserTexts()},
                         {"standInsBefore", request.standIns},
                         {"standIns", ToJson(standIns.State())}};
    support::WriteBytes(request.report, report.dump());
}

// Nothing of this process runs any more: no destructor, no other thread.
[[noreturn]] void EndProcess(const Request& request, const CallRecorder& recorder, const StandIns& standIns)
{
    WriteReport(request, recorder, standIns);
    TerminateProcess(GetCurrentProcess(), endedCode);
    std::abort();
}

// Writes half, then ends the process, when it is this call's turn.
class HalfWrite
{
  public:
    HalfWrite(HMODULE module, const CallRecorder& recorder, std::function<void()> end)
        : m_recorder(recorder), m_end(std::move(end)), m_turn(this), m_import(module, "WriteFile", &Write)
    {
    }

  private:
    static BOOL WINAPI Write(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written, LPOVERLAPPED overlapped)
    {
        const HalfWrite& self = support::Turn<HalfWrite>::Active();
        if (!self.m_recorder.IsFailingNext())
            return self.m_import.Original<decltype(WriteFile)>()(file, bytes, size, written, overlapped);
        support::SystemFunction<decltype(WriteFile)>("kernel32.dll", "WriteFile")(file, bytes, size / 2,
                                                                                  written, overlapped);
        self.m_end();
        return FALSE;
    }

    const CallRecorder& m_recorder;
    std::function<void()> m_end;
    support::Turn<HalfWrite> m_turn;
    support::ReplacedImport m_import;
};

// To all windows what the system sends them when its user logs off, and WM_CLOSE to those of the applet. The
// host's own window stays.
BOOL CALLBACK EndSessionOf(HWND window, LPARAM /*unused*/)
{
    SendNotifyMessageA(window, WM_QUERYENDSESSION, 0, 0);
    SendNotifyMessageA(window, WM_ENDSESSION, TRUE, 0);
    if (GetWindow(window, GW_OWNER) != nullptr)
        PostMessageA(window, WM_CLOSE, 0, 0);
    return TRUE;
}

// To the host's own window, which owns the sheet, what another program sends that wants this one to end.
BOOL CALLBACK CloseHost(HWND window, LPARAM /*unused*/)
{
    if (GetWindow(window, GW_OWNER) == nullptr)
        PostMessageA(window, WM_CLOSE, 0, 0);
    return TRUE;
}

// Calls `send` for each window of this thread, on another thread, as messages of the system come from
// elsewhere. This one finds them when it next looks for messages.
void SendToWindows(WNDENUMPROC send)
{
    const DWORD saving = GetCurrentThreadId();
    std::thread([&] { EnumThreadWindows(saving, send, 0); }).join();
}

void Set(const char* document)
{
    TestStreams streams;
    streams.input = document;
    if (RunCommand({"set"}, streams) != ExitCode::Done || !streams.errors.empty())
        throw std::runtime_error("vtncfg fails: " + streams.errors);
}

// The page shows desktop management as it is to be, although the rest may be missing: it is switched back
// first.
void SwitchBack(AppletHost& host, Clients wanted)
{
    host.Open();
    const support::DialogDriver page = host.Page("Desktop Mgmt");
    if (page.IsChecked(IDC_DESKTOP_ENABLE) != (wanted == Clients::SwitchedOn)) {
        host.PressCancel();
        return;
    }
    page.Click(IDC_DESKTOP_ENABLE);
    host.PressOk();
}

// The stand-ins of one module, and the end of the process.
template <typename Imports>
class Stage
{
  public:
    Stage(HMODULE module, Request& request)
        : m_request(request), m_standIns(module, request.paths.scripts, m_recorder),
          m_imports(module, m_recorder)
    {
        if (!request.operation.agrees)
            m_standIns.User().Decline();
        StandInState before = m_standIns.State();
        TakeJson(before, request.standIns);
        m_standIns.Put(before);
        request.standIns = ToJson(before);
        m_recorder.InsteadOfFailing([this] { Happen(); });
        if (request.event.happening == Happening::ProcessEndsHalfway)
            m_halfWrite.emplace(module, m_recorder, [this] { Happen(); });
    }

    void Arm() { m_recorder.Arm(m_request.event.call, 0, m_request.operation.from); }
    void Disarm() { m_recorder.Disarm(); }
    // What was written to the board is read from it.
    void KeepBoard() { m_standIns.Put(m_standIns.State()); }
    void Report() const { WriteReport(m_request, m_recorder, m_standIns); }

  private:
    void Happen()
    {
        switch (m_request.event.happening) {
        case Happening::AnotherSaves:
            return LetAnotherSave();
        case Happening::SessionEnds:
            return SendToWindows(&EndSessionOf);
        case Happening::HostCloses:
            return SendToWindows(&CloseHost);
        default:
            EndProcess(m_request, m_recorder, m_standIns);
        }
    }

    // It finds the services, the share and the board as they are now, and leaves them as it likes.
    void LetAnotherSave()
    {
        const sweep::Report report = RunOperation(OperationNamed(m_request.event.other), Task::Perform, {},
                                                  m_request.paths, ToJson(m_standIns.State()));
        StandInState after = m_standIns.State();
        after.share.reset();
        TakeJson(after, report.standIns);
        m_standIns.Put(after);
    }

    const Request& m_request;
    CallRecorder m_recorder;
    StandIns m_standIns;
    Imports m_imports;
    std::optional<HalfWrite> m_halfWrite;
};

void PerformInApplet(const Request& request, AppletHost& host, Stage<WatchedImports>& stage)
{
    const KilledOperation& operation = request.operation;
    if (request.task == Task::Repair && operation.clients != Clients::Untouched)
        SwitchBack(host, operation.clients);
    host.Open();
    operation.edit(host);
    stage.Arm();
    operation.act(host);
    stage.Disarm();
    if (request.task == Task::Repair && operation.restore != nullptr)
        operation.restore(host);
    else if (!host.HasEnded() && ClosesSheet(request.event.happening))
        host.WaitForEnd();
    else if (!host.HasEnded())
        host.PressCancel();
    const auto isHostGone = [&] { return IsWindow(host.Frame()) == FALSE; };
    if (request.event.happening == Happening::HostCloses && !support::WaitUntil(isHostGone))
        throw std::runtime_error("the host's window stays open");
}

void PerformInCommand(const Request& request, Stage<SettingsImports>& stage)
{
    if (request.task == Task::Repair)
        Set(request.operation.opposite);
    stage.KeepBoard();
    stage.Arm();
    Set(request.operation.document);
    stage.Disarm();
}

void Perform(Request request)
{
    if (request.operation.act == nullptr) {
        Stage<SettingsImports> stage(GetModuleHandleA(nullptr), request);
        PerformInCommand(request, stage);
        stage.Report();
        return;
    }
    AppletHost host(appletPath);
    Stage<WatchedImports> stage(host.Module(), request);
    PerformInApplet(request, host, stage);
    stage.Report();
}

// --- the process that starts it

// Where a machine is busy, Wine may fail to start a process with this error.
bool Start(std::string& commandLine, STARTUPINFOA& startup, PROCESS_INFORMATION& process)
{
    constexpr int mostTries = 5;
    for (int i = 0; i < mostTries; ++i) {
        if (CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                           &process) != FALSE)
            return true;
        if (GetLastError() != ERROR_INTERNAL_ERROR)
            break;
    }
    return false;
}

// Its exit code.
DWORD RunProcess(std::string commandLine)
{
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION process{};
    if (!Start(commandLine, startup, process))
        throw std::runtime_error("no process: error " + std::to_string(GetLastError()));
    DWORD code = STILL_ACTIVE;
    if (WaitForSingleObject(process.hProcess, processLimit) != WAIT_OBJECT_0)
        TerminateProcess(process.hProcess, STILL_ACTIVE);
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

} // namespace

Json ToJson(const support::SharedDirectory& share)
{
    return {{"path", share.path},        {"remark", share.remark},
            {"type", share.type},        {"permissions", share.permissions},
            {"maxUses", share.maxUses},  {"currentUses", share.currentUses},
            {"password", share.password}};
}

Json ToJson(const StandInState& state)
{
    Json json = {{"services", Json::object()},
                 {"board",
                  {state.board.battery, state.board.remoteAlerting, state.board.serverResetPending,
                   state.board.resetRequest}}};
    for (const auto& [name, service] : state.services)
        json["services"][name] = {{"state", service.states.front().dwCurrentState},
                                  {"startType", service.startType},
                                  {"dependencies", service.dependencies}};
    if (state.share)
        json["share"] = ToJson(*state.share);
    return json;
}

void TakeJson(StandInState& state, const Json& json)
{
    const Json services = json.value("services", Json::object());
    for (const auto& [name, service] : services.items()) {
        support::ScriptedService& taken = state.services.at(name);
        taken.states = {support::ServiceState(service.at("state").get<DWORD>())};
        taken.startType = service.at("startType").get<DWORD>();
        taken.dependencies = service.at("dependencies").get<std::vector<std::string>>();
    }
    if (json.contains("board")) {
        const Json& board = json.at("board");
        state.board = {board[0].get<DWORD>(), board[1].get<DWORD>(), board[2].get<DWORD>(),
                       board[3].get<DWORD>()};
    }
    if (!json.contains("share"))
        return;
    const Json& share = json.at("share");
    state.share = {.path = share.at("path").get<std::string>(),
                   .remark = share.at("remark").get<std::string>(),
                   .type = share.at("type").get<DWORD>(),
                   .permissions = share.at("permissions").get<DWORD>(),
                   .maxUses = share.at("maxUses").get<DWORD>(),
                   .currentUses = share.at("currentUses").get<DWORD>(),
                   .password = share.at("password").get<std::string>()};
}

Report RunOperation(const KilledOperation& operation, Task task, const Event& event, const Paths& paths,
                    const Json& standIns)
{
    const support::TestDirectory directory;
    const std::string requestFile = directory.File("request");
    const std::string reportFile = directory.File("report");
    const Json request = {
        {"operation", operation.name}, {"repairs", task == Task::Repair},
        {"call", event.call},          {"happening", static_cast<int>(event.happening)},
        {"other", event.other},        {"windows", paths.windows},
        {"scripts", paths.scripts},    {"standIns", standIns.is_null() ? Json::object() : standIns},
        {"report", reportFile}};
    support::WriteBytes(requestFile, request.dump());
    const DWORD code = RunProcess('"' + support::ProgramPath() + "\" --perform " + requestFile);
    const bool isEnded = event.call != 0 && EndsProcess(event.happening);
    if (code != (isEnded ? endedCode : 0))
        throw std::runtime_error(std::string(operation.name) + ": the process ends with " +
                                 std::to_string(code));
    const Json json = Json::parse(support::ReadBytes(reportFile).value_or("{}"));
    Report report{.boxes = json.at("boxes").get<std::vector<std::string>>(),
                  .standInsBefore = json.at("standInsBefore"),
                  .standIns = json.at("standIns")};
    for (const Json& call : json.at("calls"))
        report.calls.push_back({.function = call[0].get<std::string>(),
                                .place = call[1].get<std::string>(),
                                .role = call[2].get<bool>() ? Role::Changes : Role::Asks});
    return report;
}

int RunAsChild(const std::string& requestFile)
try {
    const Json json = Json::parse(support::ReadBytes(requestFile).value_or("{}"));
    const auto text = [&](const char* name) { return json.at(name).get<std::string>(); };
    const support::SavedVariable systemRoot("SystemRoot", text("windows"));
    Perform({.operation = OperationNamed(text("operation")),
             .task = json.at("repairs").get<bool>() ? Task::Repair : Task::Perform,
             .event = {json.at("call").get<std::size_t>(),
                       static_cast<Happening>(json.at("happening").get<int>()), text("other")},
             .paths = {text("windows"), text("scripts")},
             .report = text("report"),
             .standIns = json.at("standIns")});
    return 0;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
}

} // namespace sweep
