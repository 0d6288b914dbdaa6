// Makes one allocation or one call of Windows fail while the profile engine works, whichever comes at a given
// place. For sweeps over every place, which call this until nothing is left to fail.
#pragma once

#include "imports/ImportHook.h"
#include "ProfileFixture.h"
#include "support/ThisProgram.h"

#include <io.h>
#include <windows.h>

namespace profile {

// The error that failed calls report: one that nothing else causes.
inline constexpr DWORD injectedError = 1117;

using support::thisProgram;

// Which calls fail: one, or that one and all behind it, as when the process ends there.
enum class Failing
{
    Once,
    FromThenOn,
};

// Counts calls down to the one that fails.
class FailurePoint
{
  public:
    // Places count from 1.
    explicit FailurePoint(int place, Failing failing = Failing::Once) : m_remaining(place), m_failing(failing)
    {
    }

    // Whether it is the turn of this call; then the last error is set.
    bool Fails(const char* call)
    {
        --m_remaining;
        if (m_remaining > 0 || (m_remaining < 0 && m_failing == Failing::Once))
            return false;
        if (m_failed == nullptr)
            m_failed = call;
        SetLastError(injectedError);
        return true;
    }

    [[nodiscard]] bool HasFailed() const { return m_failed != nullptr; }
    [[nodiscard]] std::string Failed() const { return m_failed == nullptr ? "(none)" : m_failed; }

  private:
    int m_remaining;
    Failing m_failing;
    const char* m_failed = nullptr;
};

// A hook of one function that answers `failure` when its turn has come. A macro, since each hook needs a
// lambda expression of its own.
#define FAIL_AT(point, function, type, failure)                                                              \
    support::HookImport<type>(thisProgram, #function, [&point](auto original, auto... arguments) {           \
        return point.Fails(#function) ? decltype(original(arguments...))(failure) : original(arguments...);  \
    })

// What is called while things fail; it must not allocate for itself.
using Call = std::int16_t (*)(Request&, const char* path);

// Performs the call while allocations fail at their point. The functions' declarations differ between C
// libraries in what they say of exceptions.
inline std::int16_t WithFailingMemory(FailurePoint& point, Request& request, const char* path, Call call)
{
    auto allocate = FAIL_AT(point, malloc, void*(std::size_t), nullptr);
    auto grow = FAIL_AT(point, realloc, void*(void*, std::size_t), nullptr);
    auto duplicate = FAIL_AT(point, _strdup, char*(const char*), nullptr);
    return call(request, path);
}

// True for a file that Windows does not let anybody write; elsewhere an administrator may.
inline bool IsLocked(const char* path, DWORD access)
{
    const DWORD attributes = GetFileAttributesA(path);
    return (access & GENERIC_WRITE) != 0 && attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

// Performs the call while the calls of Windows fail at their point. A handle is closed even when the close
// fails.
inline std::int16_t WithFailingSystem(FailurePoint& point, Request& request, const char* path, Call call)
{
    auto create = support::HookImport<decltype(CreateFileA)>(
        thisProgram, "CreateFileA", [&point](auto original, LPCSTR name, DWORD access, auto... rest) {
            if (point.Fails("CreateFileA"))
                return INVALID_HANDLE_VALUE;
            if (!IsLocked(name, access))
                return original(name, access, rest...);
            SetLastError(ERROR_ACCESS_DENIED);
            return INVALID_HANDLE_VALUE;
        });
    auto read = FAIL_AT(point, ReadFile, decltype(ReadFile), FALSE);
    auto write = FAIL_AT(point, WriteFile, decltype(WriteFile), FALSE);
    auto move = FAIL_AT(point, SetFilePointer, decltype(SetFilePointer), INVALID_SET_FILE_POINTER);
    auto cut = FAIL_AT(point, SetEndOfFile, decltype(SetEndOfFile), FALSE);
    auto size = FAIL_AT(point, GetFileSize, decltype(GetFileSize), INVALID_FILE_SIZE);
    auto remove = FAIL_AT(point, DeleteFileA, decltype(DeleteFileA), FALSE);
    auto access = FAIL_AT(point, _access, decltype(_access), -1);
    auto mode = FAIL_AT(point, _chmod, decltype(_chmod), -1);
    auto close = support::HookImport<decltype(CloseHandle)>(
        thisProgram, "CloseHandle", [&point](auto original, HANDLE file) {
            const BOOL isClosed = original(file);
            return point.Fails("CloseHandle") ? FALSE : isClosed;
        });
    return call(request, path);
}

// Saves as ProfileSave does, for tables of operations on a file.
inline std::int16_t SaveIt(Request& request, const char* /*path*/)
{
    return ProfileSave(request.Block());
}

} // namespace profile
