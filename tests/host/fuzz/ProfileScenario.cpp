// Bytes to operations, engine against model; see the header.
#include "ProfileScenario.h"

#include "desktop/core/ProfileEngine.h"
#include "ProfileModel.h"
#include "support/TestDirectory.h"

#include <algorithm>
#include <array>
#include <windows.h>

namespace fuzz {
namespace {

// Texts that files and operations have in common, so that searches find something.
constexpr const char* commonTexts[] = {
    "",   "a",       "A",         "b",     "a b",          "a=b", "a;b", ";;",       "Options", "[Options]",
    "[A", "rem off", "  a  =  b", "\tb\t", "\x83\\;\x83=", "[",   "]",   "a=b;c;;d", "= =",     "\r\n",
};

constexpr std::uint16_t operationCodes[] = {1,  2,  3,  4,  5,  6,  7,  8,  10, 11, 13, 14, 15, 16, 17,
                                            18, 20, 21, 23, 40, 41, 42, 50, 51, 52, 60, 61, 9,  99};

constexpr std::uint8_t modes[] = {0, PROF_COMPACT, PROF_SECTIONED, PROF_COMPACT | PROF_SECTIONED};

// Copying the last section and pasting it doubles the file; beyond this number of lines a run ends.
constexpr std::size_t mostLines = 200;

// Bytes that are taken from the front; zeros when there are no more.
class Input
{
  public:
    Input(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

    [[nodiscard]] bool IsEmpty() const { return m_size == 0; }

    std::uint8_t Byte()
    {
        if (m_size == 0)
            return 0;
        --m_size;
        return *m_data++;
    }

    std::string Bytes(std::size_t count)
    {
        count = std::min(count, m_size);
        std::string bytes(reinterpret_cast<const char*>(m_data), count);
        m_data += count;
        m_size -= count;
        return bytes;
    }

    // A common text, bytes as they come, or a long run of one character. Never with a zero: the engine's
    // texts end there.
    std::string Text()
    {
        const std::uint8_t choice = Byte();
        if (choice < 0x80)
            return commonTexts[choice % std::size(commonTexts)];
        if (choice < 0xF0)
            return std::string(Bytes(choice - 0x80U).c_str());
        return std::string((choice - 0xF0U) * 43, 'x');
    }

  private:
    const std::uint8_t* m_data;
    std::size_t m_size;
};

// Compared where they stand: copies would take most of the time.
bool AreEqual(const ProfileLine* line, const std::vector<ModelLine>& expected)
{
    for (const ModelLine& other : expected) {
        if (line == nullptr || line->kind != other.kind || line->text != other.text)
            return false;
        line = line->next;
    }
    return line == nullptr;
}

// Where the cursor is; nothing without one.
std::optional<std::size_t> CursorOf(const ProfileRequest& request)
{
    std::size_t place = 0;
    for (const ProfileLine* line = request.file->head->next; line != nullptr; line = line->next, ++place) {
        if (line == request.current)
            return place;
    }
    return std::nullopt;
}

bool IsLinkedBothWays(const ProfileRequest& request)
{
    const ProfileLine* line = request.file->head;
    while (line->next != nullptr && line->next->prev == line)
        line = line->next;
    return line->next == nullptr && request.file->head->prev == nullptr;
}

// The engine's side: the request, open for as long as this lives.
class Engine
{
  public:
    Engine(const std::string& path, std::uint8_t flags)
    {
        m_request.flags = flags;
        m_status = ProfileOpen(path.c_str(), m_request);
    }
    ~Engine() { ProfileClose(m_request); }
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    [[nodiscard]] bool IsOpen() const { return m_status == PROF_OK; }

    std::int16_t Execute(ModelRequest& texts, bool keyOnly)
    {
        std::array<char, 1024> value{};
        std::copy(texts.value.begin(), texts.value.end(), value.begin());
        const char* const format = m_request.format;
        m_request.operation = texts.operation;
        m_request.section = texts.section.c_str();
        m_request.key = texts.key.c_str();
        m_request.value = value.data();
        m_request.format = keyOnly ? "%s" : format;
        const std::int16_t status = ProfileExecute(m_request);
        m_request.format = format;
        texts.value = value.data();
        return status;
    }

    std::int16_t Save() { return ProfileSave(m_request); }

    [[nodiscard]] std::string DifferenceFrom(const ProfileModel& model) const
    {
        if (!IsLinkedBothWays(m_request))
            return "broken links";
        if (!AreEqual(m_request.file->head->next, model.lines))
            return "different lines";
        if (CursorOf(m_request) != model.cursor || (m_request.current == nullptr) == model.cursor.has_value())
            return "different cursor";
        if (!AreEqual(m_request.clipboard, model.clipboard))
            return "different clipboard";
        return "";
    }

  private:
    ProfileRequest m_request{};
    std::int16_t m_status;
};

ModelRequest NextRequest(Input& input)
{
    ModelRequest request;
    request.operation = operationCodes[input.Byte() % std::size(operationCodes)];
    request.section = input.Text();
    request.key = input.Text();
    request.value = input.Text();
    return request;
}

std::string RunOperation(Engine& engine, ProfileModel& model, Input& input)
{
    ModelRequest ours = NextRequest(input);
    ModelRequest expected = ours;
    const std::int16_t status = engine.Execute(ours, model.keyOnly);
    if (status != model.Execute(expected))
        return "different status " + std::to_string(status);
    if (ours.value != expected.value)
        return "different value";
    return engine.DifferenceFrom(model);
}

} // namespace

std::string RunProfileScenario(const std::string& path, const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    const std::uint8_t mode = modes[input.Byte() % std::size(modes)];
    const std::uint8_t choices = input.Byte();
    const bool keyOnly = choices % 4 == 3;
    const std::uint8_t flags = choices / 4 % 8 == 7 ? mode | PROF_CREATE : mode;
    const std::size_t contentSize = input.Byte() * 256U + input.Byte();
    const std::string content = input.Bytes(contentSize);
    support::WriteBytes(path, content);
    Engine engine(path, flags);
    if (!engine.IsOpen())
        return "cannot open";
    ProfileModel model(flags, content);
    model.keyOnly = keyOnly;
    std::string difference = engine.DifferenceFrom(model);
    for (int step = 0; difference.empty() && !input.IsEmpty() && model.lines.size() < mostLines; ++step) {
        difference = RunOperation(engine, model, input);
        if (!difference.empty())
            return "step " + std::to_string(step) + ": " + difference;
    }
    if (!difference.empty())
        return "after reading: " + difference;
    if (engine.Save() != PROF_OK)
        return "cannot save";
    const std::optional<std::string> saved = support::ReadBytes(path);
    DeleteFileA(path.c_str());
    return saved == model.Saved() ? "" : "different file";
}

} // namespace fuzz
