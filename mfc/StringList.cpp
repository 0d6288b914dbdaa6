// CStringList; a POSITION is the element's node.
#include "afxcoll.h"

struct AFX_LISTNODE
{
    CString value;
    POSITION previous;
    POSITION next;
};

IMPLEMENT_DYNAMIC(CStringList, CObject)

CStringList::CStringList(INT_PTR /*nBlockSize*/) {}

CStringList::~CStringList()
{
    RemoveAll();
}

const CString& CStringList::GetHead() const
{
    return GetAt(m_head);
}

const CString& CStringList::GetTail() const
{
    return GetAt(m_tail);
}

CString CStringList::RemoveHead()
{
    CString value = GetHead();
    RemoveAt(m_head);
    return value;
}

CString CStringList::RemoveTail()
{
    CString value = GetTail();
    RemoveAt(m_tail);
    return value;
}

POSITION CStringList::AddHead(LPCSTR newElement)
{
    const auto node = new AFX_LISTNODE{newElement, nullptr, m_head};
    (m_head == nullptr ? m_tail : m_head->previous) = node;
    m_head = node;
    ++m_count;
    return node;
}

POSITION CStringList::AddTail(LPCSTR newElement)
{
    const auto node = new AFX_LISTNODE{newElement, m_tail, nullptr};
    (m_tail == nullptr ? m_head : m_tail->next) = node;
    m_tail = node;
    ++m_count;
    return node;
}

void CStringList::RemoveAll()
{
    while (m_head != nullptr)
        RemoveAt(m_head); // NOLINT(clang-analyzer-cplusplus.NewDelete): which moves the head on
}

void CStringList::RemoveAt(POSITION position)
{
    ASSERT(position != nullptr);
    (position->previous == nullptr ? m_head : position->previous->next) = position->next;
    (position->next == nullptr ? m_tail : position->next->previous) = position->previous;
    --m_count;
    delete position;
}

const CString& CStringList::GetNext(POSITION& rPosition) const
{
    const CString& value = GetAt(rPosition);
    rPosition = rPosition->next;
    return value;
}

const CString& CStringList::GetPrev(POSITION& rPosition) const
{
    const CString& value = GetAt(rPosition);
    rPosition = rPosition->previous;
    return value;
}

const CString& CStringList::GetAt(POSITION position) const
{
    ASSERT(position != nullptr);
    return position->value;
}

void CStringList::SetAt(POSITION position, LPCSTR newElement)
{
    ASSERT(position != nullptr);
    position->value = newElement;
}

POSITION CStringList::Find(LPCSTR searchValue, POSITION startAfter) const
{
    POSITION position = startAfter == nullptr ? m_head : startAfter->next;
    while (position != nullptr && position->value != searchValue)
        position = position->next;
    return position;
}
