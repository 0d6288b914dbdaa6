// Saves profile files, so that at no time a client runs half a login script.
#include "desktop/core/ProfileEngineFile.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <io.h>
#include <iterator>
#include <limits>
#include <sys/stat.h>

namespace {

// How often a file that another program has open is tried again, and the pause before each time in
// milliseconds: one second in all.
constexpr int openRetries = 20;
constexpr DWORD openPause = 50;

constexpr char lineEnd[] = {'\r', '\n'};

// The most bytes that are written, as far as a file's position can be set with one number.
constexpr std::size_t longestText = std::numeric_limits<LONG>::max();

void FreeText(char* text)
{
    std::free(text);
}
using UniqueText = UniqueHandle<char*, FreeText>;

// How a save ended, and whether the file is there to stay.
struct SaveResult
{
    std::int16_t status;
    bool keepsFile;
};

std::size_t SizeOfLines(const ProfileLine* first)
{
    std::size_t size = 0;
    for (const ProfileLine* line = first; line != nullptr; line = line->next)
        size += std::strlen(line->text) + sizeof lineEnd;
    return size;
}

// Fills the room from `begin` to `end` with line ends; an odd byte at the end is one, too.
void PutLineEnds(char* begin, char* end)
{
    while (end - begin >= std::ssize(lineEnd))
        begin = std::copy(std::begin(lineEnd), std::end(lineEnd), begin);
    std::fill(begin, end, '\n');
}

// The lines, each with its ending, and line ends up to `size` bytes. Null without memory, and for more bytes
// than one call writes and finds again.
UniqueText JoinLines(const ProfileLine* first, std::size_t size)
{
    UniqueText text(size > longestText ? nullptr : static_cast<char*>(std::malloc(size)));
    if (!text)
        return text;
    char* end = text.Get();
    for (const ProfileLine* line = first; line != nullptr; line = line->next) {
        end = std::copy_n(line->text, std::strlen(line->text), end);
        end = std::copy(std::begin(lineEnd), std::end(lineEnd), end);
    }
    PutLineEnds(end, text.Get() + size);
    return text;
}

// 0 when it cannot be read.
std::size_t SizeOfFile(HANDLE handle)
{
    const DWORD size = GetFileSize(handle, nullptr);
    return size > longestText ? 0 : size;
}

std::int16_t WriteText(HANDLE handle, const char* text, std::size_t size)
{
    DWORD written = 0;
    if (!WriteFile(handle, text, static_cast<DWORD>(size), &written, nullptr))
        return FailureStatus();
    return written == size ? std::int16_t{PROF_OK} : std::int16_t{ERROR_DISK_FULL};
}

// Replaces the content of the file. All lines go with one call, with empty ones below up to the old size, so
// that a process that ends here leaves no line half and no old line below the new ones.
SaveResult ReplaceLines(HANDLE handle, const ProfileLine* first)
{
    const std::size_t size = SizeOfLines(first);
    if (size != 0) {
        const std::size_t writtenSize = std::max(size, SizeOfFile(handle));
        const UniqueText text = JoinLines(first, writtenSize);
        if (!text)
            return {.status = PROF_NO_MEMORY, .keepsFile = true}; // nothing of it has been touched
        const std::int16_t status = WriteText(handle, text.Get(), writtenSize);
        if (status != PROF_OK)
            return {.status = status, .keepsFile = false};
    }
    // The lines are written. That the file cannot be cut behind them is no reason to call the save a failure.
    SetFilePointer(handle, static_cast<LONG>(size), nullptr, FILE_BEGIN);
    SetEndOfFile(handle);
    return {.status = PROF_OK, .keepsFile = GetFileSize(handle, nullptr) != 0};
}

bool Exists(const char* path)
{
    return _access(path, 0) == 0;
}

// Takes the read-only attribute away from a file that has it; true when it did.
bool MakeWritable(const char* path)
{
    return Exists(path) && _access(path, 2) != 0 && _chmod(path, _S_IREAD | _S_IWRITE) == 0;
}

// A failed save deletes the file, so one that another program has open for a moment, like a virus scanner
// after a change, is waited for.
UniqueObject OpenForSave(const char* path)
{
    UniqueObject file = OpenShared(path, OPEN_EXISTING);
    for (int retry = 0; retry < openRetries && !file; ++retry) {
        const DWORD error = GetLastError();
        if (error != ERROR_SHARING_VIOLATION && error != ERROR_LOCK_VIOLATION)
            break;
        Sleep(openPause);
        file = OpenShared(path, OPEN_EXISTING);
    }
    return file;
}

SaveResult WriteProfile(const ProfileRequest& request)
{
    const char* const path = request.file->path;
    // A file that vanished since it was opened stays away, unless the caller created it.
    if ((request.flags & PROF_CREATE) == 0 && !Exists(path))
        return {.status = ERROR_FILE_NOT_FOUND, .keepsFile = false};
    const UniqueObject file = OpenForSave(path);
    if (!file)
        return {.status = FailureStatus(), .keepsFile = false};
    return ReplaceLines(file.Get(), request.file->head->next);
}

} // namespace

std::int16_t ProfileSave(ProfileRequest& request)
{
    if (request.file == nullptr)
        return PROF_NOT_OPEN;
    const char* const path = request.file->path;
    const bool wasReadOnly = MakeWritable(path);
    const SaveResult result = WriteProfile(request);
    // An empty file is of no use, and a half-written one is worse than none. One that somebody else keeps
    // from being deleted gets its attribute back, like one that was written. When that fails, the lines are
    // written all the same, and a file that stays writable is no reason to call the save a failure.
    if ((result.keepsFile || !DeleteFileA(path)) && wasReadOnly)
        _chmod(path, _S_IREAD);
    return result.status;
}
