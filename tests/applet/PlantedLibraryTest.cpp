// Libraries that another person has put in the applet's way: none of them may be loaded.
#include "applet/AppletTest.h"
#include "support/ProgramPath.h"
#include "support/TestDirectory.h"

#include <array>
#include <memory>

namespace {

constexpr char trace[] = "VTN_TEST_PLANTED"; // where a planted library leaves its path
constexpr char htmlHelpServer[] = "CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";

// The current directory is another one for the life of this object.
class CurrentDirectory
{
  public:
    explicit CurrentDirectory(const std::string& path)
    {
        GetCurrentDirectoryA(MAX_PATH, m_before.data());
        SetCurrentDirectoryA(path.c_str());
    }
    ~CurrentDirectory() { SetCurrentDirectoryA(m_before.data()); }
    CurrentDirectory(const CurrentDirectory&) = delete;
    CurrentDirectory& operator=(const CurrentDirectory&) = delete;

  private:
    std::array<char, MAX_PATH> m_before{};
};

// A copy of the planted library that is deleted again.
class Planted
{
  public:
    explicit Planted(std::string path) : m_path(std::move(path))
    {
        if (CopyFileA(support::BesideThisProgram("planted.dll").c_str(), m_path.c_str(), TRUE) == FALSE)
            throw std::runtime_error("not planted: " + m_path);
        SetEnvironmentVariableA(trace, nullptr);
    }
    ~Planted() { DeleteFileA(m_path.c_str()); }
    Planted(const Planted&) = delete;
    Planted& operator=(const Planted&) = delete;

    [[nodiscard]] const std::string& Path() const { return m_path; }

  private:
    std::string m_path;
};

// Path of the planted library that was loaded; empty when none was.
std::string Loaded()
{
    std::array<char, MAX_PATH> path{};
    GetEnvironmentVariableA(trace, path.data(), path.size());
    return path.data();
}

class PlantedLibrary : public AppletTest
{
  protected:
    // Asks for help, which is not to be shown: the applet does not find the entry of any library.
    void AskForHelp()
    {
        const auto entry = support::HookImport<decltype(GetProcAddress)>(
            m_host.Module(), "GetProcAddress", [](auto original, HMODULE library, LPCSTR name) -> FARPROC {
                return name == MAKEINTRESOURCEA(14) ? nullptr : original(library, name);
            });
        m_host.Open();
        m_host.Sheet().Click(IDHELP);
        m_host.PressCancel();
    }

    support::TestDirectory m_directory; // another person's
};

TEST_F(PlantedLibrary, IsFoundByWhoeverLooksInTheCurrentDirectory)
{
    const Planted library(m_directory.File("vthstutl.dll"));
    const CurrentDirectory current(m_directory.Path());
    FreeLibrary(LoadLibraryA("vthstutl.dll"));
    EXPECT_EQ(Loaded(), library.Path());
}

TEST_F(PlantedLibrary, InTheCurrentDirectoryIsNoHostUtility)
{
    const Planted library(m_directory.File("vthstutl.dll"));
    const CurrentDirectory current(m_directory.Path());
    m_host.Open();
    m_host.Page("Process Monitor");
    EXPECT_EQ(Loaded(), "");
    m_host.PressCancel();
    // The program looks where it did before.
    FreeLibrary(LoadLibraryA("vthstutl.dll"));
    EXPECT_EQ(Loaded(), library.Path());
}

TEST_F(PlantedLibrary, LeavesTheProgramsOwnLibraryDirectory)
{
    SetDllDirectoryA("C:\\windows\\system32\\drivers");
    m_host.Open();
    m_host.Page("Process Monitor");
    m_host.PressCancel();
    std::array<char, MAX_PATH> directory{};
    GetDllDirectoryA(directory.size(), directory.data());
    SetDllDirectoryA(nullptr);
    EXPECT_STREQ(directory.data(), "C:\\windows\\system32\\drivers");
}

TEST_F(PlantedLibrary, InTheUsersClassesIsNoHtmlHelp)
{
    const Planted library(m_directory.File("hhctrl.ocx"));
    const std::string key = std::string("Software\\Classes\\") + htmlHelpServer;
    RegSetKeyValueA(HKEY_CURRENT_USER, key.c_str(), nullptr, REG_SZ, library.Path().c_str(),
                    static_cast<DWORD>(library.Path().size() + 1));
    std::vector<std::string> asked;
    {
        const auto read = support::HookImport<decltype(RegGetValueA)>(
            m_host.Module(), "RegGetValueA",
            [&](auto original, HKEY root, LPCSTR path, LPCSTR name, DWORD flags, LPDWORD type, PVOID data,
                LPDWORD size) {
                asked.push_back((root == HKEY_LOCAL_MACHINE ? "HKLM\\" : "elsewhere\\") + std::string(path));
                return original(root, path, name, flags, type, data, size);
            });
        AskForHelp();
    }
    RegDeleteTreeA(HKEY_CURRENT_USER, "Software\\Classes\\CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}");
    EXPECT_EQ(Loaded(), "");
    // Not every system that this test runs on shows a program the user's classes among its own.
    EXPECT_EQ(asked, std::vector{std::string("HKLM\\SOFTWARE\\Classes\\") + htmlHelpServer});
}

// The directories of PATH are the machine's to choose; see docs/settings.md.
TEST_F(PlantedLibrary, InPathIsTheHostUtilityOfAMachineWithoutOne)
{
    const Planted library(m_directory.File("vthstutl.dll"));
    const support::SavedVariable path("PATH", m_directory.Path());
    m_host.Open();
    m_host.Page("Process Monitor");
    EXPECT_EQ(Loaded(), library.Path());
    m_host.PressCancel();
}

// Every other library has one place, wherever else the same name stands.
TEST_F(PlantedLibrary, UnderTheNameOfAnyOtherIsNotLoaded)
{
    std::vector<std::unique_ptr<Planted>> libraries;
    for (const char* const name : {"hhctrl.ocx", "comdlg32.dll", "netapi32.dll", "version.dll", "RB4USER.DLL",
                                   "VTNMHOST.DLL", "comctl32.dll", "uxtheme.dll"})
        libraries.push_back(std::make_unique<Planted>(m_directory.File(name)));
    const support::SavedVariable path("PATH", m_directory.Path());
    const CurrentDirectory current(m_directory.Path());
    m_host.Open();
    for (const std::string& tab : m_host.Tabs())
        m_host.Page(tab);
    m_host.PressCancel();
    AskForHelp();
    EXPECT_EQ(Loaded(), "");
}

class UnregisteredHelp : public PlantedLibrary
{
  protected:
    UnregisteredHelp() { m_server.Delete(); }

    support::SavedKey m_server{std::string("SOFTWARE\\Classes\\") + htmlHelpServer};
};

TEST_F(UnregisteredHelp, IsNotTakenFromTheCurrentDirectory)
{
    const Planted library(m_directory.File("hhctrl.ocx"));
    const CurrentDirectory current(m_directory.Path());
    AskForHelp();
    EXPECT_EQ(Loaded(), "");
}

TEST_F(UnregisteredHelp, IsNotTakenFromTheProgramsDirectory)
{
    const Planted library(support::BesideThisProgram("hhctrl.ocx"));
    AskForHelp();
    EXPECT_EQ(Loaded(), "");
}

TEST_F(UnregisteredHelp, IsNotLoadedFromTheCurrentDirectory)
{
    const Planted library(m_directory.File("planted.ocx"));
    const CurrentDirectory current(m_directory.Path());
    m_server.SetString("", "planted.ocx");
    AskForHelp();
    EXPECT_EQ(Loaded(), "");
}

} // namespace
