// What the tests of the profile engine share: a file of their own, a request that opens, edits and saves it,
// and checks that report the caller's line. The same tests run on Windows and on the native stand-in.
#pragma once

#include "desktop/core/ProfileEngine.h"
#include "support/Expect.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace profile {

using support::Location;

// Modes of a file, as flags of the request.
inline constexpr std::uint8_t raw = 0;
inline constexpr std::uint8_t compact = PROF_COMPACT;
inline constexpr std::uint8_t sectioned = PROF_SECTIONED;

// Operation codes, for the rules that hold for several.
using Codes = std::vector<std::uint16_t>;

// A file of this process, absent at the start and deleted at the end.
class ScratchFile
{
  public:
    explicit ScratchFile(const std::string& name = "profile.ini");
    ~ScratchFile();
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    [[nodiscard]] const char* Path() const { return m_path.c_str(); }
    void Write(const std::string& content) const;
    // Nothing when there is no file.
    [[nodiscard]] std::optional<std::string> Content() const;
    void SetReadOnly(bool isReadOnly) const;
    [[nodiscard]] bool IsReadOnly() const;

  private:
    std::string m_path;
};

// Path of a file in the temporary directory that belongs to this process.
[[nodiscard]] std::string ScratchPath(const std::string& name);

// One request, closed at the end.
class Request
{
  public:
    explicit Request(std::uint8_t flags = raw);
    ~Request();
    Request(const Request&) = delete;
    Request& operator=(const Request&) = delete;

    std::int16_t Open(const char* path);
    // Opens a file that must open.
    void Open(const ScratchFile& file, Location where = Location::current());
    std::int16_t Execute(std::uint16_t operation, const std::string& key = "", const std::string& value = "");
    std::int16_t ExecuteIn(const std::string& section, std::uint16_t operation, const std::string& key = "",
                           const std::string& value = "");
    std::int16_t Save() { return ProfileSave(m_request); }

    // What the last operation read, or the value that was given to it.
    [[nodiscard]] std::string Value() const { return m_value.data(); }
    // Texts of the lines in memory, and of the cursor line (nothing without one).
    [[nodiscard]] std::vector<std::string> Lines() const;
    [[nodiscard]] std::optional<std::string> Current() const;
    // Texts in the clipboard, its first empty line included.
    [[nodiscard]] std::vector<std::string> Clipboard() const;

    [[nodiscard]] ProfileRequest& Block() { return m_request; }

  private:
    ProfileRequest m_request{};
    std::string m_section;
    std::string m_key;
    std::array<char, profileTextSize + 200> m_value{};
};

// One operation with its texts.
struct Edit
{
    std::uint16_t operation;
    std::string key;
    std::string value;
    std::string section;
};

// Opens a file with the content, performs the edits one after the other and saves. Each edit must return
// `status`, the save 0. Returns what the file then holds; nothing when it is gone.
[[nodiscard]] std::optional<std::string> Edited(std::uint8_t flags, const std::string& before,
                                                const std::vector<Edit>& edits, std::int16_t status,
                                                const Location& where);

// The file reads `after` when the edit is done to `before`, and the edit returns `status`.
void ExpectEdit(std::uint8_t flags, const std::string& before, const Edit& edit, const std::string& after,
                std::int16_t status = PROF_OK, const Location& where = Location::current());

// The same, and doing it twice makes no difference.
void ExpectSettledEdit(std::uint8_t flags, const std::string& before, const Edit& edit,
                       const std::string& after, const Location& where = Location::current());

// The same, and `undo` brings back what was there before.
void ExpectUndoneEdit(std::uint8_t flags, const std::string& before, const Edit& edit,
                      const std::string& after, const Edit& undo,
                      const Location& where = Location::current());

} // namespace profile
