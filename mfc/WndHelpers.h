// Small questions about windows that several of the library's sources ask. For these only.
#pragma once

#include "afxwnd.h"

// The class that Windows gives dialogs, pages and sheets.
constexpr LPCSTR AfxDialogClass = "#32770";

// A window's whole text.
void AfxReadText(HWND window, CString& text);

// The handle of an object that may be missing.
inline HWND AfxHandleOf(const CWnd* window)
{
    return window == nullptr ? nullptr : window->m_hWnd;
}

// The top-level window that stands for `parent`, or for the application's main window when parent is null:
// what a dialog has as its owner.
HWND AfxOwnerFor(const CWnd* parent);
