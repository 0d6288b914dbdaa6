// Walks an extended dialog template (DLGTEMPLATEEX), which has no declaration in the system's headers: its
// texts have any length.
#include "tests/unit/resources/DialogTemplate.h"

#include "tests/unit/resources/ResourceReader.h"

#include <cstring>
#include <stdexcept>
#include <string>

namespace {

class TemplateReader
{
  public:
    explicit TemplateReader(std::string_view bytes) : m_bytes(bytes) {}

    template <typename Number>
    Number Read()
    {
        Number number;
        std::memcpy(&number, m_bytes.substr(m_at, sizeof number).data(), sizeof number);
        m_at += sizeof number;
        return number;
    }

    [[nodiscard]] size_t At() const { return m_at; }
    void Skip(size_t count) { m_at += count; }
    void AlignToDword() { m_at = (m_at + 3) & ~size_t{3}; }

    // A text, or 0xFFFF and a number in its place.
    void SkipName()
    {
        WORD unit = Read<WORD>();
        if (unit == 0xFFFF) {
            Skip(sizeof(WORD));
            return;
        }
        while (unit != 0)
            unit = Read<WORD>();
    }

  private:
    std::string_view m_bytes;
    size_t m_at = 0;
};

constexpr size_t kPlaceSize = 4 * sizeof(WORD);

// Version, signature, help id and extended style come before the style; place, menu, class, caption and font
// behind the number of controls.
DialogTemplate ReadHeader(TemplateReader& reader)
{
    DialogTemplate header = {};
    reader.Skip(2 * sizeof(WORD) + 2 * sizeof(DWORD));
    header.style = reader.Read<DWORD>();
    header.controlStyles.resize(reader.Read<WORD>());
    reader.Skip(kPlaceSize);
    reader.SkipName();
    reader.SkipName();
    reader.SkipName();
    header.pointSizeAt = reader.At();
    header.pointSize = reader.Read<WORD>();
    reader.Skip(sizeof(WORD) + 2 * sizeof(BYTE));
    reader.SkipName();
    return header;
}

// Help id and extended style come before the style; place, id, class, text and creation data behind it.
DWORD ReadControl(TemplateReader& reader)
{
    reader.AlignToDword();
    reader.Skip(2 * sizeof(DWORD));
    const auto style = reader.Read<DWORD>();
    reader.Skip(kPlaceSize + sizeof(DWORD));
    reader.SkipName();
    reader.SkipName();
    reader.Skip(reader.Read<WORD>());
    return style;
}

} // namespace

DialogTemplate ReadDialogTemplate(int id, LANGID language)
{
    // RT_DIALOG; an extended template begins with version 1 and this signature.
    const std::string_view bytes = FindResourceBytes(MAKEINTRESOURCEW(5), MAKEINTRESOURCEW(id), language);
    if (!bytes.starts_with(std::string_view("\1\0\xFF\xFF", 4)))
        throw std::runtime_error("no extended dialog " + std::to_string(id) + " in " +
                                 LanguageName(language));
    TemplateReader reader(bytes);
    DialogTemplate dialog = ReadHeader(reader);
    for (DWORD& style : dialog.controlStyles)
        style = ReadControl(reader);
    return dialog;
}
