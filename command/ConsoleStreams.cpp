// Reads and writes handles, which may be files, pipes, consoles or closed.
#include "command/ConsoleStreams.h"

#include "command/CodePage.h"
#include "command/CommandError.h"
#include "command/Document.h"
#include "sysaccess/core/Handles.h"

#include <array>
#include <windows.h>

namespace {

[[noreturn]] void FailStream(const std::string& what, const char* failure)
{
    throw CommandError(ExitCode::Failed,
                       what + ": cannot be " + failure + " (code " + std::to_string(GetLastError()) + ")");
}

// To the end, or as far as it takes to see that it is too long for a document.
std::string ReadAll(HANDLE handle, const std::string& what)
{
    std::string text;
    std::array<char, 65536> buffer{};
    while (text.size() <= documentLimit) {
        DWORD count = 0;
        const BOOL isRead = ::ReadFile(handle, buffer.data(), buffer.size(), &count, nullptr);
        // The other end of a pipe is closed.
        if (!isRead && GetLastError() != ERROR_BROKEN_PIPE)
            FailStream(what, "read");
        if (!isRead || count == 0)
            break;
        text.append(buffer.data(), count);
    }
    return text;
}

bool WriteAll(HANDLE handle, std::string_view text)
{
    for (std::size_t written = 0; written < text.size();) {
        DWORD count = 0;
        if (!WriteFile(handle, text.data() + written, static_cast<DWORD>(text.size() - written), &count,
                       nullptr))
            return false;
        written += count;
    }
    return true;
}

} // namespace

std::string ConsoleStreams::ReadInput()
{
    return ReadAll(GetStdHandle(STD_INPUT_HANDLE), "standard input");
}

std::string ConsoleStreams::ReadFile(const std::string& name)
{
    const UniqueObject file =
        OwnUnlessInvalid(CreateFileW(Widen(name).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                     OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        FailStream(name, "opened");
    return ReadAll(file.Get(), name);
}

void ConsoleStreams::Write(const std::string& text)
{
    if (!WriteAll(GetStdHandle(STD_OUTPUT_HANDLE), text))
        FailStream("standard output", "written");
}

void ConsoleStreams::WriteError(std::string_view text)
{
    (void)WriteAll(GetStdHandle(STD_ERROR_HANDLE), text);
}
