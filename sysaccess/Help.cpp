// Help file path and HTML Help.
#include "sysaccess/Help.h"

#include "sysaccess/core/Handles.h"
#include "sysaccess/core/LibrarySearch.h"

#include <array>
#include <cstring>
#include <htmlhelp.h>
#include <string>
#include <windows.h>

namespace {

constexpr LANGID japanese = MAKELANGID(LANG_JAPANESE, SUBLANG_DEFAULT);

constexpr char helpFile[] = "\\System32\\vtnmgmt\\vtmghost\\vtnmgmt.chm";
constexpr char japaneseHelpFile[] = "\\System32\\vtnmgmt\\vtmghost\\vtnmgmt_jpn.chm";

// Where the HTML Help control says that its library lies. Not in HKEY_CLASSES_ROOT, where users may put
// classes of their own before the system's.
constexpr char htmlHelpServer[] =
    "SOFTWARE\\Classes\\CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";
constexpr char htmlHelpLibrary[] = "hhctrl.ocx";
constexpr WORD htmlHelpOrdinal = 14;

std::array<char, MAX_PATH + sizeof japaneseHelpFile> helpFilePath{};

using HtmlHelpFunction = decltype(&HtmlHelpA);

// The registered path of the HTML Help library, its environment variables replaced; empty when it is not
// registered.
std::string RegisteredHtmlHelpPath()
{
    std::array<char, MAX_PATH> path{};
    auto size = static_cast<DWORD>(path.size());
    const LSTATUS status =
        RegGetValueA(HKEY_LOCAL_MACHINE, htmlHelpServer, nullptr, RRF_RT_REG_SZ, nullptr, path.data(), &size);
    return status == ERROR_SUCCESS ? path.data() : "";
}

// Loads a library by a path that begins with a drive, and by no other: Windows would look for it in
// directories that others may write to.
UniqueLibrary LoadByFullPath(const std::string& path)
{
    const bool isFull = path.size() > 2 && path[1] == ':' && path[2] == '\\';
    return UniqueLibrary(isFull ? LoadLibraryA(path.c_str()) : nullptr);
}

HtmlHelpFunction LoadHtmlHelp()
{
    UniqueLibrary library = LoadByFullPath(RegisteredHtmlHelpPath());
    if (!library)
        library = LoadSystemLibrary(htmlHelpLibrary);
    if (!library)
        return nullptr;
    const auto entry = EntryPoint<HtmlHelpFunction>(library.Get(), MAKEINTRESOURCEA(htmlHelpOrdinal));
    // Stays loaded, on purpose: its windows outlive every call, and the sheet.
    if (entry != nullptr)
        library.Release();
    return entry;
}

} // namespace

const char* HelpFilePath()
{
    return helpFilePath.data();
}

void UpdateHelpFilePath()
{
    // A Windows directory that does not fit leaves the path without one rather than cut in the middle.
    const auto length = GetEnvironmentVariableA("WINDIR", helpFilePath.data(), MAX_PATH);
    char* const end = helpFilePath.data() + (length < MAX_PATH ? length : 0);
    std::strcpy(end, GetSystemDefaultLangID() == japanese ? japaneseHelpFile : helpFile);
}

HWND ShowHelpTopic(const char* topic)
{
    // Looked for once per loaded applet: a failure stays one.
    static const HtmlHelpFunction htmlHelp = LoadHtmlHelp();
    if (htmlHelp == nullptr)
        return nullptr;
    return htmlHelp(nullptr, HelpFilePath(), HH_DISPLAY_TOPIC, reinterpret_cast<DWORD_PTR>(topic));
}
