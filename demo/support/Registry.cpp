// Registry keys of the made-up machine, over the 8-bit functions.
#include "Registry.h"

#include "Error.h"

namespace demo {

namespace {

template <typename Number>
std::optional<Number> ReadNumber(HKEY key, const char* name, DWORD type)
{
    Number value = 0;
    DWORD size = sizeof value;
    if (RegGetValueA(key, nullptr, name, type, nullptr, &value, &size) != ERROR_SUCCESS)
        return std::nullopt;
    return value;
}

} // namespace

Key Key::Create(const std::string& path)
{
    HKEY key = nullptr;
    Require(RegCreateKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr,
                            &key, nullptr),
            "creating the key " + path);
    return Key(key);
}

std::optional<Key> Key::Open(const std::string& path)
{
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
        return std::nullopt;
    return Key(key);
}

void Key::SetDword(const char* name, DWORD value)
{
    Set(name, REG_DWORD, &value, sizeof value);
}

void Key::SetQword(const char* name, ULONGLONG value)
{
    Set(name, REG_QWORD, &value, sizeof value);
}

void Key::SetString(const char* name, const std::string& text)
{
    Set(name, REG_SZ, text.c_str(), text.size() + 1);
}

void Key::SetExpandString(const char* name, const std::string& text)
{
    Set(name, REG_EXPAND_SZ, text.c_str(), text.size() + 1);
}

void Key::SetStrings(const char* name, const std::vector<std::string>& texts)
{
    std::string all;
    for (const auto& text : texts)
        all.append(text.c_str(), text.size() + 1);
    Set(name, REG_MULTI_SZ, all.c_str(), all.size() + 1);
}

void Key::SetBinary(const char* name, const std::string& bytes)
{
    Set(name, REG_BINARY, bytes.data(), bytes.size());
}

std::optional<DWORD> Key::Dword(const char* name) const
{
    return ReadNumber<DWORD>(Get(), name, RRF_RT_REG_DWORD);
}

std::optional<ULONGLONG> Key::Qword(const char* name) const
{
    return ReadNumber<ULONGLONG>(Get(), name, RRF_RT_REG_QWORD);
}

std::optional<std::string> Key::String(const char* name) const
{
    DWORD size = 0;
    if (RegGetValueA(Get(), nullptr, name, RRF_RT_REG_SZ, nullptr, nullptr, &size) != ERROR_SUCCESS)
        return std::nullopt;
    std::string text(size, '\0');
    if (RegGetValueA(Get(), nullptr, name, RRF_RT_REG_SZ, nullptr, text.data(), &size) != ERROR_SUCCESS)
        return std::nullopt;
    text.resize(text.find('\0'));
    return text;
}

void Key::Set(const char* name, DWORD type, const void* data, size_t size)
{
    Require(RegSetValueExA(Get(), name, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size)),
            std::string("writing the value ") + name);
}

} // namespace demo
