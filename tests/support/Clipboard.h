// The clipboard as another program has filled it, for tests of pasting.
#pragma once

#include "support/UiThread.h"

#include <cstring>
#include <stdexcept>
#include <string>
#include <windows.h>

namespace support {

// Puts text on the clipboard in place of what is there; `owner` is any window of this process. Throws
// std::runtime_error when another program keeps the clipboard to itself.
inline void CopyToClipboard(HWND owner, const std::string& text)
{
    if (!WaitUntil([owner] { return OpenClipboard(owner) != FALSE; }))
        throw std::runtime_error("the clipboard does not open");
    EmptyClipboard();
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    std::strcpy(static_cast<char*>(GlobalLock(block)), text.c_str());
    GlobalUnlock(block);
    SetClipboardData(CF_TEXT, block); // which owns it from now on
    CloseClipboard();
}

} // namespace support
