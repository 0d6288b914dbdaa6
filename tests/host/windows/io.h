// Stands in for the C runtime's file calls that Windows adds.
#pragma once

extern "C" {
// 0 when the file exists (mode 0) or may also be written (mode 2), else -1.
int _access(const char* path, int mode);
// Makes the file writable or read-only; -1 when there is none.
int _chmod(const char* path, int mode);
}
