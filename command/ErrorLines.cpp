// The form of the lines.
#include "command/ErrorLines.h"

#include "command/Document.h"

void ErrorLines::OutOfMemory(bool isWritten)
{
    m_streams.WriteError(m_isJson ? "{\"error\":\"" : "vtncfg: ");
    if (isWritten)
        m_streams.WriteError("the changes are written, but ");
    m_streams.WriteError("there is not enough memory to go on");
    m_streams.WriteError(m_isJson ? "\"}\n" : "\n");
}

// Without JSON the same escapes for what is not ASCII, but not for quotes and backslashes, which people read
// as they are.
void ErrorLines::Write(const char* kind, const std::string& text)
{
    if (m_isJson) {
        m_streams.WriteError(OneLine({{kind, text}}) + "\n");
        return;
    }
    std::string line;
    const std::string escaped = OneLine(text);
    for (std::size_t i = 1; i + 1 < escaped.size(); ++i) {
        if (escaped[i] == '\\' && (escaped[i + 1] == '"' || escaped[i + 1] == '\\'))
            ++i;
        line += escaped[i];
    }
    m_streams.WriteError("vtncfg: " + line + "\n");
}
