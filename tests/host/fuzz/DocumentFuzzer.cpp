// libFuzzer's entry for the command line's document: any bytes are refused as a wrong document or taken; what
// would be the state afterwards is a document that changes nothing more.
#include "command/CommandError.h"
#include "command/Machine.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <windows.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr char servicesPath[] = "SYSTEM\\CurrentControlSet\\Services\\";

void Store(const std::string& path, const char* name, DWORD type, const std::string& bytes)
{
    HKEY key = nullptr;
    RegCreateKeyA(HKEY_LOCAL_MACHINE, path.c_str(), &key);
    if (name != nullptr)
        RegSetValueExA(key, name, 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                       static_cast<DWORD>(bytes.size()));
    RegCloseKey(key);
}

// Once for all inputs, which write nothing.
bool MakeRegistry()
{
    using namespace std::string_literals;
    const std::string services = servicesPath;
    for (const char* key :
         {"VtMgHost\\VTNSNMP", "VtMgHost\\VTNMHOST", "VtMgHost\\AppTrap", "VtMgHost\\VTNPERF",
          "VtMgServ\\Parameters", "VtMgServ\\VTNRACK", "VtMgStor\\Parameters", "VtMgStor\\VTNFCA",
          "VtMgStor\\VTNMIDA", "VtMgStor\\VTNSAS", "VTNNicMgmt\\Parameters", "VTNNicMgmt\\VTNMNIC",
          "VTNNicMgmt\\VTNNICS"})
        Store(services + key, nullptr, REG_NONE, {});
    Store(services + "VtMgHost\\Parameters", "ProcMon", REG_BINARY,
          "\x03\x61.exe\0\x82\x62.exe\0\x07\x63.exe\0"s);
    Store("SOFTWARE\\Vortan Lumora Agent", nullptr, REG_NONE, {});
    Store("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\AeDebug", nullptr, REG_NONE, {});
    Store("SYSTEM\\CurrentControlSet\\Control\\ProductOptions", "ProductType", REG_SZ, "LanmanNT\0"s);
    return true;
}

void Require(bool isSo, const char* what, const std::string& detail)
{
    if (isSo)
        return;
    std::fprintf(stderr, "wrong: %s: %s\n", what, detail.c_str());
    std::abort();
}

// What the machine would be; nothing when it refuses.
std::optional<Json> StateAfter(const std::string& text)
try {
    const Json document = ParseDocument(text);
    Machine machine;
    machine.Load();
    machine.Take(document);
    Require(machine.Changes().empty() == (machine.Show() ==
                                          [] {
                                              Machine untouched;
                                              untouched.Load();
                                              return untouched.Show();
                                          }()),
            "changes", text);
    return machine.Show();
} catch (const CommandError& error) {
    Require(error.Code() == ExitCode::WrongUse, "exit code", error.Text());
    Require(!error.Text().empty(), "text", text);
    return std::nullopt;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool isMade = MakeRegistry();
    (void)isMade;
    const std::optional<Json> state = StateAfter({reinterpret_cast<const char*>(data), size});
    if (!state)
        return 0;
    const std::string shown = OneLine(*state);
    const std::optional<Json> again = StateAfter(shown);
    Require(again.has_value() && *again == *state, "the state as a document", shown);
    return 0;
}
