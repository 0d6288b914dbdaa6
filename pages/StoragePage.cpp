// The Storage page's view of the storage settings.
#include "pages/StoragePage.h"

#include "resources/resource.h"

BEGIN_MESSAGE_MAP(CVtnStoragePropPage, CVtnPropPage)
    ON_CONTROL_RANGE(BN_CLICKED, IDC_FIRST, IDC_LAST, &CVtnStoragePropPage::OnBoxClicked)
END_MESSAGE_MAP()

CVtnStoragePropPage::CVtnStoragePropPage() : CVtnPropPage(IDD_STORAGE, "html\\vtnm7wh1.htm")
{
    m_settings.Load();
}

DWORD CVtnStoragePropPage::Save()
{
    m_settings.Save();
    return ERROR_SUCCESS;
}

void CVtnStoragePropPage::DoDataExchange(CDataExchange* pDX)
{
    CVtnPropPage::DoDataExchange(pDX);
    for (std::size_t i = 0; i < storageFeatures.size(); ++i)
        DDX_Control(pDX, static_cast<int>(storageFeatures[i].controlId), m_boxes[i]);
    for (std::size_t i = 0; i < storageFeatures.size(); ++i)
        DDX_Check(pDX, static_cast<int>(storageFeatures[i].controlId), m_settings.disabled[i]);
}

BOOL CVtnStoragePropPage::OnInitDialog()
{
    CVtnPropPage::OnInitDialog();
    m_isChanged = false;
    return TRUE;
}

void CVtnStoragePropPage::OnBoxClicked(UINT controlId)
{
    for (std::size_t i = 0; i < storageFeatures.size(); ++i) {
        if (storageFeatures[i].controlId != controlId)
            continue;
        m_settings.disabled[i] = m_boxes[i].GetCheck();
        m_isChanged = true;
    }
}
