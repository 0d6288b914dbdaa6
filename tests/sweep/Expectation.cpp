// The rules, as tables; see the header.
#include "sweep/Expectation.h"

#include "resources/resource.h"

#include <algorithm>

namespace sweep {
namespace {

constexpr std::size_t npos = std::string::npos;
constexpr DWORD anyCode = 0;

bool IsKeyCall(const Call& call)
{
    return call.function.starts_with("Reg");
}

// What a registry call is about, whichever call of the accessor's operation it is: the value, or the subkeys.
std::string SubjectOf(const std::vector<Call>& calls, std::size_t index)
{
    std::size_t at = index;
    if (calls[index].function == "RegOpenKeyA" && index + 1 < calls.size())
        ++at;
    if (calls[index].function == "RegCloseKey")
        --at;
    if (calls[at].function == "RegEnumKeyA")
        return "subkeys";
    const std::string& place = calls[at].place;
    return place.substr(place.rfind(", ") + 2);
}

// Subkeys are counted, up to the one call that fails because there are no more, and then read: 2n + 1 calls.
bool EndsEnumeration(const std::vector<Call>& calls, std::size_t index)
{
    const auto isSame = [&](const Call& call) {
        return call.function == "RegEnumKeyA" && call.place == calls[index].place;
    };
    std::size_t first = index;
    while (isSame(calls[first - 1]))
        --first;
    std::size_t end = index;
    while (isSame(calls[end]))
        ++end;
    const std::size_t count = (end - first) / 2;
    // The first to be counted, and each that is read; one later in the counting only ends the list early.
    return count == 0 ? index == first : index == first || index > first + count;
}

// Whether a call is the registry accessor's. Others open their keys with RegOpenKeyExA, and refuse nothing.
bool IsAccessors(const std::vector<Call>& calls, std::size_t index)
{
    while (!calls[index].function.starts_with("RegOpenKey") && index > 0)
        --index;
    return calls[index].function != "RegOpenKeyExA";
}

// Whether the accessor refuses its operation because of the failed call.
bool IsRefused(const std::vector<Call>& calls, std::size_t index, DWORD code)
{
    const std::string& function = calls[index].function;
    if (function == "RegQueryValueExA")
        return calls[index].purpose == "data" || (code != ERROR_FILE_NOT_FOUND && code != ERROR_MORE_DATA);
    if (function == "RegEnumKeyA")
        return EndsEnumeration(calls, index);
    return function == "RegOpenKeyA" || function == "RegSetValueExA" || function == "RegCloseKey";
}

// Refusals that are no reason to stop: what could not be read has a default, and one agent that cannot be
// written to does not keep the others from theirs.
struct Tolerance
{
    const char* operation; // its beginning
    const char* subject;
};
constexpr Tolerance tolerances[] = {
    {"open the sheet", "SubServices"},  {"open the sheet", "DisplayName"},
    {"open the sheet", "subkeys"},      {"open the sheet", "ProductType"},
    {"show Desktop Mgmt", "ClientIni"}, {"save SNMP Settings", "SetsEnabled"},
    {"save SNMP Settings", "subkeys"},  {"save SNMP Settings", "Timeout"},
};

bool IsTolerated(const Operation& operation, const std::string& subject)
{
    return std::ranges::any_of(tolerances, [&](const Tolerance& tolerance) {
        return std::string(operation.name).starts_with(tolerance.operation) && subject == tolerance.subject;
    });
}

// Whether the same call was made before; in the same save, of a script that is looked for.
bool IsRepeated(const std::vector<Call>& calls, std::size_t index)
{
    if (calls[index].function == "_access")
        return index > 0 && (calls[index - 1].function == "_access" || calls[index - 1].function == "_chmod");
    const auto isSame = [&](const Call& other) {
        return other.function == calls[index].function && other.place == calls[index].place &&
               other.purpose == calls[index].purpose;
    };
    return std::any_of(calls.begin(), calls.begin() + static_cast<std::ptrdiff_t>(index), isSame);
}

// What a call is about, for the rules: what it was given, what for, and whether it is made again. Some show
// it by the calls around them.
std::string AboutOf(const std::vector<Call>& calls, std::size_t index)
{
    const Call& call = calls[index];
    // Managers are opened for a service, libraries loaded for an entry; the computer's name goes into a file.
    if (call.function == "OpenSCManagerA" || call.function == "GetComputerNameA")
        return calls[index + 1].place;
    if (call.function == "LoadLibraryA" || call.function == "ExpandEnvironmentStringsA") {
        for (std::size_t next = index + 1; next < std::min(index + 3, calls.size()); ++next) {
            if (calls[next].function == "GetProcAddress")
                return AboutOf(calls, next);
        }
    }
    if (call.function == "QueryServiceStatus" && index > 0 && calls[index - 1].function == "StartServiceA")
        return call.place + " while it starts";
    std::string about = call.place;
    if (!call.purpose.empty())
        about += ": " + call.purpose;
    const bool isAsked = call.function == "GetProcAddress" || call.function == "_access";
    return isAsked && IsRepeated(calls, index) ? about + " again" : about;
}

// All other calls; the first row that fits counts, and a call without a row makes no difference.
struct Rule
{
    const char* operation; // its beginning
    const char* function;
    const char* about; // a part of what the call is about; its beginning after "^"
    DWORD code;        // anyCode for all that no row before names
    Expectation expectation;
};

constexpr Expectation goesOn{};
constexpr Expectation ends{.ending = Ending::Ends};

constexpr Expectation EndsWith(UINT text)
{
    return {.ending = Ending::EndsWith, .text = text};
}
constexpr Expectation Reports(UINT text)
{
    return {.ending = Ending::Reports, .text = text};
}

// clang-format off: a table
constexpr Rule rules[] = {
    {"open", "PropertySheetA", "", anyCode, ends},
    // Desktop management
    {"switch", "CreateFileA", ": check", anyCode, EndsWith(IDS_SCRIPT_NAME_INVALID)},
    {"switch", "CreateFileA", ": save", ERROR_SHARING_VIOLATION, goesOn},
    {"switch", "CreateFileA", "", anyCode, EndsWith(IDS_SCRIPT_UPDATE_FAILED)},
    {"switch", "ReadFile", "", anyCode, EndsWith(IDS_SCRIPT_UPDATE_FAILED)},
    {"switch", "WriteFile", "", anyCode, EndsWith(IDS_SCRIPT_UPDATE_FAILED)},
    {"switch desktop management off in a protected", "_access", ": exists", anyCode,
     EndsWith(IDS_SCRIPT_UPDATE_FAILED)},
    {"switch", "_chmod", ": make read-only", anyCode, goesOn},
    {"switch", "_chmod", "", anyCode, EndsWith(IDS_SCRIPT_UPDATE_FAILED)},
    {"switch", "_access", ": exists again", anyCode, EndsWith(IDS_SCRIPT_UPDATE_FAILED)},
    {"switch", "GetComputerNameA", "LOGIN.BAT", anyCode, EndsWith(IDS_SCRIPT_UPDATE_FAILED)},
    {"switch", "GetComputerNameA", "VTNCLNT.INI", anyCode, EndsWith(IDS_CLIENT_PROFILE_FAILED)},
    {"switch", "CopyFileA", "", anyCode, EndsWith(IDS_CLIENT_COPY_FAILED)},
    {"switch", "ExpandEnvironmentStringsA", "vtndata", anyCode, EndsWith(IDS_SHARE_ADD_FAILED)},
    {"switch", "ExpandEnvironmentStringsA", "%SystemRoot%", anyCode, EndsWith(IDS_CLIENT_COPY_FAILED)},
    {"switch desktop management on", "ExpandEnvironmentStringsA", "", anyCode,
     EndsWith(IDS_CLIENT_PROFILE_FAILED)},
    {"switch desktop management on", "WritePrivateProfileStringA", "", anyCode,
     EndsWith(IDS_CLIENT_PROFILE_FAILED)},
    {"switch", "NetShareAdd", "", 2118, goesOn},
    {"switch", "NetShareAdd", "", anyCode, EndsWith(IDS_SHARE_ADD_FAILED)},
    {"switch", "NetShareDel", "", 2310, goesOn},
    {"switch", "NetShareDel", "", anyCode, EndsWith(IDS_SHARE_DELETE_FAILED)},
    {"switch", "DeleteFileA", "VTNCLNT.EXE", ERROR_FILE_NOT_FOUND, goesOn},
    {"switch", "DeleteFileA", "VTNCLNT.EXE", anyCode, EndsWith(IDS_CLIENT_DELETE_FAILED)},
    {"switch", "RegQueryValueExA", "NullSessionShares: size", ERROR_MORE_DATA, EndsWith(IDS_ACCESS_DENIED)},
    // Services
    {"restart", "OpenSCManagerA", "^SNMP", anyCode, ends},
    {"restart", "OpenServiceA", "^VtMgHost", anyCode, ends},
    {"restart", "QueryServiceStatus", "^VtMgHost", anyCode, ends},
    {"clear", "OpenSCManagerA", "^SNMP", anyCode, ends},
    {"clear", "OpenServiceA", "^VtMgHost", anyCode, ends},
    {"clear", "QueryServiceStatus", "^VtMgHost", anyCode, ends},
    {"", "QueryServiceStatus", " while it starts", anyCode, Reports(IDS_CANNOT_START)},
    {"", "StartServiceA", "", ERROR_SERVICE_ALREADY_RUNNING, goesOn},
    {"", "StartServiceA", "", anyCode, Reports(IDS_CANNOT_START)},
    {"", "ControlService", "", anyCode, Reports(IDS_CANNOT_STOP)},
    // Thresholds: the five answers are compared in a chain.
    {"clear", "RegDeleteKeyA", "", ERROR_FILE_NOT_FOUND, goesOn},
    {"clear", "RegDeleteKeyA", "LogicalDisk", anyCode, goesOn},
    {"clear", "RegDeleteKeyA", "Processor", anyCode, goesOn},
    {"clear", "RegDeleteKeyA", "", anyCode, {.ending = Ending::Replaces, .text = IDS_THRESHOLDS_NOT_CLEARED}},
    // Test trap
    {"send", "OpenMutexA", "", anyCode, EndsWith(IDS_ALERTER_NOT_READY)},
    {"send", "ExpandEnvironmentStringsA", "", anyCode, EndsWith(IDS_TRAP_NOT_GENERATED)},
    {"send", "LoadLibraryA", "", anyCode, EndsWith(IDS_TRAP_NOT_GENERATED)},
    {"send",
     "GetProcAddress",
     "",
     anyCode,
     {.ending = Ending::EndsWith, .text = IDS_TRAP_NOT_GENERATED, .keepsOpen = true}},
    // The board: a read after the reset is tried again.
    {"reset", "ExpandEnvironmentStringsA", " again", anyCode, goesOn},
    {"reset", "LoadLibraryA", " again", anyCode, goesOn},
    {"reset", "GetProcAddress", " again", anyCode, goesOn},
    {"reset", "ExpandEnvironmentStringsA", "", anyCode, EndsWith(IDS_BOARD_UNREACHABLE)},
    {"reset", "LoadLibraryA", "", anyCode, EndsWith(IDS_BOARD_UNREACHABLE)},
    {"reset", "GetProcAddress", "", anyCode, EndsWith(IDS_BOARD_UNREACHABLE)},
};
// clang-format on

bool Fits(const Rule& rule, const Operation& operation, const Call& call, const std::string& about,
          DWORD code)
{
    const std::string part = rule.about;
    const bool isAbout = part.starts_with("^") ? about.starts_with(part.substr(1)) : about.find(part) != npos;
    return isAbout && call.function == rule.function && (rule.code == anyCode || rule.code == code) &&
           std::string(operation.name).starts_with(rule.operation);
}

// The call that stops SNMP, in a restart; the end without one.
auto FindStopOfSnmp(const std::vector<Call>& calls)
{
    return std::find_if(calls.begin(), calls.end(), [](const Call& call) {
        return call.function == "ControlService" && call.place == "ServicesActive, SNMP";
    });
}

// SNMP does not stop while a service that depends on it runs, because that one was not stopped or not listed.
bool KeepsSnmpRunning(const std::vector<Call>& calls, std::size_t index)
{
    const std::string about = AboutOf(calls, index);
    const std::string& function = calls[index].function;
    const bool isNeeded = function.starts_with("Open") || function == "EnumDependentServicesA" ||
                          function == "QueryServiceStatus" || function == "ControlService";
    const auto stop = FindStopOfSnmp(calls);
    // The first handle of SNMP is opened for the list.
    const auto list = std::find_if(calls.begin(), calls.end(), [](const Call& call) {
        return call.function == "EnumDependentServicesA";
    });
    const auto at = calls.begin() + static_cast<std::ptrdiff_t>(index);
    return stop != calls.end() && isNeeded &&
           ((at < stop && about.starts_with("ServicesActive, VtMg")) ||
            (at <= list && about == "ServicesActive, SNMP"));
}

// Where SNMP's failure is reported then: the number of messages before it in the run without a fault.
std::optional<std::size_t> BoxOfSnmp(const std::vector<Call>& calls, const Fault& fault)
{
    if (fault.code == ERROR_MORE_DATA || !KeepsSnmpRunning(calls, fault.call - 1))
        return std::nullopt;
    return FindStopOfSnmp(calls)->boxes;
}

Expectation ExpectedOfRegistry(const Operation& operation, const std::vector<Call>& calls, std::size_t index,
                               DWORD code)
{
    const std::string& function = calls[index].function;
    if (!IsAccessors(calls, index) || !IsRefused(calls, index, code))
        return {.changesContents = function == "RegQueryValueExA" || function == "RegOpenKeyExA"};
    const std::string subject = SubjectOf(calls, index);
    Expectation refusal{.keepsOpen = function == "RegQueryValueExA" || function == "RegSetValueExA"};
    if (IsTolerated(operation, subject))
        return refusal;
    refusal.ending = Ending::EndsWith;
    refusal.text = IDS_ACCESS_DENIED;
    return refusal;
}

} // namespace

Expectation Expected(const Operation& operation, const std::vector<Call>& calls, const Fault& fault)
{
    const std::size_t index = fault.call - 1;
    const std::string about = AboutOf(calls, index);
    for (const Rule& rule : rules) {
        if (!Fits(rule, operation, calls[index], about, fault.code))
            continue;
        Expectation expectation = rule.expectation;
        expectation.boxOfSnmp = BoxOfSnmp(calls, fault);
        return expectation;
    }
    if (IsKeyCall(calls[index]))
        return ExpectedOfRegistry(operation, calls, index, fault.code);
    return {.boxOfSnmp = BoxOfSnmp(calls, fault)};
}

bool MayBeMissing(const std::vector<Call>& calls, const Fault& fault, const Call& change)
{
    const Call& failed = calls[fault.call - 1];
    const bool isManager = failed.function == "OpenSCManagerA";
    const std::string about = isManager ? AboutOf(calls, fault.call - 1) : failed.place;
    // Without the manager no service is configured.
    if (isManager && change.function == "ChangeServiceConfigA")
        return true;
    // Services that are not listed are neither stopped nor started, and SNMP is not started if it could not
    // stop.
    const bool isChained =
        KeepsSnmpRunning(calls, fault.call - 1) && change.place.starts_with("ServicesActive, ");
    return isChained || change.place.find(about) != npos;
}

} // namespace sweep
