// See the header.
#include "support/MessageBoxScript.h"

#include <ostream>

namespace support {
namespace {

// The button that changes least: what a user who does not understand the question should press.
int HarmlessButton(UINT style)
{
    switch (style & MB_TYPEMASK) {
    case MB_OK:
        return IDOK;
    case MB_YESNO:
        return IDNO;
    case MB_ABORTRETRYIGNORE:
        return IDABORT;
    default:
        return IDCANCEL;
    }
}

std::string TextOrNothing(LPCSTR text)
{
    return text == nullptr ? "" : text;
}

} // namespace

std::ostream& operator<<(std::ostream& out, const ShownBox& box)
{
    return out << '[' << box.caption << "] " << testing::PrintToString(box.text) << " style 0x" << std::hex
               << box.style << std::dec;
}

MessageBoxScript::MessageBoxScript(HMODULE module, CallLog* log)
    : m_log(log), m_turn(this), m_messageBox(module, "MessageBoxA", &Show)
{
    if (!m_messageBox.IsImported())
        throw std::runtime_error("not imported: MessageBoxA");
}

MessageBoxScript::~MessageBoxScript()
{
    for (const GivenAnswer& answer : m_answers)
        ReportFailure(answer.where, "no message box asked for this answer: " + std::to_string(answer.button));
}

MessageBoxScript& MessageBoxScript::Answer(int button, Location where)
{
    const std::lock_guard lock(m_mutex);
    m_answers.push_back({button, where});
    return *this;
}

std::vector<ShownBox> MessageBoxScript::Shown() const
{
    const std::lock_guard lock(m_mutex);
    return m_shown;
}

bool MessageBoxScript::WaitForBoxes(std::size_t count, std::chrono::milliseconds limit) const
{
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, limit, [&] { return m_shown.size() >= count; });
}

int MessageBoxScript::TakeAnswer(const ShownBox& box)
{
    const std::lock_guard lock(m_mutex);
    m_shown.push_back(box);
    m_changed.notify_all();
    if (m_log != nullptr)
        m_log->Add("MessageBoxA " + box.text);
    if (m_answers.empty()) {
        ADD_FAILURE() << "unexpected message box: " << box;
        return HarmlessButton(box.style);
    }
    const int button = m_answers.front().button;
    m_answers.pop_front();
    return button;
}

int MessageBoxScript::Show(HWND owner, LPCSTR text, LPCSTR caption, UINT style)
{
    return Turn<MessageBoxScript>::Active().TakeAnswer(
        {owner, TextOrNothing(text), TextOrNothing(caption), style});
}

void ExpectBoxes(const MessageBoxScript& script, const std::vector<ShownBox>& boxes, Location where)
{
    std::vector<ShownBox> shown = script.Shown();
    for (ShownBox& box : shown)
        box.owner = nullptr;
    ExpectEqual(boxes, shown, "message boxes", where);
}

} // namespace support
