// Searching message maps and running command handlers.
#include "afxmsg_.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap()
{
    static constexpr AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, nullptr}};
    static constexpr AFX_MSGMAP map = {nullptr, entries};
    return &map;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const
{
    return GetThisMessageMap();
}

static const AFX_MSGMAP* BaseMap(const AFX_MSGMAP* map)
{
    return map->pfnGetBaseMap == nullptr ? nullptr : map->pfnGetBaseMap();
}

static bool Matches(const AFX_MSGMAP_ENTRY& entry, UINT message, UINT code, UINT id)
{
    return entry.nMessage == message && entry.nCode == code && entry.nID <= id && id <= entry.nLastID;
}

const AFX_MSGMAP_ENTRY* AfxFindMessageEntry(const AFX_MSGMAP* pMap, UINT nMessage, UINT nCode, UINT nID)
{
    for (const AFX_MSGMAP* map = pMap; map != nullptr; map = BaseMap(map))
        for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->pfn != nullptr; ++entry)
            if (Matches(*entry, nMessage, nCode, nID))
                return entry;
    return nullptr;
}

BOOL CCmdTarget::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    const auto code = static_cast<UINT>(nCode);
    const AFX_MSGMAP_ENTRY* entry = AfxFindMessageEntry(GetMessageMap(), WM_COMMAND, code, nID);
    if (entry == nullptr)
        return FALSE;
    if (pHandlerInfo != nullptr)
        *pHandlerInfo = {this, entry->pfn};
    else
        entry->pfn(*this, MAKEWPARAM(nID, code), reinterpret_cast<LPARAM>(pExtra));
    return TRUE;
}
