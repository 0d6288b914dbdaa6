// Reads the library's own version resource.
#include "applet/SheetTitle.h"

#include "applet/VtnCpl.h"
#include "resources/resource.h"
#include "sysaccess/MessageBoxes.h"

#include <array>
#include <vector>

namespace {

constexpr DWORD pathSize = 255;

CString FileVersion()
{
    std::array<char, pathSize + 1> path{};
    GetModuleFileNameA(theApp.Instance(), path.data(), pathSize);
    DWORD ignored = 0;
    std::vector<BYTE> version(GetFileVersionInfoSizeA(path.data(), &ignored));
    const auto size = static_cast<DWORD>(version.size());
    if (size == 0 || !GetFileVersionInfoA(path.data(), 0, size, version.data()))
        return "";
    void* text = nullptr;
    UINT length = 0;
    if (!VerQueryValueA(version.data(), "\\StringFileInfo\\040904B0\\FileVersion", &text, &length) ||
        length == 0)
        return "";
    return static_cast<const char*>(text);
}

} // namespace

CString SheetTitle()
{
    CString title;
    title.Format(LoadText(IDS_SHEET_TITLE), static_cast<const char*>(FileVersion()));
    return title;
}
