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

// Imported functions are no constants, so each kind has a closing function of its own.
inline void CloseLibrary(HMODULE library)
{
    FreeLibrary(library);
}
using UniqueLibrary = UniqueHandle<HMODULE, CloseLibrary>;
inline void CloseFile(HANDLE file)
{
    CloseHandle(file);
}
using UniqueFile = UniqueHandle<HANDLE, CloseFile>;

// Owns what CreateFileA returned; nothing when it failed, which it reports by a handle that is not null.
[[nodiscard]] inline UniqueFile OwnFile(HANDLE file)
{
    return UniqueFile(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

// The entry point of a library as a function of the given pointer type; null when it has none. `name` may be
// an ordinal made with MAKEINTRESOURCEA.
template <typename Function>
[[nodiscard]] Function EntryPoint(HMODULE library, const char* name)
{
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}
