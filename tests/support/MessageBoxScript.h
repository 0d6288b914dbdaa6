// The user of the tests: answers the message boxes of a module from a list and keeps what they showed. For
// tests of everything that asks or reports.
#pragma once

#include "imports/ImportHook.h"
#include "support/CallLog.h"
#include "support/Expect.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <vector>
#include <windows.h>

namespace support {

// A message box as it was asked for.
struct ShownBox
{
    HWND owner = nullptr;
    std::string text;
    std::string caption;
    UINT style = 0;

    bool operator==(const ShownBox&) const = default;
};

std::ostream& operator<<(std::ostream& out, const ShownBox& box);

// Stands in for MessageBoxA of one module; one script at a time. A box without an answer fails the test and
// is answered as harmlessly as its buttons allow; an answer that no box has asked for by the end of the
// script fails the test at the line that gave it. Boxes may come from any thread.
class MessageBoxScript
{
  public:
    // With a log, each box adds "MessageBoxA TEXT" to it.
    explicit MessageBoxScript(HMODULE module, CallLog* log = nullptr);
    ~MessageBoxScript();
    MessageBoxScript(const MessageBoxScript&) = delete;
    MessageBoxScript& operator=(const MessageBoxScript&) = delete;

    // The next box that has no answer yet gets `button` (IDOK, IDYES, ...).
    MessageBoxScript& Answer(int button, Location where = Location::current());

    // The boxes so far, in their order.
    [[nodiscard]] std::vector<ShownBox> Shown() const;

    // Waits until `count` boxes have been shown; false when the limit passes first.
    [[nodiscard]] bool WaitForBoxes(std::size_t count,
                                    std::chrono::milliseconds limit = std::chrono::seconds(15)) const;

  private:
    struct GivenAnswer
    {
        int button;
        Location where;
    };

    static int WINAPI Show(HWND owner, LPCSTR text, LPCSTR caption, UINT style);
    int TakeAnswer(const ShownBox& box);

    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    std::deque<GivenAnswer> m_answers;
    std::vector<ShownBox> m_shown;
    CallLog* m_log;
    Turn<MessageBoxScript> m_turn;
    ReplacedImport m_messageBox;
};

// Fails the test at the caller's line unless `script` has shown just these boxes, whatever their owners.
void ExpectBoxes(const MessageBoxScript& script, const std::vector<ShownBox>& boxes,
                 Location where = Location::current());

} // namespace support
