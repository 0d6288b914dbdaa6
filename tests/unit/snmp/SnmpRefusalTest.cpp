// What becomes of a save of the SNMP Settings page when the registry refuses a part of it.
#include "machine/SnmpMachine.h"
#include "support/FailNth.h"
#include "support/RegistryCalls.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>
#include <tuple>

namespace {

using support::StoredValue;

// One write of a save of everything, and whether its refusal ends the save.
struct Write
{
    support::TestKey key;
    std::string valueName;
    StoredValue stored;
    bool endsTheSave;

    [[nodiscard]] std::string Call() const { return "RegSetValueExA HKLM\\" + key.Path() + ", " + valueName; }
};

StoredValue Number(BYTE low, BYTE high = 0)
{
    return {REG_DWORD, {low, high, 0, 0}};
}

StoredValue Text(const std::string& text)
{
    return {REG_SZ, support::Bytes(text.c_str(), text.c_str() + text.size() + 1)};
}

// The writes of RefusedSave::Changed, in their order.
std::vector<Write> AllWrites(const SnmpMachine& machine)
{
    const StoredValue fiveSeconds = Number(0x88, 0x13);
    std::vector<Write> writes;
    for (const support::TestKey& key : machine.SnmpKeys())
        writes.push_back({key, "SetsEnabled", Number(7), false});
    writes.push_back({support::TestKey(machine.product.Path()), "ServerRole", Text("Mail"), true});
    writes.push_back({machine.hostAgent, "HostFlags", Number(1), true});
    writes.push_back({machine.hostAgent, "Timeout", fiveSeconds, false});
    for (const support::TestKey& key : machine.SnmpKeys())
        writes.push_back({key, "Timeout", fiveSeconds, false});
    writes.push_back({machine.parkedDebugger, "Debugger", Text(""), true});
    writes.push_back(
        {support::TestKey(machine.activeDebugger.Path()), "Debugger", Text("vtndbg -p %ld -e %ld -g"), true});
    return writes;
}

// A machine without any of the values, so that what is there afterwards has been written.
class RefusedSave : public testing::Test
{
  protected:
    // Every setting, each with another value than its default where it has one.
    static SnmpSettings Changed()
    {
        SnmpSettings settings = LoadSnmpSettings();
        settings.setsEnabled = settings.remoteReboot = settings.rackTrapsDisabled = TRUE;
        settings.telnetDisabled = settings.exceptionTrap = TRUE;
        settings.serverRole = "Mail";
        return settings;
    }

    // Fails the test at the caller's line unless just those writes are stored of which `isWritten` says so.
    template <typename Predicate>
    void ExpectStored(Predicate isWritten, support::Location where = support::Location::current()) const
    {
        for (const Write& write : m_writes) {
            const auto expected = isWritten(write) ? std::optional(write.stored) : std::nullopt;
            support::ExpectEqual(expected, write.key.Value(write.valueName), write.Call(), where);
        }
    }

    SnmpMachine m_machine;
    const std::vector<Write> m_writes = AllWrites(m_machine);
};

class RefusedWrite : public RefusedSave, public testing::WithParamInterface<int>
{
  protected:
    // Saves everything while write number `refused` fails, and returns what was tried.
    std::vector<std::string> SaveWithRefusal(int refused, bool& hasThrown)
    {
        const SnmpSettings settings = Changed();
        const HMODULE program = GetModuleHandleA(nullptr);
        const support::FailNth<"RegSetValueExA", decltype(RegSetValueExA)> refuse(program, refused,
                                                                                  ERROR_ACCESS_DENIED);
        const support::RegistryCalls calls(program);
        hasThrown = IsRefused([&] { settings.Save(everyChange); });
        return calls.Log().CallsOf({"RegSetValueExA"});
    }
};

TEST_P(RefusedWrite, EndsTheSaveOrIsPassedOver)
{
    ASSERT_EQ(m_writes.size(), 13);
    const auto refused = static_cast<std::size_t>(GetParam()) - 1;
    bool hasThrown = false;
    const std::vector<std::string> tried = SaveWithRefusal(GetParam(), hasThrown);

    EXPECT_EQ(hasThrown, m_writes[refused].endsTheSave);
    ASSERT_EQ(tried.size(), hasThrown ? refused + 1 : m_writes.size());
    for (std::size_t i = 0; i < tried.size(); ++i)
        EXPECT_EQ(tried[i], m_writes[i].Call() + (i == refused ? " = 5" : ""));
    ExpectStored([&](const Write& write) {
        const auto index = static_cast<std::size_t>(&write - m_writes.data());
        return index < tried.size() && index != refused;
    });
}

INSTANTIATE_TEST_SUITE_P(InTheirOrder, RefusedWrite, testing::Range(1, 14));

TEST_F(RefusedSave, WritesEverythingUnlessItIsRefused)
{
    Changed().Save(everyChange);
    ExpectStored([](const Write&) { return true; });
}

// --- keys that cannot be opened

class MissingKey : public RefusedSave, public testing::WithParamInterface<std::size_t>
{
  protected:
    [[nodiscard]] bool IsBehindIt(const Write& write) const { return write.key.Path() == m_key.Path(); }

    // Every other agent is written to; where the key is needed, the save ends.
    void ExpectSavedWithoutIt(bool hasThrown, support::Location where = support::Location::current()) const
    {
        const auto end = std::ranges::find_if(
            m_writes, [&](const Write& write) { return IsBehindIt(write) && write.endsTheSave; });
        support::ExpectEqual(end != m_writes.end(), hasThrown, "refusal", where);
        const auto count = static_cast<std::size_t>(end - m_writes.begin());
        ExpectStored(
            [&](const Write& write) {
                return static_cast<std::size_t>(&write - m_writes.data()) < count && !IsBehindIt(write);
            },
            where);
    }

    const support::TestKey& m_key = m_writes.at(GetParam()).key;
};

TEST_P(MissingKey, EndsTheSaveOrIsPassedOverWhenDenied)
{
    const SnmpSettings settings = Changed();
    ExpectSavedWithoutIt(IsRefusedWhileDenied(m_key, [&] { settings.Save(everyChange); }));
}

TEST_P(MissingKey, EndsTheSaveOrIsPassedOverWhenGone)
{
    const SnmpSettings settings = Changed();
    m_key.Delete();
    ExpectSavedWithoutIt(IsRefused([&] { settings.Save(everyChange); }));
    EXPECT_FALSE(m_key.Exists());
}

INSTANTIATE_TEST_SUITE_P(OfEachWrite, MissingKey, testing::Range(std::size_t{0}, std::size_t{13}));

// --- the exception trap between its two writes

// Switching the trap on (1) or off (0), and the write that is refused: of the server role, then of one
// debugger and of the other.
class RefusedSwitch : public testing::TestWithParam<std::tuple<BOOL, int>>
{
  protected:
    RefusedSwitch()
    {
        m_machine.activeDebugger.SetString("Debugger", IsOn() ? otherDebugger : trapDebugger);
        m_machine.parkedDebugger.SetString("Debugger", IsOn() ? trapDebugger : otherDebugger);
    }

    static BOOL IsOn() { return std::get<0>(GetParam()); }

    static void Switch()
    {
        SnmpSettings settings = LoadSnmpSettings();
        settings.exceptionTrap = IsOn();
        settings.Save(ExceptionTrapChanged);
    }

    [[nodiscard]] bool Holds(const support::TestKey& key, const std::string& debugger) const
    {
        return key.Value("Debugger") == Text(debugger);
    }

    SnmpMachine m_machine;
};

TEST_P(RefusedSwitch, LosesNoDebuggerAndSucceedsWithTheNextTry)
{
    {
        const support::FailNth<"RegSetValueExA", decltype(RegSetValueExA)> refuse(
            GetModuleHandleA(nullptr), std::get<1>(GetParam()), ERROR_ACCESS_DENIED);
        EXPECT_TRUE(IsRefused(Switch));
    }
    EXPECT_TRUE(Holds(m_machine.activeDebugger, otherDebugger) ||
                Holds(m_machine.parkedDebugger, otherDebugger));
    Switch();
    support::ExpectString(m_machine.activeDebugger, "Debugger", IsOn() ? trapDebugger : otherDebugger);
    support::ExpectString(m_machine.parkedDebugger, "Debugger", IsOn() ? otherDebugger : trapDebugger);
}

INSTANTIATE_TEST_SUITE_P(OnAndOff, RefusedSwitch,
                         testing::Combine(testing::Values(TRUE, FALSE), testing::Values(1, 2, 3)));

} // namespace
