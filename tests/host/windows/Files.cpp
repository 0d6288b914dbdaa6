// Files, with what Windows adds to those of the system: sharing between the handles of the process,
// the read-only attribute, and Windows' error codes. A file without any permission to write is a read-only
// one; who runs the program makes no difference.
#include "Drive.h"
#include "Import.h"
#include "Paths.h"

#include <algorithm>
#include <fcntl.h>
#include <io.h>
#include <list>
#include <sys/stat.h>
#include <unistd.h>
#include <windows.h>

namespace {

namespace drive = standin::drive;
using standin::ErrorOf;
using standin::NativePath;
using standin::SystemString;

constexpr mode_t anyWrite = S_IWUSR | S_IWGRP | S_IWOTH;

// One handle. Its address is the handle's value.
struct OpenFile
{
    int descriptor;
    dev_t device;
    ino_t inode;
    DWORD access;
    DWORD share;
};

std::list<OpenFile, standin::SystemMemory<OpenFile>> openFiles;

BOOL Fail(DWORD error)
{
    SetLastError(error);
    return FALSE;
}

HANDLE FailToOpen(DWORD error)
{
    SetLastError(error);
    return INVALID_HANDLE_VALUE;
}

DWORD SharingFor(DWORD access)
{
    return ((access & GENERIC_READ) != 0 ? FILE_SHARE_READ : 0) |
           ((access & GENERIC_WRITE) != 0 ? FILE_SHARE_WRITE : 0);
}

bool IsSameFile(const OpenFile& file, const struct stat& status)
{
    return file.device == status.st_dev && file.inode == status.st_ino;
}

// True when every open handle of the file lets others have the access, and has none that `share` rules out.
bool MayShare(const struct stat& status, DWORD access, DWORD share)
{
    return std::none_of(openFiles.begin(), openFiles.end(), [&](const OpenFile& file) {
        return IsSameFile(file, status) &&
               ((SharingFor(access) & ~file.share) != 0 || (SharingFor(file.access) & ~share) != 0);
    });
}

// What keeps an existing file from being opened; 0 when nothing does.
DWORD Refusal(const struct stat& status, DWORD access, DWORD share, DWORD disposition)
{
    if (disposition == CREATE_NEW)
        return ERROR_FILE_EXISTS;
    if (S_ISDIR(status.st_mode))
        return ERROR_ACCESS_DENIED;
    const bool writes = (access & GENERIC_WRITE) != 0 || disposition == CREATE_ALWAYS;
    if (writes && (status.st_mode & anyWrite) == 0)
        return ERROR_ACCESS_DENIED;
    return MayShare(status, access, share) ? ERROR_SUCCESS : ERROR_SHARING_VIOLATION;
}

int OpenFlags(DWORD access, DWORD disposition)
{
    const int create = disposition == OPEN_EXISTING || disposition == TRUNCATE_EXISTING ? 0 : O_CREAT;
    const int truncate = disposition == CREATE_ALWAYS || disposition == TRUNCATE_EXISTING ? O_TRUNC : 0;
    const bool writes = (access & GENERIC_WRITE) != 0 || truncate != 0;
    return create | truncate | O_CLOEXEC | (writes ? O_RDWR : O_RDONLY);
}

// Of a file that is new, with Windows' attributes.
mode_t ModeOf(DWORD attributes)
{
    return (attributes & FILE_ATTRIBUTE_READONLY) == 0 ? 0644 : 0444;
}

HANDLE Create(LPCSTR name, DWORD access, DWORD share, SECURITY_ATTRIBUTES* /*security*/, DWORD disposition,
              DWORD attributes, HANDLE /*pattern*/)
{
    const SystemString path = NativePath(name);
    if (path.empty())
        return FailToOpen(ERROR_PATH_NOT_FOUND);
    struct stat status
    {
    };
    const bool exists = drive::Status(path, status) == 0;
    const DWORD refusal = exists ? Refusal(status, access, share, disposition) : DWORD{ERROR_SUCCESS};
    if (refusal != ERROR_SUCCESS)
        return FailToOpen(refusal);
    const int descriptor = drive::Open(path, OpenFlags(access, disposition), ModeOf(attributes));
    if (descriptor < 0)
        return FailToOpen(ErrorOf(path));
    drive::Status(descriptor, status);
    openFiles.push_back({descriptor, status.st_dev, status.st_ino, access, share});
    const bool creates = disposition == CREATE_ALWAYS || disposition == OPEN_ALWAYS;
    SetLastError(exists && creates ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
    return &openFiles.back();
}

auto Find(HANDLE handle)
{
    return std::find_if(openFiles.begin(), openFiles.end(),
                        [&](const OpenFile& file) { return &file == handle; });
}

// The handle's file when it was opened with the access; else null, with the last error set.
OpenFile* Use(HANDLE handle, DWORD access)
{
    const auto file = Find(handle);
    if (file == openFiles.end()) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    if ((access & ~file->access) != 0) {
        SetLastError(ERROR_ACCESS_DENIED);
        return nullptr;
    }
    return &*file;
}

BOOL Read(HANDLE handle, LPVOID buffer, DWORD size, LPDWORD count, OVERLAPPED* /*overlapped*/)
{
    *count = 0;
    const OpenFile* const file = Use(handle, GENERIC_READ);
    if (file == nullptr)
        return FALSE;
    const ssize_t result = drive::Read(file->descriptor, buffer, size);
    if (result < 0)
        return Fail(ERROR_READ_FAULT);
    *count = static_cast<DWORD>(result);
    return TRUE;
}

BOOL Write(HANDLE handle, LPCVOID buffer, DWORD size, LPDWORD count, OVERLAPPED* /*overlapped*/)
{
    *count = 0;
    const OpenFile* const file = Use(handle, GENERIC_WRITE);
    if (file == nullptr)
        return FALSE;
    const ssize_t result = drive::Write(file->descriptor, buffer, size);
    if (result < 0)
        return Fail(errno == ENOSPC ? ERROR_DISK_FULL : ERROR_WRITE_FAULT);
    *count = static_cast<DWORD>(result);
    return TRUE;
}

DWORD Move(HANDLE handle, LONG distance, PLONG /*distanceHigh*/, DWORD origin)
{
    constexpr int origins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
    const OpenFile* const file = Use(handle, 0);
    if (file == nullptr)
        return INVALID_SET_FILE_POINTER;
    return static_cast<DWORD>(drive::Seek(file->descriptor, distance, origins[origin]));
}

BOOL Cut(HANDLE handle)
{
    const OpenFile* const file = Use(handle, GENERIC_WRITE);
    if (file == nullptr)
        return FALSE;
    const off_t position = drive::Seek(file->descriptor, 0, SEEK_CUR);
    return drive::Truncate(file->descriptor, position) == 0 ? TRUE : Fail(ERROR_WRITE_FAULT);
}

DWORD SizeOf(HANDLE handle, LPDWORD sizeHigh)
{
    const OpenFile* const file = Use(handle, 0);
    if (file == nullptr)
        return INVALID_FILE_SIZE;
    struct stat status
    {
    };
    drive::Status(file->descriptor, status);
    if (sizeHigh != nullptr)
        *sizeHigh = static_cast<DWORD>(status.st_size >> 32);
    return static_cast<DWORD>(status.st_size);
}

BOOL Close(HANDLE handle)
{
    const auto file = Find(handle);
    if (file == openFiles.end())
        return Fail(ERROR_INVALID_HANDLE);
    drive::Close(file->descriptor);
    openFiles.erase(file);
    return TRUE;
}

BOOL Delete(LPCSTR name)
{
    const SystemString path = NativePath(name);
    struct stat status
    {
    };
    if (drive::Status(path, status) != 0)
        return Fail(ErrorOf(path));
    const bool isHeld = std::any_of(openFiles.begin(), openFiles.end(), [&](const OpenFile& file) {
        return IsSameFile(file, status) && (file.share & FILE_SHARE_DELETE) == 0;
    });
    if (isHeld)
        return Fail(ERROR_SHARING_VIOLATION);
    if (S_ISDIR(status.st_mode) || (status.st_mode & anyWrite) == 0)
        return Fail(ERROR_ACCESS_DENIED);
    return drive::Unlink(path) == 0 ? TRUE : Fail(ErrorOf(path));
}

DWORD Attributes(LPCSTR name)
{
    const SystemString path = NativePath(name);
    struct stat status
    {
    };
    if (drive::Status(path, status) != 0) {
        SetLastError(ErrorOf(path));
        return INVALID_FILE_ATTRIBUTES;
    }
    const DWORD readOnly = (status.st_mode & anyWrite) == 0 ? FILE_ATTRIBUTE_READONLY : 0;
    const DWORD directory = S_ISDIR(status.st_mode) ? FILE_ATTRIBUTE_DIRECTORY : 0;
    return (readOnly | directory) == 0 ? FILE_ATTRIBUTE_NORMAL : readOnly | directory;
}

int SetWritable(const SystemString& path, bool isWritable)
{
    return drive::ChangeMode(path, ModeOf(isWritable ? FILE_ATTRIBUTE_NORMAL : FILE_ATTRIBUTE_READONLY));
}

BOOL SetAttributes(LPCSTR name, DWORD attributes)
{
    const SystemString path = NativePath(name);
    return SetWritable(path, (attributes & FILE_ATTRIBUTE_READONLY) == 0) == 0 ? TRUE : Fail(ErrorOf(path));
}

int Access(LPCSTR name, int mode)
{
    const DWORD attributes = Attributes(name);
    const bool isRefused = (mode & 2) != 0 && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    return attributes == INVALID_FILE_ATTRIBUTES || isRefused ? -1 : 0;
}

int ChangeMode(LPCSTR name, int mode)
{
    return SetWritable(NativePath(name), (mode & _S_IWRITE) != 0);
}

const standin::Import<decltype(CreateFileA)> createImport("CreateFileA", Create);
const standin::Import<decltype(ReadFile)> readImport("ReadFile", Read);
const standin::Import<decltype(WriteFile)> writeImport("WriteFile", Write);
const standin::Import<decltype(SetFilePointer)> moveImport("SetFilePointer", Move);
const standin::Import<decltype(SetEndOfFile)> cutImport("SetEndOfFile", Cut);
const standin::Import<decltype(GetFileSize)> sizeImport("GetFileSize", SizeOf);
const standin::Import<decltype(CloseHandle)> closeImport("CloseHandle", Close);
const standin::Import<decltype(DeleteFileA)> deleteImport("DeleteFileA", Delete);
const standin::Import<decltype(GetFileAttributesA)> attributesImport("GetFileAttributesA", Attributes);
const standin::Import<decltype(SetFileAttributesA)> setAttributesImport("SetFileAttributesA", SetAttributes);
const standin::Import<decltype(_access)> accessImport("_access", Access);
const standin::Import<decltype(_chmod)> changeModeImport("_chmod", ChangeMode);

} // namespace

HANDLE CreateFileA(LPCSTR path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD disposition,
                   DWORD attributes, HANDLE pattern)
{
    return createImport(path, access, share, security, disposition, attributes, pattern);
}

BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD count, OVERLAPPED* overlapped)
{
    return readImport(file, buffer, size, count, overlapped);
}

BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD size, LPDWORD count, OVERLAPPED* overlapped)
{
    return writeImport(file, buffer, size, count, overlapped);
}

DWORD SetFilePointer(HANDLE file, LONG distance, PLONG distanceHigh, DWORD origin)
{
    return moveImport(file, distance, distanceHigh, origin);
}

BOOL SetEndOfFile(HANDLE file)
{
    return cutImport(file);
}

DWORD GetFileSize(HANDLE file, LPDWORD sizeHigh)
{
    return sizeImport(file, sizeHigh);
}

BOOL CloseHandle(HANDLE handle)
{
    return closeImport(handle);
}

BOOL DeleteFileA(LPCSTR path)
{
    return deleteImport(path);
}

DWORD GetFileAttributesA(LPCSTR path)
{
    return attributesImport(path);
}

BOOL SetFileAttributesA(LPCSTR path, DWORD attributes)
{
    return setAttributesImport(path, attributes);
}

int _access(const char* path, int mode)
{
    return accessImport(path, mode);
}

int _chmod(const char* path, int mode)
{
    return changeModeImport(path, mode);
}

DWORD GetTempPathA(DWORD size, LPSTR path)
{
    const SystemString result = standin::TemporaryDirectory() + "/";
    if (result.size() < size)
        std::copy_n(result.c_str(), result.size() + 1, path);
    return static_cast<DWORD>(result.size());
}
