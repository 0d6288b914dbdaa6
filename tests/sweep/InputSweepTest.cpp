// Stores every value that the sheet and its buttons read in every type and in sizes that nobody expects. The
// sheet must open all the same, show the default for what is of no use, and save nothing but its own
// settings. A sample runs each time; all inputs with VTN_THOROUGH in the environment. The values of the Event
// Log page, which no sheet shows, have the same in EventPageInputTest.
#include "machine/SweepMachine.h"
#include "resources/resource.h"
#include "support/StoredInputs.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>

namespace {

using namespace sweep;
using Input = support::StoredInput;

constexpr std::size_t inputSampleSize = 1; // inputs of each value
constexpr std::size_t shareInputs = 4;     // of the list of shares

#define VTN_SERVICES "SYSTEM\\CurrentControlSet\\Services\\"

constexpr DWORD anyType = 0xFFFFFFFF; // it counts that the value is there

// The system on which the applet believes to run.
enum class System
{
    Today,
    Version4, // which kept some settings elsewhere
};

// One value that is read, and where its effect is seen.
struct StoredSetting
{
    const char* key;
    const char* value;
    DWORD type;
    DWORD alsoType; // taken, too
    DWORD size;     // as it is usually stored, in bytes
    const char* tab;
    System system = System::Today;
    int button = 0; // pressed on the page, since only that reads the value
};

// clang-format off: a table
constexpr StoredSetting settings[] = {
    {VTN_SERVICES "VtMgHost\\Parameters", "SubServices", REG_MULTI_SZ, REG_MULTI_SZ, 10, "Services"},
    {VTN_SERVICES "VtMgServ\\Parameters", "SubServices", REG_MULTI_SZ, REG_MULTI_SZ, 9, "Services"},
    {VTN_SERVICES "VtMgStor\\Parameters", "SubServices", REG_MULTI_SZ, REG_MULTI_SZ, 8, "Services"},
    {VTN_SERVICES "VTNNicMgmt\\Parameters", "SubServices", REG_MULTI_SZ, REG_MULTI_SZ, 10, "Services"},
    {VTN_SERVICES "VtMgHost\\VTNHOST1", "DisplayName", REG_SZ, REG_SZ, 15, "Services"},
    {VTN_SERVICES "VtMgStor\\VTNFCA", "DisableFlags", REG_DWORD, REG_DWORD, 4, "Storage"},
    {VTN_SERVICES "VtMgStor\\VTNMIDA", "DisableFlags", REG_DWORD, REG_DWORD, 4, "Storage"},
    {VTN_SERVICES "VtMgStor\\VTNSAS", "DisableFlags", REG_DWORD, REG_DWORD, 4, "Storage"},
    {"SOFTWARE\\Vortan Lumora Agent", "ServerRole", REG_SZ, REG_SZ, 5, "SNMP Settings"},
    {VTN_SERVICES "VtMgHost\\VTNSNMP", "SetsEnabled", REG_DWORD, REG_DWORD, 4, "SNMP Settings"},
    {VTN_SERVICES "VtMgHost\\VTNSNMP", "Timeout", REG_DWORD, REG_DWORD, 4, "SNMP Settings"},
    {VTN_SERVICES "VtMgHost\\VTNMHOST", "HostFlags", REG_DWORD, REG_DWORD, 4, "SNMP Settings"},
    {"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\AeDebug", "Debugger", REG_SZ, REG_SZ, 8,
     "SNMP Settings"},
    {VTN_SERVICES "VtMgHost\\AppTrap", "Debugger", REG_SZ, REG_SZ, 14, "SNMP Settings"},
    {VTN_SERVICES "VtMgHost\\VTNMHOST", "ClientIni", REG_SZ, REG_SZ, 20, "Desktop Mgmt"},
    {VTN_SERVICES "VtMgHost\\Parameters", "ProcMon", REG_BINARY, REG_BINARY, 8, "Process Monitor"},
    {"SYSTEM\\CurrentControlSet\\Control\\ProductOptions", "ProductType", REG_SZ, REG_SZ, 9, "Services"},
    {"SYSTEM\\CurrentControlSet\\Control\\ProductOptions", "ProductSuite", REG_MULTI_SZ, REG_MULTI_SZ, 17,
     "SNMP Settings", System::Version4, IDC_SNMP_TEST_TRAP},
    {"SYSTEM\\VortanHost\\Host\\Component\\GenericTrap", "TrapData", anyType, anyType, 1, "SNMP Settings"},
    {VTN_SERVICES "NetLogon\\Parameters", "Scripts", REG_SZ, REG_EXPAND_SZ, 12, "Desktop Mgmt",
     System::Version4},
    {VTN_SERVICES "Replicator\\Parameters", "ExportPath", REG_SZ, REG_EXPAND_SZ, 12, "Desktop Mgmt",
     System::Version4},
};
// clang-format on

std::vector<Input> SampledInputs(const std::vector<Input>& inputs, std::size_t number)
{
    if (std::getenv("VTN_THOROUGH") != nullptr)
        return inputs;
    // Other inputs for each value: a stride that has no factor in common with their count.
    constexpr std::size_t stride = 37;
    std::vector<Input> sample;
    for (std::size_t i = 0; i < inputSampleSize; ++i)
        sample.push_back(inputs[(number * inputSampleSize + i) * stride % inputs.size()]);
    return sample;
}

BOOL CALLBACK AddControl(HWND control, LPARAM look)
{
    auto& text = *reinterpret_cast<std::string*>(look);
    text += std::to_string(GetDlgCtrlID(control)) + ": " + support::WindowText(control) + ", enabled " +
            std::to_string(IsWindowEnabled(control)) + ", state " +
            std::to_string(support::SendWithin(control, BM_GETCHECK)) + ", rows " +
            std::to_string(support::SendWithin(control, LB_GETCOUNT)) + ", row " +
            std::to_string(support::SendWithin(control, CB_GETCURSEL)) + "\n";
    return TRUE;
}

// Everything that a user sees of a page, and the tabs.
std::string LookOf(const support::AppletHost& host, const std::string& tab)
{
    std::string look;
    const std::vector<std::string> tabs = host.Tabs();
    for (const std::string& name : tabs)
        look += name + ", ";
    if (std::find(tabs.begin(), tabs.end(), tab) != tabs.end())
        EnumChildWindows(host.Page(tab).Window(), &AddControl, reinterpret_cast<LPARAM>(&look));
    return look;
}

// Fails the test with the first line that differs: a text may have a million characters.
void ExpectSameLook(const std::string& look, const std::string& expected)
{
    const auto [found, wanted] = std::ranges::mismatch(look, expected);
    const std::size_t line = look.substr(0, static_cast<std::size_t>(found - look.begin())).rfind('\n') + 1;
    EXPECT_TRUE(look == expected) << "the page shows: " << look.substr(line, 200) << "\ninstead of: "
                                  << expected.substr(std::min(line, expected.size()), 200);
}

// The machine of one input. A system of version 4 keeps its login scripts where the replicator exports them,
// when that runs.
class InputMachine
{
  public:
    InputMachine(Subject& subject, System system, bool isReplicating)
        : m_settings(subject), m_standIns(subject.host.Module(), m_settings, m_recorder), m_system(system),
          m_turn(this), m_getVersion(subject.host.Module(), "GetVersionExA", &GetVersion)
    {
        m_netLogon.Create();
        m_replicator.Create();
        if (isReplicating)
            m_standIns.Services().Add("Replicator", {.states = {support::ServiceState(SERVICE_RUNNING)}});
        m_standIns.User().Decline();
    }

    [[nodiscard]] std::vector<std::string> UserTexts() const { return m_standIns.UserTexts(); }
    [[nodiscard]] Picture Look() const
    {
        Picture picture;
        m_settings.AddTo(picture);
        return picture;
    }

  private:
    static BOOL WINAPI GetVersion(OSVERSIONINFOA* info)
    {
        const InputMachine& self = support::Turn<InputMachine>::Active();
        const BOOL answer = self.m_getVersion.Original<decltype(GetVersionExA)>()(info);
        if (self.m_system == System::Version4)
            info->dwMajorVersion = 4;
        return answer;
    }

    Settings m_settings;
    support::SavedKey m_netLogon{VTN_SERVICES "NetLogon\\Parameters"};
    support::SavedKey m_replicator{VTN_SERVICES "Replicator\\Parameters"};
    CallRecorder m_recorder;
    StandIns m_standIns;
    System m_system;
    support::Turn<InputMachine> m_turn;
    support::ReplacedImport m_getVersion;
};

void Store(const support::TestKey& key, const char* value, const Input* input)
{
    key.DeleteValue(value);
    if (input != nullptr)
        key.SetRaw(value, input->type, support::BytesOf(*input));
}

bool IsOfUse(const StoredSetting& setting, const Input& input)
{
    if (setting.type == anyType)
        return true;
    return (input.type == setting.type || input.type == setting.alsoType) &&
           (input.type != REG_DWORD || input.size == sizeof(DWORD));
}

class InputSweep : public testing::Test
{
  protected:
    // Opens the sheet with the value stored, or absent, presses the button, if any, and OK; what the page
    // looked like and what the button reported.
    std::string Show(const StoredSetting& setting, const Input* input)
    {
        const InputMachine machine(m_subject, setting.system, std::string(setting.value) == "ExportPath");
        Store(support::TestKey(setting.key), setting.value, input);
        const Picture before = machine.Look();
        m_subject.host.Open();
        std::string look = LookOf(m_subject.host, setting.tab);
        if (setting.button != 0)
            m_subject.host.Page(setting.tab).Click(setting.button);
        const std::vector<std::string> reports = machine.UserTexts();
        for (const std::string& text : reports)
            look += text.substr(0, text.find('\n'));
        EXPECT_EQ(reports.size(), setting.button != 0 ? 1U : 0U);
        Save(setting, machine, reports.size());
        ExpectOnlyOwnSettingsSaved(before, machine.Look());
        return look;
    }

    // The entries for sessions without a user after desktop management was switched on.
    std::optional<support::StoredValue> SwitchOn(const Input* input)
    {
        const InputMachine machine(m_subject, System::Today, false);
        const support::TestKey key("SYSTEM\\CurrentControlSet\\Services\\LanmanServer\\Parameters");
        Store(key, "NullSessionShares", input);
        m_subject.host.Open();
        m_subject.host.Page("Desktop Mgmt").Click(IDC_DESKTOP_ENABLE);
        m_subject.host.PressOk();
        return key.Value("NullSessionShares");
    }

    Subject m_subject;

  private:
    void Save(const StoredSetting& setting, const InputMachine& machine, std::size_t boxes)
    {
        support::AppletHost& host = m_subject.host;
        host.Sheet().Click(IDOK);
        // A login script whose name is of no use keeps the user on its page.
        const bool isKept = !host.HasEnded();
        if (isKept)
            host.PressCancel();
        else
            host.WaitForEnd();
        EXPECT_EQ(machine.UserTexts().size(), boxes + (isKept ? 1U : 0U));
        EXPECT_TRUE(!isKept || std::string(setting.value) == "ClientIni");
    }

    static void ExpectOnlyOwnSettingsSaved(const Picture& before, const Picture& after)
    {
        for (const auto& [item, content] : after) {
            const bool isOwn = item.ends_with(", ServerRole") || item.ends_with(", DisableFlags");
            const auto old = before.find(item);
            EXPECT_TRUE(isOwn || (old != before.end() && old->second == content))
                << item << " is now " << content.substr(0, 100);
        }
    }
};

TEST_F(InputSweep, OpensWithUnusableValuesAsIfAbsent)
{
    std::size_t number = 0;
    std::size_t tried = 0;
    for (const StoredSetting& setting : settings) {
        const std::string absent = Show(setting, nullptr);
        for (const Input& input : SampledInputs(support::StoredInputs(setting.size), number)) {
            SCOPED_TRACE(testing::Message() << setting.key << ", " << setting.value << ": " << input);
            const std::string look = Show(setting, &input);
            if (!IsOfUse(setting, input)) {
                ExpectSameLook(look, absent);
            }
            if (setting.type == anyType) {
                EXPECT_NE(look, absent);
            }
            ++tried;
        }
        ++number;
    }
    std::printf("values stored: %zu\n", tried);
}

// The list is read when desktop management is switched on, and written back with one entry more.
TEST_F(InputSweep, AddsTheShareToAnyList)
{
    std::size_t tried = 0;
    for (std::size_t number = 0; number < shareInputs; ++number) {
        for (const Input& input : SampledInputs(support::StoredInputs(20), number)) {
            SCOPED_TRACE(testing::Message() << "NullSessionShares: " << input);
            std::vector<std::string> expected = {"VTNDATA"};
            const support::Bytes bytes = support::BytesOf(input);
            const auto length = static_cast<std::size_t>(std::ranges::count(bytes, BYTE{'A'}));
            if (input.type == REG_MULTI_SZ && length != 0)
                expected.insert(expected.begin(), std::string(length, 'A'));
            const auto stored = SwitchOn(&input);
            const support::StoredValue list{REG_MULTI_SZ, support::MultiStringBytes(expected)};
            EXPECT_TRUE(stored == list) << stored.value_or(support::StoredValue{}).bytes.size() << " bytes";
            ++tried;
        }
        if (std::getenv("VTN_THOROUGH") != nullptr)
            break; // those were all
    }
    std::printf("lists stored: %zu\n", tried);
}

} // namespace
