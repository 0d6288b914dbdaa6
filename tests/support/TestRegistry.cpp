// Keys for tests, over the registry functions; see the header.
#include "support/TestRegistry.h"

#include "support/SystemFunction.h"

#include <array>
#include <iomanip>
#include <ostream>
#include <stdexcept>
#include <utility>

namespace support {
namespace {

#define ADVAPI(function) SystemFunction<decltype(function)>("advapi32.dll", #function)

// Windows keeps the names of keys to 255 characters; the names of test values are far below that.
constexpr DWORD nameLimit = 256;

void Check(LSTATUS status, const char* action, const std::string& path)
{
    if (status != ERROR_SUCCESS)
        throw std::runtime_error(std::string(action) + " " + path + ": error " + std::to_string(status));
}

// An open key of the tests' own; null when the key is absent.
class OpenedKey
{
  public:
    explicit OpenedKey(const std::string& path)
    {
        const LSTATUS status =
            ADVAPI(RegOpenKeyExA)(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_ALL_ACCESS, &m_key);
        if (status != ERROR_FILE_NOT_FOUND)
            Check(status, "open", path);
    }
    ~OpenedKey()
    {
        if (m_key != nullptr)
            ADVAPI(RegCloseKey)(m_key);
    }
    OpenedKey(const OpenedKey&) = delete;
    OpenedKey& operator=(const OpenedKey&) = delete;

    [[nodiscard]] HKEY Handle() const { return m_key; }

  private:
    HKEY m_key = nullptr;
};

Bytes TextBytes(const std::string& text)
{
    return {text.c_str(), text.c_str() + text.size() + 1};
}

// The names that `enumerate(index, buffer, length)` yields until it has no more.
template <typename Enumerate>
std::vector<std::string> Names(const std::string& path, Enumerate enumerate)
{
    std::vector<std::string> names;
    std::array<char, nameLimit> name{};
    for (DWORD index = 0;; ++index) {
        DWORD length = nameLimit;
        const LSTATUS status = enumerate(index, name.data(), &length);
        if (status == ERROR_NO_MORE_ITEMS)
            return names;
        Check(status, "enumerate", path);
        names.emplace_back(name.data(), length);
    }
}

StoredValue TypedValue(DWORD type, Bytes bytes)
{
    return {type, std::move(bytes)};
}

void ExpectStored(const TestKey& key, const std::string& name, const std::optional<StoredValue>& value,
                  const Location& where)
{
    ExpectEqual(value, key.Value(name), key.Path() + ", value \"" + name + "\"", where);
}

Bytes DwordBytes(DWORD value)
{
    const auto* bytes = reinterpret_cast<const BYTE*>(&value);
    return {bytes, bytes + sizeof value};
}

} // namespace

std::ostream& operator<<(std::ostream& out, const StoredValue& value)
{
    out << "type " << value.type << ", " << value.bytes.size() << " bytes:" << std::hex << std::setfill('0');
    for (const BYTE byte : value.bytes)
        out << ' ' << std::setw(2) << unsigned{byte};
    out << std::dec << std::setfill(' ') << " \"";
    for (const BYTE byte : value.bytes)
        out << (byte >= 0x20 && byte < 0x7F ? static_cast<char>(byte) : '.');
    return out << '"';
}

Bytes MultiStringBytes(const std::vector<std::string>& texts)
{
    Bytes block;
    for (const std::string& text : texts) {
        const Bytes bytes = TextBytes(text);
        block.insert(block.end(), bytes.begin(), bytes.end());
    }
    block.push_back(0);
    return block;
}

TestKey::TestKey(std::string path) : m_path(std::move(path)) {}

bool TestKey::Exists() const
{
    return OpenedKey(m_path).Handle() != nullptr;
}

std::vector<std::string> TestKey::SubkeyNames() const
{
    const OpenedKey key(m_path);
    if (key.Handle() == nullptr)
        return {};
    return Names(m_path, [&](DWORD index, char* name, DWORD* length) {
        return ADVAPI(RegEnumKeyExA)(key.Handle(), index, name, length, nullptr, nullptr, nullptr, nullptr);
    });
}

std::vector<std::string> TestKey::ValueNames() const
{
    const OpenedKey key(m_path);
    if (key.Handle() == nullptr)
        return {};
    return Names(m_path, [&](DWORD index, char* name, DWORD* length) {
        return ADVAPI(RegEnumValueA)(key.Handle(), index, name, length, nullptr, nullptr, nullptr, nullptr);
    });
}

std::optional<StoredValue> TestKey::Value(const std::string& name) const
{
    const OpenedKey key(m_path);
    if (key.Handle() == nullptr)
        return std::nullopt;
    const auto query = ADVAPI(RegQueryValueExA);
    StoredValue value;
    DWORD size = 0;
    const LSTATUS status = query(key.Handle(), name.c_str(), nullptr, &value.type, nullptr, &size);
    if (status == ERROR_FILE_NOT_FOUND)
        return std::nullopt;
    Check(status, "query", m_path);
    value.bytes.resize(size);
    Check(query(key.Handle(), name.c_str(), nullptr, &value.type, value.bytes.data(), &size), "query",
          m_path);
    value.bytes.resize(size);
    return value;
}

void TestKey::Create() const
{
    HKEY key = nullptr;
    Check(ADVAPI(RegCreateKeyA)(HKEY_LOCAL_MACHINE, m_path.c_str(), &key), "create", m_path);
    ADVAPI(RegCloseKey)(key);
}

void TestKey::SetRaw(const std::string& name, DWORD type, const Bytes& bytes) const
{
    Create();
    const OpenedKey key(m_path);
    Check(ADVAPI(RegSetValueExA)(key.Handle(), name.c_str(), 0, type, bytes.data(),
                                 static_cast<DWORD>(bytes.size())),
          "set", m_path);
}

void TestKey::CreateSubkey(const std::string& name) const
{
    const OpenedKey key(m_path);
    HKEY subkey = nullptr;
    Check(ADVAPI(RegCreateKeyA)(key.Handle(), name.c_str(), &subkey), "create", Subkey(name).Path());
    ADVAPI(RegCloseKey)(subkey);
}

void TestKey::SetDword(const std::string& name, DWORD value) const
{
    SetRaw(name, REG_DWORD, DwordBytes(value));
}

void TestKey::SetString(const std::string& name, const std::string& text) const
{
    SetRaw(name, REG_SZ, TextBytes(text));
}

void TestKey::SetUnterminatedString(const std::string& name, const std::string& text) const
{
    SetRaw(name, REG_SZ, {text.begin(), text.end()});
}

void TestKey::SetExpandString(const std::string& name, const std::string& text) const
{
    SetRaw(name, REG_EXPAND_SZ, TextBytes(text));
}

void TestKey::SetMultiString(const std::string& name, const std::vector<std::string>& texts) const
{
    SetRaw(name, REG_MULTI_SZ, MultiStringBytes(texts));
}

void TestKey::SetBinary(const std::string& name, const Bytes& bytes) const
{
    SetRaw(name, REG_BINARY, bytes);
}

void TestKey::DeleteValue(const std::string& name) const
{
    const OpenedKey key(m_path);
    if (key.Handle() == nullptr)
        return;
    const LSTATUS status = ADVAPI(RegDeleteValueA)(key.Handle(), name.c_str());
    if (status != ERROR_FILE_NOT_FOUND)
        Check(status, "delete value of", m_path);
}

void TestKey::Clear() const
{
    for (const std::string& name : ValueNames())
        DeleteValue(name);
    for (const std::string& name : SubkeyNames())
        Subkey(name).Delete();
    Create();
}

void TestKey::Delete() const
{
    const LSTATUS status = ADVAPI(RegDeleteTreeA)(HKEY_LOCAL_MACHINE, m_path.c_str());
    if (status != ERROR_FILE_NOT_FOUND)
        Check(status, "delete", m_path);
}

ScratchKey::ScratchKey() : ScratchKey("SOFTWARE\\vtnmgmt-test-" + std::to_string(GetCurrentProcessId())) {}

ScratchKey::ScratchKey(std::string path) : TestKey(std::move(path))
{
    Clear();
}

ScratchKey::~ScratchKey()
{
    Delete();
}

// One key with all that is below it.
struct SavedKey::Tree
{
    explicit Tree(const TestKey& source) : exists(source.Exists())
    {
        for (const std::string& name : source.ValueNames())
            values.emplace_back(name, *source.Value(name));
        for (const std::string& name : source.SubkeyNames())
            subkeys.emplace_back(name, Tree(source.Subkey(name)));
    }

    void RestoreTo(const TestKey& target) const
    {
        if (!exists)
            return target.Delete();
        target.Clear();
        for (const auto& [name, value] : values)
            target.SetRaw(name, value.type, value.bytes);
        for (const auto& [name, tree] : subkeys)
            tree.RestoreTo(target.Subkey(name));
    }

    bool exists;
    std::vector<std::pair<std::string, StoredValue>> values;
    std::vector<std::pair<std::string, Tree>> subkeys;
};

SavedKey::SavedKey(std::string path) : TestKey(std::move(path)), m_saved(std::make_unique<Tree>(*this)) {}

SavedKey::~SavedKey()
{
    m_saved->RestoreTo(*this);
}

void ExpectDword(const TestKey& key, const std::string& name, DWORD value, Location where)
{
    ExpectStored(key, name, TypedValue(REG_DWORD, DwordBytes(value)), where);
}

void ExpectString(const TestKey& key, const std::string& name, const std::string& text, Location where)
{
    ExpectStored(key, name, TypedValue(REG_SZ, TextBytes(text)), where);
}

void ExpectMultiString(const TestKey& key, const std::string& name, const std::vector<std::string>& texts,
                       Location where)
{
    ExpectStored(key, name, TypedValue(REG_MULTI_SZ, MultiStringBytes(texts)), where);
}

void ExpectBinary(const TestKey& key, const std::string& name, const Bytes& bytes, Location where)
{
    ExpectStored(key, name, TypedValue(REG_BINARY, bytes), where);
}

void ExpectAbsent(const TestKey& key, const std::string& name, Location where)
{
    ExpectStored(key, name, std::nullopt, where);
}

} // namespace support
