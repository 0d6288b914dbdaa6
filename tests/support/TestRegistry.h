// Registry keys for tests: filled and read by one line each, and left behind as they were found. All tests of
// settings stand on these. Their own registry calls go around the import table: hooks on the test program see
// the product's calls alone.
#pragma once

#include "support/Expect.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>
#include <windows.h>

namespace support {

using Bytes = std::vector<BYTE>;

// A value as it is stored, with its terminating zeros or without them.
struct StoredValue
{
    DWORD type = REG_NONE;
    Bytes bytes;

    bool operator==(const StoredValue&) const = default;
};

std::ostream& operator<<(std::ostream& out, const StoredValue& value);

// Block of a REG_MULTI_SZ value: each text with its zero, then one more.
[[nodiscard]] Bytes MultiStringBytes(const std::vector<std::string>& texts);

// A key under HKEY_LOCAL_MACHINE by its path. It holds no handle; each operation throws std::runtime_error
// when Windows refuses it. A setter makes the key when it is missing.
class TestKey
{
  public:
    explicit TestKey(std::string path);

    [[nodiscard]] const std::string& Path() const { return m_path; }
    [[nodiscard]] bool Exists() const;
    [[nodiscard]] TestKey Subkey(const std::string& name) const { return TestKey(m_path + "\\" + name); }
    [[nodiscard]] std::vector<std::string> SubkeyNames() const;
    [[nodiscard]] std::vector<std::string> ValueNames() const;
    // The stored value; nothing when the value or the key is absent.
    [[nodiscard]] std::optional<StoredValue> Value(const std::string& name) const;

    void Create() const;
    // Makes a subkey whose name may be too long to be part of a path; the key itself must exist.
    void CreateSubkey(const std::string& name) const;
    void SetDword(const std::string& name, DWORD value) const;
    void SetString(const std::string& name, const std::string& text) const;
    // A REG_SZ value that lacks its terminating zero.
    void SetUnterminatedString(const std::string& name, const std::string& text) const;
    void SetExpandString(const std::string& name, const std::string& text) const;
    void SetMultiString(const std::string& name, const std::vector<std::string>& texts) const;
    void SetBinary(const std::string& name, const Bytes& bytes) const;
    void SetRaw(const std::string& name, DWORD type, const Bytes& bytes) const;
    void DeleteValue(const std::string& name) const;
    // Deletes all values and subkeys, keeping or making the key itself.
    void Clear() const;
    // Deletes the key with everything below it; an absent key is no error.
    void Delete() const;

  private:
    std::string m_path;
};

// A key that starts empty and is deleted, with everything below it, at the end.
class ScratchKey : public TestKey
{
  public:
    // A key of this process alone.
    ScratchKey();
    explicit ScratchKey(std::string path);
    ~ScratchKey();
    ScratchKey(const ScratchKey&) = delete;
    ScratchKey& operator=(const ScratchKey&) = delete;
};

// A real key whose tree is kept aside and put back at the end, so that a test may change or delete it. A key
// that was absent is absent again afterwards; keys above it that had to be made for it stay.
class SavedKey : public TestKey
{
  public:
    explicit SavedKey(std::string path);
    ~SavedKey();
    SavedKey(const SavedKey&) = delete;
    SavedKey& operator=(const SavedKey&) = delete;

  private:
    struct Tree;
    std::unique_ptr<Tree> m_saved;
};

// Each fails the test at the caller's line unless the value is stored just so, type and terminating zeros
// included.
void ExpectDword(const TestKey& key, const std::string& name, DWORD value,
                 Location where = Location::current());
void ExpectString(const TestKey& key, const std::string& name, const std::string& text,
                  Location where = Location::current());
void ExpectMultiString(const TestKey& key, const std::string& name, const std::vector<std::string>& texts,
                       Location where = Location::current());
void ExpectBinary(const TestKey& key, const std::string& name, const Bytes& bytes,
                  Location where = Location::current());
void ExpectAbsent(const TestKey& key, const std::string& name, Location where = Location::current());

} // namespace support
