// The runs of operations.
#include "sweep/Operation.h"

#include "machine/WatchedImports.h"
#include "support/ModuleMemory.h"
#include "support/SystemFunction.h"
#include "sweep/SheetPicture.h"

#include <optional>
#include <stdexcept>

namespace sweep {
namespace {

using support::AppletHost;

// What stands around the applet in one run: the settings, the stand-ins, and the watches over its calls.
class Stage
{
  public:
    Stage(Subject& subject, const Operation& operation, CallRecorder& recorder)
        : m_settings(subject), m_standIns(subject.host.Module(), m_settings, recorder)
    {
        if (operation.before == Before::ExceptionTrap)
            m_settings.SwitchExceptionTrapOn();
        if (operation.before == Before::Clients)
            SwitchClientsOn();
        if (operation.before == Before::ClientsUntilTheScriptIsReadOnly) {
            SwitchClientsOn();
            m_other.emplace(subject.host.Module(), m_settings.ScriptDirectory() + "\\LOGIN.BAT");
        }
        if (!operation.agrees)
            m_standIns.User().Decline();
        m_watches.emplace(subject.host.Module(), recorder);
    }

    [[nodiscard]] Picture Look() const
    {
        Picture picture;
        m_settings.AddTo(picture);
        m_standIns.AddTo(picture);
        return picture;
    }

    [[nodiscard]] std::vector<std::string> UserTexts() const { return m_standIns.UserTexts(); }

  private:
    void SwitchClientsOn()
    {
        m_settings.SwitchDesktopManagementOn();
        m_standIns.Shares().Add("VTNDATA", {.path = "anywhere"});
    }

    Settings m_settings;
    StandIns m_standIns;
    std::optional<ReadOnlyWhileEdited> m_other;
    std::optional<WatchedImports> m_watches;
};

void Add(std::map<std::string, std::set<std::string>>& seen, const Picture& picture)
{
    for (const auto& [item, content] : picture)
        seen[item].insert(content);
    // What was there before and is gone.
    for (auto& [item, contents] : seen) {
        if (!picture.contains(item))
            contents.emplace();
    }
}

// What was not there before was absent.
void AddAbsence(std::map<std::string, std::set<std::string>>& seen, const Picture& before)
{
    for (auto& [item, contents] : seen) {
        if (!before.contains(item))
            contents.emplace();
    }
}

// A fault may have ended the sheet, or kept it from appearing, under the user's hands.
void Do(AppletHost& host, void (*action)(AppletHost& host))
try {
    action(host);
} catch (const std::runtime_error&) {
    if (!support::WaitUntil([&] { return host.HasEnded(); }))
        throw;
}

void Prepare(AppletHost& host, const Operation& operation)
{
    if (operation.edit == nullptr)
        return;
    host.Open();
    if (operation.tab != nullptr && !host.TurnTo(operation.tab))
        throw std::runtime_error("the Services page does not let go");
    operation.edit(host);
}

void Arm(CallRecorder& recorder, const Operation& operation, const Fault& fault)
{
    if (fault.lasting.empty())
        recorder.Arm(fault.call, fault.code, operation.from, operation.until);
    else
        recorder.ArmLasting(fault.call, fault.lasting, operation.from, operation.until);
}

// Closes the sheet if it is still there; what left CPlApplet.
std::string Finish(AppletHost& host)
try {
    if (host.HasEnded())
        host.WaitForEnd();
    else
        host.PressCancel();
    return {};
} catch (const std::exception& failure) {
    return failure.what();
}

// The user opens the sheet anew and does the same.
void TryAgain(AppletHost& host, const Operation& operation)
{
    Prepare(host, operation);
    operation.act(host);
    host.WaitForEnd();
}

// The test tidies up behind the applet, so that the next case starts from nothing: what was left open, and
// the search for libraries that could not be put back.
void TidyUp(const std::map<const void*, std::string>& handles)
{
    const auto close = support::SystemFunction<decltype(RegCloseKey)>("advapi32.dll", "RegCloseKey");
    for (const auto& [handle, place] : handles) {
        if (place.starts_with("HKLM"))
            close(static_cast<HKEY>(const_cast<void*>(handle)));
    }
    SetDllDirectoryA(nullptr);
}

} // namespace

Picture Difference(const Picture& expected, const Picture& found)
{
    Picture difference;
    for (const auto& [item, content] : found) {
        const auto same = expected.find(item);
        if (same == expected.end() || same->second != content)
            difference[item] = content;
    }
    for (const auto& [item, content] : expected) {
        if (!found.contains(item))
            difference[item] = "";
    }
    return difference;
}

Outcome Perform(Subject& subject, const Operation& operation, const Fault& fault, bool watchChanges)
{
    AppletHost& host = subject.host;
    Outcome outcome;
    CallRecorder recorder;
    support::ModuleMemory memory(host.Module());
    {
        const Stage stage(subject, operation, recorder);
        Prepare(host, operation);
        outcome.before = stage.Look();
        if (watchChanges)
            recorder.OnChange([&] { Add(outcome.seen, stage.Look()); });
        Add(outcome.seen, outcome.before);
        Arm(recorder, operation, fault);
        memory.Arm(fault.allocation, fault.allocations);
        Do(host, operation.act);
        outcome.shown = LookAtSheet(host);
        outcome.thrown = Finish(host);
        outcome.allocations = memory.Taken();
        memory.Disarm();
        recorder.Disarm();
        outcome.after = stage.Look();
        outcome.boxes = stage.UserTexts();
        Add(outcome.seen, outcome.after);
        AddAbsence(outcome.seen, outcome.before);
        const bool hasFailed = fault.call != 0 || fault.allocation != 0;
        if (operation.settles && hasFailed) {
            TryAgain(host, operation);
            outcome.settled = stage.Look();
        }
    }
    outcome.blocksLeft = memory.Held();
    outcome.calls = recorder.Calls();
    outcome.windowsLeft = host.Thread().Windows().size();
    for (const auto& [handle, place] : recorder.OpenHandles())
        outcome.leftOpen.push_back(place);
    TidyUp(recorder.OpenHandles());
    return outcome;
}

} // namespace sweep
