// Makes one line of a message box's text.
#include "command/ErrorTexts.h"

#include "command/CodePage.h"
#include "sysaccess/core/Texts.h"

std::string ErrorText(UINT textId)
{
    std::string line;
    for (const char character : ProgramText(textId)) {
        const bool isBlank = character == ' ' || character == '\n';
        if (!isBlank || !line.ends_with(' '))
            line += isBlank ? ' ' : character;
    }
    return line.empty() ? "error " + std::to_string(textId) : ToUtf8(line);
}

std::string ServiceErrorText(UINT textId, const std::string& displayName)
{
    std::string text = ErrorText(textId);
    const std::size_t place = text.find("%s");
    return place == std::string::npos ? text + " (" + ToUtf8(displayName) + ")"
                                      : text.replace(place, 2, ToUtf8(displayName));
}
