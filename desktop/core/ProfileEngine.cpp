// The numbered operations of the profile engine, and the table that leads to them.
#include "desktop/core/ProfileEngineEdit.h"
#include "desktop/core/ProfileEngineValues.h"

#include <algorithm>
#include <cstring>

namespace {

// Where an operation begins.
enum class Start
{
    Anywhere, // it finds its place by itself
    Top,      // the cursor is put on the first line
    Cursor,   // on the cursor line; without one it answers PROF_NO_CURRENT
    Section   // the cursor is put on the section's header; without one it answers PROF_SECTION_NOT_FOUND
};

using Action = std::int16_t (*)(ProfileRequest&);

// Finding and reading.

std::int16_t FindFrom(ProfileRequest& request, ProfileLine* line)
{
    if (!FindProfileEntry(request, line))
        return PROF_KEY_NOT_FOUND;
    CopyProfileValue(request);
    return PROF_OK;
}

std::int16_t FindFirst(ProfileRequest& request)
{
    return request.current == nullptr ? std::int16_t{PROF_EMPTY} : FindFrom(request, request.current);
}

std::int16_t FindBelow(ProfileRequest& request)
{
    return FindFrom(request, request.current->next);
}

// The cursor moves on whether or not something is found: asked again and again, it passes every line and ends
// on none. A search ends at a section header, so what is found is of the same section.
std::int16_t FindNext(ProfileRequest& request)
{
    request.current = request.current->next;
    return FindFrom(request, request.current);
}

std::int16_t Stay(ProfileRequest& /*request*/)
{
    return PROF_OK;
}

// Puts the cursor on the section's header; false without one.
bool GoToSection(ProfileRequest& request)
{
    ProfileLine* const header = FindProfileSection(request);
    if (header == nullptr)
        return false;
    request.current = header;
    return true;
}

// Writing.

std::int16_t Set(ProfileRequest& request)
{
    return FindProfileEntry(request, request.current)
               ? RewriteProfileLine(request, request.format, request.value)
               : AppendProfileEntry(request);
}

// Inserts below the last line of the section that is not blank, so that the blank lines before the next
// section keep the two apart. The cursor is on the section's header, or below it.
std::int16_t InsertInSection(ProfileRequest& request)
{
    const ProfileLine* const end = SectionEnd(request.current);
    for (ProfileLine* line = request.current->next; line != end; line = line->next) {
        if (line->kind != PROF_KIND_BLANK)
            request.current = line;
    }
    return InsertProfileLine(request, request.current, request.format);
}

std::int16_t SetInSection(ProfileRequest& request)
{
    if (!GoToSection(request))
        return AppendProfileEntry(request);
    return FindProfileEntry(request, request.current->next)
               ? RewriteProfileLine(request, request.format, request.value)
               : InsertInSection(request);
}

std::int16_t AddToSection(ProfileRequest& request)
{
    return GoToSection(request) ? InsertInSection(request) : AppendProfileEntry(request);
}

std::int16_t AddSectionAtEnd(ProfileRequest& request)
{
    return IsSectioned(request) ? AppendProfileSection(request) : std::int16_t{PROF_OK};
}

std::int16_t InsertFirst(ProfileRequest& request)
{
    return InsertProfileLine(request, request.file->head, request.format);
}

std::int16_t InsertAfter(ProfileRequest& request)
{
    return InsertProfileLine(request, request.current, request.format);
}

std::int16_t InsertBefore(ProfileRequest& request)
{
    return InsertProfileLine(request, request.current->prev, request.format);
}

std::int16_t InsertRawAfter(ProfileRequest& request)
{
    return InsertProfileLine(request, request.current, "%s%s");
}

std::int16_t SetRawCurrent(ProfileRequest& request)
{
    return RewriteProfileLine(request, "%s%s", request.value);
}

std::int16_t ReplaceCurrent(ProfileRequest& request)
{
    ProfileLine* const replaced = request.current;
    const std::int16_t status = InsertProfileLine(request, replaced, request.format);
    if (status == PROF_OK)
        DeleteProfileLine(replaced);
    return status;
}

// Deleting.

std::int16_t DeleteCurrent(ProfileRequest& request)
{
    DeleteCurrentProfileLine(request);
    return PROF_OK;
}

std::int16_t DeleteFirst(ProfileRequest& request)
{
    if (FindProfileEntry(request, request.current))
        DeleteCurrentProfileLine(request);
    return PROF_OK;
}

std::int16_t DeletePair(ProfileRequest& request)
{
    ProfileLine* line = request.current;
    for (; FindProfileEntry(request, line); line = request.current->next) {
        ProfileText value;
        ReadProfileValue(request, value);
        if (_stricmp(value.data(), TextOrEmpty(request.value)) == 0)
            return DeleteCurrent(request);
    }
    return PROF_OK;
}

std::int16_t DeleteSection(ProfileRequest& request)
{
    const ProfileLine* const end = SectionEnd(request.current);
    while (request.current != end)
        DeleteCurrentProfileLine(request);
    return PROF_OK;
}

std::int16_t DeleteKeyInSection(ProfileRequest& request)
{
    if (GoToSection(request) && FindProfileEntry(request, request.current->next))
        DeleteCurrentProfileLine(request);
    return PROF_OK;
}

// Copying.

std::int16_t CopySection(ProfileRequest& request)
{
    const ProfileLine* const header = request.current;
    if (header->next == nullptr)
        return PROF_NO_CURRENT;
    ProfileLine* const clipboard = NewProfileLine("");
    if (clipboard == nullptr || !CopyProfileLines(header->next, SectionEnd(header), clipboard)) {
        FreeProfileLines(clipboard);
        return PROF_NO_MEMORY;
    }
    FreeProfileLines(request.clipboard);
    request.clipboard = clipboard;
    return PROF_OK;
}

std::int16_t PasteAtEnd(ProfileRequest& request)
{
    if (request.clipboard == nullptr)
        return PROF_OK;
    ProfileLine* const last = LastProfileLine(request.file->head);
    if (!CopyProfileLines(request.clipboard, nullptr, last))
        return PROF_NO_MEMORY;
    request.current = LastProfileLine(last);
    return PROF_OK;
}

struct Operation
{
    ProfileOperation code;
    Start start;
    Action perform;
};

constexpr Operation operations[] = {
    {PROF_LIST_PREPEND, Start::Top, PrependToList},
    {PROF_LIST_APPEND, Start::Top, AppendToList},
    {PROF_FIND_FIRST, Start::Top, FindFirst},
    {PROF_FIND_NEXT, Start::Cursor, FindNext},
    {PROF_DELETE_PAIR, Start::Top, DeletePair},
    {PROF_REPLACE_CURRENT, Start::Cursor, ReplaceCurrent},
    {PROF_REMOVE_FROM_VALUE, Start::Top, RemoveFromValue},
    {PROF_SET, Start::Top, Set},
    {PROF_SECTION_SET, Start::Anywhere, SetInSection},
    {PROF_SECTION_ADD, Start::Anywhere, AddToSection},
    {PROF_SECTION_GET, Start::Section, FindBelow},
    {PROF_SECTION_GET_NEXT, Start::Cursor, FindNext},
    {PROF_SECTION_DELETE, Start::Section, DeleteSection},
    {PROF_SECTION_DELETE_KEY, Start::Anywhere, DeleteKeyInSection},
    {PROF_SECTION_COPY, Start::Section, CopySection},
    {PROF_SECTION_APPEND_VALUE, Start::Section, AppendValueInSection},
    {PROF_INSERT_FIRST, Start::Anywhere, InsertFirst},
    {PROF_APPEND_LAST, Start::Anywhere, AppendProfileEntry},
    {PROF_PASTE_AT_END, Start::Anywhere, PasteAtEnd},
    {PROF_INSERT_AFTER, Start::Cursor, InsertAfter},
    {PROF_INSERT_BEFORE, Start::Cursor, InsertBefore},
    {PROF_INSERT_RAW_AFTER, Start::Cursor, InsertRawAfter},
    {PROF_DELETE_CURRENT, Start::Cursor, DeleteCurrent},
    {PROF_SET_RAW_CURRENT, Start::Cursor, SetRawCurrent},
    {PROF_DELETE_FIRST, Start::Top, DeleteFirst},
    {PROF_ADD_SECTION_AT_END, Start::Anywhere, AddSectionAtEnd},
    {PROF_FIND_SECTION, Start::Section, Stay},
};

// Puts the cursor where an operation begins.
std::int16_t GoToStart(ProfileRequest& request, Start start)
{
    if (start == Start::Cursor)
        return request.current == nullptr ? PROF_NO_CURRENT : PROF_OK;
    if (start == Start::Section)
        return GoToSection(request) ? PROF_OK : PROF_SECTION_NOT_FOUND;
    if (start == Start::Top)
        request.current = request.file->head->next;
    return PROF_OK;
}

} // namespace

std::int16_t ProfileExecute(ProfileRequest& request)
{
    const auto* const operation =
        std::find_if(std::begin(operations), std::end(operations),
                     [&](const Operation& row) { return row.code == request.operation; });
    if (operation == std::end(operations))
        return PROF_OK;
    if (request.file == nullptr)
        return PROF_NOT_OPEN;
    const std::int16_t status = GoToStart(request, operation->start);
    return status == PROF_OK ? operation->perform(request) : status;
}
