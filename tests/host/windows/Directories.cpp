// Directories, searches through them, and copies of files.
#include "Import.h"
#include "Paths.h"

#include <array>
#include <cstring>
#include <dirent.h>
#include <list>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using standin::ErrorOf;
using standin::NativePath;
using standin::SystemString;
using standin::Unhooked;

// One search for everything in a directory. Its address is the handle's value.
struct Search
{
    DIR* entries;
    SystemString directory;
};

std::list<Search, standin::SystemMemory<Search>> searches;

BOOL Fail(DWORD error)
{
    SetLastError(error);
    return FALSE;
}

BOOL Create(LPCSTR name, LPSECURITY_ATTRIBUTES /*security*/)
{
    const SystemString path = NativePath(name);
    if (mkdir(path.c_str(), 0755) == 0)
        return TRUE;
    return Fail(errno == ENOENT ? ERROR_PATH_NOT_FOUND : ErrorOf(path));
}

// A file that the system itself has open, whatever hooks there are.
class SystemFile
{
  public:
    SystemFile(LPCSTR path, DWORD access, DWORD share, DWORD disposition)
        : m_handle(Unhooked<decltype(CreateFileA)>("CreateFileA")(path, access, share, nullptr, disposition,
                                                                  FILE_ATTRIBUTE_NORMAL, nullptr))
    {
    }
    ~SystemFile()
    {
        if (IsOpen())
            Unhooked<decltype(CloseHandle)>("CloseHandle")(m_handle);
    }
    SystemFile(const SystemFile&) = delete;
    SystemFile& operator=(const SystemFile&) = delete;

    [[nodiscard]] bool IsOpen() const { return m_handle != INVALID_HANDLE_VALUE; }

    BOOL Read(LPVOID buffer, DWORD size, DWORD& count) const
    {
        return Unhooked<decltype(ReadFile)>("ReadFile")(m_handle, buffer, size, &count, nullptr);
    }
    BOOL Write(LPCVOID buffer, DWORD size) const
    {
        DWORD count = 0;
        return Unhooked<decltype(WriteFile)>("WriteFile")(m_handle, buffer, size, &count, nullptr);
    }

  private:
    HANDLE m_handle;
};

BOOL CopyBytes(const SystemFile& from, const SystemFile& to)
{
    std::array<char, 4096> block{};
    DWORD count = 0;
    do {
        if (!from.Read(block.data(), block.size(), count) || !to.Write(block.data(), count))
            return FALSE;
    } while (count != 0);
    return TRUE;
}

BOOL Copy(LPCSTR from, LPCSTR to, BOOL failIfExists)
{
    const SystemFile source(from, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
    if (!source.IsOpen())
        return FALSE;
    const SystemFile target(to, GENERIC_WRITE, 0, failIfExists ? CREATE_NEW : CREATE_ALWAYS);
    return target.IsOpen() ? CopyBytes(source, target) : FALSE;
}

const standin::Import<decltype(CreateDirectoryA)> createImport("CreateDirectoryA", Create);
const standin::Import<decltype(CopyFileA)> copyImport("CopyFileA", Copy);

} // namespace

BOOL CreateDirectoryA(LPCSTR path, LPSECURITY_ATTRIBUTES security)
{
    return createImport(path, security);
}

BOOL RemoveDirectoryA(LPCSTR name)
{
    const SystemString path = NativePath(name);
    return rmdir(path.c_str()) == 0 ? TRUE : Fail(ErrorOf(path));
}

BOOL CopyFileA(LPCSTR from, LPCSTR to, BOOL failIfExists)
{
    return copyImport(from, to, failIfExists);
}

// Of patterns, only all files of a directory.
HANDLE FindFirstFileA(LPCSTR pattern, LPWIN32_FIND_DATAA found)
{
    const SystemString path = NativePath(pattern);
    const SystemString directory = path.substr(0, path.find_last_of('/') + 1);
    DIR* const entries = path.ends_with("/*") ? opendir(directory.c_str()) : nullptr;
    if (entries == nullptr) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    searches.push_back({entries, directory});
    FindNextFileA(&searches.back(), found); // there is always the directory itself
    return &searches.back();
}

BOOL FindNextFileA(HANDLE handle, LPWIN32_FIND_DATAA found)
{
    auto* const search = static_cast<Search*>(handle);
    const dirent* const entry = readdir(search->entries);
    if (entry == nullptr)
        return Fail(ERROR_NO_MORE_FILES);
    const std::size_t size = std::min(std::strlen(&entry->d_name[0]) + 1, sizeof found->cFileName);
    std::copy_n(&entry->d_name[0], size, &found->cFileName[0]);
    found->dwFileAttributes = Unhooked<decltype(GetFileAttributesA)>("GetFileAttributesA")(
        (search->directory + &entry->d_name[0]).c_str());
    return TRUE;
}

BOOL FindClose(HANDLE handle)
{
    closedir(static_cast<Search*>(handle)->entries);
    searches.remove_if([&](const Search& search) { return &search == handle; });
    return TRUE;
}
