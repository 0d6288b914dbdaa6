// Japanese texts on a system of another language: which bytes begin a character of two.
#pragma once

#include "imports/ImportHook.h"

#include <windows.h>

namespace support {

// While it lives, the module splits texts as on a Japanese system.
class CodePage932
{
  public:
    explicit CodePage932(HMODULE module) : m_isLeadByte(module, "IsDBCSLeadByte", &IsLeadByte) {}

  private:
    static BOOL WINAPI IsLeadByte(BYTE byte)
    {
        return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
    }

    ReplacedImport m_isLeadByte;
};

} // namespace support
