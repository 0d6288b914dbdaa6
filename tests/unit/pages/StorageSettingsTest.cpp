// The storage agents' switches on the real registry.
#include "pages/core/StorageSettings.h"

#include "support/ImportHook.h"
#include "support/TestRegistry.h"
#include "sysaccess/core/AgentServices.h"
#include "sysaccess/core/ConfigurationError.h"

#include <gtest/gtest.h>

namespace {

using support::ExpectAbsent;
using support::ExpectDword;

// Boxes in the order of storageFeatures.
enum Feature : std::size_t
{
    FibreTape,
    ArrayTape,
    SasTape,
    ArrayPerformance,
};

using Disabled = decltype(StorageSettings::disabled);

// Every feature in the same state.
Disabled Every(BOOL isDisabled)
{
    Disabled disabled{};
    disabled.fill(isDisabled);
    return disabled;
}

// A machine with the three agents and no values.
class StorageSettingsTest : public testing::Test
{
  protected:
    StorageSettingsTest()
    {
        m_agents.Clear();
        m_fibre.Create();
        m_array.Create();
        m_sas.Create();
    }

    StorageSettings Load()
    {
        StorageSettings settings;
        settings.Load();
        return settings;
    }

    support::SavedKey m_agents{ServiceKey(storageServiceName)};
    support::TestKey m_fibre{fibreAgentKey};
    support::TestKey m_array{arrayAgentKey};
    support::TestKey m_sas{sasAgentKey};
};

using StorageSettingsLoad = StorageSettingsTest;
using StorageSettingsSave = StorageSettingsTest;

TEST_F(StorageSettingsLoad, NothingIsDisabledWithoutValues)
{
    EXPECT_EQ(Load().disabled, Every(FALSE));
}

TEST_F(StorageSettingsLoad, ReadsEachFeatureFromItsOwnBit)
{
    m_fibre.SetDword(disableFlagsValue, 0x1);
    m_array.SetDword(disableFlagsValue, 0x3);
    m_sas.SetDword(disableFlagsValue, 0x4);
    EXPECT_EQ(Load().disabled, Every(TRUE));
}

TEST_F(StorageSettingsLoad, TapeSupportOfTheSasAgentIsNotBitOne)
{
    m_sas.SetDword(disableFlagsValue, 0x1);
    EXPECT_FALSE(Load().disabled[SasTape]);
}

TEST_F(StorageSettingsLoad, AValueOfAnotherTypeOrSizeCountsAsNothingDisabled)
{
    m_fibre.SetBinary(disableFlagsValue, {1, 0, 0, 0});
    m_array.SetRaw(disableFlagsValue, REG_DWORD, {3});
    m_sas.SetString(disableFlagsValue, "4");
    EXPECT_EQ(Load().disabled, Every(FALSE));
}

TEST_F(StorageSettingsLoad, AMissingAgentKeyIsRefused)
{
    m_sas.Delete();
    EXPECT_THROW(Load(), ConfigurationError);
}

TEST_F(StorageSettingsSave, ClearingOneArrayBoxKeepsTheOther)
{
    m_array.SetDword(disableFlagsValue, 0x3);
    StorageSettings settings = Load();
    settings.disabled[ArrayTape] = FALSE;
    settings.Save();
    ExpectDword(m_array, disableFlagsValue, 0x2);
}

TEST_F(StorageSettingsSave, SetsTheSasAgentsOwnBit)
{
    m_sas.SetDword(disableFlagsValue, 0x1);
    StorageSettings settings = Load();
    settings.disabled[SasTape] = TRUE;
    settings.Save();
    ExpectDword(m_sas, disableFlagsValue, 0x5);
}

TEST_F(StorageSettingsSave, KeepsBitsThatAreNotItsOwn)
{
    m_fibre.SetDword(disableFlagsValue, 0xFFFFFFFF);
    m_array.SetDword(disableFlagsValue, 0xFFFFFFFF);
    m_sas.SetDword(disableFlagsValue, 0xFFFFFFFF);
    StorageSettings settings;
    settings.Save();
    ExpectDword(m_fibre, disableFlagsValue, 0xFFFFFFFE);
    ExpectDword(m_array, disableFlagsValue, 0xFFFFFFFC);
    ExpectDword(m_sas, disableFlagsValue, 0xFFFFFFFB);
}

TEST_F(StorageSettingsSave, CarriesTheLastValueOverAMissingOne)
{
    m_fibre.SetDword(disableFlagsValue, 0x10);
    StorageSettings settings;
    settings.Save();
    ExpectDword(m_fibre, disableFlagsValue, 0x10);
    ExpectDword(m_array, disableFlagsValue, 0x10);
    ExpectDword(m_sas, disableFlagsValue, 0x10);
}

TEST_F(StorageSettingsSave, CarriesTheArrayAgentsValueOverToTheSasAgent)
{
    m_fibre.SetDword(disableFlagsValue, 0x10);
    m_array.SetDword(disableFlagsValue, 0x20);
    StorageSettings settings;
    settings.disabled = Every(TRUE);
    settings.Save();
    ExpectDword(m_fibre, disableFlagsValue, 0x11);
    ExpectDword(m_sas, disableFlagsValue, 0x25);
    ExpectDword(m_array, disableFlagsValue, 0x23);
}

TEST_F(StorageSettingsSave, StartsFromZeroWithoutAnyValue)
{
    StorageSettings settings;
    settings.disabled[FibreTape] = TRUE;
    settings.Save();
    ExpectDword(m_fibre, disableFlagsValue, 0x1);
    ExpectDword(m_array, disableFlagsValue, 0x0);
    ExpectDword(m_sas, disableFlagsValue, 0x0);
}

TEST_F(StorageSettingsSave, ReplacesAValueOfAnotherType)
{
    m_fibre.SetString(disableFlagsValue, "1");
    StorageSettings settings;
    settings.disabled[FibreTape] = TRUE;
    settings.Save();
    ExpectDword(m_fibre, disableFlagsValue, 0x1);
}

TEST_F(StorageSettingsSave, EndsAtTheFirstRefusalAndKeepsWhatWasWritten)
{
    StorageSettings settings;
    settings.disabled = Every(TRUE);
    m_sas.Delete();
    EXPECT_THROW(settings.Save(), ConfigurationError);
    ExpectDword(m_fibre, disableFlagsValue, 0x1);
    ExpectDword(m_array, disableFlagsValue, 0x1); // the second array bit comes after the SAS agent
}

TEST_F(StorageSettingsSave, GivesTheSameResultWhenRepeated)
{
    m_array.SetDword(disableFlagsValue, 0x3);
    StorageSettings settings = Load();
    settings.Save();
    const auto fibre = m_fibre.Value(disableFlagsValue);
    const auto array = m_array.Value(disableFlagsValue);
    const auto sas = m_sas.Value(disableFlagsValue);
    settings.Save();
    EXPECT_EQ(m_fibre.Value(disableFlagsValue), fibre);
    EXPECT_EQ(m_array.Value(disableFlagsValue), array);
    EXPECT_EQ(m_sas.Value(disableFlagsValue), sas);
}

} // namespace
