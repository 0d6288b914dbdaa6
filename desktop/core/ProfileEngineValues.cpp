// Edits values; see the header.
#include "desktop/core/ProfileEngineValues.h"

#include "desktop/core/ProfileEngineEdit.h"

#include <cstring>

namespace {

// Makes each run of ";" one ";".
void CollapseSemicolons(char* text)
{
    char* end = text;
    for (; *text != '\0'; ++text) {
        if (text[0] != ';' || text[1] != ';')
            *end++ = *text;
    }
    *end = '\0';
}

std::int16_t AddToList(ProfileRequest& request, bool inFront)
{
    ProfileText list;
    ReadProfileValue(request, list);
    const char* const added = TextOrEmpty(request.value);
    std::size_t offset = 0;
    if (ContainsText(list, added, offset))
        return PROF_OK;
    ProfileText longer;
    const std::int16_t status =
        FormatProfileText("%s;%s;", inFront ? added : list.data(), inFront ? list.data() : added, longer);
    return status == PROF_OK ? RewriteProfileLine(request, request.format, longer.data()) : status;
}

std::int16_t EditList(ProfileRequest& request, bool inFront)
{
    const bool isFound = FindProfileEntry(request, request.current);
    const std::int16_t status = isFound ? AddToList(request, inFront) : AppendProfileEntry(request);
    // A list that is found is tidied whether or not it grew, and also when it cannot grow any more.
    if (isFound || status == PROF_OK)
        CollapseSemicolons(request.current->text);
    return status;
}

} // namespace

std::int16_t PrependToList(ProfileRequest& request)
{
    return EditList(request, true);
}

std::int16_t AppendToList(ProfileRequest& request)
{
    return EditList(request, false);
}

std::int16_t RemoveFromValue(ProfileRequest& request)
{
    if (!FindProfileEntry(request, request.current))
        return PROF_KEY_NOT_FOUND;
    ProfileText value;
    ReadProfileValue(request, value);
    const char* const removed = TextOrEmpty(request.value);
    std::size_t offset = 0;
    if (!ContainsText(value, removed, offset))
        return PROF_OK;
    char* const place = value.data() + offset;
    std::memmove(place, place + std::strlen(removed), std::strlen(place + std::strlen(removed)) + 1);
    return RewriteProfileLine(request, request.format, value.data());
}

std::int16_t AppendValueInSection(ProfileRequest& request)
{
    if (!FindProfileEntry(request, request.current->next))
        return PROF_KEY_NOT_FOUND;
    ProfileText value;
    ReadProfileValue(request, value);
    ProfileText longer;
    const std::int16_t status = FormatProfileText("%s, %s", value.data(), TextOrEmpty(request.value), longer);
    return status == PROF_OK ? RewriteProfileLine(request, request.format, longer.data()) : status;
}
