// The model of a profile file; see the header.
#include "ProfileModel.h"

#include "desktop/core/ProfileEngine.h"

#include <algorithm>

namespace fuzz {
namespace {

const std::string blanks = " \t";

std::string Lower(std::string text)
{
    for (char& letter : text)
        letter = letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    return text;
}

std::string WithoutLeading(const std::string& text, const std::string& characters)
{
    const std::size_t place = text.find_first_not_of(characters);
    return place == std::string::npos ? "" : text.substr(place);
}

std::string WithoutTrailing(const std::string& text, const std::string& characters)
{
    return text.substr(0, text.find_last_not_of(characters) + 1);
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to)
{
    for (std::size_t place = text.find(from); place != std::string::npos; place = text.find(from))
        text.replace(place, from.size(), to);
}

std::string Normalised(std::string text)
{
    text = WithoutLeading(text, blanks);
    std::replace(text.begin(), text.end(), '\t', ' ');
    ReplaceAll(text, "  ", " ");
    return text;
}

std::uint32_t KindOf(const std::string& text)
{
    const std::string rest = WithoutLeading(text, blanks);
    if (rest.empty())
        return 17;
    return rest[0] == ';' ? 1 : rest[0] == '[' ? 2 : 4;
}

ModelLine LineOf(const std::string& text)
{
    return {text, KindOf(text)};
}

std::vector<ModelLine> Split(const std::string& content)
{
    std::vector<ModelLine> lines;
    for (std::size_t place = 0; place < content.size();) {
        std::string chunk = content.substr(place, 599);
        const std::size_t lineFeed = chunk.find('\n');
        chunk = chunk.substr(0, lineFeed == std::string::npos ? lineFeed : lineFeed + 1);
        place += chunk.size();
        if (lineFeed != std::string::npos && place < content.size() && content[place] == '\r')
            ++place;
        lines.push_back(LineOf(chunk.substr(0, chunk.find_first_of(std::string("\r\n\x1A\0", 4)))));
    }
    while (!lines.empty() && lines.back().kind == 17)
        lines.pop_back();
    return lines;
}

bool Contains(const std::string& text, const std::string& part)
{
    return Lower(text).find(Lower(part)) != std::string::npos;
}

} // namespace

ProfileModel::ProfileModel(std::uint8_t flags, const std::string& content)
    : lines(Split((flags & 0x80) == 0 ? content : "")), m_flags(flags)
{
}

bool ProfileModel::IsSectioned() const
{
    return (m_flags & 0x05) == 0x01;
}

bool ProfileModel::IsRaw() const
{
    return (m_flags & 0x05) == 0;
}

std::string ProfileModel::Format(const std::string& key, const std::string& value) const
{
    if (keyOnly)
        return key;
    if (IsRaw())
        return key + value;
    return IsSectioned() ? "  " + key + " = " + value : key + "=" + value;
}

bool ProfileModel::HasKey(const ModelLine& line, const std::string& key) const
{
    std::string text = Normalised(line.text);
    if (!IsRaw())
        text = WithoutTrailing(text.substr(0, text.find('=')), blanks);
    return Lower(text) == Lower(key);
}

std::string ProfileModel::ValueOf(const std::string& key) const
{
    return WithoutLeading(Normalised(lines[*cursor].text).substr(key.size()), "= \t");
}

ProfileModel::Place ProfileModel::Section(const std::string& name) const
{
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].kind != 2 || lines[i].text.empty())
            continue;
        const std::string rest = WithoutLeading(lines[i].text.substr(1), blanks);
        const bool begins = Lower(rest.substr(0, name.size())) == Lower(name);
        if (begins && WithoutLeading(rest.substr(name.size()), blanks).starts_with("]"))
            return i;
    }
    return std::nullopt;
}

std::size_t ProfileModel::SectionEnd(std::size_t header) const
{
    std::size_t end = header + 1;
    while (end < lines.size() && lines[end].kind != 2)
        ++end;
    return end;
}

bool ProfileModel::Find(const std::string& key, std::size_t from)
{
    for (std::size_t i = from; i < lines.size() && lines[i].kind != 2; ++i) {
        if ((lines[i].kind & 1) != 0)
            continue;
        cursor = i;
        if (HasKey(lines[i], key))
            return true;
    }
    return false;
}

std::int16_t ProfileModel::Read(ModelRequest& request, std::size_t from)
{
    if (!Find(request.key, from))
        return PROF_KEY_NOT_FOUND;
    request.value = ValueOf(request.key);
    return PROF_OK;
}

std::int16_t ProfileModel::Rewrite(const std::string& text)
{
    if (text.size() >= 600)
        return PROF_TOO_LONG;
    lines[*cursor].text = text;
    return PROF_OK;
}

std::int16_t ProfileModel::Insert(std::size_t place, const std::string& text)
{
    if (text.size() >= 600)
        return PROF_TOO_LONG;
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(place), LineOf(text));
    cursor = place;
    return PROF_OK;
}

std::int16_t ProfileModel::AppendSection(const std::string& name)
{
    if (name.size() + 2 >= 600)
        return PROF_TOO_LONG;
    lines.push_back(LineOf(""));
    return Insert(lines.size(), "[" + name + "]");
}

std::int16_t ProfileModel::Append(const ModelRequest& request)
{
    const std::string text = Format(request.key, request.value);
    if (text.size() >= 600)
        return PROF_TOO_LONG;
    if (IsSectioned() && AppendSection(request.section) != PROF_OK)
        return PROF_TOO_LONG;
    return Insert(lines.size(), text);
}

std::int16_t ProfileModel::InsertInSection(const ModelRequest& request, std::size_t header)
{
    std::size_t place = SectionEnd(header);
    while (lines[place - 1].kind == 17)
        --place;
    cursor = place - 1;
    return Insert(place, Format(request.key, request.value));
}

void ProfileModel::DeleteCurrent()
{
    lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(*cursor));
    if (*cursor == lines.size())
        cursor.reset();
}

std::int16_t ProfileModel::ExecuteOnList(ModelRequest& request, bool isFound)
{
    std::int16_t status = PROF_OK;
    if (!isFound) {
        status = Append(request);
        if (status != PROF_OK)
            return status;
    } else if (const std::string list = ValueOf(request.key); !Contains(list, request.value)) {
        const std::string longer = request.operation == PROF_LIST_PREPEND ? request.value + ";" + list + ";"
                                                                          : list + ";" + request.value + ";";
        status = longer.size() >= 600 ? std::int16_t{PROF_TOO_LONG} : Rewrite(Format(request.key, longer));
    }
    ReplaceAll(lines[*cursor].text, ";;", ";");
    return status;
}

std::int16_t ProfileModel::ExecuteFromTop(ModelRequest& request)
{
    cursor = lines.empty() ? Place() : Place(0);
    if (request.operation == PROF_FIND_FIRST && lines.empty())
        return PROF_EMPTY;
    bool isFound = Find(request.key, 0);
    while (request.operation == PROF_DELETE_PAIR && isFound &&
           Lower(ValueOf(request.key)) != Lower(request.value))
        isFound = Find(request.key, *cursor + 1);
    switch (request.operation) {
    case PROF_LIST_PREPEND:
    case PROF_LIST_APPEND:
        return ExecuteOnList(request, isFound);
    case PROF_FIND_FIRST:
        return isFound ? Read(request, *cursor) : std::int16_t{PROF_KEY_NOT_FOUND};
    case PROF_SET:
        return isFound ? Rewrite(Format(request.key, request.value)) : Append(request);
    case PROF_REMOVE_FROM_VALUE: {
        if (!isFound)
            return PROF_KEY_NOT_FOUND;
        std::string value = ValueOf(request.key);
        if (!Contains(value, request.value))
            return PROF_OK;
        value.erase(Lower(value).find(Lower(request.value)), request.value.size());
        return Rewrite(Format(request.key, value));
    }
    default: // the two deletions
        if (isFound)
            DeleteCurrent();
        return PROF_OK;
    }
}

std::int16_t ProfileModel::ExecuteOnSection(ModelRequest& request)
{
    const Place header = Section(request.section);
    const bool appends = request.operation == PROF_SECTION_SET || request.operation == PROF_SECTION_ADD;
    if (!header && appends)
        return Append(request);
    if (!header)
        return request.operation == PROF_SECTION_DELETE_KEY ? PROF_OK : PROF_SECTION_NOT_FOUND;
    cursor = header;
    switch (request.operation) {
    case PROF_SECTION_SET:
        return Find(request.key, *header + 1) ? Rewrite(Format(request.key, request.value))
                                              : InsertInSection(request, *header);
    case PROF_SECTION_ADD:
        return InsertInSection(request, *header);
    case PROF_SECTION_GET:
        return Read(request, *header + 1);
    case PROF_SECTION_DELETE:
        for (std::size_t count = SectionEnd(*header) - *header; count != 0; --count)
            DeleteCurrent();
        return PROF_OK;
    case PROF_SECTION_DELETE_KEY:
        if (Find(request.key, *header + 1))
            DeleteCurrent();
        return PROF_OK;
    case PROF_SECTION_COPY:
        if (*header + 1 == lines.size())
            return PROF_NO_CURRENT;
        clipboard = {LineOf("")};
        clipboard.insert(clipboard.end(), lines.begin() + static_cast<std::ptrdiff_t>(*header + 1),
                         lines.begin() + static_cast<std::ptrdiff_t>(SectionEnd(*header)));
        return PROF_OK;
    case PROF_SECTION_APPEND_VALUE: {
        if (!Find(request.key, *header + 1))
            return PROF_KEY_NOT_FOUND;
        const std::string longer = ValueOf(request.key) + ", " + request.value;
        return longer.size() >= 600 ? std::int16_t{PROF_TOO_LONG} : Rewrite(Format(request.key, longer));
    }
    default: // find the section
        return PROF_OK;
    }
}

std::int16_t ProfileModel::ExecuteOnCursor(ModelRequest& request)
{
    if (!cursor)
        return PROF_NO_CURRENT;
    const std::string text = Format(request.key, request.value);
    switch (request.operation) {
    case PROF_REPLACE_CURRENT:
        if (text.size() >= 600)
            return PROF_TOO_LONG;
        lines[*cursor] = LineOf(text);
        return PROF_OK;
    case PROF_INSERT_AFTER:
        return Insert(*cursor + 1, text);
    case PROF_INSERT_BEFORE:
        return Insert(*cursor, text);
    case PROF_INSERT_RAW_AFTER:
        return Insert(*cursor + 1, request.key + request.value);
    case PROF_DELETE_CURRENT:
        DeleteCurrent();
        return PROF_OK;
    case PROF_SET_RAW_CURRENT:
        return Rewrite(request.key + request.value);
    default: // the two that find the next
        cursor = *cursor + 1 == lines.size() ? Place() : Place(*cursor + 1);
        return cursor ? Read(request, *cursor) : std::int16_t{PROF_KEY_NOT_FOUND};
    }
}

std::int16_t ProfileModel::ExecuteAnywhere(ModelRequest& request)
{
    switch (request.operation) {
    case PROF_INSERT_FIRST:
        return Insert(0, Format(request.key, request.value));
    case PROF_APPEND_LAST:
        return Append(request);
    case PROF_PASTE_AT_END:
        if (!clipboard.empty()) {
            lines.insert(lines.end(), clipboard.begin(), clipboard.end());
            cursor = lines.size() - 1;
        }
        return PROF_OK;
    case PROF_ADD_SECTION_AT_END:
        return IsSectioned() ? AppendSection(request.section) : std::int16_t{PROF_OK};
    default:
        return PROF_OK;
    }
}

std::int16_t ProfileModel::Execute(ModelRequest& request)
{
    switch (request.operation) {
    case 1:
    case 2:
    case 3:
    case 5:
    case 7:
    case 8:
    case 52:
        return ExecuteFromTop(request);
    case 4:
    case 6:
    case 14:
    case 40:
    case 41:
    case 42:
    case 50:
    case 51:
        return ExecuteOnCursor(request);
    case 10:
    case 11:
    case 13:
    case 15:
    case 16:
    case 17:
    case 18:
    case 61:
        return ExecuteOnSection(request);
    default:
        return ExecuteAnywhere(request);
    }
}

std::optional<std::string> ProfileModel::Saved() const
{
    if (lines.empty())
        return std::nullopt;
    std::string content;
    for (const ModelLine& line : lines)
        content += line.text + "\r\n";
    return content;
}

} // namespace fuzz
