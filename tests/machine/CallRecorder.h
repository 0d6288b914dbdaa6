// Every watched call of the applet, in order: what it was about, what it opened, and which one is to fail.
// The watches of WatchedImports.h report here; the sweep compares what they reported.
#pragma once

#include "support/Mutex.h"

#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>
#include <windows.h>

namespace sweep {

// What a call does, to the machine or to this process.
enum class Role
{
    Asks,    // changes nothing
    Changes, // a setting, a service, a file, a share
    Opens,   // something that must be closed
    Closes,
};

struct Call
{
    std::string function;
    std::string place;        // the texts and handles that it was given: key and value, service, file
    std::string purpose = {}; // what its other arguments ask for: "size" or "data", "save", ...; mostly empty
    Role role = Role::Asks;
    std::size_t boxes = 0; // message boxes shown before it
    bool hasFailed = false;
};

// Used by the UI thread while an operation runs, and by the test before and after.
class CallRecorder
{
  public:
    // From now on calls are kept, and number `failing` (from 1) of them fails with `code`; none for 0. With
    // `from`, the first call of that function is number 1; with `until`, the first of that one is the last.
    void Arm(std::size_t failing, DWORD code, const char* from = nullptr, const char* until = nullptr);
    // The same, but of the calls of these functions, each with the error that it answers, number `first` and
    // all behind it fail.
    void ArmLasting(std::size_t first, std::map<std::string, DWORD> functions, const char* from = nullptr,
                    const char* until = nullptr);
    // From now on calls pass and are not kept; what they open and close is still noted.
    void Disarm();
    // From now on the call with the failing number does not fail: `action` comes before it, on its thread.
    void InsteadOfFailing(std::function<void()> action) { m_instead = std::move(action); }
    // Whether the next call is the failing one.
    [[nodiscard]] bool IsFailingNext() const;

    // `look` is called after each call that changes something, on the thread that made it.
    void OnChange(std::function<void()> look) { m_look = std::move(look); }

    // Reports a call; true when it is to fail.
    bool Begin(Call call);
    // The error that a failing call of the function answers.
    [[nodiscard]] DWORD CodeOf(const std::string& function) const;

    // A call opened `handle`, or closed it.
    void Open(const void* handle, const std::string& place);
    void Close(const void* handle);
    // What a handle was opened for; empty when it is none of those that are open.
    [[nodiscard]] std::string NameOf(const void* handle) const;

    // A call that changes something is done.
    void NoteChange() const;
    // A message box is shown.
    void CountBox();

    [[nodiscard]] std::vector<Call> Calls() const;
    // What is open, by handle.
    [[nodiscard]] std::map<const void*, std::string> OpenHandles() const;

  private:
    // Counts a call; whether it is to fail.
    bool Fails(const std::string& function);

    mutable support::Mutex m_mutex;
    std::vector<Call> m_calls;
    std::map<const void*, std::string> m_open;
    std::function<void()> m_look;
    std::function<void()> m_instead;
    std::string m_from;
    std::string m_until;
    std::map<std::string, DWORD> m_lasting; // which functions fail lastingly, with their errors
    std::size_t m_lastingCalls = 0;
    std::size_t m_failing = 0;
    std::size_t m_boxes = 0;
    DWORD m_code = 0;
    bool m_isArmed = false;
};

} // namespace sweep
