// Owning types for what Windows hands out: moved, never copied, closed once.
#pragma once

#include <utility>
#include <windows.h>

// Owns one handle that `Close` gives back; a null handle owns nothing.
template <typename Handle, auto Close>
class UniqueHandle
{
  public:
    UniqueHandle() = default;
    // Takes the handle, or another owner's; assigning leaves the old one with the other owner.
    explicit UniqueHandle(Handle handle) : m_handle(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept
    {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~UniqueHandle()
    {
        if (m_handle != nullptr)
            Close(m_handle);
    }

    // Still owned, null when there is none.
    [[nodiscard]] Handle Get() const { return m_handle; }
    // Hands the handle to the caller, who closes it or keeps it for good.
    Handle Release() { return std::exchange(m_handle, nullptr); }
    explicit operator bool() const { return m_handle != nullptr; }

  private:
    Handle m_handle = nullptr;
};

// The address of an imported function is not known while compiling, so each kind has a closing function of
// its own.
inline void CloseLibrary(HMODULE library)
{
    FreeLibrary(library);
}
using UniqueLibrary = UniqueHandle<HMODULE, CloseLibrary>;
inline void CloseKey(HKEY key)
{
    RegCloseKey(key);
}
using UniqueKey = UniqueHandle<HKEY, CloseKey>;

// A file, a mutex, a snapshot of the processes.
inline void CloseObject(HANDLE object)
{
    CloseHandle(object);
}
using UniqueObject = UniqueHandle<HANDLE, CloseObject>;

// Owns what CreateFileA or CreateToolhelp32Snapshot returned; nothing when it failed, which these report by a
// handle that is not null.
[[nodiscard]] inline UniqueObject OwnUnlessInvalid(HANDLE object)
{
    return UniqueObject(object == INVALID_HANDLE_VALUE ? nullptr : object);
}

// The entry point of a library as a function of the given pointer type; null when it has none. `name` may be
// an ordinal made with MAKEINTRESOURCEA.
template <typename Function>
[[nodiscard]] Function EntryPoint(HMODULE library, const char* name)
{
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}
