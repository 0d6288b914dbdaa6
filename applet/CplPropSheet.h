// The applet's one sheet, with its pages.
#pragma once

#include "applet/SheetAssembly.h"
#include "desktop/DesktopPage.h"
#include "pages/BoardPage.h"
#include "pages/ProcMonPage.h"
#include "pages/ServicesPage.h"
#include "pages/SnmpPage.h"
#include "pages/StoragePage.h"

// A page as a member of the sheet: constructed, which loads its settings, and assigned to its role.
template <typename Page, PageRole role>
class PageMember
{
  public:
    // Throws what loading the settings throws.
    explicit PageMember(CSheetAssembly& sheet) { sheet.Assign(role, m_page); }

  private:
    Page m_page;
};

// Lives for one opening of the sheet. The members stand in the order of the table of pages.
class CVtnCplPropSheet : public CSheetAssembly
{
  public:
    // Loads the settings of all pages; throws ConfigurationError.
    using CSheetAssembly::CSheetAssembly;

  private:
    PageMember<CVtnServicesPropPage, PageRole::Services> m_servicesPage{*this};
    PageMember<CVtnStoragePropPage, PageRole::Storage> m_storagePage{*this};
    PageMember<CVtnSnmpPropPage, PageRole::Snmp> m_snmpPage{*this};
    PageMember<CVtnClientPropPage, PageRole::Desktop> m_desktopPage{*this};
    PageMember<CVtnRb4PropPage, PageRole::Board> m_boardPage{*this};
    PageMember<ProcMonPage, PageRole::ProcessMonitor> m_processMonitorPage{*this};
};
