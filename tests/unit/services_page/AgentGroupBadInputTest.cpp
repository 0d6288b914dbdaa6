// The sub-agents of a service whose settings are missing, refused or not what they should be.
#include "AgentGroupTest.h"
#include "support/ThisProgram.h"
#include "sysaccess/core/ConfigurationError.h"

#include <array>

namespace {

using support::thisProgram;

void ExpectRefused(const AgentService& service, support::Location where = support::Location::current())
{
    try {
        const AgentGroup group(service);
        support::ReportFailure(where, "nothing was thrown");
    } catch (ConfigurationError error) {
        support::ExpectEqual(configurationRefused, error, "error", where);
    }
}

// Which of the two questions about a value is refused.
enum class Query
{
    Size,
    Data
};

[[nodiscard]] auto RefuseValue(const std::string& name, Query query)
{
    return support::HookImport<decltype(RegQueryValueExA)>(
        thisProgram, "RegQueryValueExA",
        [=](auto original, HKEY key, LPCSTR asked, LPDWORD reserved, LPDWORD type, LPBYTE data,
            LPDWORD size) {
            const bool isRefused = name == asked && (data == nullptr) == (query == Query::Size);
            return isRefused ? LSTATUS{ERROR_ACCESS_DENIED}
                             : original(key, asked, reserved, type, data, size);
        });
}

// --- the service

class AgentGroupBadInput : public AgentGroupLoad
{
  protected:
    AgentGroupBadInput() { AddAgent("VTNA"); }
};

TEST_F(AgentGroupBadInput, RefusesAServiceWithoutAKey)
{
    m_key.Delete();
    ExpectRefused(m_service);
}

TEST_F(AgentGroupBadInput, RefusesAServiceWithoutParameters)
{
    m_parameters.Delete();
    ExpectRefused(m_service);
}

TEST_F(AgentGroupBadInput, RefusesAServiceWhoseKeyCannotBeOpened)
{
    auto refuse = RefuseToOpen(m_key.Path());
    ExpectRefused(m_service);
}

TEST_F(AgentGroupBadInput, RefusesAServiceWithoutSubkeys)
{
    // Parameters is a subkey itself, so only a change in the middle of the reading leaves none.
    auto change = support::HookImport<decltype(RegEnumKeyA)>(
        thisProgram, "RegEnumKeyA",
        [](auto, HKEY, DWORD, LPSTR, DWORD) -> LSTATUS { return ERROR_NO_MORE_ITEMS; });
    ExpectRefused(m_service);
}

TEST_F(AgentGroupBadInput, RefusesAServiceWhoseListCannotBeRead)
{
    m_parameters.SetMultiString("SubServices", {"VTNA"});
    auto refuse = RefuseValue("SubServices", Query::Size);
    ExpectRefused(m_service);
}

// --- its list of active sub-agents

TEST_F(AgentGroupBadInput, HasNoActiveSubAgentsWithoutAList)
{
    EXPECT_FALSE(Entry(Load(), "VTNA").active);
}

TEST_F(AgentGroupBadInput, HasNoActiveSubAgentsInAnEmptyList)
{
    m_parameters.SetMultiString("SubServices", {});
    EXPECT_FALSE(Entry(Load(), "VTNA").active);
    m_parameters.SetRaw("SubServices", REG_MULTI_SZ, {});
    EXPECT_FALSE(Entry(Load(), "VTNA").active);
}

TEST_F(AgentGroupBadInput, IgnoresAListOfAnotherType)
{
    const support::Bytes list = support::MultiStringBytes({"VTNA"});
    for (const DWORD type : std::array<DWORD, 5>{REG_NONE, REG_SZ, REG_EXPAND_SZ, REG_BINARY, REG_DWORD}) {
        m_parameters.SetRaw("SubServices", type, list);
        EXPECT_FALSE(Entry(Load(), "VTNA").active) << type;
    }
}

TEST_F(AgentGroupBadInput, EndsTheListAtItsFirstEmptyName)
{
    m_parameters.SetMultiString("SubServices", {"VTNB", "", "VTNA"});
    EXPECT_FALSE(Entry(Load(), "VTNA").active);
}

TEST_F(AgentGroupBadInput, ReadsAListWithoutItsEndWithinItsSize)
{
    m_parameters.SetRaw("SubServices", REG_MULTI_SZ, {'V', 'T', 'N', 'B', 0, 'V', 'T', 'N', 'A'});
    EXPECT_TRUE(Entry(Load(), "VTNA").active);
}

TEST_F(AgentGroupBadInput, FindsASubAgentInAListOf5000Names)
{
    Names names;
    for (int i = 1; i < 5000; ++i)
        names.push_back("VTN" + std::to_string(i));
    names.emplace_back("vtna");
    m_parameters.SetMultiString("SubServices", names);
    EXPECT_EQ(Load().ActiveNames(5000), Names{"VTNA"});
}

TEST_F(AgentGroupBadInput, ShowsASubkeyWithANameOfFullLength)
{
    const std::string longest(255, 'x');
    m_key.CreateSubkey(longest);
    m_parameters.SetMultiString("SubServices", {longest});
    const AgentEntry entry = Entry(Load(), longest);
    EXPECT_EQ(entry.displayName, longest);
    EXPECT_TRUE(entry.active);
}

// --- a display name that is refused: the sub-agent can be switched all the same

class AgentGroupRefusedName : public AgentGroupBadInput
{
  protected:
    AgentGroupRefusedName()
    {
        AddAgent("VTNB");
        m_parameters.SetMultiString("SubServices", {"VTNA"});
    }

    void ExpectNamedByItsSubkey(support::Location where = support::Location::current())
    {
        const AgentGroup group = Load();
        support::ExpectEqual(std::string("VTNA"), Entry(group, "VTNA").displayName, "refused", where);
        support::ExpectEqual(true, Entry(group, "VTNA").active, "active", where);
        support::ExpectEqual(std::size_t{3}, group.Entries().size(), "entries", where);
    }
};

TEST_F(AgentGroupRefusedName, ShowsTheSubkeyWhenTheKeyDoesNotOpen)
{
    auto refuse = RefuseToOpen(m_key.Subkey("VTNA").Path());
    ExpectNamedByItsSubkey();
    EXPECT_EQ(Entry(Load(), "VTNB").displayName, "VTNB!");
}

TEST_F(AgentGroupRefusedName, ShowsTheSubkeyWhenTheSizeIsRefused)
{
    auto refuse = RefuseValue("DisplayName", Query::Size);
    ExpectNamedByItsSubkey();
}

TEST_F(AgentGroupRefusedName, ShowsTheSubkeyWhenTheTextIsRefused)
{
    auto refuse = RefuseValue("DisplayName", Query::Data);
    ExpectNamedByItsSubkey();
}

} // namespace
