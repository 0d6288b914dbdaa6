// The styles that a dialog template asks for. Windows change some of theirs while they live (a list without
// entries drops its scroll bar, a page its caption), so the styles are looked at here and not in the window.
#pragma once

#include <vector>
#include <windows.h>

struct DialogTemplateStyles
{
    DWORD dialog;
    std::vector<DWORD> controls; // in the template's order, which is the tab order
};

// Throws std::runtime_error when there is no extended template of this number in this language.
[[nodiscard]] DialogTemplateStyles ReadDialogTemplate(int id, LANGID language);
