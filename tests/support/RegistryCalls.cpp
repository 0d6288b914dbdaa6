// See the header.
#include "support/RegistryCalls.h"

#include <sstream>
#include <stdexcept>

namespace support {
namespace {

RegistryCalls& Listener()
{
    return Turn<RegistryCalls>::Active();
}

std::string Named(LPCSTR name)
{
    return name == nullptr ? "(default)" : name;
}

} // namespace

RegistryCalls::RegistryCalls(HMODULE module, CallLog* log)
    : m_log(log != nullptr ? log : &m_ownLog), m_turn(this), m_openKey(module, "RegOpenKeyA", &OpenKey),
      m_openKeyEx(module, "RegOpenKeyExA", &OpenKeyEx), m_connect(module, "RegConnectRegistryA", &Connect),
      m_queryValue(module, "RegQueryValueExA", &QueryValue), m_setValue(module, "RegSetValueExA", &SetValue),
      m_enumKey(module, "RegEnumKeyA", &EnumKey), m_deleteKey(module, "RegDeleteKeyA", &DeleteKey),
      m_deleteValue(module, "RegDeleteValueA", &DeleteValue), m_closeKey(module, "RegCloseKey", &CloseKey)
{
    if (!m_closeKey.IsImported())
        throw std::runtime_error("not imported: RegCloseKey");
}

std::vector<std::string> RegistryCalls::OpenKeys() const
{
    const std::lock_guard lock(m_mutex);
    std::vector<std::string> paths;
    for (const auto& [key, path] : m_openKeys)
        paths.push_back(path);
    return paths;
}

std::string RegistryCalls::PathOf(HKEY key) const
{
    if (key == HKEY_LOCAL_MACHINE)
        return "HKLM";
    const std::lock_guard lock(m_mutex);
    const auto found = m_openKeys.find(key);
    return found == m_openKeys.end() ? "(unknown key)" : found->second;
}

std::string RegistryCalls::PathOf(HKEY key, LPCSTR subkey) const
{
    return subkey == nullptr || *subkey == '\0' ? PathOf(key) : PathOf(key) + "\\" + subkey;
}

LSTATUS RegistryCalls::Record(const std::string& call, LSTATUS answer)
{
    m_log->Add(answer == ERROR_SUCCESS ? call : call + " = " + std::to_string(answer));
    return answer;
}

LSTATUS RegistryCalls::RecordOpen(const std::string& call, const std::string& path, LSTATUS answer,
                                  const HKEY* opened)
{
    if (answer == ERROR_SUCCESS) {
        const std::lock_guard lock(m_mutex);
        m_openKeys[*opened] = path;
    }
    return Record(call, answer);
}

LSTATUS RegistryCalls::OpenKey(HKEY key, LPCSTR subkey, PHKEY opened)
{
    RegistryCalls& self = Listener();
    const std::string path = self.PathOf(key, subkey);
    const LSTATUS answer = self.m_openKey.Original<decltype(RegOpenKeyA)>()(key, subkey, opened);
    return self.RecordOpen("RegOpenKeyA " + path, path, answer, opened);
}

LSTATUS RegistryCalls::OpenKeyEx(HKEY key, LPCSTR subkey, DWORD options, REGSAM access, PHKEY opened)
{
    RegistryCalls& self = Listener();
    const std::string path = self.PathOf(key, subkey);
    const LSTATUS answer =
        self.m_openKeyEx.Original<decltype(RegOpenKeyExA)>()(key, subkey, options, access, opened);
    std::ostringstream call;
    call << "RegOpenKeyExA " << path << ", access 0x" << std::hex << access;
    return self.RecordOpen(call.str(), path, answer, opened);
}

LSTATUS RegistryCalls::Connect(LPCSTR machine, HKEY key, PHKEY opened)
{
    RegistryCalls& self = Listener();
    std::string path = machine == nullptr ? "" : machine;
    path.append(":").append(self.PathOf(key));
    const LSTATUS answer = self.m_connect.Original<decltype(RegConnectRegistryA)>()(machine, key, opened);
    return self.RecordOpen("RegConnectRegistryA " + path, path, answer, opened);
}

LSTATUS RegistryCalls::QueryValue(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                                  LPDWORD size)
{
    RegistryCalls& self = Listener();
    const LSTATUS answer =
        self.m_queryValue.Original<decltype(RegQueryValueExA)>()(key, name, reserved, type, data, size);
    return self.Record("RegQueryValueExA " + self.PathOf(key) + ", " + Named(name), answer);
}

LSTATUS RegistryCalls::SetValue(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data,
                                DWORD size)
{
    RegistryCalls& self = Listener();
    const LSTATUS answer =
        self.m_setValue.Original<decltype(RegSetValueExA)>()(key, name, reserved, type, data, size);
    return self.Record("RegSetValueExA " + self.PathOf(key) + ", " + Named(name), answer);
}

LSTATUS RegistryCalls::EnumKey(HKEY key, DWORD index, LPSTR name, DWORD size)
{
    RegistryCalls& self = Listener();
    const LSTATUS answer = self.m_enumKey.Original<decltype(RegEnumKeyA)>()(key, index, name, size);
    return self.Record("RegEnumKeyA " + self.PathOf(key) + ", " + std::to_string(index), answer);
}

LSTATUS RegistryCalls::DeleteKey(HKEY key, LPCSTR subkey)
{
    RegistryCalls& self = Listener();
    const LSTATUS answer = self.m_deleteKey.Original<decltype(RegDeleteKeyA)>()(key, subkey);
    return self.Record("RegDeleteKeyA " + self.PathOf(key, subkey), answer);
}

LSTATUS RegistryCalls::DeleteValue(HKEY key, LPCSTR name)
{
    RegistryCalls& self = Listener();
    const LSTATUS answer = self.m_deleteValue.Original<decltype(RegDeleteValueA)>()(key, name);
    return self.Record("RegDeleteValueA " + self.PathOf(key) + ", " + Named(name), answer);
}

LSTATUS RegistryCalls::CloseKey(HKEY key)
{
    RegistryCalls& self = Listener();
    const std::string path = self.PathOf(key);
    const LSTATUS answer = self.m_closeKey.Original<decltype(RegCloseKey)>()(key);
    if (answer == ERROR_SUCCESS) {
        const std::lock_guard lock(self.m_mutex);
        self.m_openKeys.erase(key);
    }
    return self.Record("RegCloseKey " + path, answer);
}

} // namespace support
