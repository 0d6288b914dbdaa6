// The stored configuration of watched processes: taken apart, put together, read and written.
#include "pages/core/ProcessMonitorSettings.h"

#include "support/CodePage932.h"
#include "support/TestRegistry.h"
#include "sysaccess/core/AgentNames.h"
#include "sysaccess/core/ConfigurationError.h"

#include <gtest/gtest.h>

namespace {

using support::Bytes;
using Processes = std::vector<MonitoredProcess>;

Bytes BytesOf(const std::string& text)
{
    return {text.begin(), text.end()};
}

// Entries as they are stored; a text literal's own zero ends the last name.
template <std::size_t size>
Bytes Stored(const char (&text)[size])
{
    return {&text[0], &text[size]};
}

// --- parsing

TEST(ProcessMonitorParse, TakesOptionNameAndZeroInTurn)
{
    EXPECT_EQ(ParseMonitoredProcesses(Stored("\x01"
                                             "a.exe\0\x83"
                                             "b.exe")),
              (Processes{{0x01, "a.exe"}, {0x83, "b.exe"}}));
}

TEST(ProcessMonitorParse, NoDataIsNoConfiguration)
{
    EXPECT_EQ(ParseMonitoredProcesses({}), Processes());
}

TEST(ProcessMonitorParse, AFirstOptionOfZeroIsNoConfiguration)
{
    EXPECT_EQ(ParseMonitoredProcesses(Stored("\0a.exe\0\x01"
                                             "b.exe")),
              Processes());
}

TEST(ProcessMonitorParse, KeepsAnOptionOfZeroInTheMiddle)
{
    EXPECT_EQ(ParseMonitoredProcesses(Stored("\x01"
                                             "a\0\0b\0\x02"
                                             "c")),
              (Processes{{1, "a"}, {0, "b"}, {2, "c"}}));
}

TEST(ProcessMonitorParse, TakesALastNameWithoutItsZeroAsFarAsItGoes)
{
    EXPECT_EQ(ParseMonitoredProcesses(BytesOf("\x03"
                                              "notep")),
              (Processes{{3, "notep"}}));
}

TEST(ProcessMonitorParse, ALoneOptionByteHasAnEmptyName)
{
    EXPECT_EQ(ParseMonitoredProcesses(Bytes{3}), (Processes{{3, ""}}));
    EXPECT_EQ(ParseMonitoredProcesses(Bytes{1, 'a', 0, 2}), (Processes{{1, "a"}, {2, ""}}));
}

TEST(ProcessMonitorParse, KeepsOptionsThatNobodyKnowsDoubledNamesAndCapitals)
{
    EXPECT_EQ(ParseMonitoredProcesses(Stored("\x0F"
                                             "a\0\x84"
                                             "A\0\x7F"
                                             "a")),
              (Processes{{0x0F, "a"}, {0x84, "A"}, {0x7F, "a"}}));
}

TEST(ProcessMonitorParse, TakesSixtyFourKilobytes)
{
    Bytes stored;
    while (stored.size() < 65536)
        stored.insert(stored.end(), {0x81, 'x', 'y', 0});
    const Processes processes = ParseMonitoredProcesses(stored);
    EXPECT_EQ(processes.size(), stored.size() / 4);
    EXPECT_EQ(FormatMonitoredProcesses(processes), stored);
}

TEST(ProcessMonitorParse, TakesOneNameOfSixtyFourKilobytes)
{
    Bytes stored(65536, 'n');
    stored.front() = 1;
    EXPECT_EQ(ParseMonitoredProcesses(stored), (Processes{{1, std::string(65535, 'n')}}));
}

TEST(ProcessMonitorParse, TakesOffTheHalfCharacterAtTheEndOfAName)
{
    const support::CodePage932 japanese(GetModuleHandleA(nullptr));
    EXPECT_EQ(
        ParseMonitoredProcesses(Stored("\x81"
                                       "a\x83\0\x82"
                                       "\x83\x81\0\x83"
                                       "\x83\x81\x83\0\x81"
                                       "\xB1\0\x81"
                                       "\x83\0\x01"
                                       "b\xFC")),
        (Processes{
            {0x81, "a"}, {0x82, "\x83\x81"}, {0x83, "\x83\x81"}, {0x81, "\xB1"}, {0x81, ""}, {0x01, "b"}}));
}

TEST(ProcessMonitorParse, KeepsEveryByteWhereEachIsACharacter)
{
    EXPECT_EQ(ParseMonitoredProcesses(Stored("\x81"
                                             "a\x83")),
              (Processes{{0x81, "a\x83"}}));
}

// --- formatting

TEST(ProcessMonitorFormat, LeavesOutProcessesWithoutAnOption)
{
    EXPECT_EQ(FormatMonitoredProcesses({{0, "running.exe"}, {0x80, "added.exe"}}), Stored("\x80"
                                                                                          "added.exe"));
}

TEST(ProcessMonitorFormat, LeavesOutEmptyNames)
{
    EXPECT_EQ(FormatMonitoredProcesses({{3, ""}, {2, "b"}}), Stored("\x02"
                                                                    "b"));
}

TEST(ProcessMonitorFormat, EndsWithTheLastNamesZero)
{
    EXPECT_EQ(FormatMonitoredProcesses({{1, "a"}, {2, "b"}}), (Bytes{1, 'a', 0, 2, 'b', 0}));
}

TEST(ProcessMonitorFormat, NothingToKeepIsNoBytesAtAll)
{
    EXPECT_EQ(FormatMonitoredProcesses({}), Bytes());
    EXPECT_EQ(FormatMonitoredProcesses({{0, "a"}}), Bytes());
}

TEST(ProcessMonitorFormat, WhatIsReadComesBackByteForByte)
{
    const Bytes stored = Stored("\x01"
                                "a.exe\0\x83"
                                "b\xE4.exe\0\x80"
                                "c\td");
    EXPECT_EQ(FormatMonitoredProcesses(ParseMonitoredProcesses(stored)), stored);
}

// --- the registry

class ProcessMonitorSettings : public testing::Test
{
  protected:
    ProcessMonitorSettings() { m_parameters.Clear(); }

    support::SavedKey m_parameters{hostParametersKey};
};

TEST_F(ProcessMonitorSettings, AnAbsentValueIsNoConfiguration)
{
    EXPECT_EQ(LoadMonitoredProcesses(), Processes());
}

TEST_F(ProcessMonitorSettings, AnEmptyValueIsNoConfiguration)
{
    m_parameters.SetBinary("ProcMon", {});
    EXPECT_EQ(LoadMonitoredProcesses(), Processes());
}

TEST_F(ProcessMonitorSettings, LoadsTheStoredValue)
{
    m_parameters.SetBinary("ProcMon", {2, 'a', 0});
    EXPECT_EQ(LoadMonitoredProcesses(), (Processes{{2, "a"}}));
}

TEST_F(ProcessMonitorSettings, AValueOfAnotherTypeIsNoConfiguration)
{
    m_parameters.SetRaw("ProcMon", REG_SZ, {2, 'a', 0});
    EXPECT_EQ(LoadMonitoredProcesses(), Processes());
}

TEST_F(ProcessMonitorSettings, AMissingKeyIsRefused)
{
    m_parameters.Delete();
    EXPECT_THROW((void)LoadMonitoredProcesses(), ConfigurationError);
    EXPECT_THROW(SaveMonitoredProcesses({{1, "a"}}), ConfigurationError);
}

TEST_F(ProcessMonitorSettings, SavesExactlyTheEntries)
{
    SaveMonitoredProcesses({{1, "a"}, {0, "running"}, {0x80, "b"}});
    support::ExpectBinary(m_parameters, "ProcMon", {1, 'a', 0, 0x80, 'b', 0});
}

TEST_F(ProcessMonitorSettings, SavesNothingAsAnEmptyValue)
{
    m_parameters.SetBinary("ProcMon", {2, 'a', 0});
    SaveMonitoredProcesses({});
    support::ExpectBinary(m_parameters, "ProcMon", {});
}

} // namespace
