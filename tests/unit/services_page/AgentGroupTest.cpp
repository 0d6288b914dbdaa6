// The sub-agents of one service, read from keys of Wine's own registry that are made for the test.
#include "pages/AgentGroup.h"

#include "support/ImportHook.h"
#include "support/TestRegistry.h"
#include "sysaccess/ConfigurationError.h"

#include <array>
#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;

const HMODULE self = GetModuleHandleA(nullptr);

// The last row of the product's table, which alone has a pair, under a name of the tests.
AgentService TestService()
{
    AgentService service = agentServices.back();
    service.name = "VtnTestAgents";
    return service;
}

class AgentGroupBase : public testing::Test
{
  protected:
    // A sub-agent whose name for the user is its own with a "!".
    void AddAgent(const std::string& name) { m_key.Subkey(name).SetString("DisplayName", name + "!"); }

    // A subkey with a name that is too long to be part of a path.
    void AddLongNamed(const std::string& name)
    {
        HKEY parent = nullptr;
        HKEY subkey = nullptr;
        ASSERT_EQ(RegOpenKeyA(HKEY_LOCAL_MACHINE, m_key.Path().c_str(), &parent), ERROR_SUCCESS);
        ASSERT_EQ(RegCreateKeyA(parent, name.c_str(), &subkey), ERROR_SUCCESS);
        RegCloseKey(subkey);
        RegCloseKey(parent);
    }

    [[nodiscard]] AgentGroup Load() const { return AgentGroup(m_service); }

    // The entry with this name; the test fails when there is none.
    AgentEntry Entry(const AgentGroup& group, const std::string& name,
                     support::Location where = support::Location::current())
    {
        for (const AgentEntry& entry : group.Entries()) {
            if (entry.name == name)
                return entry;
        }
        support::ReportFailure(where, "no entry " + name);
        return {};
    }

    AgentService m_service = TestService();
    support::ScratchKey m_key{m_service.Key()};
    support::TestKey m_parameters{m_service.ParametersKey()};
};

void ExpectRefused(const AgentService& service, support::Location where = support::Location::current())
{
    try {
        const AgentGroup group(service);
        support::ReportFailure(where, "nothing was thrown");
    } catch (ConfigurationError error) {
        support::ExpectEqual(configurationRefused, error, "error", where);
    }
}

// --- reading

class AgentGroupLoad : public AgentGroupBase
{
  protected:
    AgentGroupLoad() { m_parameters.Create(); }
};

TEST_F(AgentGroupLoad, HasAnEntryForEachSubkeyInTheRegistrysOrder)
{
    for (const char* name : {"VTNZ", "VTNA", "VTNM"})
        AddAgent(name);
    const AgentGroup group = Load();
    Names names;
    for (const AgentEntry& entry : group.Entries())
        names.push_back(entry.name);
    EXPECT_EQ(names, m_key.SubkeyNames());
    EXPECT_EQ(names.size(), 4U);
}

TEST_F(AgentGroupLoad, ShowsASubAgentByItsDisplayName)
{
    m_key.Subkey("VTNA").SetString("DisplayName", "Array Agent");
    EXPECT_EQ(Entry(Load(), "VTNA").displayName, "Array Agent");
}

TEST_F(AgentGroupLoad, ShowsASubAgentWithoutADisplayNameByItsSubkey)
{
    m_key.Subkey("VTNA").Create();
    EXPECT_EQ(Entry(Load(), "VTNA").displayName, "VTNA");
}

TEST_F(AgentGroupLoad, ShowsASubAgentWhoseDisplayNameIsNoPlainTextByItsSubkey)
{
    m_key.Subkey("VTNA").SetExpandString("DisplayName", "%SystemRoot% Agent");
    m_key.Subkey("VTNB").SetDword("DisplayName", 1);
    m_key.Subkey("VTNC").SetMultiString("DisplayName", {"Agent"});
    const AgentGroup group = Load();
    EXPECT_EQ(Entry(group, "VTNA").displayName, "VTNA");
    EXPECT_EQ(Entry(group, "VTNB").displayName, "VTNB");
    EXPECT_EQ(Entry(group, "VTNC").displayName, "VTNC");
}

TEST_F(AgentGroupLoad, ReadsADisplayNameWithoutItsTerminator)
{
    m_key.Subkey("VTNA").SetUnterminatedString("DisplayName", "Array Agent");
    EXPECT_EQ(Entry(Load(), "VTNA").displayName, "Array Agent");
}

TEST_F(AgentGroupLoad, TellsADisplayNameOfSizeZeroFromAnEmptyOne)
{
    m_key.Subkey("VTNA").SetRaw("DisplayName", REG_SZ, {});
    m_key.Subkey("VTNB").SetString("DisplayName", "");
    const AgentGroup group = Load();
    EXPECT_EQ(Entry(group, "VTNA").displayName, "VTNA");
    EXPECT_EQ(Entry(group, "VTNB").displayName, "");
}

TEST_F(AgentGroupLoad, ShowsASubAgentThatRefusesItsDisplayNameByItsSubkey)
{
    AddAgent("VTNA");
    AddAgent("VTNB");
    auto refuse = support::HookImport<decltype(RegOpenKeyA)>(
        self, "RegOpenKeyA", [](auto original, HKEY root, LPCSTR path, PHKEY key) {
            const bool isRefused = std::string(path).ends_with("VTNA");
            return isRefused ? LSTATUS{ERROR_ACCESS_DENIED} : original(root, path, key);
        });
    const AgentGroup group = Load();
    EXPECT_EQ(Entry(group, "VTNA").displayName, "VTNA");
    EXPECT_EQ(Entry(group, "VTNB").displayName, "VTNB!");
}

TEST_F(AgentGroupLoad, KeepsTheActiveStateOfASubAgentThatRefusesItsDisplayName)
{
    AddAgent("VTNA");
    m_parameters.SetMultiString("SubServices", {"VTNA"});
    auto refuse = support::HookImport<decltype(RegOpenKeyA)>(
        self, "RegOpenKeyA", [](auto original, HKEY root, LPCSTR path, PHKEY key) {
            const bool isRefused = std::string(path).ends_with("VTNA");
            return isRefused ? LSTATUS{ERROR_ACCESS_DENIED} : original(root, path, key);
        });
    EXPECT_TRUE(Entry(Load(), "VTNA").active);
}

TEST_F(AgentGroupLoad, HidesSubkeysThatAreNoSubAgentsInAnyLetterCase)
{
    for (const char* name : {"security", "APPTRAP", "LINKAGE", "Enum", "vtnups", "VtnNiSnmp"})
        AddAgent(name);
    AddAgent("Linkages");
    const AgentGroup group = Load();
    for (const char* name : {"Parameters", "security", "APPTRAP", "LINKAGE", "Enum", "vtnups", "VtnNiSnmp"})
        EXPECT_FALSE(Entry(group, name).listable) << name;
    EXPECT_TRUE(Entry(group, "Linkages").listable);
}

TEST_F(AgentGroupLoad, KeepsAHiddenSubkeyInactiveEvenIfItIsListed)
{
    AddAgent("Linkage");
    m_parameters.SetMultiString("SubServices", {"Linkage"});
    EXPECT_FALSE(Entry(Load(), "Linkage").active);
}

TEST_F(AgentGroupLoad, ShowsTheSnmpSubkeyOfAnotherService)
{
    AddAgent("VTNSNMP");
    EXPECT_TRUE(Entry(Load(), "VTNSNMP").listable);
}

TEST_F(AgentGroupLoad, TakesListedSubAgentsForActiveInAnyLetterCase)
{
    for (const char* name : {"VTNA", "vtnb", "VTNC"})
        AddAgent(name);
    m_parameters.SetMultiString("SubServices", {"VtnB", "vtna"});
    const AgentGroup group = Load();
    EXPECT_TRUE(Entry(group, "VTNA").active);
    EXPECT_TRUE(Entry(group, "vtnb").active);
    EXPECT_FALSE(Entry(group, "VTNC").active);
}

TEST_F(AgentGroupLoad, DropsAListedNameThatHasNoSubkey)
{
    AddAgent("VTNA");
    m_parameters.SetMultiString("SubServices", {"VTNGONE", "VTNA"});
    EXPECT_EQ(Load().ActiveNames(10), Names{"VTNA"});
}

// --- what is wrong with the machine

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
    auto refuse = support::HookImport<decltype(RegOpenKeyA)>(
        self, "RegOpenKeyA", [&](auto original, HKEY root, LPCSTR path, PHKEY key) {
            return path == m_key.Path() ? LSTATUS{ERROR_ACCESS_DENIED} : original(root, path, key);
        });
    ExpectRefused(m_service);
}

TEST_F(AgentGroupBadInput, RefusesAServiceWithoutSubkeys)
{
    // Parameters is a subkey itself, so only a change in the middle of the reading leaves none.
    auto change = support::HookImport<decltype(RegEnumKeyA)>(
        self, "RegEnumKeyA", [](auto, HKEY, DWORD, LPSTR, DWORD) -> LSTATUS { return ERROR_NO_MORE_ITEMS; });
    ExpectRefused(m_service);
}

TEST_F(AgentGroupBadInput, HasNoActiveSubAgentsWhenTheListIsAbsentOrEmptyOrOfAnotherType)
{
    EXPECT_FALSE(Entry(Load(), "VTNA").active);
    m_parameters.SetMultiString("SubServices", {});
    EXPECT_FALSE(Entry(Load(), "VTNA").active);
    m_parameters.SetRaw("SubServices", REG_MULTI_SZ, {});
    EXPECT_FALSE(Entry(Load(), "VTNA").active);
    m_parameters.SetString("SubServices", "VTNA");
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
    AddLongNamed(longest);
    m_parameters.SetMultiString("SubServices", {longest});
    const AgentEntry entry = Entry(Load(), longest);
    EXPECT_EQ(entry.displayName, longest);
    EXPECT_TRUE(entry.active);
}

// --- pairs

class AgentPairs : public AgentGroupLoad
{
  protected:
    void AddPair()
    {
        AddAgent("VtnNicS"); // before its partner in the registry's order, if that is alphabetical
        AddAgent("VtnMNic");
    }
};

TEST_F(AgentPairs, TheSecondTakesTheFirstsStateWhateverTheListSays)
{
    AddPair();
    m_parameters.SetMultiString("SubServices", {"VTNMNIC"});
    EXPECT_TRUE(Entry(Load(), "VtnNicS").active);
    m_parameters.SetMultiString("SubServices", {"VTNNICS"});
    const AgentGroup group = Load();
    EXPECT_FALSE(Entry(group, "VtnMNic").active);
    EXPECT_FALSE(Entry(group, "VtnNicS").active);
}

TEST_F(AgentPairs, EachKnowsTheOther)
{
    AddAgent("VTNA");
    AddPair();
    const AgentGroup group = Load();
    const AgentEntry first = Entry(group, "VtnMNic");
    const AgentEntry second = Entry(group, "VtnNicS");
    ASSERT_TRUE(first.partner && second.partner);
    EXPECT_EQ(group.Entries()[*first.partner].name, "VtnNicS");
    EXPECT_EQ(group.Entries()[*second.partner].name, "VtnMNic");
    EXPECT_FALSE(Entry(group, "VTNA").partner);
}

TEST_F(AgentPairs, OneAloneHasNoPartnerAndKeepsItsState)
{
    AddAgent("VTNNICS");
    m_parameters.SetMultiString("SubServices", {"VTNNICS"});
    const AgentEntry entry = Entry(Load(), "VTNNICS");
    EXPECT_FALSE(entry.partner);
    EXPECT_TRUE(entry.active);
}

TEST_F(AgentPairs, AreSwitchedTogetherFromEitherSide)
{
    AddPair();
    AgentGroup group = Load();
    const std::size_t first = *Entry(group, "VtnNicS").partner;
    const std::size_t second = *Entry(group, "VtnMNic").partner;
    group.SetActive(first, true);
    EXPECT_EQ(group.ActiveNames(10).size(), 2U);
    group.SetActive(second, false);
    EXPECT_TRUE(group.ActiveNames(10).empty());
}

TEST_F(AgentPairs, BelongToTheirServiceAlone)
{
    m_service.pairs = agentServices.front().pairs;
    AddPair();
    EXPECT_FALSE(Entry(Load(), "VtnMNic").partner);
}

// --- switching

TEST_F(AgentGroupLoad, SwitchesASubAgentWithoutPartnerAlone)
{
    AddAgent("VTNA");
    AddAgent("VTNB");
    AgentGroup group = Load();
    for (std::size_t i = 0; i < group.Entries().size(); ++i) {
        if (group.Entries()[i].name == "VTNB")
            group.SetActive(i, true);
    }
    EXPECT_EQ(group.ActiveNames(10), Names{"VTNB"});
}

TEST_F(AgentGroupLoad, NamesNoMoreActiveSubAgentsThanTheLimit)
{
    for (const char* name : {"VTNA", "VTNB", "VTNC"})
        AddAgent(name);
    m_parameters.SetMultiString("SubServices", {"VTNC", "VTNB", "VTNA"});
    const AgentGroup group = Load();
    const Names all = group.ActiveNames(3);
    EXPECT_EQ(all.size(), 3U);
    EXPECT_EQ(group.ActiveNames(2), Names(all.begin(), all.begin() + 2));
    EXPECT_TRUE(group.ActiveNames(0).empty());
}

// --- the table

TEST(AgentServices, StandInTheOrderOfLoadingAndSaving)
{
    Names keys;
    for (const AgentService& service : agentServices)
        keys.push_back(service.Key());
    const std::string services = "SYSTEM\\CurrentControlSet\\Services\\";
    EXPECT_EQ(keys, (Names{services + "VtMgHost", services + "VtMgServ", services + "VtMgStor",
                           services + "VTNNicMgmt"}));
}

TEST(AgentServices, KeepTheirParametersAndSnmpSettingsInSubkeys)
{
    const AgentService& nic = agentServices[3];
    EXPECT_EQ(nic.ParametersKey(), nic.Key() + "\\Parameters");
    EXPECT_EQ(nic.SnmpKey(), nic.Key() + "\\VTNNISNMP");
    EXPECT_EQ(agentServices[0].SnmpKey(), agentServices[0].Key() + "\\VTNSNMP");
}

TEST(AgentServices, EachHideItsOwnSnmpSubkey)
{
    for (const AgentService& service : agentServices)
        EXPECT_TRUE(IsAmong(service.hiddenSubkeys, service.snmpSubkey)) << service.name;
    EXPECT_FALSE(IsAmong(agentServices[3].hiddenSubkeys, "VTNSNMP"));
    EXPECT_FALSE(IsAmong(agentServices[0].hiddenSubkeys, "VTNNISNMP"));
}

} // namespace
