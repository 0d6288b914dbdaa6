// What the profile engine has to do, said again in the simplest way: a file is a vector of lines. Slow,
// obvious and written apart from the engine; the fuzzer compares the two after every operation.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace fuzz {

struct ModelLine
{
    std::string text;
    std::uint32_t kind;
};

struct ModelRequest
{
    std::uint16_t operation = 0;
    std::string section;
    std::string key;
    std::string value; // after a successful read what was read
};

class ProfileModel
{
  public:
    ProfileModel(std::uint8_t flags, const std::string& content);

    std::int16_t Execute(ModelRequest& request);

    // What saving leaves; nothing when it deletes the file.
    [[nodiscard]] std::optional<std::string> Saved() const;

    std::vector<ModelLine> lines;
    std::optional<std::size_t> cursor;
    std::vector<ModelLine> clipboard; // what was copied below an empty line; without that, nothing
    bool keyOnly = false;             // the caller's format "%s"

  private:
    using Place = std::optional<std::size_t>;

    [[nodiscard]] bool IsSectioned() const;
    [[nodiscard]] bool IsRaw() const;
    [[nodiscard]] std::string Format(const std::string& key, const std::string& value) const;
    [[nodiscard]] bool HasKey(const ModelLine& line, const std::string& key) const;
    [[nodiscard]] std::string ValueOf(const std::string& key) const;
    [[nodiscard]] Place Section(const std::string& name) const;
    [[nodiscard]] std::size_t SectionEnd(std::size_t header) const;
    bool Find(const std::string& key, std::size_t from);

    std::int16_t ExecuteOnList(ModelRequest& request, bool isFound);
    std::int16_t ExecuteFromTop(ModelRequest& request);
    std::int16_t ExecuteOnSection(ModelRequest& request);
    std::int16_t ExecuteOnCursor(ModelRequest& request);
    std::int16_t ExecuteAnywhere(ModelRequest& request);
    std::int16_t Read(ModelRequest& request, std::size_t from);
    std::int16_t Rewrite(const std::string& text);
    std::int16_t Insert(std::size_t place, const std::string& text);
    std::int16_t Append(const ModelRequest& request);
    std::int16_t AppendSection(const std::string& name);
    std::int16_t InsertInSection(const ModelRequest& request, std::size_t header);
    void DeleteCurrent();

    std::uint8_t m_flags;
};

} // namespace fuzz
