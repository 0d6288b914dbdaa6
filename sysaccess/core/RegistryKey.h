// The one gateway to the agents' configuration in the registry: typed reads and writes of the values of one
// key. Every page builds one on the stack for each key that it loads or saves.
#pragma once

#include "sysaccess/core/ConfigurationError.h"

#include <memory>
#include <string>
#include <vector>
#include <windows.h>

// Data of one value as the registry holds it, followed by a zero byte that does not count.
using RegistryData = std::unique_ptr<BYTE[]>;

// While one of these lives, CRegistryKey leaves alone a value that is to become just what is stored already.
// For who must not touch what stays as it is; without it every write is made.
class EqualValuesStay
{
  public:
    EqualValuesStay() { ++s_count; }
    ~EqualValuesStay() { --s_count; }
    EqualValuesStay(const EqualValuesStay&) = delete;
    EqualValuesStay& operator=(const EqualValuesStay&) = delete;

    // Whether one lives.
    [[nodiscard]] static bool IsInForce() { return s_count > 0; }

  private:
    static inline int s_count = 0;
};

// A key under HKEY_LOCAL_MACHINE. Each operation opens the key, does its one query or update and closes it
// again: nothing is held in between. Not for use by two threads at a time.
//
// A refusal is thrown as ConfigurationError. Ordinary outcomes of a read are returned as Win32 codes: 0, 2
// (no such value), 13 (value of another type), 14 (no memory). Operations that can only succeed or be refused
// return 0.
class CRegistryKey
{
  public:
    // `root` is not looked at: every configuration lies under HKEY_LOCAL_MACHINE. An empty `machine` is this
    // one.
    CRegistryKey(HKEY root, const char* subkey, const char* machine = "");

    // Reads a value of any type. `type` and `size` (in bytes) become the stored ones; `data` becomes null for
    // an absent value, and for one of size 0. Also returns 234 if the system reports more data but no size.
    DWORD QueryValue(const char* valueName, DWORD& type, RegistryData& data, DWORD& size);
    // Writes `size` bytes as a value of the given type.
    DWORD SetValue(const char* valueName, DWORD type, const BYTE* data, DWORD size);

    // Reads a text of exactly the expected type, REG_SZ or REG_EXPAND_SZ; empty in every other case. With
    // `expandFlag` 1 and REG_EXPAND_SZ, references to environment variables are replaced.
    DWORD GetString(const char* valueName, std::string& text, DWORD expectedType, int expandFlag);
    // Writes a REG_SZ, its terminating zero included.
    DWORD SetString(const char* valueName, const std::string& text);

    // Reads a REG_MULTI_SZ up to its first empty string. An absent value empties `texts`; another type leaves
    // them. Without memory it returns 13 or 14; ReadList is for callers who must know.
    DWORD GetMultiString(const char* valueName, std::vector<std::string>& texts);
    // The same, but throws std::bad_alloc without memory, for lists that are written back.
    DWORD ReadList(const char* valueName, std::vector<std::string>& texts);
    // Writes a REG_MULTI_SZ; no strings at all make a value of size 0.
    DWORD SetMultiString(const char* valueName, const std::vector<std::string>& texts);
    // Adds `text` at the end of `texts` unless an exactly equal one is there; true when it was added.
    static bool AppendUnique(std::vector<std::string>& texts, const std::string& text);

    // Reads a REG_BINARY. A value of another type returns 13 with its data handed over all the same.
    DWORD GetBinary(const char* valueName, RegistryData& data, DWORD& size);
    // Writes `size` bytes as REG_BINARY.
    DWORD SetBinary(const char* valueName, const BYTE* data, DWORD size);

    // Reads a REG_DWORD. In every case but a stored 4-byte value, `number` keeps what it held: the caller's
    // default.
    DWORD GetDword(const char* valueName, DWORD& number);
    // Writes a REG_DWORD.
    DWORD SetDword(const char* valueName, DWORD number);

    // Deletes a value. One that is absent or that the system refuses to delete is no error.
    DWORD DeleteValue(const char* valueName);

    // Names of the subkeys in the registry's order, always of this machine. A key without subkeys is refused.
    // Throws std::bad_alloc without memory: a list that ends early would pass for the whole.
    DWORD EnumSubkeys(std::vector<std::string>& names);

  private:
    void Open();
    void Close();
    // Whether the open key holds just this value.
    [[nodiscard]] bool Holds(const char* valueName, DWORD type, const BYTE* data, DWORD size) const;
    // Counts, then reads; returns the status of the last enumeration call.
    LSTATUS ReadSubkeys(std::vector<std::string>& names);

    HKEY m_root = HKEY_LOCAL_MACHINE;
    std::string m_subkey;
    // Open during one operation. Not an owning type: a refused operation leaves it open.
    HKEY m_key = nullptr;
    std::string m_machine;
    HKEY m_remoteRoot = nullptr;
};

// For reads whose result, or the default in its place, may be written later: returns `outcome`, but throws
// std::bad_alloc when there was no memory for the value, so that no default takes the place of what is
// stored.
DWORD RequireMemory(DWORD outcome);
