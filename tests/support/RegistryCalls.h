// Listens to a module's registry calls: which keys it opens with which access, in which order, and whether it
// closes them. The calls themselves reach the registry.
#pragma once

#include "imports/ImportHook.h"
#include "support/CallLog.h"
#include "support/Mutex.h"

#include <map>
#include <mutex>
#include <string>
#include <vector>
#include <windows.h>

namespace support {

// Stands before the registry functions of one module; one listener at a time. Entries are the function, the
// path of the key, the value or subkey, and the answer unless it was 0:
//
//     RegOpenKeyA HKLM\SOFTWARE\Absent = 2
//     RegSetValueExA HKLM\SOFTWARE\Key, Value
//     RegOpenKeyExA HKLM\SOFTWARE\Key, access 0x20019
class RegistryCalls
{
  public:
    // Throws std::runtime_error when the module does not import RegCloseKey. `log` may be shared with
    // scripts.
    explicit RegistryCalls(HMODULE module, CallLog* log = nullptr);
    RegistryCalls(const RegistryCalls&) = delete;
    RegistryCalls& operator=(const RegistryCalls&) = delete;

    [[nodiscard]] std::vector<std::string> Calls() const { return m_log->Calls(); }
    [[nodiscard]] const CallLog& Log() const { return *m_log; }
    // Paths of the keys that were opened or connected since the start and are not closed.
    [[nodiscard]] std::vector<std::string> OpenKeys() const;

  private:
    static LSTATUS WINAPI OpenKey(HKEY key, LPCSTR subkey, PHKEY opened);
    static LSTATUS WINAPI OpenKeyEx(HKEY key, LPCSTR subkey, DWORD options, REGSAM access, PHKEY opened);
    static LSTATUS WINAPI Connect(LPCSTR machine, HKEY key, PHKEY opened);
    static LSTATUS WINAPI QueryValue(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                                     LPDWORD size);
    static LSTATUS WINAPI SetValue(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data,
                                   DWORD size);
    static LSTATUS WINAPI EnumKey(HKEY key, DWORD index, LPSTR name, DWORD size);
    static LSTATUS WINAPI DeleteKey(HKEY key, LPCSTR subkey);
    static LSTATUS WINAPI DeleteValue(HKEY key, LPCSTR name);
    static LSTATUS WINAPI CloseKey(HKEY key);

    LSTATUS Record(const std::string& call, LSTATUS answer);
    LSTATUS RecordOpen(const std::string& call, const std::string& path, LSTATUS answer, const HKEY* opened);
    [[nodiscard]] std::string PathOf(HKEY key) const;
    [[nodiscard]] std::string PathOf(HKEY key, LPCSTR subkey) const;

    mutable Mutex m_mutex;
    std::map<HKEY, std::string> m_openKeys;
    CallLog m_ownLog;
    CallLog* m_log;
    Turn<RegistryCalls> m_turn;
    ReplacedImport m_openKey;
    ReplacedImport m_openKeyEx;
    ReplacedImport m_connect;
    ReplacedImport m_queryValue;
    ReplacedImport m_setValue;
    ReplacedImport m_enumKey;
    ReplacedImport m_deleteKey;
    ReplacedImport m_deleteValue;
    ReplacedImport m_closeKey;
};

} // namespace support
