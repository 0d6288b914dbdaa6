// Message boxes over the string table.
#include "sysaccess/MessageBoxes.h"

#include "resources/resource.h"

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

int MessageBoxText(HWND owner, const char* text, UINT style)
{
    return MessageBoxA(owner, text, LoadText(IDS_APPLET_NAME), style);
}
