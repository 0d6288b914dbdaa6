// The libraries that the applet loads when it first needs them: from where, and what happens without them.
#include "applet/AppletTest.h"
#include "resources/resource.h"

#include <algorithm>
#include <iterator>
#include <windows.h>

// It needs windows.h before it.
#include <lm.h>

namespace {

// What the applet loads while this object lives, in lower case; those whose path ends in `missing` are not
// there.
class LoadedLibraries
{
  public:
    explicit LoadedLibraries(HMODULE module, std::string missing = "none")
        : m_missing(std::move(missing)), m_turn(this), m_load(module, "LoadLibraryA", &Load)
    {
    }

    [[nodiscard]] std::vector<std::string> Ending(const std::string& name) const
    {
        std::vector<std::string> found;
        std::ranges::copy_if(m_paths, std::back_inserter(found),
                             [&](const std::string& path) { return path.ends_with(name); });
        return found;
    }

  private:
    static HMODULE WINAPI Load(LPCSTR path)
    {
        LoadedLibraries& self = support::Turn<LoadedLibraries>::Active();
        std::string lower(path);
        CharLowerBuffA(lower.data(), static_cast<DWORD>(lower.size()));
        self.m_paths.push_back(lower);
        if (!lower.ends_with(self.m_missing))
            return self.m_load.Original<decltype(LoadLibraryA)>()(path);
        SetLastError(ERROR_MOD_NOT_FOUND);
        return nullptr;
    }

    std::string m_missing;
    std::vector<std::string> m_paths;
    support::Turn<LoadedLibraries> m_turn;
    support::ReplacedImport m_load;
};

// As LoadLibraryA names it, in lower case.
std::string InSystemDirectory(const std::string& name)
{
    std::array<char, MAX_PATH> directory{};
    GetSystemDirectoryA(directory.data(), MAX_PATH);
    std::string path = std::string(directory.data()) + '\\' + name;
    CharLowerBuffA(path.data(), static_cast<DWORD>(path.size()));
    return path;
}

using DelayLoad = AppletTest;

TEST_F(DelayLoad, LoadsTheVersionLibraryFromTheSystemDirectoryOnce)
{
    const LoadedLibraries loaded(m_host.Module());
    m_host.Open();
    m_host.PressCancel();
    m_host.Open();
    m_host.PressCancel();
    EXPECT_EQ(loaded.Ending("version.dll"), std::vector{InSystemDirectory("version.dll")});
}

TEST_F(DelayLoad, NeedsNoFileDialogAndNoSharesOnAMemberServer)
{
    m_machine.hostAgent.SetString("ClientIni", "C:\\LOGIN.BAT");
    const LoadedLibraries loaded(m_host.Module());
    m_host.Open();
    m_host.PressOk();
    EXPECT_TRUE(loaded.Ending("comdlg32.dll").empty());
    EXPECT_TRUE(loaded.Ending("netapi32.dll").empty());
}

TEST_F(DelayLoad, ShowsItsTitleWithoutAVersionWhereTheVersionCannotBeRead)
{
    const LoadedLibraries loaded(m_host.Module(), "version.dll");
    m_host.Open();
    EXPECT_EQ(m_host.Sheet().Title(), "Management Agents for Servers Version  - Windows");
    m_host.PressCancel();
    EXPECT_EQ(loaded.Ending("version.dll"), std::vector{InSystemDirectory("version.dll")});
}

TEST_F(DelayLoad, FindsNoScriptDirectoryWithoutTheLibraryOfShares)
{
    m_machine.productOptions.SetString("ProductType", "LanmanNT");
    const LoadedLibraries loaded(m_host.Module(), "netapi32.dll");
    m_host.Open();
    EXPECT_EQ(m_host.Page("Desktop Mgmt").Text(IDC_DESKTOP_SCRIPT), "\\LOGIN.BAT");
    m_host.PressCancel();
    EXPECT_EQ(loaded.Ending("netapi32.dll"), std::vector{InSystemDirectory("netapi32.dll")});
}

TEST_F(DelayLoad, KeepsThePathWhereTheFileDialogCannotBeShown)
{
    m_machine.productOptions.SetString("ProductType", "LanmanNT");
    m_machine.hostAgent.SetString("ClientIni", "C:\\LOGIN.BAT");
    const LoadedLibraries loaded(m_host.Module(), "comdlg32.dll");
    m_host.Open();
    const support::DialogDriver page = m_host.Page("Desktop Mgmt");
    page.Click(IDC_DESKTOP_BROWSE);
    EXPECT_EQ(page.Text(IDC_DESKTOP_SCRIPT), "C:\\LOGIN.BAT");
    EXPECT_EQ(loaded.Ending("comdlg32.dll"), std::vector{InSystemDirectory("comdlg32.dll")});
    m_host.PressCancel();
}

NET_API_STATUS WINAPI FreeNothing(LPVOID /*buffer*/)
{
    return 0;
}

TEST_F(DelayLoad, LeavesAHookBelowAnotherInPlace)
{
    const support::ReplacedImport lower(m_host.Module(), "NetApiBufferFree", &FreeNothing);
    const support::ReplacedImport upper(m_host.Module(), "NetApiBufferFree", &FreeNothing);
    EXPECT_EQ(upper.Original<decltype(FreeNothing)>(), &FreeNothing);
    EXPECT_NE(lower.Original<decltype(FreeNothing)>(), &FreeNothing);
}

} // namespace
