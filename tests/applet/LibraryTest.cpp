// The file itself: what it exports, imports and asks of Windows, how large it is, and the classes that can be
// made of it.
#include "applet/AppletTest.h"
#include "mfc/afx.h"
#include "resources/resource.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <set>
#include <span>
#include <windows.h>

// It needs windows.h before it.
#include <delayimp.h>

namespace {

using Names = std::set<std::string>;

// All of them come with Windows. Control Panel, which loads every applet before anybody wants to see it,
// holds the first ones anyway; the others are loaded when they are needed.
const Names librariesAtLoadTime = {"ADVAPI32.DLL", "COMCTL32.DLL", "GDI32.DLL",
                                   "KERNEL32.DLL", "MSVCRT.DLL",   "USER32.DLL"};
const Names librariesOnDemand = {"COMDLG32.DLL", "NETAPI32.DLL", "VERSION.DLL"};

constexpr LONGLONG sizeLimit = 320 * 1024;

template <typename T>
const T* At(HMODULE module, DWORD offset)
{
    return reinterpret_cast<const T*>(reinterpret_cast<ULONG_PTR>(module) + offset);
}

const IMAGE_NT_HEADERS& HeadersOf(HMODULE module)
{
    return *At<IMAGE_NT_HEADERS>(module, static_cast<DWORD>(At<IMAGE_DOS_HEADER>(module, 0)->e_lfanew));
}

// The applet mapped as it is, its code not run.
class Library : public testing::Test
{
  protected:
    ~Library() override { FreeLibrary(m_module); }

    template <typename T>
    const T* At(DWORD offset) const
    {
        return ::At<T>(m_module, offset);
    }
    const IMAGE_OPTIONAL_HEADER& Header() const { return HeadersOf(m_module).OptionalHeader; }
    DWORD Directory(int entry) const { return Header().DataDirectory[entry].VirtualAddress; }

    HMODULE m_module = LoadLibraryExA(appletPath.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
};

std::string InCapitals(std::string text)
{
    CharUpperBuffA(text.data(), static_cast<DWORD>(text.size()));
    return text;
}

TEST_F(Library, ExportsCPlAppletAndNothingElse)
{
    const auto* exports = At<IMAGE_EXPORT_DIRECTORY>(Directory(IMAGE_DIRECTORY_ENTRY_EXPORT));
    ASSERT_EQ(exports->NumberOfNames, 1U);
    EXPECT_EQ(exports->NumberOfFunctions, 1U);
    EXPECT_STREQ(At<char>(*At<DWORD>(exports->AddressOfNames)), "CPlApplet");
}

TEST_F(Library, LoadsNothingAtOnceButWhatControlPanelHolds)
{
    Names imported;
    const auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(Directory(IMAGE_DIRECTORY_ENTRY_IMPORT));
    for (; library->Name != 0; ++library)
        imported.insert(InCapitals(At<char>(library->Name)));
    EXPECT_EQ(imported, librariesAtLoadTime);
}

TEST_F(Library, LoadsOnDemandWhatManyRunsNeverNeed)
{
    Names delayed;
    for (const ImgDelayDescr* library : support::DelayedLibraries(m_module))
        delayed.insert(InCapitals(At<char>(library->rvaDLLName)));
    EXPECT_EQ(delayed, librariesOnDemand);
}

TEST_F(Library, IsBuiltFor64BitAndHardened)
{
    EXPECT_EQ(Header().Magic, IMAGE_NT_OPTIONAL_HDR64_MAGIC);
    const WORD flags = Header().DllCharacteristics;
    EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE);
    EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA);
    EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_NX_COMPAT);
    EXPECT_NE(Directory(IMAGE_DIRECTORY_ENTRY_BASERELOC), 0U);
}

TEST_F(Library, HasNoSectionBothWritableAndExecutable)
{
    constexpr DWORD writtenAndRun = IMAGE_SCN_MEM_WRITE | IMAGE_SCN_MEM_EXECUTE;
    const IMAGE_NT_HEADERS& headers = HeadersOf(m_module);
    const std::span sections(reinterpret_cast<const IMAGE_SECTION_HEADER*>(&headers + 1),
                             headers.FileHeader.NumberOfSections);
    ASSERT_FALSE(sections.empty());
    for (const IMAGE_SECTION_HEADER& section : sections)
        EXPECT_NE(section.Characteristics & writtenAndRun, writtenAndRun)
            << reinterpret_cast<const char*>(section.Name);
}

TEST_F(Library, IsMadeForWindows7AndLater)
{
    EXPECT_EQ(Header().MajorOperatingSystemVersion, 6);
    EXPECT_EQ(Header().MinorOperatingSystemVersion, 1);
    EXPECT_EQ(Header().MajorSubsystemVersion, 6);
    EXPECT_EQ(Header().MinorSubsystemVersion, 1);
}

TEST_F(Library, BearsNoTimeOfItsBuild)
{
    EXPECT_EQ(HeadersOf(m_module).FileHeader.TimeDateStamp, 0U);
}

// Whether a window class is redirected to the side-by-side library of another version, under the manifest at
// hand.
bool IsRedirected(const char* windowClass)
{
    ACTCTX_SECTION_KEYED_DATA found{};
    found.cbSize = sizeof found;
    return FindActCtxSectionStringA(0, nullptr, ACTIVATION_CONTEXT_SECTION_WINDOW_CLASS_REDIRECTION,
                                    windowClass, &found) != FALSE;
}

TEST_F(Library, ShowsItsControlsInTheVisualStyle)
{
    ACTCTXA request{};
    request.cbSize = sizeof request;
    request.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
    request.lpSource = appletPath.c_str();
    request.lpResourceName = MAKEINTRESOURCEA(IDR_MANIFEST);
    const HANDLE manifest = CreateActCtxA(&request);
    ASSERT_NE(manifest, INVALID_HANDLE_VALUE);
    ULONG_PTR cookie = 0;
    ASSERT_TRUE(ActivateActCtx(manifest, &cookie));
    EXPECT_TRUE(IsRedirected("Button"));
    DeactivateActCtx(0, cookie);
    ReleaseActCtx(manifest);
}

#ifdef NDEBUG
TEST_F(Library, IsSmall)
{
    WIN32_FILE_ATTRIBUTE_DATA file{};
    ASSERT_TRUE(GetFileAttributesExA(appletPath.c_str(), GetFileExInfoStandard, &file));
    EXPECT_EQ(file.nFileSizeHigh, 0U);
    EXPECT_LT(LONGLONG{file.nFileSizeLow}, sizeLimit);
}
#endif

// --- run-time classes, in the library as it runs

using RunTimeClass = AppletTest;

bool IsInside(HMODULE module, const void* address)
{
    const auto offset = reinterpret_cast<ULONG_PTR>(address) - reinterpret_cast<ULONG_PTR>(module);
    return offset < HeadersOf(module).OptionalHeader.SizeOfImage;
}

// The words of the library's initialised data, any of which may begin a record.
std::span<const ULONG_PTR> DataOf(HMODULE module)
{
    const IMAGE_NT_HEADERS& headers = HeadersOf(module);
    const auto* section = reinterpret_cast<const IMAGE_SECTION_HEADER*>(&headers + 1);
    while (std::strcmp(reinterpret_cast<const char*>(section->Name), ".data") != 0)
        ++section;
    return {At<ULONG_PTR>(module, section->VirtualAddress), section->Misc.VirtualSize / sizeof(ULONG_PTR)};
}

// The class of this name; null when the library has none.
const CRuntimeClass* FindClass(HMODULE module, const char* name)
{
    for (const ULONG_PTR& word : DataOf(module)) {
        const auto* const text = reinterpret_cast<const char*>(word);
        if (IsInside(module, text) && std::strcmp(text, name) == 0)
            return reinterpret_cast<const CRuntimeClass*>(&word);
    }
    return nullptr;
}

TEST_F(RunTimeClass, MakesTheEventLogPageThatNoSheetShows)
{
    const CRuntimeClass* const eventPage = FindClass(m_host.Module(), "CVtnEventPropPage");
    ASSERT_NE(eventPage, nullptr);
    EXPECT_STREQ(eventPage->m_pBaseClass->m_lpszClassName, "CPropertyPage");
    ASSERT_NE(eventPage->m_pfnCreateObject, nullptr);
    const std::unique_ptr<CObject> page(eventPage->m_pfnCreateObject());
    EXPECT_EQ(page->GetRuntimeClass(), eventPage);
}

} // namespace
