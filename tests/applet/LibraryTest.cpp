// The file itself: what it exports, imports and asks of Windows, and how large it is.
#include "applet/AppletTest.h"

#include <algorithm>
#include <set>

namespace {

using Names = std::set<std::string>;

// Everything that comes with Windows and that the applet may use.
const Names windowsLibraries = {"ADVAPI32.DLL", "COMCTL32.DLL", "COMDLG32.DLL", "GDI32.DLL",  "KERNEL32.DLL",
                                "MSVCRT.DLL",   "NETAPI32.DLL", "SHELL32.DLL",  "USER32.DLL", "VERSION.DLL"};

constexpr LONGLONG sizeLimit = 400 * 1024;

// The applet mapped as it is, its code not run.
class Library : public testing::Test
{
  protected:
    ~Library() override { FreeLibrary(m_module); }

    template <typename T>
    const T* At(DWORD offset) const
    {
        return reinterpret_cast<const T*>(reinterpret_cast<ULONG_PTR>(m_module) + offset);
    }
    const IMAGE_OPTIONAL_HEADER& Header() const
    {
        const auto* dos = At<IMAGE_DOS_HEADER>(0);
        return At<IMAGE_NT_HEADERS>(static_cast<DWORD>(dos->e_lfanew))->OptionalHeader;
    }
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

TEST_F(Library, ImportsWindowsOwnLibrariesOnly)
{
    Names imported;
    const auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(Directory(IMAGE_DIRECTORY_ENTRY_IMPORT));
    for (; library->Name != 0; ++library)
        imported.insert(InCapitals(At<char>(library->Name)));
    EXPECT_TRUE(imported.contains("KERNEL32.DLL"));
    EXPECT_TRUE(
        std::includes(windowsLibraries.begin(), windowsLibraries.end(), imported.begin(), imported.end()))
        << testing::PrintToString(imported);
}

TEST_F(Library, IsBuiltFor64BitWithAddressRandomisationAndDataProtection)
{
    EXPECT_EQ(Header().Magic, IMAGE_NT_OPTIONAL_HDR64_MAGIC);
    const WORD flags = Header().DllCharacteristics;
    EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE);
    EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA);
    EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_NX_COMPAT);
    EXPECT_NE(Directory(IMAGE_DIRECTORY_ENTRY_BASERELOC), 0U);
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

} // namespace
