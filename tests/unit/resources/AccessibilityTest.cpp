// What a screen reader learns of each control, asked as screen readers ask: name, role, state and access key.
#include "resources/resource.h"
#include "tests/unit/resources/DialogWindow.h"
#include "tests/unit/resources/ExpectedTexts.h"
#include "tests/unit/resources/ResourceReader.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <oleacc.h>
#include <set>

namespace {

struct Releaser
{
    void operator()(IUnknown* object) const { object->Release(); }
};

std::wstring TakeText(BSTR text)
{
    std::wstring copy(text != nullptr ? text : L"");
    SysFreeString(text);
    return copy;
}

// One control as a screen reader sees it.
class Accessible
{
  public:
    explicit Accessible(HWND window)
    {
        void* object = nullptr;
        AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible), &object);
        m_object.reset(static_cast<IAccessible*>(object));
        if (!m_object)
            throw std::runtime_error("a window without an accessible object");
        m_self.vt = VT_I4;
        m_self.lVal = CHILDID_SELF;
    }

    [[nodiscard]] std::wstring Name() const
    {
        BSTR text = nullptr;
        m_object->get_accName(m_self, &text);
        return TakeText(text);
    }

    // "Alt+" and a letter; empty without one.
    [[nodiscard]] std::wstring AccessKeyText() const
    {
        BSTR text = nullptr;
        m_object->get_accKeyboardShortcut(m_self, &text);
        return TakeText(text);
    }

    [[nodiscard]] LONG Role() const
    {
        VARIANT role{};
        m_object->get_accRole(m_self, &role);
        return role.lVal;
    }

    [[nodiscard]] LONG State() const
    {
        VARIANT state{};
        m_object->get_accState(m_self, &state);
        return state.lVal;
    }

  private:
    std::unique_ptr<IAccessible, Releaser> m_object;
    VARIANT m_self{};
};

using Controls = std::vector<DialogControl>;

bool IsButton(const DialogControl& control)
{
    return control.windowClass == "Button" && !control.IsGroupBox();
}

// Without frames and texts, which a user passes by.
bool IsUsed(const DialogControl& control)
{
    return !control.IsStatic() && !control.IsGroupBox();
}

// The texts of a control's kind: its own, or those of the label right before it.
const DialogControl& LabelOf(const Controls& controls, size_t index)
{
    return IsButton(controls[index]) || index == 0 ? controls[index] : controls[index - 1];
}

// The name that Windows gives; Wine gives lists none, where Windows takes the label before them.
std::wstring SpokenName(const Controls& controls, size_t index)
{
    const std::wstring own = Accessible(controls[index].window).Name();
    return own.empty() ? Accessible(LabelOf(controls, index).window).Name() : own;
}

LONG RoleOf(const DialogControl& control)
{
    if (control.IsStatic())
        return ROLE_SYSTEM_STATICTEXT;
    if (control.windowClass == "Edit")
        return ROLE_SYSTEM_TEXT;
    if (control.windowClass == "ListBox")
        return ROLE_SYSTEM_LIST;
    if (control.windowClass == "ComboBox")
        return ROLE_SYSTEM_COMBOBOX;
    switch (control.style & BS_TYPEMASK) {
    case BS_GROUPBOX:
        return ROLE_SYSTEM_GROUPING;
    case BS_AUTOCHECKBOX:
        return ROLE_SYSTEM_CHECKBUTTON;
    case BS_AUTORADIOBUTTON:
        return ROLE_SYSTEM_RADIOBUTTON;
    default:
        return ROLE_SYSTEM_PUSHBUTTON;
    }
}

// The text as it is read: without the ampersand of the access key.
std::wstring WithoutAmpersands(std::wstring text)
{
    for (size_t at = text.find(L'&'); at != std::wstring::npos; at = text.find(L'&', at + 1))
        text.erase(at, 1);
    return text;
}

using Check = std::function<void(const Controls&, size_t, const ExpectedControl&)>;

// Calls `check` with the controls of each dialog in each language, the place of each among them, and
// what is expected of it.
void ForEachControl(const Check& check)
{
    for (const ExpectedDialog& expected : ExpectedDialogs()) {
        for (const LANGID language : {kEnglish, kJapanese}) {
            const DialogWindow dialog(expected.id, language);
            SCOPED_TRACE(std::string(LanguageName(language)) + ' ' + std::to_string(expected.id));
            for (size_t i = 0; i < dialog.Controls().size(); ++i) {
                SCOPED_TRACE(dialog.Controls()[i].id);
                check(dialog.Controls(), i, expected.controls[i]);
            }
        }
    }
}

TEST(Accessibility, ReadsTheTextOfEachControlOrOfTheLabelBeforeIt)
{
    ForEachControl([](const Controls& controls, size_t i, const ExpectedControl&) {
        const bool liesInTheList = controls[i].id == IDC_PROCMON_NEW_NAME;
        if (IsUsed(controls[i]) && !liesInTheList) {
            EXPECT_EQ(ToUtf8(SpokenName(controls, i)), ToUtf8(WithoutAmpersands(LabelOf(controls, i).text)));
        }
    });
}

TEST(Accessibility, GivesEachUsedControlANameOfItsOwn)
{
    std::set<std::wstring> names;
    ForEachControl([&names](const Controls& controls, size_t i, const ExpectedControl&) {
        if (i == 0)
            names.clear();
        const bool browses = controls[i].id == IDC_DESKTOP_BROWSE && IsButton(controls[i]);
        if (!IsUsed(controls[i]) || !controls[i].IsVisible())
            return;
        const std::wstring name = SpokenName(controls, i);
        EXPECT_TRUE(names.insert(name).second) << ToUtf8(name);
        // The button beside the script's field is known by its dots.
        EXPECT_EQ(std::ranges::none_of(name, [](wchar_t c) { return iswalpha(c) != 0; }), browses)
            << ToUtf8(name);
    });
}

// The generic role is Wine's answer for most classes.
TEST(Accessibility, ReportsWhatEachControlIs)
{
    ForEachControl([](const Controls& controls, size_t i, const ExpectedControl&) {
        const LONG role = Accessible(controls[i].window).Role();
        if (role != ROLE_SYSTEM_CLIENT || controls[i].windowClass == "Edit") {
            EXPECT_EQ(role, RoleOf(controls[i]));
        }
    });
}

TEST(Accessibility, ReportsWhatIsDisabledHiddenOrSecret)
{
    ForEachControl([](const Controls& controls, size_t i, const ExpectedControl& expected) {
        const LONG state = Accessible(controls[i].window).State();
        const bool secret = controls[i].windowClass == "Edit" && (expected.styles & ES_PASSWORD) != 0;
        EXPECT_EQ((state & STATE_SYSTEM_UNAVAILABLE) != 0, (expected.styles & WS_DISABLED) != 0);
        EXPECT_EQ((state & STATE_SYSTEM_INVISIBLE) != 0, expected.id == IDC_PROCMON_NEW_NAME);
        EXPECT_EQ((state & STATE_SYSTEM_PROTECTED) != 0, secret);
    });
}

// "&&" is an ampersand; Wine takes it for an access key.
TEST(Accessibility, ReportsTheAccessKeys)
{
    ForEachControl([](const Controls& controls, size_t i, const ExpectedControl&) {
        const bool hasAmpersand = controls[i].text.find(L"&&") != std::wstring::npos;
        const wchar_t key = AccessKey(controls[i]);
        if (hasAmpersand || !(controls[i].IsStatic() || IsButton(controls[i])))
            return;
        std::wstring reported = Accessible(controls[i].window).AccessKeyText();
        std::ranges::transform(reported, reported.begin(), [](wchar_t c) { return std::towupper(c); });
        EXPECT_EQ(ToUtf8(reported), key != 0 ? ToUtf8(std::wstring(L"ALT+") + key) : "");
    });
}

} // namespace
