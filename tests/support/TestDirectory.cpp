// See the header.
#include "support/TestDirectory.h"

#include <array>
#include <stdexcept>

namespace support {
namespace {

void Require(BOOL isDone, const std::string& what)
{
    if (!isDone)
        throw std::runtime_error(what + ": error " + std::to_string(GetLastError()));
}

// Of this process alone, and another one each time.
std::string NewName()
{
    static int count = 0;
    return "vtn" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++count);
}

std::string NewPath()
{
    std::array<char, MAX_PATH> temporary{};
    GetTempPathA(MAX_PATH, temporary.data());
    return temporary.data() + NewName();
}

void DeleteTree(const std::string& directory)
{
    WIN32_FIND_DATAA entry{};
    const HANDLE search = FindFirstFileA((directory + "\\*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return;
    do {
        const std::string name = &entry.cFileName[0];
        const std::string path = directory + "\\" + name;
        SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
            DeleteFileA(path.c_str());
        else if (name != "." && name != "..")
            DeleteTree(path);
    } while (FindNextFileA(search, &entry));
    FindClose(search);
    RemoveDirectoryA(directory.c_str());
}

std::optional<std::string> Variable(const std::string& name)
{
    std::array<char, MAX_PATH> value{};
    SetLastError(ERROR_SUCCESS);
    if (GetEnvironmentVariableA(name.c_str(), value.data(), MAX_PATH) == 0 &&
        GetLastError() == ERROR_ENVVAR_NOT_FOUND)
        return std::nullopt;
    return value.data();
}

// The directory in which each machine of the network is a directory, where there is one: Wine has it below
// its prefix, native builds have their stand-in's.
std::optional<std::string> NetworkRoot()
{
    if (const std::optional<std::string> standIn = Variable("VTN_NETWORK"))
        return standIn;
    constexpr std::size_t nativePrefix = 4; // "\??\"
    const std::string prefix = Variable("WINECONFIGDIR").value_or("");
    if (prefix.size() <= nativePrefix)
        return std::nullopt;
    return prefix.substr(nativePrefix) + "\\dosdevices\\unc";
}

// The network path of a local one, through the share that administrators have of each drive.
std::string AdministrativePath(const std::string& path)
{
    return "\\\\localhost\\" + path.substr(0, 1) + "$" + path.substr(2);
}

} // namespace

std::optional<std::string> ReadBytes(const std::string& path)
{
    const HANDLE file =
        CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return std::nullopt;
    std::string bytes(GetFileSize(file, nullptr), '\0');
    DWORD count = 0;
    const BOOL isRead = ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
    CloseHandle(file);
    Require(isRead && count == bytes.size(), "reading " + path);
    return bytes;
}

void WriteBytes(const std::string& path, const std::string& bytes)
{
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    Require(file != INVALID_HANDLE_VALUE, "making " + path);
    DWORD count = 0;
    const BOOL isWritten = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
    CloseHandle(file);
    Require(isWritten && count == bytes.size(), "writing " + path);
}

bool FileExists(const std::string& path)
{
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

TestDirectory::TestDirectory() : m_path(NewPath())
{
    DeleteTree(m_path);
    Require(CreateDirectoryA(m_path.c_str(), nullptr), "making " + m_path);
}

TestDirectory::~TestDirectory()
{
    DeleteTree(m_path);
}

NetworkDirectory::NetworkDirectory(const std::string& share)
{
    if (const std::optional<std::string> root = NetworkRoot()) {
        const std::string machine = NewName();
        m_machine = *root + "\\" + machine;
        m_path = "\\\\" + machine + "\\" + share;
        CreateDirectoryA(root->c_str(), nullptr); // it may be there
    } else {
        m_machine = NewPath();
        m_path = AdministrativePath(m_machine) + "\\" + share;
    }
    DeleteTree(m_machine);
    Require(CreateDirectoryA(m_machine.c_str(), nullptr), "making " + m_machine);
    Require(CreateDirectoryA((m_machine + "\\" + share).c_str(), nullptr), "making " + m_path);
}

NetworkDirectory::~NetworkDirectory()
{
    DeleteTree(m_machine);
}

SavedVariable::SavedVariable(const std::string& name, const std::string& value)
    : m_name(name), m_saved(Variable(name))
{
    SetEnvironmentVariableA(name.c_str(), value.c_str());
}

SavedVariable::~SavedVariable()
{
    SetEnvironmentVariableA(m_name.c_str(), m_saved ? m_saved->c_str() : nullptr);
}

} // namespace support
