// The resources that know no language: icon, manifest, version block.
#include "resources/resource.h"
#include "tests/unit/resources/ResourceReader.h"

#include <cstring>
#include <gtest/gtest.h>
#include <map>

namespace {

// The 16-bit resource types are spelled for 8-bit functions where UNICODE is undefined.
const wchar_t* const kIcon = MAKEINTRESOURCEW(3);
const wchar_t* const kGroupIcon = MAKEINTRESOURCEW(14);
const wchar_t* const kManifest = MAKEINTRESOURCEW(24);

struct IconImage
{
    BYTE width; // 0 stands for 256
    BYTE height;
    BYTE colours;
    BYTE reserved;
    WORD planes;
    WORD bits;
    WORD sizeLow; // the entry is packed to two bytes
    WORD sizeHigh;
    WORD id;
};
static_assert(sizeof(IconImage) == 14);

constexpr size_t kGroupHeaderSize = 6;

std::vector<IconImage> IconImages()
{
    const std::string_view group = FindResourceBytes(kGroupIcon, MAKEINTRESOURCEW(IDI_APPLET), 0);
    if (group.size() < kGroupHeaderSize)
        return {};
    std::vector<IconImage> images((group.size() - kGroupHeaderSize) / sizeof(IconImage));
    std::memcpy(images.data(), group.data() + kGroupHeaderSize, images.size() * sizeof(IconImage));
    return images;
}

std::string_view Pixels(const IconImage& image)
{
    return FindResourceBytes(kIcon, MAKEINTRESOURCEW(image.id), 0);
}

std::string ModulePath()
{
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, sizeof path);
    return path;
}

// The test program's version block.
std::vector<char> VersionBlock()
{
    const std::wstring path = FromUtf8(ModulePath());
    std::vector<char> block(GetFileVersionInfoSizeW(path.c_str(), nullptr));
    if (!GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()))
        ADD_FAILURE() << "no version block";
    return block;
}

// A text of one language of the version block ("040904B0", "041104B0"); empty when it is not there.
std::wstring VersionText(const std::wstring& language, const std::wstring& name)
{
    const std::vector<char> block = VersionBlock();
    void* text = nullptr;
    UINT length = 0;
    const std::wstring path = L"\\StringFileInfo\\" + language + L"\\" + name;
    return VerQueryValueW(block.data(), path.c_str(), &text, &length) ? static_cast<const wchar_t*>(text)
                                                                      : L"";
}

TEST(AppletIcon, HasAnImageForEverySizeThatWindowsShows)
{
    std::multiset<int> sizes;
    for (const IconImage& image : IconImages()) {
        sizes.insert(image.width == 0 ? 256 : image.width);
        EXPECT_EQ(image.width, image.height);
        EXPECT_EQ(image.bits, 32);
    }
    EXPECT_EQ(sizes, (std::multiset<int>{16, 24, 32, 48, 256}));
}

TEST(AppletIcon, StoresOnlyTheLargeImageCompressed)
{
    for (const IconImage& image : IconImages())
        EXPECT_EQ(Pixels(image).starts_with("\x89PNG"), image.width == 0) << int{image.width};
}

TEST(AppletIcon, LoadsAsTheControlPanelLoadsIt)
{
    for (const int size : {16, 32, 48}) {
        const auto icon =
            static_cast<HICON>(LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDI_APPLET), IMAGE_ICON,
                                          size, size, LR_DEFAULTCOLOR));
        EXPECT_NE(icon, nullptr) << size;
        DestroyIcon(icon);
    }
}

TEST(Manifest, HasTheNumberThatHostsLookFor)
{
    EXPECT_EQ(ResourceIds(kManifest, 0), std::set<int>{123});
}

TEST(Manifest, CarriesTheProjectsVersion)
{
    const std::string_view manifest = FindResourceBytes(kManifest, MAKEINTRESOURCEW(IDR_MANIFEST), 0);
    const std::string identity =
        "name=\"Norvale.ManagementAgents.ControlPanel\" version=\"" VTN_PROJECT_VERSION ".0\"";
    EXPECT_NE(manifest.find(identity), std::string_view::npos) << manifest;
}

TEST(VersionBlock, NamesTheProductInBothLanguages)
{
    const std::map<std::wstring, std::wstring> same = {{L"CompanyName", L"Norvale"},
                                                       {L"InternalName", L"vtnmgmt"},
                                                       {L"OriginalFilename", L"vtnmgmt.cpl"},
                                                       {L"ProductName", L"Norvale Management Agents"}};
    for (const auto& [name, text] : same) {
        EXPECT_EQ(VersionText(L"040904B0", name), text);
        EXPECT_EQ(VersionText(L"041104B0", name), text);
    }
    EXPECT_EQ(VersionText(L"040904B0", L"FileDescription"), L"Configures the Norvale Management Agents");
    EXPECT_EQ(VersionText(L"041104B0", L"FileDescription"), L"Norvale Management Agents を構成します");
}

TEST(VersionBlock, CarriesTheProjectsVersion)
{
    for (const wchar_t* const language : {L"040904B0", L"041104B0"}) {
        EXPECT_EQ(ToUtf8(VersionText(language, L"FileVersion")), VTN_PROJECT_VERSION);
        EXPECT_EQ(ToUtf8(VersionText(language, L"ProductVersion")), VTN_PROJECT_VERSION);
    }
}

TEST(VersionBlock, CarriesTheProjectsVersionAsNumbers)
{
    std::vector<char> block = VersionBlock();
    void* value = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\", &value, &length));
    const auto* info = static_cast<const VS_FIXEDFILEINFO*>(value);
    const std::string numbers = std::to_string(HIWORD(info->dwFileVersionMS)) + '.' +
                                std::to_string(LOWORD(info->dwFileVersionMS)) + '.' +
                                std::to_string(HIWORD(info->dwFileVersionLS));
    EXPECT_EQ(numbers, VTN_PROJECT_VERSION);
    EXPECT_EQ(info->dwProductVersionMS, info->dwFileVersionMS);
    EXPECT_EQ(info->dwFileType, static_cast<DWORD>(VFT_DLL));
}

TEST(VersionBlock, ListsBothLanguages)
{
    std::vector<char> block = VersionBlock();
    void* value = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\VarFileInfo\\Translation", &value, &length));
    ASSERT_EQ(length, 8U);
    const auto* pairs = static_cast<const WORD*>(value);
    EXPECT_EQ((std::vector<WORD>(pairs, pairs + 4)), (std::vector<WORD>{0x0409, 1200, 0x0411, 1200}));
}

} // namespace
