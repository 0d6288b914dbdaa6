// Message maps: CCmdTarget, the tables and the macros that fill them. Each entry calls its handler through a
// function made for that handler's exact type, so a handler with the wrong signature does not compile.
#pragma once

#include "afxtypes.h"

class CCmdTarget;

// Calls one handler with a message's parameters.
using AFX_PMSG = LRESULT (*)(CCmdTarget& target, WPARAM wParam, LPARAM lParam);

// One line of a map. For messages other than commands nCode, nID and nLastID are 0.
struct AFX_MSGMAP_ENTRY
{
    UINT nMessage;
    UINT nCode; // notification code
    UINT nID;   // first and last control or command id
    UINT nLastID;
    AFX_PMSG pfn; // null in the entry that ends the map
};

// A class's entries and the way to its base's map.
struct AFX_MSGMAP
{
    const AFX_MSGMAP* (*pfnGetBaseMap)(); // null at the root
    const AFX_MSGMAP_ENTRY* lpEntries;
};

// Filled by OnCmdMsg when it is asked only who would handle a command.
struct AFX_CMDHANDLERINFO
{
    CCmdTarget* pTarget;
    AFX_PMSG pmf;
};

constexpr UINT CN_COMMAND = 0; // notification code of menu and command-id messages
constexpr UINT WM_REFLECT_BASE =
    0xBC00; // added to a message that a parent hands back to the control that sent it

// Anything that has a message map.
class CCmdTarget : public CObject
{
    DECLARE_DYNAMIC(CCmdTarget)

  public:
    // Runs the handler of a command or control notification; FALSE when there is none. With pHandlerInfo it
    // only says who would handle it. pExtra is the window of the notifying control, null for commands.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo);

  protected:
    [[nodiscard]] static const AFX_MSGMAP* GetThisMessageMap();
    [[nodiscard]] virtual const AFX_MSGMAP* GetMessageMap() const;
};

// The first entry, from the class's own map to the root's, for this message, code
// and id; null when there is none.
[[nodiscard]] const AFX_MSGMAP_ENTRY* AfxFindMessageEntry(const AFX_MSGMAP* pMap, UINT nMessage, UINT nCode,
                                                          UINT nID);

// What stands between an entry and its handler; only handler types that some entry accepts have one.
template <auto Handler>
struct AfxHandler;

template <class Target, void (Target::*Handler)()>
struct AfxHandler<Handler>
{
    static LRESULT Plain(CCmdTarget& target, WPARAM /*wParam*/, LPARAM /*lParam*/)
    {
        (static_cast<Target&>(target).*Handler)();
        return 0;
    }
};

template <class Target, void (Target::*Handler)(UINT)>
struct AfxHandler<Handler>
{
    static LRESULT WithId(CCmdTarget& target, WPARAM wParam, LPARAM /*lParam*/)
    {
        (static_cast<Target&>(target).*Handler)(LOWORD(wParam));
        return 0;
    }
};

template <class Target, LRESULT (Target::*Handler)(WPARAM, LPARAM)>
struct AfxHandler<Handler>
{
    static LRESULT Message(CCmdTarget& target, WPARAM wParam, LPARAM lParam)
    {
        return (static_cast<Target&>(target).*Handler)(wParam, lParam);
    }
};

template <class Target, int (Target::*Handler)(LPCREATESTRUCT)>
struct AfxHandler<Handler>
{
    static LRESULT Create(CCmdTarget& target, WPARAM /*wParam*/, LPARAM lParam)
    {
        return (static_cast<Target&>(target).*Handler)(reinterpret_cast<LPCREATESTRUCT>(lParam));
    }
};

template <class Target, void (Target::*Handler)(UINT, CPoint)>
struct AfxHandler<Handler>
{
    static LRESULT Mouse(CCmdTarget& target, WPARAM wParam, LPARAM lParam)
    {
        // Left of or above the client area, coordinates are negative.
        const CPoint point(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)));
        (static_cast<Target&>(target).*Handler)(static_cast<UINT>(wParam), point);
        return 0;
    }
};

template <class Target, void (Target::*Handler)(UINT, UINT, UINT)>
struct AfxHandler<Handler>
{
    static LRESULT Char(CCmdTarget& target, WPARAM wParam, LPARAM lParam)
    {
        (static_cast<Target&>(target).*Handler)(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam));
        return 0;
    }
};

// Marks message handlers in a class.
#define afx_msg

// In the class; leaves the access protected.
#define DECLARE_MESSAGE_MAP()                                                                                \
  protected:                                                                                                 \
    [[nodiscard]] static const AFX_MSGMAP* GetThisMessageMap();                                              \
    [[nodiscard]] const AFX_MSGMAP* GetMessageMap() const override;

// In one source file. Handlers are named with their class: ON_BN_CLICKED(IDC_ADD, &CMyPage::OnAdd).
#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                               \
    const AFX_MSGMAP* theClass::GetMessageMap() const                                                        \
    {                                                                                                        \
        return GetThisMessageMap();                                                                          \
    }                                                                                                        \
    const AFX_MSGMAP* theClass::GetThisMessageMap()                                                          \
    {                                                                                                        \
        using ThisClass [[maybe_unused]] = theClass;                                                         \
        using TheBaseClass = baseClass;                                                                      \
        static constexpr AFX_MSGMAP_ENTRY entries[] = {
#define END_MESSAGE_MAP()                                                                                    \
    {                                                                                                        \
        0, 0, 0, 0, nullptr                                                                                  \
    }                                                                                                        \
    }                                                                                                        \
    ;                                                                                                        \
    static constexpr AFX_MSGMAP map = {&TheBaseClass::GetThisMessageMap, entries};                           \
    return &map;                                                                                             \
    }

#define AFX_COMMAND_ENTRY(code, first, last, call)                                                           \
    {WM_COMMAND, static_cast<UINT>(code), static_cast<UINT>(first), static_cast<UINT>(last), call},

// void f(): a command id.
#define ON_COMMAND(id, memberFxn) AFX_COMMAND_ENTRY(CN_COMMAND, id, id, &AfxHandler<memberFxn>::Plain)
// void f(): a control's notification.
#define ON_CONTROL(wNotifyCode, id, memberFxn)                                                               \
    AFX_COMMAND_ENTRY(wNotifyCode, id, id, &AfxHandler<memberFxn>::Plain)
// void f(UINT id): one notification of the controls id to idLast.
#define ON_CONTROL_RANGE(wNotifyCode, id, idLast, memberFxn)                                                 \
    AFX_COMMAND_ENTRY(wNotifyCode, id, idLast, &AfxHandler<memberFxn>::WithId)

#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_BN_DOUBLECLICKED(id, memberFxn) ON_CONTROL(BN_DOUBLECLICKED, id, memberFxn)
#define ON_EN_SETFOCUS(id, memberFxn) ON_CONTROL(EN_SETFOCUS, id, memberFxn)
#define ON_EN_KILLFOCUS(id, memberFxn) ON_CONTROL(EN_KILLFOCUS, id, memberFxn)
#define ON_EN_CHANGE(id, memberFxn) ON_CONTROL(EN_CHANGE, id, memberFxn)
#define ON_EN_UPDATE(id, memberFxn) ON_CONTROL(EN_UPDATE, id, memberFxn)
#define ON_LBN_SELCHANGE(id, memberFxn) ON_CONTROL(LBN_SELCHANGE, id, memberFxn)
#define ON_LBN_DBLCLK(id, memberFxn) ON_CONTROL(LBN_DBLCLK, id, memberFxn)
#define ON_CBN_SELCHANGE(id, memberFxn) ON_CONTROL(CBN_SELCHANGE, id, memberFxn)

// void f(), in the map of a control's own class: a notification that it sends.
// The parent then does not see it.
#define ON_CONTROL_REFLECT(wNotifyCode, memberFxn)                                                           \
    {WM_REFLECT_BASE + WM_COMMAND, static_cast<UINT>(wNotifyCode), 0, 0, &AfxHandler<memberFxn>::Plain},

// LRESULT f(WPARAM, LPARAM): any message.
#define ON_MESSAGE(message, memberFxn) {message, 0, 0, 0, &AfxHandler<memberFxn>::Message},

// int OnCreate(LPCREATESTRUCT): -1 destroys the window again.
#define ON_WM_CREATE() {WM_CREATE, 0, 0, 0, &AfxHandler<&ThisClass::OnCreate>::Create},
// void OnDestroy()
#define ON_WM_DESTROY() {WM_DESTROY, 0, 0, 0, &AfxHandler<&ThisClass::OnDestroy>::Plain},
// void OnLButtonDown(UINT nFlags, CPoint point)
#define ON_WM_LBUTTONDOWN() {WM_LBUTTONDOWN, 0, 0, 0, &AfxHandler<&ThisClass::OnLButtonDown>::Mouse},
// void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags)
#define ON_WM_CHAR() {WM_CHAR, 0, 0, 0, &AfxHandler<&ThisClass::OnChar>::Char},
