// The test trap, with a real mutex and a library in the host agent's place.
#include "pages/core/TestTrap.h"

#include "imports/ImportHook.h"
#include "machine/HostAgent.h"
#include "support/FailNth.h"
#include "support/RegistryCalls.h"
#include "support/ServiceScript.h"
#include "support/TestRegistry.h"

#include <array>
#include <gtest/gtest.h>

namespace {

using support::InstalledHostAgent;

constexpr char plainName[] = "VtnHostAlerterInited";
constexpr char globalName[] = "Global\\VtnHostAlerterInited";

HMODULE Program()
{
    return GetModuleHandleA(nullptr);
}

constexpr char sendingLibrary[] = "host_agent_stand_in.dll";

class TestTrap : public testing::Test
{
  protected:
    std::string m_text;
};

// --- outcomes

TEST_F(TestTrap, IsSentByTheHostAgentsLibrary)
{
    const support::ReadyAlerter alerter;
    const InstalledHostAgent library(sendingLibrary);
    EXPECT_EQ(SendTestTrap(m_text), TestTrapOutcome::Sent);
    EXPECT_EQ(InstalledHostAgent::SentText(), m_text);
    EXPECT_TRUE(m_text.starts_with("Management Agents Test Trap sent - ")) << m_text;
    EXPECT_FALSE(InstalledHostAgent::IsLoaded());
}

TEST_F(TestTrap, IsNotSentBeforeTheAlerterIsReady)
{
    const InstalledHostAgent library(sendingLibrary);
    EXPECT_EQ(SendTestTrap(m_text), TestTrapOutcome::AlerterNotReady);
    EXPECT_EQ(InstalledHostAgent::SentText(), "");
}

TEST_F(TestTrap, LeavesTheAlertersMutexAlone)
{
    InstalledHostAgent::Remove();
    {
        const support::ReadyAlerter alerter;
        EXPECT_EQ(SendTestTrap(m_text), TestTrapOutcome::NotGenerated);
    }
    EXPECT_EQ(OpenMutexA(SYNCHRONIZE, FALSE, plainName), nullptr); // nobody keeps it open
}

TEST_F(TestTrap, IsNotGeneratedWithoutTheLibrary)
{
    InstalledHostAgent::Remove();
    const support::ReadyAlerter alerter;
    EXPECT_EQ(SendTestTrap(m_text), TestTrapOutcome::NotGenerated);
    EXPECT_EQ(m_text, "");
}

TEST_F(TestTrap, IsNotGeneratedWhenTheLibraryRefuses)
{
    const support::ReadyAlerter alerter;
    const InstalledHostAgent library(sendingLibrary, ERROR_ACCESS_DENIED);
    EXPECT_EQ(SendTestTrap(m_text), TestTrapOutcome::NotGenerated);
    EXPECT_NE(InstalledHostAgent::SentText(), "");
    EXPECT_FALSE(InstalledHostAgent::IsLoaded());
}

TEST_F(TestTrap, KeepsALibraryWithoutTheEntryLoaded)
{
    const support::ReadyAlerter alerter;
    const InstalledHostAgent library("host_agent_without_entry.dll");
    EXPECT_EQ(SendTestTrap(m_text), TestTrapOutcome::NotGenerated);
    EXPECT_TRUE(InstalledHostAgent::IsLoaded());
    FreeLibrary(GetModuleHandleA("VTNMHOST.DLL"));
    EXPECT_FALSE(InstalledHostAgent::IsLoaded()); // once
}

TEST_F(TestTrap, IsNotGeneratedWithALongLibraryPath)
{
    const support::ReadyAlerter alerter;
    const std::string windows = support::EnvironmentVariable("windir");
    SetEnvironmentVariableA("windir", std::string(300, 'w').c_str());
    EXPECT_EQ(SendTestTrap(m_text), TestTrapOutcome::NotGenerated);
    SetEnvironmentVariableA("windir", windows.c_str());
}

// --- text

std::string EnglishDate(const SYSTEMTIME& time)
{
    static constexpr std::array days = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                        "Thursday", "Friday", "Saturday"};
    static constexpr std::array months = {"January",   "February", "March",    "April",
                                          "May",       "June",     "July",     "August",
                                          "September", "October",  "November", "December"};
    return std::string(days[time.wDayOfWeek]) + ", " + months[time.wMonth - 1U] + " " +
           std::to_string(time.wDay) + ", " + std::to_string(time.wYear);
}

std::string EnglishTime(const SYSTEMTIME& time)
{
    std::array<char, 16> text{};
    wsprintfA(text.data(), "%d:%02d:%02d %s", time.wHour % 12 == 0 ? 12 : time.wHour % 12, time.wMinute,
              time.wSecond, time.wHour < 12 ? "AM" : "PM");
    return text.data();
}

std::string ExpectedText()
{
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return "Management Agents Test Trap sent - " + EnglishDate(now) + " " + EnglishTime(now);
}

// The language of the user whose test run this is.
std::string ExpectedLanguage()
{
    const std::string language = support::EnvironmentVariable("VTN_TEST_LANGUAGE");
    return language.empty() ? std::to_string(GetUserDefaultLangID()) : language;
}

// Runs in the language of the system and, a second time, in Japanese.
TEST_F(TestTrap, GivesDateAndTimeInEnglish)
{
    ASSERT_EQ(std::to_string(GetUserDefaultLangID()), ExpectedLanguage());
    const support::ReadyAlerter alerter;
    const InstalledHostAgent library(sendingLibrary);
    std::string before;
    std::string after;
    do { // until no second has ended in between
        before = ExpectedText();
        ASSERT_EQ(SendTestTrap(m_text), TestTrapOutcome::Sent);
        after = ExpectedText();
    } while (before != after);
    EXPECT_EQ(m_text, before);
}

// --- name of the mutex

struct System
{
    const char* name;
    DWORD majorVersion;
    WORD suites;        // as version 5 and later report them
    bool hasSuiteValue; // as older versions do
    const char* mutex;
};

void PrintTo(const System& system, std::ostream* out)
{
    *out << system.name;
}

const System systems[] = {
    {"Version4", 4, 0, false, plainName},
    {"Version4TerminalServer", 4, 0, true, globalName},
    {"Version4LooksAtNoBit", 4, VER_SUITE_TERMINAL, false, plainName},
    {"Version5", 5, 0, false, plainName},
    {"Version5TerminalServer", 5, VER_SUITE_TERMINAL, false, globalName},
    {"Version5LooksAtNoValue", 5, 0, true, plainName},
    {"Version5RemoteAdministration", 5, VER_SUITE_SINGLEUSERTS, false, plainName},
    {"Version10", 10, VER_SUITE_SINGLEUSERTS, false, plainName},
    {"Version10TerminalServer", 10, VER_SUITE_TERMINAL | VER_SUITE_SINGLEUSERTS, false, globalName},
};

class AlerterMutex : public TestTrap
{
  protected:
    AlerterMutex() { m_productOptions.DeleteValue("ProductSuite"); }

    // The name that is opened on a system of this version; `answers` is how many version queries succeed.
    std::string OpenedName(DWORD majorVersion, WORD suites, int answers = 2)
    {
        std::string opened;
        auto version = support::HookImport<decltype(GetVersionExA)>(
            Program(), "GetVersionExA", [&](auto, LPOSVERSIONINFOA info) {
                info->dwMajorVersion = majorVersion;
                if (info->dwOSVersionInfoSize == sizeof(OSVERSIONINFOEXA))
                    reinterpret_cast<OSVERSIONINFOEXA*>(info)->wSuiteMask = suites;
                return answers-- > 0 ? TRUE : FALSE;
            });
        auto mutex = support::HookImport<decltype(OpenMutexA)>(
            Program(), "OpenMutexA", [&](auto original, DWORD access, BOOL inherit, LPCSTR name) {
                opened = access == SYNCHRONIZE && inherit == FALSE ? name : "wrong access";
                return original(access, inherit, name);
            });
        m_outcome = SendTestTrap(m_text);
        return opened;
    }

    TestTrapOutcome m_outcome{};
    support::SavedKey m_productOptions{"SYSTEM\\CurrentControlSet\\Control\\ProductOptions"};
};

class EachSystem : public AlerterMutex, public testing::WithParamInterface<System>
{
};

TEST_P(EachSystem, HasItsNameForTheMutex)
{
    if (GetParam().hasSuiteValue)
        m_productOptions.SetMultiString("ProductSuite", {"Enterprise", "Terminal Server"});
    EXPECT_EQ(OpenedName(GetParam().majorVersion, GetParam().suites), GetParam().mutex);
}

INSTANTIATE_TEST_SUITE_P(Systems, EachSystem, testing::ValuesIn(systems),
                         [](const auto& tested) { return tested.param.name; });

TEST_F(AlerterMutex, HasItsPlainNameWithoutAVersion)
{
    m_productOptions.SetMultiString("ProductSuite", {"Terminal Server"});
    EXPECT_EQ(OpenedName(4, VER_SUITE_TERMINAL, 0), plainName);
    EXPECT_EQ(OpenedName(5, VER_SUITE_TERMINAL, 1), plainName);
}

TEST_F(AlerterMutex, HasItsGlobalNameOnlyForTheExactSuite)
{
    for (const char* suite : {"terminal server", "Terminal Server ", "Terminal", ""}) {
        m_productOptions.SetMultiString("ProductSuite", {suite});
        EXPECT_EQ(OpenedName(4, 0), plainName) << suite;
    }
}

TEST_F(AlerterMutex, HasItsGlobalNameFromAnUnterminatedList)
{
    const std::string suites("Enterprise\0Terminal Server", 26);
    m_productOptions.SetRaw("ProductSuite", REG_MULTI_SZ, support::Bytes(suites.begin(), suites.end()));
    EXPECT_EQ(OpenedName(4, 0), globalName);
    m_productOptions.SetRaw("ProductSuite", REG_MULTI_SZ, {'T'});
    EXPECT_EQ(OpenedName(4, 0), plainName);
}

TEST_F(AlerterMutex, HasItsPlainNameWithoutAUsableList)
{
    m_productOptions.SetRaw("ProductSuite", REG_MULTI_SZ, {});
    EXPECT_EQ(OpenedName(4, 0), plainName);
    m_productOptions.SetString("ProductSuite", "Terminal Server");
    EXPECT_EQ(OpenedName(4, 0), plainName);
    m_productOptions.Delete();
    EXPECT_EQ(OpenedName(4, 0), plainName);
}

TEST_F(AlerterMutex, HasItsPlainNameFromAnUnreadableList)
{
    m_productOptions.SetMultiString("ProductSuite", {"Terminal Server"});
    for (const LSTATUS error : {ERROR_ACCESS_DENIED, ERROR_MORE_DATA}) {
        for (const int query : {1, 2}) {
            const support::FailNth<"RegQueryValueExA", decltype(RegQueryValueExA)> fail(Program(), query,
                                                                                        error);
            EXPECT_EQ(OpenedName(4, 0), plainName) << "query " << query << ", error " << error;
        }
    }
}

TEST_F(AlerterMutex, LeavesNoKeyOpen)
{
    m_productOptions.SetMultiString("ProductSuite", {"Enterprise", "Terminal Server"});
    const support::FailNth<"RegQueryValueExA", decltype(RegQueryValueExA)> fail(Program(), 4,
                                                                                ERROR_ACCESS_DENIED);
    const support::RegistryCalls calls(Program());
    EXPECT_EQ(OpenedName(4, 0), globalName);
    EXPECT_EQ(OpenedName(4, 0), plainName);
    m_productOptions.DeleteValue("ProductSuite");
    EXPECT_EQ(OpenedName(4, 0), plainName);
    EXPECT_EQ(calls.Log().CallsOf({"RegOpenKeyA"}).size(), 3);
    EXPECT_EQ(calls.OpenKeys(), std::vector<std::string>());
}

TEST_F(AlerterMutex, IsFoundByItsGlobalName)
{
    InstalledHostAgent::Remove();
    const support::ReadyAlerter alerter(globalName);
    EXPECT_EQ(OpenedName(5, VER_SUITE_TERMINAL), globalName);
    EXPECT_EQ(m_outcome, TestTrapOutcome::NotGenerated); // ready, but without a library
}

// --- whether to offer it

class TestTrapOffer : public testing::Test
{
  protected:
    TestTrapOffer() { m_trap.SetBinary("TrapData", {1}); }

    bool IsOffered(DWORD snmpState)
    {
        support::ServiceScript services(Program());
        services.Add("SNMP", {.states = {support::ServiceState(snmpState)}});
        return CanSendTestTrap();
    }

    support::SavedKey m_trap{"SYSTEM\\VortanHost\\Host\\Component\\GenericTrap"};
};

TEST_F(TestTrapOffer, NeedsAnActiveSnmpService)
{
    for (const int state : {SERVICE_START_PENDING, SERVICE_RUNNING, SERVICE_CONTINUE_PENDING,
                            SERVICE_PAUSE_PENDING, SERVICE_PAUSED})
        EXPECT_TRUE(IsOffered(static_cast<DWORD>(state))) << state;
    EXPECT_FALSE(IsOffered(SERVICE_STOPPED));
    EXPECT_FALSE(IsOffered(SERVICE_STOP_PENDING));
}

TEST_F(TestTrapOffer, TakesAnUnreachableManagerForActiveSnmp)
{
    support::ServiceScript services(Program());
    services.Fail("OpenSCManagerA", "", ERROR_ACCESS_DENIED);
    EXPECT_TRUE(CanSendTestTrap());
}

TEST_F(TestTrapOffer, NeedsTrapDataOfAnyTypeAndSize)
{
    m_trap.SetRaw("TrapData", REG_NONE, {});
    EXPECT_TRUE(IsOffered(SERVICE_RUNNING));
    m_trap.DeleteValue("TrapData");
    EXPECT_FALSE(IsOffered(SERVICE_RUNNING));
    m_trap.Delete();
    EXPECT_FALSE(IsOffered(SERVICE_RUNNING));
}

TEST_F(TestTrapOffer, CountsTrapDataThatIsTooLong)
{
    using Fail = support::FailNth<"RegQueryValueExA", decltype(RegQueryValueExA)>;
    const auto isOfferedWith = [&](LSTATUS answer) {
        const Fail fail(Program(), 1, answer);
        return IsOffered(SERVICE_RUNNING);
    };
    EXPECT_TRUE(isOfferedWith(ERROR_MORE_DATA));
    EXPECT_FALSE(isOfferedWith(ERROR_ACCESS_DENIED));
}

TEST_F(TestTrapOffer, ReadsTheTrapsKeyAndClosesIt)
{
    support::RegistryCalls calls(Program());
    EXPECT_TRUE(IsOffered(SERVICE_RUNNING));
    EXPECT_EQ(calls.Log().CallsOf({"RegOpenKeyExA"}),
              std::vector<std::string>{"RegOpenKeyExA HKLM\\" + m_trap.Path() + ", access 0x20019"});
    EXPECT_EQ(calls.OpenKeys(), std::vector<std::string>());
}

} // namespace
