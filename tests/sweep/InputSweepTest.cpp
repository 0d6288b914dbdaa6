// Stores every value that the applet reads in every type and in sizes that nobody expects, and lets the
// agents' libraries answer nonsense. The sheet must open all the same, show the default for what is of no
// use, and save nothing but its own settings. A sample runs each time; all inputs with VTN_THOROUGH in the
// environment.
#include "resources/resource.h"
#include "sweep/SweepMachine.h"

#include <cstdio>

namespace {

using namespace sweep;
using support::Bytes;

constexpr std::size_t sampleSize = 1; // inputs of each value

constexpr DWORD types[] = {REG_NONE,     REG_SZ,   REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_DWORD_BIG_ENDIAN,
                           REG_MULTI_SZ, REG_QWORD};

#define VTN_SERVICES "SYSTEM\\CurrentControlSet\\Services\\"

// One value that is read, and where its effect is seen.
struct StoredSetting
{
    const char* key;
    const char* value;
    DWORD type;
    DWORD alsoType; // taken, too
    DWORD size;     // as it is usually stored, in bytes
    const char* tab;
};

// clang-format off: a table
constexpr StoredSetting settings[] = {
    {VTN_SERVICES "VtMgHost\\Parameters", "SubServices", REG_MULTI_SZ, REG_MULTI_SZ, 10, "Services"},
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
    {VTN_SERVICES "NetLogon\\Parameters", "Scripts", REG_SZ, REG_EXPAND_SZ, 12, "Desktop Mgmt"},
};
// clang-format on

struct Input
{
    DWORD type;
    std::size_t size;
    bool hasEnd;
};

std::ostream& operator<<(std::ostream& out, const Input& input)
{
    return out << "type " << input.type << ", " << input.size << " bytes, "
               << (input.hasEnd ? "with" : "without") << " its end";
}

std::vector<Input> InputsOf(const StoredSetting& setting)
{
    const std::size_t right = setting.size;
    std::vector<Input> inputs;
    for (const DWORD type : types) {
        for (const std::size_t size : {std::size_t{0}, std::size_t{1}, right - 1, right, right + 1,
                                       std::size_t{0x10000}, std::size_t{0x100000}})
        {
            inputs.push_back({type, size, true});
            inputs.push_back({type, size, false});
        }
    }
    return inputs;
}

std::vector<Input> Sampled(const std::vector<Input>& inputs, std::size_t number)
{
    if (std::getenv("VTN_THOROUGH") != nullptr)
        return inputs;
    // Other inputs for each value: a stride that has no factor in common with their count.
    constexpr std::size_t stride = 37;
    std::vector<Input> sample;
    for (std::size_t i = 0; i < sampleSize; ++i)
        sample.push_back(inputs[(number * sampleSize + i) * stride % inputs.size()]);
    return sample;
}

// No zero but those at its end.
Bytes BytesOf(const Input& input)
{
    Bytes bytes(input.size, 'A');
    const std::size_t zeros = !input.hasEnd ? 0 : input.type == REG_MULTI_SZ ? 2 : 1;
    std::fill(bytes.end() - static_cast<std::ptrdiff_t>(std::min(zeros, bytes.size())), bytes.end(), BYTE{0});
    return bytes;
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

class InputSweep : public testing::Test
{
  protected:
    // Opens the sheet with the value stored, or absent, and presses OK; what the page looked like.
    std::string Show(const StoredSetting& setting, const Input* input)
    {
        const Settings machine(m_subject);
        const support::SavedKey netLogon(VTN_SERVICES "NetLogon\\Parameters");
        netLogon.Create();
        CallRecorder recorder;
        StandIns standIns(m_subject.host.Module(), machine, recorder);
        const bool isOldSystem = std::string(setting.value) == "Scripts";
        const auto version = support::HookImport<decltype(GetVersionExA)>(
            m_subject.host.Module(), "GetVersionExA", [&](auto original, OSVERSIONINFOA* info) {
                const BOOL answer = original(info);
                if (isOldSystem)
                    info->dwMajorVersion = 4;
                return answer;
            });
        const support::TestKey key(setting.key);
        key.DeleteValue(setting.value);
        if (input != nullptr)
            key.SetRaw(setting.value, input->type, BytesOf(*input));
        return OpenAndSave(machine, standIns, setting);
    }

    Subject m_subject;

  private:
    std::string OpenAndSave(const Settings& machine, const StandIns& standIns, const StoredSetting& setting)
    {
        support::AppletHost& host = m_subject.host;
        Picture before;
        machine.AddTo(before);
        host.Open();
        const std::string look = LookOf(host, setting.tab);
        host.Sheet().Click(IDOK);
        // A login script whose name is of no use keeps the user on its page.
        const bool isKept = !host.HasEnded();
        if (isKept)
            host.PressCancel();
        else
            host.WaitForEnd();
        EXPECT_EQ(standIns.UserTexts().size(), isKept ? 1U : 0U);
        EXPECT_TRUE(!isKept || std::string(setting.value) == "ClientIni");
        ExpectOnlyOwnSettingsSaved(machine, before);
        return look;
    }

    static void ExpectOnlyOwnSettingsSaved(const Settings& machine, const Picture& before)
    {
        Picture after;
        machine.AddTo(after);
        for (const auto& [item, content] : after) {
            const bool isOwn = item.ends_with(", ServerRole") || item.ends_with(", DisableFlags");
            const auto old = before.find(item);
            EXPECT_TRUE(isOwn || (old != before.end() && old->second == content))
                << item << " is now " << content.substr(0, 100);
        }
    }
};

TEST_F(InputSweep, OpensWithAnyValueAndTakesWhatIsOfNoUseForAbsent)
{
    std::size_t number = 0;
    std::size_t tried = 0;
    for (const StoredSetting& setting : settings) {
        const std::string absent = Show(setting, nullptr);
        for (const Input& input : Sampled(InputsOf(setting), number)) {
            SCOPED_TRACE(testing::Message() << setting.key << ", " << setting.value << ": " << input);
            const std::string look = Show(setting, &input);
            const bool isOfUse = (input.type == setting.type || input.type == setting.alsoType) &&
                                 (input.type != REG_DWORD || input.size == sizeof(DWORD));
            if (!isOfUse) {
                EXPECT_EQ(look.substr(0, 4000), absent.substr(0, 4000));
            }
            ++tried;
        }
        ++number;
    }
    std::printf("values stored: %zu\n", tried);
}

} // namespace
