// Finds, reads and writes lines for the operations; see the header.
#include "desktop/core/ProfileEngineEdit.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

const char* SkipBlanks(const char* text)
{
    return text + std::strspn(text, " \t");
}

// Compares from the second character on, so a header with blanks before its bracket has no name that could be
// asked for. On purpose: programs that read these files do not see such a header as one either.
bool IsHeaderOf(const char* header, const char* section)
{
    if (*header == '\0')
        return false; // a header rewritten as an empty line is still one
    const char* const name = SkipBlanks(header + 1);
    const std::size_t length = std::strlen(section);
    return _strnicmp(name, section, length) == 0 && *SkipBlanks(name + length) == ']';
}

void CutAtEqualsSign(char* text)
{
    char* end = text + std::strcspn(text, "=");
    while (end != text && (end[-1] == ' ' || end[-1] == '\t'))
        --end;
    *end = '\0';
}

bool HasKey(const ProfileRequest& request, const ProfileLine& line)
{
    ProfileText text;
    NormaliseProfileText(line.text, text);
    if (!IsRaw(request))
        CutAtEqualsSign(text.data());
    return _stricmp(text.data(), TextOrEmpty(request.key)) == 0;
}

// Makes the line that the request's key and value give in `format`.
std::int16_t MakeLine(const ProfileRequest& request, const char* format, ProfileLine*& line)
{
    ProfileText text;
    const std::int16_t status =
        FormatProfileText(format, TextOrEmpty(request.key), TextOrEmpty(request.value), text);
    if (status != PROF_OK)
        return status;
    line = NewProfileLine(text.data());
    return line == nullptr ? PROF_NO_MEMORY : PROF_OK;
}

// Makes the empty line and the header that begin a new section.
std::int16_t MakeSection(const ProfileRequest& request, ProfileLine*& blank)
{
    ProfileText text;
    const std::int16_t status = FormatProfileText("[%s]", TextOrEmpty(request.section), "", text);
    if (status != PROF_OK)
        return status;
    ProfileLine* const header = NewProfileLine(text.data());
    if (header == nullptr)
        return PROF_NO_MEMORY;
    blank = NewProfileLine("");
    if (blank == nullptr) {
        FreeProfileLines(header);
        return PROF_NO_MEMORY;
    }
    LinkProfileLines(blank, header);
    return PROF_OK;
}

// Appends what was made and puts the cursor on its last line.
void AppendLines(ProfileRequest& request, ProfileLine* first)
{
    LinkProfileLines(LastProfileLine(request.file->head), first);
    request.current = LastProfileLine(first);
}

} // namespace

ProfileLine* FindProfileSection(const ProfileRequest& request)
{
    ProfileLine* header = SectionEnd(request.file->head);
    while (header != nullptr && !IsHeaderOf(header->text, TextOrEmpty(request.section)))
        header = SectionEnd(header);
    return header;
}

bool FindProfileEntry(ProfileRequest& request, ProfileLine* line)
{
    for (; line != nullptr && line->kind != PROF_KIND_SECTION; line = line->next) {
        if ((line->kind & PROF_KIND_COMMENT) != 0)
            continue;
        request.current = line;
        if (HasKey(request, *line))
            return true;
    }
    return false;
}

void ReadProfileValue(const ProfileRequest& request, ProfileText& value)
{
    ProfileText text;
    NormaliseProfileText(request.current->text, text);
    const char* rest = text.data() + std::strlen(TextOrEmpty(request.key));
    rest += std::strspn(rest, "= \t");
    std::copy_n(rest, std::strlen(rest) + 1, value.data());
}

void CopyProfileValue(const ProfileRequest& request)
{
    if (request.value == nullptr)
        return;
    ProfileText value;
    ReadProfileValue(request, value);
    std::copy_n(value.data(), std::strlen(value.data()) + 1, request.value);
}

bool ContainsText(const ProfileText& text, const char* part, std::size_t& offset)
{
    const std::size_t textLength = std::strlen(text.data());
    const std::size_t partLength = std::strlen(part);
    for (offset = 0; offset + partLength <= textLength; ++offset) {
        if (_strnicmp(text.data() + offset, part, partLength) == 0)
            return true;
    }
    return false;
}

std::int16_t RewriteProfileLine(ProfileRequest& request, const char* format, const char* value)
{
    ProfileText text;
    const std::int16_t status = FormatProfileText(format, TextOrEmpty(request.key), TextOrEmpty(value), text);
    if (status != PROF_OK)
        return status;
    const std::size_t size = std::strlen(text.data()) + 1;
    void* const grown = std::realloc(request.current->text, size);
    if (grown == nullptr)
        return PROF_NO_MEMORY;
    request.current->text = static_cast<char*>(grown);
    std::copy_n(text.data(), size, request.current->text);
    return PROF_OK;
}

std::int16_t InsertProfileLine(ProfileRequest& request, ProfileLine* place, const char* format)
{
    ProfileLine* line = nullptr;
    const std::int16_t status = MakeLine(request, format, line);
    if (status != PROF_OK)
        return status;
    LinkProfileLines(place, line);
    request.current = line;
    return PROF_OK;
}

std::int16_t AppendProfileSection(ProfileRequest& request)
{
    ProfileLine* section = nullptr;
    const std::int16_t status = MakeSection(request, section);
    if (status == PROF_OK)
        AppendLines(request, section);
    return status;
}

std::int16_t AppendProfileEntry(ProfileRequest& request)
{
    ProfileLine* entry = nullptr;
    std::int16_t status = MakeLine(request, request.format, entry);
    if (status != PROF_OK)
        return status;
    if (IsSectioned(request))
        status = AppendProfileSection(request);
    if (status != PROF_OK) {
        FreeProfileLines(entry);
        return status;
    }
    AppendLines(request, entry);
    return PROF_OK;
}

void DeleteCurrentProfileLine(ProfileRequest& request)
{
    ProfileLine* const line = request.current;
    request.current = line->next;
    DeleteProfileLine(line);
}
