// The steps for the clients where they are near a limit: long paths, and no memory.
#include "DesktopSaveTest.h"

#include "support/FailingAllocations.h"
#include "support/FailNth.h"
#include "support/ThisProgram.h"

#include <new>

namespace {

using support::ExpectMultiString;
using support::StoredValue;

using support::thisProgram;

// --- paths at the edge of what fits; the calls that might refuse them for reasons of their own succeed

class DesktopManagementPath : public DesktopManagementSave
{
  protected:
    static BOOL WINAPI Copy(LPCSTR source, LPCSTR /*target*/, BOOL /*failIfExists*/)
    {
        s_source = source;
        return TRUE;
    }
    static BOOL WINAPI WriteProfile(LPCSTR /*section*/, LPCSTR /*key*/, LPCSTR /*text*/, LPCSTR path)
    {
        s_profile = path;
        return TRUE;
    }

    // The system directory gets a path with which `directory`, below it, has `length` characters.
    static void Lengthen(const std::string& directory, std::size_t length)
    {
        const std::string root = "C:\\" + std::string(length - directory.size() - 3, 'w');
        SetEnvironmentVariableA("SystemRoot", root.c_str());
    }

    static inline std::string s_source;
    static inline std::string s_profile;
    support::ReplacedImport m_copy{thisProgram, "CopyFileA", &Copy};
    support::ReplacedImport m_writeProfile{thisProgram, "WritePrivateProfileStringA", &WriteProfile};
};

TEST_F(DesktopManagementPath, OfTheAgentsMayHave259Characters)
{
    Lengthen("\\system32\\vtnmgmt", 259);
    ExpectThrows(Settings(true), SwitchChanged, IDS_SHARE_ADD_FAILED); // whose path is longer
    EXPECT_EQ(s_source.size(), 259 + std::string("\\VTNCLNT.EXE").size());
}

TEST_F(DesktopManagementPath, OfTheAgentsWith260CharactersIsNotCopiedFrom)
{
    s_source.clear();
    Lengthen("\\system32\\vtnmgmt", 260);
    ExpectThrows(Settings(true), SwitchChanged, IDS_CLIENT_COPY_FAILED);
    EXPECT_EQ(s_source, "");
}

TEST_F(DesktopManagementPath, OfTheReportsMayHave259Characters)
{
    Lengthen("\\system32\\vtnmgmt\\vtndata", 259);
    Settings(true).Save(SwitchChanged);
    EXPECT_EQ(m_shares.Find("VTNDATA")->path.size(), 259U);
}

TEST_F(DesktopManagementPath, OfTheReportsWith260CharactersIsNotShared)
{
    Lengthen("\\system32\\vtnmgmt\\vtndata", 260);
    ExpectThrows(Settings(true), SwitchChanged, IDS_SHARE_ADD_FAILED);
    EXPECT_TRUE(m_shares.Calls().empty());
}

TEST_F(DesktopManagementPath, OfTheProfileMayHave260Characters)
{
    DesktopManagement settings = Settings(true);
    settings.scriptDirectory = std::string(260 - sizeof "VTNCLNT.INI", 'd');
    settings.Save(SwitchChanged);
    EXPECT_EQ(s_profile, settings.scriptDirectory + "\\VTNCLNT.INI");
}

TEST_F(DesktopManagementPath, OfTheProfileWith261CharactersIsNotWritten)
{
    s_profile.clear();
    DesktopManagement settings = Settings(true);
    settings.scriptDirectory = std::string(261 - sizeof "VTNCLNT.INI", 'd');
    ExpectThrows(settings, SwitchChanged, IDS_CLIENT_PROFILE_FAILED);
    EXPECT_EQ(s_profile, "");
}

// --- a list of null-session shares that cannot be read must never be taken for an empty one: writing it back
// would take other programs' shares away

class NullSessionShares : public TestDomain
{
  protected:
    using Step = void (*)();

    struct Outcome
    {
        bool hasThrown = false;
        bool lackedMemory = false;
    };

    // Runs the step while the allocation after `allowed` others fails.
    static Outcome RunShortOfMemory(Step step, int allowed)
    {
        Outcome outcome;
        const support::FailingAllocations one(allowed, 1);
        try {
            step();
        } catch (ConfigurationError) {
            outcome.hasThrown = true;
        } catch (const std::bad_alloc&) {
            outcome.hasThrown = true;
        }
        outcome.lackedMemory = one.HasFailed();
        return outcome;
    }

    // Runs the step short of memory at each place where it allocates; at the end it has run with all it
    // needs.
    void ExpectRefusesWithoutMemory(Step step)
    {
        const std::optional<StoredValue> before = m_server.Value("NullSessionShares");
        int allowed = 0;
        for (; true; ++allowed) {
            const Outcome outcome = RunShortOfMemory(step, allowed);
            EXPECT_EQ(outcome.hasThrown, outcome.lackedMemory) << allowed;
            if (!outcome.lackedMemory)
                break;
            EXPECT_EQ(m_server.Value("NullSessionShares"), before) << allowed;
        }
        EXPECT_GT(allowed, 3);
    }
};

TEST_F(NullSessionShares, StayWithoutMemoryToAddOne)
{
    ExpectRefusesWithoutMemory(&OpenShareToAnonymous);
    ExpectMultiString(m_server, "NullSessionShares", {"COMCFG", "DFS$", "VTNDATA"});
}

TEST_F(NullSessionShares, StayWithoutMemoryToDropOne)
{
    m_server.SetMultiString("NullSessionShares", {"COMCFG", "VTNDATA", "a share with a long name"});
    ExpectRefusesWithoutMemory(&CloseShareToAnonymous);
    ExpectMultiString(m_server, "NullSessionShares", {"COMCFG", "a share with a long name"});
}

TEST_F(NullSessionShares, StayWhenTheirSizeIsUnknown)
{
    for (const Step step : {&OpenShareToAnonymous, &CloseShareToAnonymous}) {
        const support::FailNth<"RegQueryValueExA", decltype(RegQueryValueExA)> fail(thisProgram, 1,
                                                                                    ERROR_MORE_DATA);
        EXPECT_THROW(step(), ConfigurationError);
        ExpectMultiString(m_server, "NullSessionShares", {"COMCFG", "DFS$"});
    }
}

} // namespace
