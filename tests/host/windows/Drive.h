// The system's file calls as the stand-in makes them. A path that begins with "M:/" names a file of a drive
// in memory that has no directories: fuzzers use it, to which real files are too slow. All other paths go to
// the system.
#pragma once

#include "SystemMemory.h"

#include <sys/stat.h>
#include <sys/types.h>

namespace standin::drive {

// Each does what the system's call of that name does, and sets errno as it does.
[[nodiscard]] int Status(const SystemString& path, struct stat& status);
[[nodiscard]] int Open(const SystemString& path, int flags, mode_t mode);
int Status(int descriptor, struct stat& status);
[[nodiscard]] ssize_t Read(int descriptor, void* buffer, std::size_t size);
[[nodiscard]] ssize_t Write(int descriptor, const void* buffer, std::size_t size);
off_t Seek(int descriptor, off_t distance, int origin);
[[nodiscard]] int Truncate(int descriptor, off_t size);
void Close(int descriptor);
[[nodiscard]] int Unlink(const SystemString& path);
[[nodiscard]] int ChangeMode(const SystemString& path, mode_t mode);
[[nodiscard]] bool Exists(const SystemString& path);

} // namespace standin::drive
