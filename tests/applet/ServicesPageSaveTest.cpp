// What OK on the Services page writes to the registry and the service manager, and leads to.
#include "applet/ServicesPageTest.h"

namespace {

using ServicesPageSave = ServicesPageMove;

TEST_F(ServicesPageSave, WritesTheMovedAgents)
{
    const DialogDriver page = Open();
    page.Click(removeButton);
    page.Select(inactiveList, 1);
    page.Click(addButton);
    m_host.PressOk();
    ExpectSaved(m_agents, "VtMgHost", {"VTNB", "VTNMHOST"});
    ExpectSaved(m_agents, "VtMgServ", {});
}

TEST_F(ServicesPageSave, DisablesAServiceWithoutActiveAgents)
{
    const DialogDriver page = Open();
    page.Click(removeButton);
    page.Click(removeButton);
    m_host.PressOk();
    ExpectSaved(m_agents, "VtMgHost", {});
}

TEST_F(ServicesPageSave, ConfiguresTheServiceManager)
{
    for (const AgentService& service : agentServices)
        m_services.Add(service.name, {});
    m_host.SetCommandLine("control.exe vtnmgmt.cpl /SETUP"); // no restart
    Open().Click(removeButton);
    m_host.PressOk();
    EXPECT_EQ(m_services.Service("VtMgHost").startType, DWORD{SERVICE_AUTO_START});
    EXPECT_EQ(m_services.Service("VtMgServ").startType, DWORD{SERVICE_DISABLED});
    EXPECT_EQ(m_services.OpenHandles(), 0);
}

TEST_F(ServicesPageSave, WritesNothingWithoutAMove)
{
    Open();
    m_host.PressOk();
    support::ExpectAbsent(m_agents.Service("VtMgHost"), "Start");
    support::ExpectAbsent(m_agents.Service("VtMgHost"), "DependOnService");
    EXPECT_TRUE(m_services.Calls().empty());
}

TEST_F(ServicesPageSave, WritesAnAgentThatWasMovedThereAndBack)
{
    const DialogDriver page = Open();
    page.Click(removeButton);
    page.Select(inactiveList, 2);
    page.Click(addButton);
    m_host.PressOk();
    ExpectSaved(m_agents, "VtMgHost", {"VTNA", "VTNB"});
}

TEST_F(ServicesPageSave, WritesNothingOnCancel)
{
    Open().Click(removeButton);
    m_host.PressCancel();
    support::ExpectAbsent(m_agents.Service("VtMgHost"), "Start");
    support::ExpectMultiString(m_agents.Parameters("VtMgHost"), "SubServices", {"VTNA", "VTNB"});
}

TEST_F(ServicesPageSave, GivesTheSameResultOncePerVisitedPage)
{
    const DialogDriver page = Open();
    page.Click(removeButton);
    m_host.Page("Storage");
    m_host.PressOk();
    ExpectSaved(m_agents, "VtMgHost", {"VTNB"});
}

TEST_F(ServicesPageSave, ReportsARefusal)
{
    Open().Click(removeButton);
    m_agents.Parameters("VtMgServ").Delete();
    m_boxes.Answer(IDOK);
    m_host.PressOk();
    support::ExpectBoxes(
        m_boxes, {{nullptr, "You do not have access to change the configuration of the Management Agents.",
                   "Management Agents Error", MB_ICONHAND}});
}

class ServicesPagePair : public ServicesPage
{
  protected:
    ServicesPagePair() { AddAgents("VTNNicMgmt", {"VTNMNIC", "VTNNICS"}, {}); }
};

TEST_F(ServicesPagePair, StaysWhereItIsWhenItsPartnerIsMoved)
{
    m_agents.SetActive("VtMgHost", {"VTNMHOST"});
    const DialogDriver page = Open();
    page.Click(addButton);
    ExpectLists(page, {"VTNMHOST", "VTNMNIC"}, {"VTNNICS"});
    m_host.PressCancel();
}

TEST_F(ServicesPagePair, IsSavedWithItsPartnerIfThereIsRoom)
{
    m_agents.SetActive("VtMgHost", {"VTNMHOST"});
    const DialogDriver page = Open();
    page.Click(addButton);
    m_host.PressOk();
    ExpectSaved(m_agents, "VTNNicMgmt", {"VTNMNIC", "VTNNICS"});
}

TEST_F(ServicesPagePair, IsNotSavedBeyondTheActiveAgentsShown)
{
    const DialogDriver page = Open();
    page.Select(inactiveList, 1);
    page.Click(addButton);
    m_host.PressOk();
    ExpectSaved(m_agents, "VTNNicMgmt", {"VTNMNIC"});
}

TEST_F(ServicesPagePair, GoesWithItsPartnerWhenThatIsRemoved)
{
    m_agents.SetActive("VTNNicMgmt", {"VTNMNIC"});
    const DialogDriver page = Open();
    ExpectLists(page, {"VTNMNIC", "VTNNICS"}, {"VTNMHOST"});
    page.Click(removeButton);
    ExpectLists(page, {"VTNNICS"}, {"VTNMHOST", "VTNMNIC"});
    m_host.PressOk();
    ExpectSaved(m_agents, "VTNNicMgmt", {});
}

// --- what follows

TEST_F(ServicesPageSave, OffersTheRestartForAnAgentMovedBack)
{
    m_services.Add("VtMgHost", {.states = {support::ServiceState(SERVICE_RUNNING)}});
    const DialogDriver page = Open();
    page.Click(removeButton);
    page.Select(inactiveList, 2);
    page.Click(addButton);
    m_boxes.Answer(IDNO);
    m_host.PressOk();
    EXPECT_EQ(m_boxes.Shown().size(), 1U);
}

TEST_F(ServicesPageSave, OffersNoRestartWithoutAMove)
{
    m_services.Add("VtMgHost", {.states = {support::ServiceState(SERVICE_RUNNING)}});
    Open().Select(inactiveList, 1);
    m_host.PressOk();
    EXPECT_TRUE(m_boxes.Shown().empty());
}

} // namespace
