// The sub-agents of a service whose settings are in order.
#include "AgentGroupTest.h"

namespace {

// --- reading

TEST_F(AgentGroupLoad, ListsSubkeysInTheRegistrysOrder)
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

TEST_F(AgentGroupLoad, ShowsTheSubkeyWithoutADisplayName)
{
    m_key.Subkey("VTNA").Create();
    EXPECT_EQ(Entry(Load(), "VTNA").displayName, "VTNA");
}

TEST_F(AgentGroupLoad, ShowsTheSubkeyWithoutATextToDisplay)
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

TEST_F(AgentGroupLoad, DistinguishesASizelessDisplayNameFromAnEmptyOne)
{
    m_key.Subkey("VTNA").SetRaw("DisplayName", REG_SZ, {});
    m_key.Subkey("VTNB").SetString("DisplayName", "");
    const AgentGroup group = Load();
    EXPECT_EQ(Entry(group, "VTNA").displayName, "VTNA");
    EXPECT_EQ(Entry(group, "VTNB").displayName, "");
}

TEST_F(AgentGroupLoad, HidesOtherSubkeysInAnyLetterCase)
{
    for (const char* name : {"security", "APPTRAP", "LINKAGE", "Enum", "vtnups", "VtnNiSnmp"})
        AddAgent(name);
    AddAgent("Linkages");
    const AgentGroup group = Load();
    for (const char* name : {"Parameters", "security", "APPTRAP", "LINKAGE", "Enum", "vtnups", "VtnNiSnmp"})
        EXPECT_FALSE(Entry(group, name).listable) << name;
    EXPECT_TRUE(Entry(group, "Linkages").listable);
}

TEST_F(AgentGroupLoad, KeepsAListedHiddenSubkeyInactive)
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

TEST_F(AgentGroupLoad, FindsListedSubAgentsInAnyLetterCase)
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

TEST_F(AgentPairs, TheSecondTakesTheFirstsState)
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

} // namespace
