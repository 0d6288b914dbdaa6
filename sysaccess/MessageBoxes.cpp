// Message boxes over the string table.
#include "sysaccess/MessageBoxes.h"

#include "resources/resource.h"

#include <afxwin.h>
#include <array>

CString LoadText(UINT textId)
{
    CString text;
    text.LoadString(textId);
    return text;
}

int MessageBoxById(HWND owner, UINT textId, UINT captionId, UINT style)
{
    return MessageBoxA(owner, LoadText(textId), LoadText(captionId), style);
}

void ReportMissingMemory(HWND owner)
{
    const HINSTANCE library = AfxGetStaticModuleState()->m_hCurrentResourceHandle;
    std::array<char, 512> text{};
    std::array<char, 64> caption{};
    LoadStringA(library, IDS_OUT_OF_MEMORY, text.data(), static_cast<int>(text.size()));
    LoadStringA(library, IDS_ERROR_CAPTION, caption.data(), static_cast<int>(caption.size()));
    MessageBoxA(owner, text.data(), caption.data(), MB_ICONHAND);
}

int MessageBoxText(HWND owner, const char* text, UINT style)
{
    return MessageBoxA(owner, text, LoadText(IDS_APPLET_NAME), style);
}
