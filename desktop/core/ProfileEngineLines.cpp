// The list of lines; see the header.
#include "desktop/core/ProfileEngineLines.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

std::uint32_t KindOf(const char* text)
{
    switch (text[std::strspn(text, " \t")]) {
    case ';':
        return PROF_KIND_COMMENT;
    case '[':
        return PROF_KIND_SECTION;
    case '\0':
        return PROF_KIND_BLANK;
    default:
        return PROF_KIND_ENTRY;
    }
}

} // namespace

ProfileLine* NewProfileLine(const char* text)
{
    auto* const line = static_cast<ProfileLine*>(std::malloc(sizeof(ProfileLine)));
    if (line == nullptr)
        return nullptr;
    *line = {_strdup(text), nullptr, nullptr, KindOf(text)};
    if (line->text != nullptr)
        return line;
    std::free(line);
    return nullptr;
}

void FreeProfileLines(ProfileLine* first)
{
    while (first != nullptr) {
        ProfileLine* const line = first;
        first = line->next;
        std::free(line->text);
        std::free(line);
    }
}

bool CopyProfileLines(const ProfileLine* first, const ProfileLine* end, ProfileLine* last)
{
    ProfileLine* const place = last;
    for (const ProfileLine* line = first; line != end; line = line->next) {
        ProfileLine* const copy = NewProfileLine(line->text);
        if (copy == nullptr) {
            FreeProfileLines(place->next);
            place->next = nullptr;
            return false;
        }
        copy->kind = line->kind;
        LinkProfileLines(last, copy);
        last = copy;
    }
    return true;
}

ProfileLine* LastProfileLine(ProfileLine* line)
{
    while (line->next != nullptr)
        line = line->next;
    return line;
}

void LinkProfileLines(ProfileLine* place, ProfileLine* first)
{
    ProfileLine* const last = LastProfileLine(first);
    last->next = place->next;
    if (place->next != nullptr)
        place->next->prev = last;
    place->next = first;
    first->prev = place;
}

void DeleteProfileLine(ProfileLine* line)
{
    line->prev->next = line->next;
    if (line->next != nullptr)
        line->next->prev = line->prev;
    line->next = nullptr;
    FreeProfileLines(line);
}

ProfileLine* SectionEnd(const ProfileLine* header)
{
    ProfileLine* line = header->next;
    while (line != nullptr && line->kind != PROF_KIND_SECTION)
        line = line->next;
    return line;
}

void NormaliseProfileText(const char* text, ProfileText& copy)
{
    std::size_t length = 0;
    for (text += std::strspn(text, " \t"); *text != '\0' && length + 1 < copy.size(); ++text) {
        const char character = *text == '\t' ? ' ' : *text;
        if (character != ' ' || copy[length - 1] != ' ') // the first character is no blank
            copy[length++] = character;
    }
    copy[length] = '\0';
}

std::int16_t FormatProfileText(const char* format, const char* first, const char* second, ProfileText& text)
{
// The format is the caller's to choose: that is what the request's field is for.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    const int length = std::snprintf(text.data(), text.size(), format, first, second);
#pragma GCC diagnostic pop
    return static_cast<std::size_t>(length) < text.size() ? PROF_OK : PROF_TOO_LONG;
}
