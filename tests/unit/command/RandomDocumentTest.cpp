// Random states and documents: what get shows comes back, what is predicted happens, and no document does
// harm.
#include "CommandMachine.h"

#include <cstdlib>
#include <random>

namespace {

class RandomDocuments : public CommandMachine
{
  protected:
    RandomDocuments() { MakeDomainController(); }

    static int Rounds(int sample, int all) { return std::getenv("VTN_THOROUGH") == nullptr ? sample : all; }

    std::size_t Pick(std::size_t count) { return m_random() % count; }
    bool Toss() { return Pick(2) == 1; }
    template <typename Choices>
    auto OneOf(const Choices& choices)
    {
        return choices[Pick(choices.size())];
    }

    // Any stored values, those of other programs too.
    void MakeState()
    {
        using namespace std::string_literals;
        const std::vector<std::string> processes = {"", "\x03\x61.exe\0"s, "\x81\x62.exe\0\x02\x61.exe\0"s,
                                                    "\x80\x62.exe\0\x07\x63.exe\0\x03\x44.EXE\0"s,
                                                    "\x02\x63.exe"s};
        const support::TestKey host = m_agents.Service("VtMgHost");
        host.Subkey("VTNSNMP").SetDword("SetsEnabled", static_cast<DWORD>(Pick(0x20)));
        host.Subkey("VTNSNMP").SetDword("Timeout", static_cast<DWORD>(Pick(4'000'000)));
        host.Subkey("VTNMHOST").SetDword("HostFlags", static_cast<DWORD>(Pick(4)));
        m_role.SetString("ServerRole", std::string(Pick(65), static_cast<char>('a' + Pick(26))));
        const bool isTrapOn = Toss();
        m_debugger.SetString("Debugger", isTrapOn ? "VTNDBG.exe -x" : "drwtsn32");
        host.Subkey("AppTrap").SetString("Debugger", isTrapOn ? "drwtsn32" : "VTNDBG.exe -x");
        for (const char* agent : {"VTNFCA", "VTNMIDA", "VTNSAS"})
            m_agents.Service("VtMgStor")
                .Subkey(agent)
                .SetDword("DisableFlags", static_cast<DWORD>(Pick(0x20)));
        m_agents.SetActive("VtMgHost", Toss() ? std::vector<std::string>{"vtnperf", "VTNGONE"}
                                              : std::vector<std::string>{});
        m_agents.SetActive("VTNNicMgmt", Toss() ? std::vector<std::string>{"VTNMNIC"}
                                                : std::vector<std::string>{"VTNNICS", "VTNVLAN"});
        Store(OneOf(processes));
        m_board.record = {static_cast<DWORD>(Pick(2)), static_cast<DWORD>(Pick(2)),
                          static_cast<DWORD>(Pick(2)), 0};
    }

    // Changes some members of a document to other values that they may have, or, now and then, must not.
    Json Changed(Json document, bool isWild)
    {
        for (auto& [section, members] : document.items()) {
            for (auto& [name, value] : members.items())
                Change(value, section == "snmp" && name == "collectionIntervalSeconds", isWild);
        }
        if (Toss())
            document["processMonitor"][OneOf(std::vector<std::string>{"a.exe", "B.exe", "new.exe"})] =
                OneOf(std::vector<std::string>{"none", "start", "stop", "startAndStop"});
        if (Toss())
            document.erase(OneOf(std::vector<std::string>{"agents", "snmp", "storage", "processMonitor"}));
        return document;
    }

    void Change(Json& value, bool isInterval, bool isWild)
    {
        if (isWild && Pick(12) == 0)
            value = OneOf(
                std::vector<Json>{nullptr, 1, "x", Json::array(), Json::object(), -1.5, true, "\xC2\x80"});
        else if (value.is_boolean() && Pick(3) == 0)
            value = !value.get<bool>();
        else if (isInterval)
            value = OneOf(std::vector<int>{5, 60, 120, 3600});
        else if (value.is_object())
            for (auto& [name, member] : value.items())
                Change(member, false, isWild);
    }

    std::mt19937 m_random{20240501};
};

// A document of any kind is done as predicted, or refused with one line, and then nothing is written.
TEST_F(RandomDocuments, AreDoneAsPredictedOrRefusedAsAWhole)
{
    int done = 0;
    int refused = 0;
    for (int round = 0; round < Rounds(150, 1000); ++round) {
        if (round % 10 == 0)
            MakeState();
        const Json before = Get();
        const std::string document = Changed(before, Toss()).dump();
        const Answer predicted = Set(document, {"--what-if", "--changes"});
        EXPECT_EQ(Get(), before) << document;
        ForgetCalls();
        const Answer answer = Set(document, {"--changes"});
        EXPECT_EQ(answer.code, predicted.code) << document;
        EXPECT_EQ(answer.lines, predicted.lines) << document;
        EXPECT_EQ(answer.errors, predicted.errors) << document;
        if (answer.code == ExitCode::Done) {
            ++done;
            EXPECT_EQ(Get(), answer.lines[0]);
            continue;
        }
        ++refused;
        EXPECT_EQ(answer.code, ExitCode::WrongUse);
        EXPECT_EQ(std::count(answer.errors.begin(), answer.errors.end(), '\n'), 1);
        EXPECT_EQ(Writes(), std::vector<std::string>());
    }
    EXPECT_GT(done, 10);
    EXPECT_GT(refused, 10);
}

TEST_F(RandomDocuments, WhatGetShowedComesBack)
{
    int done = 0;
    for (int round = 0; round < Rounds(60, 500); ++round) {
        MakeState();
        const Json before = Get();
        for (int change = 0; change < 2; ++change)
            done += Set(Changed(Get(), false).dump()).code == ExitCode::Done ? 1 : 0;
        const Answer back = Set(before.dump());
        ASSERT_EQ(back.code, ExitCode::Done) << before.dump() << back.errors;
        EXPECT_EQ(Get(), before);
        EXPECT_EQ(back.lines[0], before);
    }
    EXPECT_GT(done, 20);
}

} // namespace
