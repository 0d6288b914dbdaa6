// libFuzzer's entry for the registry accessor: a stored value of any type, size and content, with or without
// its zeros, is read within its size, and as what it is.
#include "sysaccess/core/RegistryKey.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr char keyPath[] = "SOFTWARE\\fuzz";
constexpr DWORD untouched = 0xDEADBEEF;

using Texts = std::vector<std::string>;

void Require(bool isSo, const char* what)
{
    if (isSo)
        return;
    std::fprintf(stderr, "wrong: %s\n", what);
    std::abort();
}

void Store(DWORD type, const std::string& bytes)
{
    HKEY key = nullptr;
    RegCreateKeyA(HKEY_LOCAL_MACHINE, &keyPath[0], &key);
    RegSetValueExA(key, "Value", 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                   static_cast<DWORD>(bytes.size()));
    RegCloseKey(key);
}

Texts TextsUpToTheFirstEmptyOne(const std::string& bytes)
{
    Texts texts;
    for (std::size_t place = 0; place < bytes.size() && bytes[place] != '\0';
         place += texts.back().size() + 1)
        texts.emplace_back(bytes.substr(place).c_str());
    return texts;
}

void CheckTexts(CRegistryKey& key, DWORD type, const std::string& bytes)
{
    Texts texts = {"old"};
    const DWORD multi = key.GetMultiString("Value", texts);
    Require(multi == (type == REG_MULTI_SZ ? ERROR_SUCCESS : ERROR_INVALID_DATA), "status of the strings");
    Require(texts == (type == REG_MULTI_SZ ? TextsUpToTheFirstEmptyOne(bytes) : Texts{"old"}), "strings");
    std::string text = "old";
    const DWORD single = key.GetString("Value", text, REG_SZ, 0);
    Require(single == (type == REG_SZ ? ERROR_SUCCESS : ERROR_INVALID_DATA), "status of the string");
    Require(text == (type == REG_SZ ? bytes.c_str() : ""), "string");
}

void CheckNumber(CRegistryKey& key, DWORD type, const std::string& bytes)
{
    DWORD number = untouched;
    Require(key.GetDword("Value", number) == (type == REG_DWORD ? ERROR_SUCCESS : ERROR_INVALID_DATA),
            "status of the number");
    DWORD expected = untouched;
    if (type == REG_DWORD && bytes.size() == sizeof expected)
        std::memcpy(&expected, bytes.data(), sizeof expected);
    Require(number == expected, "number");
}

void CheckBytes(CRegistryKey& key, DWORD type, const std::string& bytes)
{
    RegistryData data;
    DWORD size = 0;
    Require(key.GetBinary("Value", data, size) == (type == REG_BINARY ? ERROR_SUCCESS : ERROR_INVALID_DATA),
            "status of the bytes");
    if (type == REG_BINARY)
        Require(size == bytes.size() &&
                    std::equal(bytes.begin(), bytes.end(), reinterpret_cast<char*>(data.get())),
                "bytes");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const DWORD type = data[0] % 9;
    const std::string bytes(reinterpret_cast<const char*>(data + 1), size - 1);
    Store(type, bytes);
    CRegistryKey key(HKEY_LOCAL_MACHINE, &keyPath[0]);
    CheckTexts(key, type, bytes);
    CheckNumber(key, type, bytes);
    CheckBytes(key, type, bytes);
    return 0;
}
