// CStringList, texts in order, for pages and dialogs that keep such a list. The applet's own lists are made
// by its window-free code, which knows no class library.
#pragma once

#include "afxstr.h"

struct AFX_LISTNODE;
// Where an element of a list is; null stands for none.
using POSITION = AFX_LISTNODE*;

// Texts in a doubly linked list. A POSITION stays valid until its element is removed.
class CStringList : public CObject
{
    DECLARE_DYNAMIC(CStringList)

  public:
    // The block size is a hint about growth; elements are allocated one by one whatever it says.
    explicit CStringList(INT_PTR nBlockSize = 10);
    ~CStringList() override;

    // How many texts there are.
    [[nodiscard]] INT_PTR GetCount() const { return m_count; }
    [[nodiscard]] BOOL IsEmpty() const { return m_count == 0; }

    // The ends of a list that is not empty.
    [[nodiscard]] const CString& GetHead() const;
    [[nodiscard]] const CString& GetTail() const;
    CString RemoveHead();
    CString RemoveTail();

    // Where the new text is.
    POSITION AddHead(LPCSTR newElement);
    POSITION AddTail(LPCSTR newElement);
    // Every text, or the one at a position.
    void RemoveAll();
    void RemoveAt(POSITION position);

    // Iteration: start at an end, and while the position is not null take the element and step on.
    [[nodiscard]] POSITION GetHeadPosition() const { return m_head; }
    [[nodiscard]] POSITION GetTailPosition() const { return m_tail; }
    const CString& GetNext(POSITION& rPosition) const;
    const CString& GetPrev(POSITION& rPosition) const;

    // The text at a position.
    [[nodiscard]] const CString& GetAt(POSITION position) const;
    void SetAt(POSITION position, LPCSTR newElement);
    // The first element that equals the text, after startAfter when that is not
    // null; null when there is none.
    [[nodiscard]] POSITION Find(LPCSTR searchValue, POSITION startAfter = nullptr) const;

  private:
    POSITION m_head = nullptr;
    POSITION m_tail = nullptr;
    INT_PTR m_count = 0;
};
