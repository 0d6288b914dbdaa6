// Opens, reads and closes profile files.
#include "desktop/core/ProfileEngineFile.h"

#include "desktop/core/ProfileEngineLines.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

// Bytes that one line takes at most from the file.
constexpr std::size_t longestLine = profileTextSize - 1;

// Blocks that are read at once, in bytes; lines are cut out of them.
constexpr std::size_t blockSize = 16384;

// What has been read from a file and not yet been made lines of: from `begin` to `end`.
struct LineReader
{
    HANDLE handle;
    std::size_t begin = 0;
    std::size_t end = 0;
    bool atEndOfFile = false;
    std::array<char, blockSize> block{};
};

// Reads until there is a longest line and the byte after it, or all that the file still has.
std::int16_t FillBlock(LineReader& reader)
{
    if (reader.atEndOfFile || reader.end - reader.begin > longestLine)
        return PROF_OK;
    char* const block = reader.block.data();
    reader.end -= reader.begin;
    std::memmove(block, block + reader.begin, reader.end);
    reader.begin = 0;
    while (!reader.atEndOfFile && reader.end <= longestLine) {
        DWORD count = 0;
        const auto room = static_cast<DWORD>(blockSize - reader.end);
        if (!ReadFile(reader.handle, block + reader.end, room, &count, nullptr))
            return FailureStatus();
        reader.end += count;
        reader.atEndOfFile = count == 0;
    }
    return PROF_OK;
}

// Takes the next line out of the block. A line feed ends it, together with a carriage return behind; a line
// without one in its first 599 bytes ends there.
ProfileLine* TakeLine(LineReader& reader)
{
    const char* const begin = reader.block.data() + reader.begin;
    const std::size_t available = reader.end - reader.begin;
    std::size_t size = std::min(available, longestLine);
    const void* const lineFeed = std::memchr(begin, '\n', size);
    if (lineFeed != nullptr)
        size = static_cast<std::size_t>(static_cast<const char*>(lineFeed) - begin) + 1;
    const bool hasPair = lineFeed != nullptr && size < available && begin[size] == '\r';

    ProfileText text;
    std::copy_n(begin, size, text.data());
    text[size] = '\0';
    text[std::strcspn(text.data(), "\r\n\x1A")] = '\0';
    reader.begin += size + (hasPair ? 1 : 0);
    return NewProfileLine(text.data());
}

// Links every line of the file below `last`. On failure those read so far are left there.
std::int16_t ReadLines(HANDLE handle, ProfileLine* last)
{
    LineReader reader{.handle = handle};
    while (true) {
        const std::int16_t status = FillBlock(reader);
        if (status != PROF_OK || reader.begin == reader.end)
            return status;
        ProfileLine* const line = TakeLine(reader);
        if (line == nullptr)
            return PROF_NO_MEMORY;
        LinkProfileLines(last, line);
        last = line;
    }
}

void DropTrailingBlankLines(ProfileLine* head)
{
    ProfileLine* last = LastProfileLine(head);
    while (last != head && last->kind == PROF_KIND_BLANK) {
        last = last->prev;
        DeleteProfileLine(last->next);
    }
}

void FreeProfileFile(ProfileFile* file)
{
    FreeProfileLines(file->head);
    std::free(file);
}

ProfileFile* NewProfileFile(const char* path)
{
    auto* const file = static_cast<ProfileFile*>(std::malloc(sizeof(ProfileFile)));
    if (file == nullptr)
        return nullptr;
    std::copy_n(path, std::strlen(path) + 1, &file->path[0]);
    file->head = NewProfileLine("");
    if (file->head != nullptr)
        return file;
    std::free(file);
    return nullptr;
}

// Makes a file with the lines of an open handle.
std::int16_t ReadProfile(HANDLE handle, const char* path, ProfileFile*& result)
{
    ProfileFile* const file = NewProfileFile(path);
    if (file == nullptr)
        return PROF_NO_MEMORY;
    const std::int16_t status = ReadLines(handle, file->head);
    if (status != PROF_OK) {
        FreeProfileFile(file);
        return status;
    }
    DropTrailingBlankLines(file->head);
    result = file;
    return PROF_OK;
}

const char* FormatOf(const ProfileRequest& request)
{
    if (IsRaw(request))
        return "%s%s";
    return IsSectioned(request) ? "  %s = %s" : "%s=%s";
}

} // namespace

std::int16_t FailureStatus()
{
    const auto status = static_cast<std::int16_t>(GetLastError());
    return status == PROF_OK ? std::int16_t{ERROR_GEN_FAILURE} : status;
}

UniqueObject OpenShared(const char* path, DWORD disposition)
{
    return OwnUnlessInvalid(CreateFileA(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                        disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

std::int16_t ProfileOpen(const char* path, ProfileRequest& request)
{
    if (std::strlen(path) >= profilePathSize)
        return ERROR_FILENAME_EXCED_RANGE;
    const bool isEmptied = (request.flags & PROF_CREATE) != 0;
    const UniqueObject file = OpenShared(path, isEmptied ? CREATE_ALWAYS : OPEN_ALWAYS);
    if (!file)
        return FailureStatus();
    const std::int16_t status = ReadProfile(file.Get(), path, request.file);
    if (status != PROF_OK)
        return status;
    request.format = FormatOf(request);
    if (!IsSectioned(request))
        request.section = nullptr;
    return PROF_OK;
}

void ProfileClose(ProfileRequest& request)
{
    if (request.file == nullptr)
        return;
    FreeProfileFile(request.file);
    FreeProfileLines(request.clipboard);
    request.file = nullptr;
    request.current = nullptr;
    request.clipboard = nullptr;
}
