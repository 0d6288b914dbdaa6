// Records with texts, as replaced functions of Windows hand them out: the texts stand behind the record, or
// the last of several, in one buffer.
#pragma once

#include <cstring>
#include <string>
#include <utility>

namespace support {

// Copies texts with their zeros into a buffer, one behind the other. The buffer has the room for them.
template <typename Character>
class TextsBehind
{
  public:
    // `end` is where the record ends.
    explicit TextsBehind(void* end) : m_end(static_cast<Character*>(end)) {}

    // Where the copy stands.
    Character* Put(const std::basic_string<Character>& text)
    {
        std::memcpy(m_end, text.c_str(), (text.size() + 1) * sizeof(Character));
        return std::exchange(m_end, m_end + text.size() + 1);
    }

  private:
    Character* m_end;
};

} // namespace support
