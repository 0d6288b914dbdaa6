// Registry keys as the programs and libraries of the made-up machine read and write them.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>
#include <windows.h>

namespace demo {

struct KeyCloser
{
    void operator()(HKEY key) const { RegCloseKey(key); }
};

// An open key below HKEY_LOCAL_MACHINE. Writes throw std::system_error when they fail; reads answer nothing
// for a value that is absent or of another type.
class Key
{
  public:
    // Opens the key for reading and writing, and makes it and its parents when they are missing.
    [[nodiscard]] static Key Create(const std::string& path);

    // Opens the key for reading; nothing when it cannot be opened.
    [[nodiscard]] static std::optional<Key> Open(const std::string& path);

    void SetDword(const char* name, DWORD value);
    void SetQword(const char* name, ULONGLONG value);
    void SetString(const char* name, const std::string& text);
    void SetExpandString(const char* name, const std::string& text);
    void SetStrings(const char* name, const std::vector<std::string>& texts);
    void SetBinary(const char* name, const std::string& bytes);

    [[nodiscard]] std::optional<DWORD> Dword(const char* name) const;
    [[nodiscard]] std::optional<ULONGLONG> Qword(const char* name) const;
    [[nodiscard]] std::optional<std::string> String(const char* name) const;

    // The handle stays the key's.
    [[nodiscard]] HKEY Get() const { return m_key.get(); }

  private:
    explicit Key(HKEY key) : m_key(key) {}
    void Set(const char* name, DWORD type, const void* data, size_t size);

    std::unique_ptr<std::remove_pointer_t<HKEY>, KeyCloser> m_key;
};

} // namespace demo
