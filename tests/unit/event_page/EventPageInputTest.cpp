// The values of the Event Log page in every type and in sizes that nobody expects. The page must come all the
// same, show nothing for what is of no use, and keep within what is stored. A sample runs each time; all
// inputs with VTN_THOROUGH in the environment.
#include "pages/EventPage.h"

#include "resources/resource.h"
#include "support/StoredInputs.h"
#include "sysaccess/core/AgentNames.h"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>

namespace {

using support::StoredInput;

// One value of the page.
struct StoredPart
{
    const char* value;
    DWORD type;
    std::size_t size; // as it is usually stored, in bytes
};

constexpr StoredPart parts[] = {
    {"Destination", REG_MULTI_SZ, 12},
    {"DestinationUsername", REG_SZ, 7},
    {"DestinationPassword", REG_BINARY, 7},
};

// The texts of the page, and how many computers it lists.
struct Shown
{
    std::string user;
    std::string password;
    LRESULT computers = 0;

    bool operator==(const Shown&) const = default;
};

class EventPageInput : public testing::Test
{
  protected:
    EventPageInput()
    {
        m_frame.CreateEx(0, "STATIC", "", WS_POPUP | WS_VISIBLE, CRect(0, 0, 500, 300), nullptr, 0);
    }
    ~EventPageInput() override { m_frame.DestroyWindow(); }

    // The page on a host with this value alone.
    Shown Show(const StoredPart& part, const StoredInput& input)
    {
        m_parameters.Clear();
        m_parameters.SetRaw(part.value, input.type, support::BytesOf(input));
        const std::unique_ptr<CObject> object(RUNTIME_CLASS(CVtnEventPropPage)->CreateObject());
        auto* const page = dynamic_cast<CVtnEventPropPage*>(object.get());
        EXPECT_TRUE(page->Create(IDD_EVENT, &m_frame));
        const Shown shown = {TextOf(*page, IDC_EVENT_USER), TextOf(*page, IDC_EVENT_PASSWORD),
                             ::SendDlgItemMessageA(page->m_hWnd, IDC_EVENT_LIST, LB_GETCOUNT, 0, 0)};
        page->DestroyWindow();
        return shown;
    }

    static std::string TextOf(const CWnd& page, int id)
    {
        CString text;
        page.GetDlgItemText(id, text);
        return static_cast<LPCSTR>(text);
    }

    support::SavedKey m_parameters{hostParametersKey};
    CWnd m_frame;
};

// Other inputs for each value: a stride that has no factor in common with their count.
std::size_t Stride()
{
    return std::getenv("VTN_THOROUGH") != nullptr ? 1 : 11;
}

TEST_F(EventPageInput, ShowsAnythingAndTakesWhatIsOfNoUseForAbsent)
{
    std::size_t tried = 0;
    for (const StoredPart& part : parts) {
        const std::vector<StoredInput> inputs = support::StoredInputs(part.size);
        for (std::size_t i = tried % Stride(); i < inputs.size(); i += Stride()) {
            SCOPED_TRACE(testing::Message() << part.value << ": " << inputs[i]);
            const Shown shown = Show(part, inputs[i]);
            const bool isOfUse = inputs[i].type == part.type;
            EXPECT_TRUE(isOfUse || shown == Shown()) << shown.user << ", " << shown.computers;
            EXPECT_LE(shown.user.size() + shown.password.size(), inputs[i].size);
            ++tried;
        }
        const Shown usual = Show(part, {part.type, part.size, true});
        EXPECT_NE(usual, Shown()) << part.value;
    }
    std::printf("values stored: %zu\n", tried);
}

} // namespace
