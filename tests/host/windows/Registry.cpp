// A registry in memory, empty when the program starts, with Windows' rules: names in any letter case, keys
// enumerated in the order of their names, deleted keys refused, rights checked by handle.
#include "Import.h"
#include "SystemMemory.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <strings.h>
#include <vector>
#include <windows.h>

namespace {

using standin::SystemMemory;
using standin::SystemString;

struct NameLess
{
    bool operator()(const SystemString& left, const SystemString& right) const
    {
        return strcasecmp(left.c_str(), right.c_str()) < 0;
    }
};

template <typename Entry>
using NameMap = std::map<SystemString, Entry, NameLess, SystemMemory<std::pair<const SystemString, Entry>>>;

struct Value
{
    DWORD type;
    std::vector<BYTE, SystemMemory<BYTE>> data;
};

struct Key
{
    NameMap<Value> values;
    NameMap<std::shared_ptr<Key>> subkeys;
    bool isDeleted = false;
};

using KeyPointer = std::shared_ptr<Key>;

KeyPointer NewKey()
{
    return std::allocate_shared<Key>(SystemMemory<Key>());
}

// One handle that a caller has to close. Its address is the handle's value.
struct OpenKey
{
    KeyPointer key;
    REGSAM access;
};

std::list<OpenKey, SystemMemory<OpenKey>> openKeys;

const KeyPointer& Root(HKEY root)
{
    static const KeyPointer localMachine = NewKey();
    static const KeyPointer currentUser = NewKey();
    static const KeyPointer none;
    if (root == HKEY_LOCAL_MACHINE)
        return localMachine;
    return root == HKEY_CURRENT_USER ? currentUser : none;
}

auto Find(HKEY handle)
{
    return std::find_if(openKeys.begin(), openKeys.end(), [&](const OpenKey& open) {
        return reinterpret_cast<HKEY>(const_cast<OpenKey*>(&open)) == handle;
    });
}

// The key of a handle that has the rights.
LSTATUS Use(HKEY handle, REGSAM access, KeyPointer& key)
{
    key = Root(handle);
    if (key != nullptr)
        return ERROR_SUCCESS;
    const auto open = Find(handle);
    if (open == openKeys.end())
        return ERROR_INVALID_HANDLE;
    key = open->key;
    if (key->isDeleted)
        return ERROR_KEY_DELETED;
    return (access & ~open->access) == 0 ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

// The key at the path, made with all above it when `create` says so; null without one.
KeyPointer Walk(KeyPointer key, const SystemString& path, bool create)
{
    for (std::size_t place = 0; key != nullptr && place < path.size();) {
        const std::size_t end = std::min(path.find('\\', place), path.size());
        const SystemString name = path.substr(place, end - place);
        const auto found = key->subkeys.find(name);
        if (found != key->subkeys.end())
            key = found->second;
        else
            key = create ? key->subkeys[name] = NewKey() : nullptr;
        place = end + 1;
    }
    return key;
}

LSTATUS OpenPath(HKEY handle, LPCSTR subkey, REGSAM access, bool create, PHKEY result)
{
    *result = nullptr;
    KeyPointer key;
    const LSTATUS status = Use(handle, 0, key);
    if (status != ERROR_SUCCESS)
        return status;
    key = Walk(key, subkey == nullptr ? "" : subkey, create);
    if (key == nullptr)
        return ERROR_FILE_NOT_FOUND;
    openKeys.push_back({key, access});
    *result = reinterpret_cast<HKEY>(&openKeys.back());
    return ERROR_SUCCESS;
}

LSTATUS OpenEx(HKEY handle, LPCSTR subkey, DWORD /*options*/, REGSAM access, PHKEY result)
{
    return OpenPath(handle, subkey, access, false, result);
}

// Without a subkey the handle itself comes back, not a new one.
LSTATUS Open(HKEY handle, LPCSTR subkey, PHKEY result)
{
    if (subkey != nullptr && *subkey != '\0')
        return OpenPath(handle, subkey, KEY_ALL_ACCESS, false, result);
    *result = handle;
    return ERROR_SUCCESS;
}

LSTATUS Create(HKEY handle, LPCSTR subkey, PHKEY result)
{
    return OpenPath(handle, subkey, KEY_ALL_ACCESS, true, result);
}

LSTATUS Connect(LPCSTR machine, HKEY root, PHKEY result)
{
    if (machine != nullptr && *machine != '\0')
        return ERROR_BAD_NETPATH;
    return OpenPath(root, nullptr, KEY_ALL_ACCESS, false, result);
}

LSTATUS Close(HKEY handle)
{
    if (Root(handle) != nullptr)
        return ERROR_SUCCESS;
    const auto open = Find(handle);
    if (open == openKeys.end())
        return ERROR_INVALID_HANDLE;
    openKeys.erase(open);
    return ERROR_SUCCESS;
}

void MarkDeleted(Key& key)
{
    key.isDeleted = true;
    for (const auto& [name, subkey] : key.subkeys)
        MarkDeleted(*subkey);
}

LSTATUS DeletePath(HKEY handle, const SystemString& path, bool withSubkeys)
{
    KeyPointer key;
    const LSTATUS status = Use(handle, 0, key);
    if (status != ERROR_SUCCESS)
        return status;
    const std::size_t end = path.find_last_of('\\');
    const KeyPointer parent = end == SystemString::npos ? key : Walk(key, path.substr(0, end), false);
    if (parent == nullptr)
        return ERROR_FILE_NOT_FOUND;
    const auto found = parent->subkeys.find(path.substr(end + 1));
    if (found == parent->subkeys.end())
        return ERROR_FILE_NOT_FOUND;
    if (!withSubkeys && !found->second->subkeys.empty())
        return ERROR_ACCESS_DENIED;
    MarkDeleted(*found->second);
    parent->subkeys.erase(found);
    return ERROR_SUCCESS;
}

LSTATUS DeleteOne(HKEY handle, LPCSTR subkey)
{
    return DeletePath(handle, subkey, false);
}

LSTATUS DeleteTree(HKEY handle, LPCSTR subkey)
{
    return DeletePath(handle, subkey, true);
}

// Copies the name of the entry at `index`; `size` counts characters, with the terminating zero on the way in
// and without it on the way out.
template <typename Entries>
LSTATUS CopyName(const Entries& entries, DWORD index, LPSTR name, DWORD& size)
{
    if (index >= entries.size())
        return ERROR_NO_MORE_ITEMS;
    const SystemString& found = std::next(entries.begin(), index)->first;
    if (found.size() >= size)
        return ERROR_MORE_DATA;
    std::copy_n(found.c_str(), found.size() + 1, name);
    size = static_cast<DWORD>(found.size());
    return ERROR_SUCCESS;
}

LSTATUS EnumKeyEx(HKEY handle, DWORD index, LPSTR name, LPDWORD size, LPDWORD /*reserved*/,
                  LPSTR /*className*/, LPDWORD /*classSize*/, FILETIME* /*lastWrite*/)
{
    KeyPointer key;
    const LSTATUS status = Use(handle, 0, key);
    return status == ERROR_SUCCESS ? CopyName(key->subkeys, index, name, *size) : status;
}

LSTATUS EnumKey(HKEY handle, DWORD index, LPSTR name, DWORD size)
{
    return EnumKeyEx(handle, index, name, &size, nullptr, nullptr, nullptr, nullptr);
}

LSTATUS EnumValue(HKEY handle, DWORD index, LPSTR name, LPDWORD size, LPDWORD /*reserved*/, LPDWORD /*type*/,
                  LPBYTE /*data*/, LPDWORD /*dataSize*/)
{
    KeyPointer key;
    const LSTATUS status = Use(handle, KEY_QUERY_VALUE, key);
    return status == ERROR_SUCCESS ? CopyName(key->values, index, name, *size) : status;
}

bool IsText(DWORD type)
{
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

// Copies the data into a buffer of `size` bytes. A text without its terminating zero gets one if there is
// room.
LSTATUS CopyData(const Value& value, LPBYTE data, DWORD& size)
{
    const auto needed = static_cast<DWORD>(value.data.size());
    if (data != nullptr && needed > size) {
        size = needed;
        return ERROR_MORE_DATA;
    }
    if (data != nullptr) {
        std::copy(value.data.begin(), value.data.end(), data);
        if (IsText(value.type) && needed != 0 && value.data.back() != 0 && needed < size)
            data[needed] = 0;
    }
    size = needed;
    return ERROR_SUCCESS;
}

LSTATUS Query(HKEY handle, LPCSTR name, LPDWORD /*reserved*/, LPDWORD type, LPBYTE data, LPDWORD size)
{
    KeyPointer key;
    const LSTATUS status = Use(handle, KEY_QUERY_VALUE, key);
    if (status != ERROR_SUCCESS)
        return status;
    const auto found = key->values.find(name == nullptr ? "" : name);
    if (found == key->values.end())
        return ERROR_FILE_NOT_FOUND;
    if (type != nullptr)
        *type = found->second.type;
    return size == nullptr ? LSTATUS{ERROR_SUCCESS} : CopyData(found->second, data, *size);
}

LSTATUS Set(HKEY handle, LPCSTR name, DWORD /*reserved*/, DWORD type, const BYTE* data, DWORD size)
{
    KeyPointer key;
    const LSTATUS status = Use(handle, KEY_SET_VALUE, key);
    if (status == ERROR_SUCCESS)
        key->values[name == nullptr ? "" : name] = {type, {data, data + size}};
    return status;
}

LSTATUS DeleteValue(HKEY handle, LPCSTR name)
{
    KeyPointer key;
    const LSTATUS status = Use(handle, KEY_SET_VALUE, key);
    if (status != ERROR_SUCCESS)
        return status;
    return key->values.erase(name == nullptr ? "" : name) == 0 ? LSTATUS{ERROR_FILE_NOT_FOUND}
                                                               : LSTATUS{ERROR_SUCCESS};
}

const standin::Import<decltype(RegConnectRegistryA)> connectImport("RegConnectRegistryA", Connect);
const standin::Import<decltype(RegOpenKeyA)> openImport("RegOpenKeyA", Open);
const standin::Import<decltype(RegOpenKeyExA)> openExImport("RegOpenKeyExA", OpenEx);
const standin::Import<decltype(RegCreateKeyA)> createImport("RegCreateKeyA", Create);
const standin::Import<decltype(RegCloseKey)> closeImport("RegCloseKey", Close);
const standin::Import<decltype(RegDeleteKeyA)> deleteImport("RegDeleteKeyA", DeleteOne);
const standin::Import<decltype(RegDeleteTreeA)> deleteTreeImport("RegDeleteTreeA", DeleteTree);
const standin::Import<decltype(RegEnumKeyA)> enumImport("RegEnumKeyA", EnumKey);
const standin::Import<decltype(RegEnumKeyExA)> enumExImport("RegEnumKeyExA", EnumKeyEx);
const standin::Import<decltype(RegEnumValueA)> enumValueImport("RegEnumValueA", EnumValue);
const standin::Import<decltype(RegQueryValueExA)> queryImport("RegQueryValueExA", Query);
const standin::Import<decltype(RegSetValueExA)> setImport("RegSetValueExA", Set);
const standin::Import<decltype(RegDeleteValueA)> deleteValueImport("RegDeleteValueA", DeleteValue);

} // namespace

LSTATUS RegConnectRegistryA(LPCSTR machine, HKEY root, PHKEY result)
{
    return connectImport(machine, root, result);
}

LSTATUS RegOpenKeyA(HKEY key, LPCSTR subkey, PHKEY result)
{
    return openImport(key, subkey, result);
}

LSTATUS RegOpenKeyExA(HKEY key, LPCSTR subkey, DWORD options, REGSAM access, PHKEY result)
{
    return openExImport(key, subkey, options, access, result);
}

LSTATUS RegCreateKeyA(HKEY key, LPCSTR subkey, PHKEY result)
{
    return createImport(key, subkey, result);
}

LSTATUS RegCloseKey(HKEY key)
{
    return closeImport(key);
}

LSTATUS RegDeleteKeyA(HKEY key, LPCSTR subkey)
{
    return deleteImport(key, subkey);
}

LSTATUS RegDeleteTreeA(HKEY key, LPCSTR subkey)
{
    return deleteTreeImport(key, subkey);
}

LSTATUS RegEnumKeyA(HKEY key, DWORD index, LPSTR name, DWORD size)
{
    return enumImport(key, index, name, size);
}

LSTATUS RegEnumKeyExA(HKEY key, DWORD index, LPSTR name, LPDWORD size, LPDWORD reserved, LPSTR className,
                      LPDWORD classSize, FILETIME* lastWrite)
{
    return enumExImport(key, index, name, size, reserved, className, classSize, lastWrite);
}

LSTATUS RegQueryValueExA(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size)
{
    const LSTATUS answer = queryImport(key, name, reserved, type, data, size);
    // The accessor does not free what a refused query was to fill; see CRegistryKey::QueryValue.
    if (answer != ERROR_SUCCESS && data != nullptr)
        standin::LeaveUnfreed(data);
    return answer;
}

LSTATUS RegSetValueExA(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size)
{
    return setImport(key, name, reserved, type, data, size);
}

LSTATUS RegDeleteValueA(HKEY key, LPCSTR name)
{
    return deleteValueImport(key, name);
}

LSTATUS RegEnumValueA(HKEY key, DWORD index, LPSTR name, LPDWORD size, LPDWORD reserved, LPDWORD type,
                      LPBYTE data, LPDWORD dataSize)
{
    return enumValueImport(key, index, name, size, reserved, type, data, dataSize);
}
