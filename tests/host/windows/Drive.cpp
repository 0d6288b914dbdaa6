// See the header.
#include "Drive.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <map>
#include <memory>
#include <unistd.h>
#include <utility>
#include <vector>

namespace standin::drive {
namespace {

struct MemoryFile
{
    mode_t mode;
    std::vector<char, SystemMemory<char>> bytes;
};
using FilePointer = std::shared_ptr<MemoryFile>;

struct Descriptor
{
    FilePointer file; // null when it is free
    std::size_t position = 0;
};

constexpr char root[] = "M:/";
constexpr dev_t memoryDevice = 0x4D;

// Descriptors of files in memory start here, far above the system's.
constexpr int firstDescriptor = 1 << 24;

std::map<SystemString, FilePointer, std::less<>, SystemMemory<std::pair<const SystemString, FilePointer>>>
    files;
std::vector<Descriptor, SystemMemory<Descriptor>> descriptors;

bool IsInMemory(const SystemString& path)
{
    return path.starts_with(&root[0]);
}

bool IsInMemory(int descriptor)
{
    return descriptor >= firstDescriptor;
}

Descriptor& Of(int descriptor)
{
    return descriptors[static_cast<std::size_t>(descriptor - firstDescriptor)];
}

int Fail(int error)
{
    errno = error;
    return -1;
}

FilePointer Find(const SystemString& path)
{
    const auto found = files.find(path);
    return found == files.end() ? nullptr : found->second;
}

int Show(const MemoryFile& file, struct stat& status)
{
    status = {};
    status.st_dev = memoryDevice;
    status.st_ino = reinterpret_cast<ino_t>(&file);
    status.st_mode = S_IFREG | file.mode;
    status.st_size = static_cast<off_t>(file.bytes.size());
    return 0;
}

int NewDescriptor(FilePointer file)
{
    auto place = std::find_if(descriptors.begin(), descriptors.end(),
                              [](const Descriptor& descriptor) { return descriptor.file == nullptr; });
    if (place == descriptors.end())
        place = descriptors.insert(place, Descriptor());
    *place = {std::move(file), 0};
    return firstDescriptor + static_cast<int>(place - descriptors.begin());
}

int OpenInMemory(const SystemString& path, int flags, mode_t mode)
{
    const bool isBelowNothing = path.find('/', sizeof root - 1) != SystemString::npos;
    FilePointer file = Find(path);
    if (file == nullptr && ((flags & O_CREAT) == 0 || isBelowNothing))
        return Fail(ENOENT);
    if (file == nullptr)
        files[path] = file =
            std::allocate_shared<MemoryFile>(SystemMemory<MemoryFile>(), MemoryFile{mode, {}});
    if ((flags & O_TRUNC) != 0)
        file->bytes.clear();
    return NewDescriptor(std::move(file));
}

} // namespace

int Status(const SystemString& path, struct stat& status)
{
    if (!IsInMemory(path))
        return stat(path.c_str(), &status);
    const FilePointer file = Find(path);
    return file == nullptr ? Fail(ENOENT) : Show(*file, status);
}

int Open(const SystemString& path, int flags, mode_t mode)
{
    return IsInMemory(path) ? OpenInMemory(path, flags, mode) : open(path.c_str(), flags, mode);
}

int Status(int descriptor, struct stat& status)
{
    return IsInMemory(descriptor) ? Show(*Of(descriptor).file, status) : fstat(descriptor, &status);
}

ssize_t Read(int descriptor, void* buffer, std::size_t size)
{
    if (!IsInMemory(descriptor))
        return read(descriptor, buffer, size);
    auto& [file, position] = Of(descriptor);
    const std::size_t begin = std::min(position, file->bytes.size());
    const std::size_t count = std::min(size, file->bytes.size() - begin);
    std::copy_n(file->bytes.data() + begin, count, static_cast<char*>(buffer));
    position += count;
    return static_cast<ssize_t>(count);
}

ssize_t Write(int descriptor, const void* buffer, std::size_t size)
{
    if (!IsInMemory(descriptor))
        return write(descriptor, buffer, size);
    auto& [file, position] = Of(descriptor);
    file->bytes.resize(std::max(file->bytes.size(), position + size));
    std::copy_n(static_cast<const char*>(buffer), size, file->bytes.data() + position);
    position += size;
    return static_cast<ssize_t>(size);
}

off_t Seek(int descriptor, off_t distance, int origin)
{
    if (!IsInMemory(descriptor))
        return lseek(descriptor, distance, origin);
    auto& [file, position] = Of(descriptor);
    const std::size_t base = origin == SEEK_SET ? 0 : origin == SEEK_CUR ? position : file->bytes.size();
    position = base + static_cast<std::size_t>(distance);
    return static_cast<off_t>(position);
}

int Truncate(int descriptor, off_t size)
{
    if (!IsInMemory(descriptor))
        return ftruncate(descriptor, size);
    Of(descriptor).file->bytes.resize(static_cast<std::size_t>(size));
    return 0;
}

void Close(int descriptor)
{
    if (IsInMemory(descriptor))
        Of(descriptor) = {};
    else
        close(descriptor);
}

int Unlink(const SystemString& path)
{
    if (!IsInMemory(path))
        return unlink(path.c_str());
    return files.erase(path) == 0 ? Fail(ENOENT) : 0;
}

int ChangeMode(const SystemString& path, mode_t mode)
{
    if (!IsInMemory(path))
        return chmod(path.c_str(), mode);
    const FilePointer file = Find(path);
    if (file == nullptr)
        return Fail(ENOENT);
    file->mode = mode;
    return 0;
}

bool Exists(const SystemString& path)
{
    return IsInMemory(path) ? path == &root[0] || Find(path) != nullptr : access(path.c_str(), F_OK) == 0;
}

} // namespace standin::drive
