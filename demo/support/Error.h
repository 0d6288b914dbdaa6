// How the stand-ins deal with Win32 codes: inside they throw, and at a library's border they are codes again.
#pragma once

#include <string>
#include <system_error>
#include <windows.h>

namespace demo {

// Throws std::system_error, whose text begins with `action`, unless `error` is 0 (ERROR_SUCCESS).
inline void Require(LSTATUS error, const std::string& action)
{
    if (error != ERROR_SUCCESS)
        throw std::system_error(error, std::system_category(), action);
}

// The same for the calls that answer TRUE or FALSE and keep the code as the thread's last error.
inline void RequireCall(bool succeeded, const std::string& action)
{
    if (!succeeded)
        Require(static_cast<LSTATUS>(GetLastError()), action);
}

// What `action` returns, a Win32 code, or the code that it threw: exceptions end at a library's border.
template <typename Action>
DWORD CodeOf(Action action) noexcept
{
    try {
        return action();
    } catch (const std::system_error& error) {
        return static_cast<DWORD>(error.code().value());
    } catch (...) {
        return ERROR_OUTOFMEMORY;
    }
}

} // namespace demo
