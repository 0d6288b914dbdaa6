// What a dialog template asks for. Windows change some of their styles while they live (a list without
// entries drops its scroll bar, a page its caption), so the styles are looked at here and not in the window.
#pragma once

#include <vector>
#include <windows.h>

struct DialogTemplate
{
    DWORD style;
    WORD pointSize;
    size_t pointSizeAt;               // bytes from the template's start
    std::vector<DWORD> controlStyles; // in the template's order, which is the tab order
};

// Throws std::runtime_error when there is no extended template of this number in this language.
[[nodiscard]] DialogTemplate ReadDialogTemplate(int id, LANGID language);
