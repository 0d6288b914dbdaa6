// How Windows' paths and errors are expressed in those of the system that the stand-in runs on.
#pragma once

#include "Drive.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <windows.h>

namespace standin {

// Without a slash at its end.
inline SystemString TemporaryDirectory()
{
    const char* const directory = std::getenv("TMPDIR");
    return directory == nullptr ? "/tmp" : directory;
}

// The machines of the network are directories among the temporary ones.
inline SystemString NativePath(LPCSTR path)
{
    SystemString native = path;
    std::replace(native.begin(), native.end(), '\\', '/');
    return native.starts_with("//") ? TemporaryDirectory() + native.substr(1) : native;
}

// A missing file is one error, a missing directory on the way to it another.
inline DWORD MissingError(const SystemString& path)
{
    const SystemString directory = path.substr(0, path.find_last_of('/') + 1);
    return directory.empty() || drive::Exists(directory) ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
}

// Windows' error for what `errno` says of the path.
inline DWORD ErrorOf(const SystemString& path)
{
    switch (errno) {
    case ENOENT:
        return MissingError(path);
    case ENOTDIR:
        return ERROR_PATH_NOT_FOUND;
    case ENAMETOOLONG:
        return ERROR_FILENAME_EXCED_RANGE;
    case ENOSPC:
        return ERROR_DISK_FULL;
    case EEXIST:
        return ERROR_ALREADY_EXISTS;
    case ENOTEMPTY:
        return ERROR_DIR_NOT_EMPTY;
    default:
        return ERROR_ACCESS_DENIED;
    }
}

} // namespace standin
