// The registry accessor; see the header for what each operation promises.
#include "sysaccess/core/RegistryKey.h"

#include "sysaccess/core/Environment.h"
#include "sysaccess/core/Handles.h"

#include <algorithm>
#include <array>
#include <new>
#include <utility>

namespace {

// Room for the longest name that an enumeration returns, with its terminating zero, in bytes.
constexpr DWORD subkeyNameSize = 261;

void RefuseUnlessSuccess(LSTATUS status)
{
    if (status != ERROR_SUCCESS)
        throw configurationRefused;
}

const char* TextOf(const RegistryData& data)
{
    return reinterpret_cast<const char*>(data.get());
}

bool IsText(DWORD type)
{
    return type == REG_SZ || type == REG_EXPAND_SZ;
}

// Splits at the zeros, up to the first empty string. `data` is followed by a zero, so a block that lacks its
// end is read within its size.
std::vector<std::string> SplitMultiString(const RegistryData& data, DWORD size)
{
    std::vector<std::string> texts;
    const char* const end = TextOf(data) + size;
    for (const char* text = TextOf(data); text < end && *text != '\0'; text += texts.back().size() + 1)
        texts.emplace_back(text);
    return texts;
}

// Takes the list out of what a query found.
DWORD TakeMultiString(DWORD found, DWORD type, const RegistryData& data, DWORD size,
                      std::vector<std::string>& texts)
{
    if (found == ERROR_FILE_NOT_FOUND) {
        texts.clear();
        return ERROR_FILE_NOT_FOUND;
    }
    if (found != ERROR_SUCCESS || type != REG_MULTI_SZ)
        return ERROR_INVALID_DATA;
    texts = data == nullptr ? std::vector<std::string>() : SplitMultiString(data, size);
    return ERROR_SUCCESS;
}

std::string JoinMultiString(const std::vector<std::string>& texts)
{
    std::string block;
    for (const std::string& text : texts)
        block.append(text.c_str(), text.size() + 1);
    if (!texts.empty())
        block.push_back('\0');
    return block;
}

} // namespace

CRegistryKey::CRegistryKey(HKEY /*root*/, const char* subkey, const char* machine)
    : m_subkey(subkey), m_machine(machine)
{
}

void CRegistryKey::Open()
{
    HKEY base = m_root;
    if (!m_machine.empty()) {
        RefuseUnlessSuccess(RegConnectRegistryA(m_machine.c_str(), m_root, &m_remoteRoot));
        base = m_remoteRoot;
    }
    RefuseUnlessSuccess(RegOpenKeyA(base, m_subkey.c_str(), &m_key));
}

void CRegistryKey::Close()
{
    RefuseUnlessSuccess(RegCloseKey(m_key));
    if (m_remoteRoot != nullptr)
        RefuseUnlessSuccess(RegCloseKey(m_remoteRoot));
}

DWORD CRegistryKey::QueryValue(const char* valueName, DWORD& type, RegistryData& data, DWORD& size)
{
    Open();
    data.reset();
    size = 0;
    const LSTATUS found = RegQueryValueExA(m_key, valueName, nullptr, &type, nullptr, &size);
    if (found == ERROR_FILE_NOT_FOUND) {
        Close();
        return ERROR_FILE_NOT_FOUND;
    }
    // From here on a refusal leaves the key open and the data unfreed, on purpose: after it the user gets a
    // message and the sheet ends, and no caller may count on anything of this operation.
    if (found != ERROR_MORE_DATA)
        RefuseUnlessSuccess(found);
    if (size == 0) {
        Close();
        return static_cast<DWORD>(found);
    }
    if (IsText(type))
        ++size; // a text may be stored without its terminating zero
    // The last byte stays zero even if another program changes the value between the two queries.
    data.reset(new (std::nothrow) BYTE[size + 1]());
    if (data == nullptr) {
        Close();
        return ERROR_OUTOFMEMORY;
    }
    BYTE* const unowned = data.release();
    RefuseUnlessSuccess(RegQueryValueExA(m_key, valueName, nullptr, &type, unowned, &size));
    data.reset(unowned);
    Close();
    return ERROR_SUCCESS;
}

DWORD CRegistryKey::SetValue(const char* valueName, DWORD type, const BYTE* data, DWORD size)
{
    Open();
    if (EqualValuesStay::IsInForce() && Holds(valueName, type, data, size)) {
        Close();
        return ERROR_SUCCESS;
    }
    // A refused write leaves the key open, like a refused read.
    RefuseUnlessSuccess(RegSetValueExA(m_key, valueName, 0, type, data, size));
    Close();
    return ERROR_SUCCESS;
}

bool CRegistryKey::Holds(const char* valueName, DWORD type, const BYTE* data, DWORD size) const
{
    DWORD storedType = REG_NONE;
    std::vector<BYTE> stored(size + 1); // room for one byte more than would be equal
    auto storedSize = static_cast<DWORD>(stored.size());
    const LSTATUS status =
        RegQueryValueExA(m_key, valueName, nullptr, &storedType, stored.data(), &storedSize);
    return status == ERROR_SUCCESS && storedType == type && storedSize == size &&
           std::equal(stored.begin(), stored.begin() + static_cast<std::ptrdiff_t>(size), data);
}

DWORD CRegistryKey::GetString(const char* valueName, std::string& text, DWORD expectedType, int expandFlag)
{
    if (!IsText(expectedType))
        return ERROR_INVALID_DATA;
    DWORD type = expectedType;
    RegistryData data;
    DWORD size = 0;
    const DWORD result = QueryValue(valueName, type, data, size);
    const bool isExpected = result == ERROR_SUCCESS && type == expectedType && data != nullptr && size > 0;
    text = isExpected ? TextOf(data) : "";
    if (result == ERROR_SUCCESS && type != expectedType)
        return ERROR_INVALID_DATA;
    if (expandFlag == 1 && expectedType == REG_EXPAND_SZ)
        ExpandEnvironment(text);
    return result;
}

DWORD CRegistryKey::SetString(const char* valueName, const std::string& text)
{
    return SetValue(valueName, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                    static_cast<DWORD>(text.size() + 1));
}

DWORD CRegistryKey::GetMultiString(const char* valueName, std::vector<std::string>& texts)
try {
    DWORD type = REG_MULTI_SZ;
    RegistryData data;
    DWORD size = 0;
    const DWORD found = QueryValue(valueName, type, data, size);
    return TakeMultiString(found, type, data, size, texts);
} catch (const std::bad_alloc&) {
    return ERROR_OUTOFMEMORY;
}

DWORD CRegistryKey::ReadList(const char* valueName, std::vector<std::string>& texts)
{
    DWORD type = REG_MULTI_SZ;
    RegistryData data;
    DWORD size = 0;
    const DWORD found = RequireMemory(QueryValue(valueName, type, data, size));
    return TakeMultiString(found, type, data, size, texts);
}

DWORD CRegistryKey::SetMultiString(const char* valueName, const std::vector<std::string>& texts)
{
    const std::string block = JoinMultiString(texts);
    return SetValue(valueName, REG_MULTI_SZ, reinterpret_cast<const BYTE*>(block.data()),
                    static_cast<DWORD>(block.size()));
}

bool CRegistryKey::AppendUnique(std::vector<std::string>& texts, const std::string& text)
{
    if (std::find(texts.begin(), texts.end(), text) != texts.end())
        return false;
    texts.push_back(text);
    return true;
}

DWORD CRegistryKey::GetBinary(const char* valueName, RegistryData& data, DWORD& size)
{
    DWORD type = REG_BINARY;
    const DWORD result = QueryValue(valueName, type, data, size);
    return result == ERROR_SUCCESS && type != REG_BINARY ? ERROR_INVALID_DATA : result;
}

DWORD CRegistryKey::SetBinary(const char* valueName, const BYTE* data, DWORD size)
{
    return SetValue(valueName, REG_BINARY, data, size);
}

DWORD CRegistryKey::GetDword(const char* valueName, DWORD& number)
{
    DWORD type = REG_DWORD;
    RegistryData data;
    DWORD size = 0;
    const DWORD result = QueryValue(valueName, type, data, size);
    if (result != ERROR_SUCCESS)
        return result;
    if (type != REG_DWORD)
        return ERROR_INVALID_DATA;
    if (data != nullptr && size == sizeof number)
        std::copy_n(data.get(), sizeof number, reinterpret_cast<BYTE*>(&number));
    return ERROR_SUCCESS;
}

DWORD CRegistryKey::SetDword(const char* valueName, DWORD number)
{
    return SetValue(valueName, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
}

DWORD CRegistryKey::DeleteValue(const char* valueName)
{
    Open();
    RegDeleteValueA(m_key, valueName);
    Close();
    return ERROR_SUCCESS;
}

DWORD CRegistryKey::EnumSubkeys(std::vector<std::string>& names)
{
    RefuseUnlessSuccess(RegOpenKeyA(m_root, m_subkey.c_str(), &m_key));
    UniqueKey owner(m_key); // closes it without memory, too
    std::vector<std::string> found;
    const LSTATUS status = ReadSubkeys(found);
    // Closed before a refusal too: a host without subkeys is refused on every opening of the sheet.
    const LSTATUS closed = RegCloseKey(owner.Release());
    RefuseUnlessSuccess(status);
    RefuseUnlessSuccess(closed);
    names = std::move(found);
    return ERROR_SUCCESS;
}

LSTATUS CRegistryKey::ReadSubkeys(std::vector<std::string>& names)
{
    std::array<char, subkeyNameSize> name{};
    LSTATUS status = ERROR_SUCCESS;
    DWORD count = 0;
    while ((status = RegEnumKeyA(m_key, count, name.data(), subkeyNameSize)) == ERROR_SUCCESS)
        ++count;
    names.reserve(count);
    for (DWORD index = 0; index < count; ++index) {
        status = RegEnumKeyA(m_key, index, name.data(), subkeyNameSize);
        if (status != ERROR_SUCCESS)
            break;
        names.emplace_back(name.data());
    }
    return status;
}

DWORD RequireMemory(DWORD outcome)
{
    if (outcome == ERROR_OUTOFMEMORY)
        throw std::bad_alloc();
    return outcome;
}
