// The machine of the sweeps: a domain controller with all its agents, services, shares, files and a
// management board, made up where Wine has none, and one picture of everything on it that the applet may
// change.
#pragma once

#include "machine/BoardScript.h"
#include "machine/CallRecorder.h"
#include "machine/HostAgent.h"
#include "machine/TaskListScript.h"
#include "machine/TestMachine.h"
#include "support/FakeClock.h"
#include "support/ServiceScript.h"
#include "support/ShareScript.h"
#include "support/TestDirectory.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace sweep {

// Contents of everything that can be changed, by name: registry values, files, shares, services, the board.
using Picture = std::map<std::string, std::string>;

// The user: agrees to everything, and keeps the texts of the message boxes.
class AgreeingUser
{
  public:
    AgreeingUser(HMODULE module, CallRecorder& recorder)
        : m_recorder(recorder), m_turn(this), m_messageBox(module, "MessageBoxA", &Show)
    {
    }

    // From now on the answer to a question is no.
    void Decline() { m_declines = true; }
    [[nodiscard]] std::vector<std::string> Texts() const { return m_texts; }

  private:
    static int WINAPI Show(HWND owner, LPCSTR text, LPCSTR caption, UINT style);

    CallRecorder& m_recorder;
    std::vector<std::string> m_texts;
    bool m_declines = false;
    support::Turn<AgreeingUser> m_turn;
    support::ReplacedImport m_messageBox;
};

// Windows' directory and that of the login script, whose names stay the same.
struct Places
{
    support::TestDirectory windows;
    support::TestDirectory scripts;
};

// What all cases share: the loaded applet, and where its files are.
struct Subject : Places
{
    support::AppletHost host{appletPath};
    support::SavedVariable systemRoot{"SystemRoot", windows.Path()};
};

// Somebody else, who makes a file read-only once it has been opened for an edit, until the next edit. Such a
// file does not open for writing. Wine lets a superuser do that, so the second opening is refused here;
// Windows is expected to refuse it by itself.
class ReadOnlyWhileEdited
{
  public:
    ReadOnlyWhileEdited(HMODULE module, std::string path)
        : m_path(std::move(path)), m_turn(this), m_readFile(module, "ReadFile", &Read),
          m_createFile(module, "CreateFileA", &Open)
    {
    }

  private:
    static BOOL WINAPI Read(HANDLE file, LPVOID buffer, DWORD size, LPDWORD read, LPOVERLAPPED overlapped);
    static HANDLE WINAPI Open(LPCSTR path, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES security,
                              DWORD disposition, DWORD attributes, HANDLE pattern);

    std::string m_path;
    support::Turn<ReadOnlyWhileEdited> m_turn;
    support::ReplacedImport m_readFile;
    support::ReplacedImport m_createFile;
};

// What lies in the registry and on the disk; made anew for each case, and gone without a trace afterwards.
class Settings
{
  public:
    explicit Settings(const Places& places);

    // Desktop management is on, with everything that belongs to it.
    void SwitchDesktopManagementOn();
    // The agents' debugger is the system's, whose own is parked.
    void SwitchExceptionTrapOn();
    void AddTo(Picture& picture) const;

    [[nodiscard]] const TestMachine& Machine() const { return m_machine; }
    [[nodiscard]] std::string ScriptDirectory() const { return m_places.scripts.Path(); }

  private:
    void FillAgents();
    void FillSnmp();
    void FillDesktop();

    TestMachine m_machine;
    support::SavedKey m_snmpService{ServiceKey(snmpServiceName)};
    support::SavedKey m_serverParameters{fileServerKey};
    support::SavedKey m_trap{"SYSTEM\\VortanHost"};
    support::SavedKey m_thresholds{"SYSTEM\\VortanPermanent"};
    const Places& m_places;
};

// What the stand-ins hold, for others in another process.
struct StandInState
{
    std::map<std::string, support::ScriptedService> services = {};
    std::optional<support::SharedDirectory> share = {}; // VTNDATA
    BoardData board{};
};

// What only the test makes up, in front of the loaded applet or of another module.
class StandIns
{
  public:
    StandIns(HMODULE module, const Settings& settings, CallRecorder& recorder)
        : StandIns(module, settings.ScriptDirectory(), recorder)
    {
    }
    StandIns(HMODULE module, const std::string& scriptDirectory, CallRecorder& recorder);

    [[nodiscard]] AgreeingUser& User() { return m_user; }
    [[nodiscard]] std::vector<std::string> UserTexts() const { return m_user.Texts(); }
    [[nodiscard]] support::ShareScript& Shares() { return m_shares; }
    [[nodiscard]] support::ServiceScript& Services() { return m_services; }
    [[nodiscard]] support::LibraryScript& Libraries() { return m_libraries; }
    void AddTo(Picture& picture) const;
    // The services, the share and the board; a board holds what was last written to it.
    [[nodiscard]] StandInState State() const;
    // Goes on from such a state.
    void Put(const StandInState& state);

  private:
    static DWORD SendTrap(const char* text);

    static inline std::string s_trap;
    support::ServiceScript m_services;
    support::ShareScript m_shares;
    support::LibraryScript m_libraries;
    support::BoardScript m_board{m_libraries};
    support::TaskListScript m_tasks{m_libraries};
    support::FakeClock m_clock;
    support::ReadyAlerter m_alerter;
    AgreeingUser m_user;
};

} // namespace sweep
