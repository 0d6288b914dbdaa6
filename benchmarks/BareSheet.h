// A sheet of plain Windows with the applet's templates and nothing behind them: what opening the applet is
// compared with.
#pragma once

#include "resources/resource.h"

#include <array>
#include <iterator>
#include <windows.h>

// They need windows.h before them.
#include <commctrl.h>
#include <prsht.h>

inline constexpr int bareTemplates[] = {IDD_SERVICES, IDD_SNMP,    IDD_STORAGE,
                                        IDD_DESKTOP,  IDD_PROCMON, IDD_BOARD};

inline INT_PTR CALLBACK AnswerNothing(HWND /*page*/, UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/)
{
    return message == WM_INITDIALOG ? TRUE : FALSE;
}

// Modal to `owner`; the templates come from `resources`. What PropertySheetA returns.
inline LONG ShowBareSheet(HMODULE resources, HWND owner)
{
    std::array<PROPSHEETPAGEA, std::size(bareTemplates)> pages{};
    for (std::size_t i = 0; i < pages.size(); ++i) {
        pages[i].dwSize = sizeof pages[i];
        pages[i].hInstance = resources;
        pages[i].pszTemplate = MAKEINTRESOURCEA(bareTemplates[i]);
        pages[i].pfnDlgProc = &AnswerNothing;
    }
    PROPSHEETHEADERA sheet{};
    sheet.dwSize = sizeof sheet;
    sheet.dwFlags = PSH_PROPSHEETPAGE;
    sheet.hwndParent = owner;
    sheet.hInstance = resources;
    sheet.pszCaption = "Bare sheet";
    sheet.nPages = static_cast<UINT>(pages.size());
    sheet.ppsp = pages.data();
    return static_cast<LONG>(PropertySheetA(&sheet));
}
