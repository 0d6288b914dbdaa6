// Profiles: the settings of programs in files of sections, keys and values.
#include "Import.h"
#include "Paths.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <strings.h>
#include <vector>

namespace {

using standin::NativePath;
using standin::SystemString;

using Lines = std::vector<SystemString, standin::SystemMemory<SystemString>>;

constexpr char blanks[] = " \t\r\n";

SystemString Trimmed(const SystemString& text)
{
    const std::size_t begin = text.find_first_not_of(&blanks[0]);
    return begin == SystemString::npos ? ""
                                       : text.substr(begin, text.find_last_not_of(&blanks[0]) + 1 - begin);
}

bool AreEqual(const SystemString& left, LPCSTR right)
{
    return strcasecmp(left.c_str(), right) == 0;
}

bool IsHeader(const SystemString& line)
{
    return Trimmed(line).starts_with("[");
}

Lines ReadLines(LPCSTR path)
{
    std::ifstream file(NativePath(path).c_str(), std::ios::binary);
    const SystemString content{std::istreambuf_iterator<char>(file), {}};
    Lines lines;
    for (std::size_t place = 0; place < content.size();) {
        const std::size_t end = std::min(content.find('\n', place), content.size());
        lines.push_back(content.substr(place, end - place));
        place = end + 1;
        if (lines.back().ends_with("\r"))
            lines.back().pop_back();
    }
    return lines;
}

BOOL WriteLines(LPCSTR name, const Lines& lines)
{
    const SystemString path = NativePath(name);
    std::ofstream file(path.c_str(), std::ios::binary);
    for (const SystemString& line : lines)
        file << line << "\r\n";
    file.close();
    if (file)
        return TRUE;
    SetLastError(standin::ErrorOf(path));
    return FALSE;
}

bool IsHeaderOf(const SystemString& line, LPCSTR section)
{
    const SystemString text = Trimmed(line);
    return IsHeader(text) && AreEqual(Trimmed(text.substr(1, text.find(']') - 1)), section);
}

Lines::iterator FindHeader(Lines& lines, LPCSTR section)
{
    return std::find_if(lines.begin(), lines.end(),
                        [&](const SystemString& line) { return IsHeaderOf(line, section); });
}

// The line with the key in the section whose header this is; else the next header.
Lines::iterator FindKey(Lines& lines, Lines::iterator header, LPCSTR key)
{
    return std::find_if(header + 1, lines.end(), [&](const SystemString& line) {
        return IsHeader(line) || AreEqual(Trimmed(line.substr(0, line.find('='))), key);
    });
}

BOOL Write(LPCSTR section, LPCSTR key, LPCSTR value, LPCSTR path)
{
    Lines lines = ReadLines(path);
    auto header = FindHeader(lines, section);
    if (header == lines.end() && value == nullptr)
        return TRUE;
    if (header == lines.end())
        header = lines.insert(header, "[" + SystemString(section) + "]");
    auto line = FindKey(lines, header, key);
    if (line != lines.end() && !IsHeader(*line))
        line = lines.erase(line);
    if (value != nullptr)
        lines.insert(line, SystemString(key) + "=" + value);
    return WriteLines(path, lines);
}

SystemString Read(LPCSTR section, LPCSTR key, LPCSTR fallback, LPCSTR path)
{
    Lines lines = ReadLines(path);
    const auto header = FindHeader(lines, section);
    const auto line = header == lines.end() ? header : FindKey(lines, header, key);
    return line == lines.end() || IsHeader(*line) ? fallback : Trimmed(line->substr(line->find('=') + 1));
}

const standin::Import<decltype(WritePrivateProfileStringA)> writeImport("WritePrivateProfileStringA", Write);

} // namespace

BOOL WritePrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR value, LPCSTR path)
{
    return writeImport(section, key, value, path);
}

DWORD GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR value, DWORD size,
                               LPCSTR path)
{
    const SystemString found = Read(section, key, fallback, path);
    const std::size_t length = std::min<std::size_t>(found.size(), size - 1);
    std::copy_n(found.c_str(), length, value);
    value[length] = '\0';
    return static_cast<DWORD>(length);
}

UINT GetPrivateProfileIntA(LPCSTR section, LPCSTR key, int fallback, LPCSTR path)
{
    char value[16];
    const DWORD length = GetPrivateProfileStringA(section, key, "", &value[0], sizeof value, path);
    return static_cast<UINT>(length == 0 ? fallback : std::atoi(&value[0]));
}
