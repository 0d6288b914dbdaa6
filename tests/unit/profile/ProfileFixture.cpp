// See the header.
#include "ProfileFixture.h"

#include "support/TestDirectory.h"

#include <algorithm>
#include <windows.h>

namespace profile {
namespace {

std::vector<std::string> Texts(const ProfileLine* first)
{
    std::vector<std::string> texts;
    for (const ProfileLine* line = first; line != nullptr; line = line->next)
        texts.emplace_back(line->text);
    return texts;
}

} // namespace

std::string ScratchPath(const std::string& name)
{
    std::array<char, MAX_PATH> directory{};
    GetTempPathA(MAX_PATH, directory.data());
    return directory.data() + ("vtnmgmt-test-" + std::to_string(GetCurrentProcessId()) + "-") + name;
}

ScratchFile::ScratchFile(const std::string& name) : m_path(ScratchPath(name)) {}

ScratchFile::~ScratchFile()
{
    SetReadOnly(false);
    DeleteFileA(Path());
}

void ScratchFile::Write(const std::string& content) const
{
    support::WriteBytes(m_path, content);
}

std::optional<std::string> ScratchFile::Content() const
{
    return support::ReadBytes(m_path);
}

void ScratchFile::SetReadOnly(bool isReadOnly) const
{
    SetFileAttributesA(Path(), isReadOnly ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL);
}

bool ScratchFile::IsReadOnly() const
{
    return (GetFileAttributesA(Path()) & FILE_ATTRIBUTE_READONLY) != 0;
}

Request::Request(std::uint8_t flags)
{
    m_request.flags = flags;
    m_request.value = m_value.data();
}

Request::~Request()
{
    ProfileClose(m_request);
}

std::int16_t Request::Open(const char* path)
{
    return ProfileOpen(path, m_request);
}

void Request::Open(const ScratchFile& file, Location where)
{
    support::ExpectEqual(std::int16_t{PROF_OK}, Open(file.Path()), "status of the open", where);
}

std::int16_t Request::Execute(std::uint16_t operation, const std::string& key, const std::string& value)
{
    m_key = key;
    std::copy_n(value.c_str(), value.size() + 1, m_value.data());
    m_request.key = m_key.c_str();
    m_request.operation = operation;
    return ProfileExecute(m_request);
}

std::int16_t Request::ExecuteIn(const std::string& section, std::uint16_t operation, const std::string& key,
                                const std::string& value)
{
    m_section = section;
    m_request.section = m_section.c_str();
    return Execute(operation, key, value);
}

std::vector<std::string> Request::Lines() const
{
    return Texts(m_request.file->head->next);
}

std::optional<std::string> Request::Current() const
{
    return m_request.current == nullptr ? std::nullopt : std::optional<std::string>(m_request.current->text);
}

std::vector<std::string> Request::Clipboard() const
{
    return Texts(m_request.clipboard);
}

std::optional<std::string> Edited(std::uint8_t flags, const std::string& before,
                                  const std::vector<Edit>& edits, std::int16_t status, const Location& where)
{
    const ScratchFile file;
    file.Write(before);
    Request request(flags);
    request.Open(file, where);
    for (const Edit& edit : edits)
        support::ExpectEqual(status, request.ExecuteIn(edit.section, edit.operation, edit.key, edit.value),
                             "status of the operation", where);
    support::ExpectEqual(std::int16_t{PROF_OK}, request.Save(), "status of the save", where);
    return file.Content();
}

void ExpectEdit(std::uint8_t flags, const std::string& before, const Edit& edit, const std::string& after,
                std::int16_t status, const Location& where)
{
    support::ExpectEqual(std::optional(after), Edited(flags, before, {edit}, status, where), "file", where);
}

void ExpectSettledEdit(std::uint8_t flags, const std::string& before, const Edit& edit,
                       const std::string& after, const Location& where)
{
    ExpectEdit(flags, before, edit, after, PROF_OK, where);
    const auto twice = Edited(flags, after, {edit}, PROF_OK, where);
    support::ExpectEqual(std::optional(after), twice, "file after the second run", where);
}

void ExpectUndoneEdit(std::uint8_t flags, const std::string& before, const Edit& edit,
                      const std::string& after, const Edit& undo, const Location& where)
{
    ExpectEdit(flags, before, edit, after, PROF_OK, where);
    const auto undone = Edited(flags, after, {undo}, PROF_OK, where);
    support::ExpectEqual(std::optional(before), undone, "file after the undo", where);
}

} // namespace profile
