// The destinations of events on the real registry, and the scrambling of the password.
#include "pages/core/EventDestinations.h"

#include "support/TestRegistry.h"
#include "sysaccess/core/AgentNames.h"
#include "sysaccess/core/ConfigurationError.h"

#include <gtest/gtest.h>

namespace {

using support::Bytes;
using Names = std::vector<std::string>;

// --- the password

TEST(ScramblePassword, CombinesEachByteWithItsPlaceAndEndsWithAZero)
{
    EXPECT_EQ(ScramblePassword("abc"), (Bytes{'a' ^ 32, 'b' ^ 33, 'c' ^ 34, 0}));
    EXPECT_EQ(ScramblePassword(""), Bytes{0});
}

TEST(ScramblePassword, UsesTheLowByteOfThePlace)
{
    const std::string password(240, '\x10');
    const Bytes stored = ScramblePassword(password);
    EXPECT_EQ(stored[223], BYTE{0x10 ^ 0xFF});
    EXPECT_EQ(stored[224], BYTE{0x10});
    EXPECT_EQ(DescramblePassword(stored), password);
}

TEST(ScramblePassword, ACharacterThatMeetsItsOwnNumberEndsThePassword)
{
    EXPECT_EQ(ScramblePassword("a!b"), (Bytes{'a' ^ 32, 0, 'b' ^ 34, 0}));
    EXPECT_EQ(DescramblePassword(ScramblePassword("a!b")), "a");
}

TEST(DescramblePassword, UndoesTheScrambling)
{
    const std::string password = "Secret-2\xE4\xFF words";
    EXPECT_EQ(DescramblePassword(ScramblePassword(password)), password);
}

TEST(DescramblePassword, AFirstZeroIsNoPassword)
{
    EXPECT_EQ(DescramblePassword(Bytes{0, 'a', 'b', 0}), "");
    EXPECT_EQ(DescramblePassword({}), "");
}

TEST(DescramblePassword, EndsAtAByteThatDescramblesToZero)
{
    EXPECT_EQ(DescramblePassword(Bytes{'a' ^ 32, 33, 'c' ^ 34, 0}), "a");
    EXPECT_EQ(DescramblePassword(Bytes{32, 'b' ^ 33, 0}), "");
}

TEST(DescramblePassword, EndsAtAStoredZero)
{
    EXPECT_EQ(DescramblePassword(Bytes{'a' ^ 32, 0, 'c' ^ 34, 0}), "a");
}

TEST(DescramblePassword, TakesDataWithoutALastZeroAsFarAsItGoes)
{
    EXPECT_EQ(DescramblePassword(Bytes{'a' ^ 32, 'b' ^ 33}), "ab");
}

// --- the registry

class EventDestinationsTest : public testing::Test
{
  protected:
    EventDestinationsTest() { m_parameters.Clear(); }

    EventDestinations Load()
    {
        EventDestinations settings;
        settings.Load();
        return settings;
    }

    support::SavedKey m_parameters{hostParametersKey};
};

using EventDestinationsLoad = EventDestinationsTest;
using EventDestinationsSave = EventDestinationsTest;

TEST_F(EventDestinationsLoad, WithoutValuesEverythingIsEmpty)
{
    const EventDestinations settings = Load();
    EXPECT_EQ(settings.computers, Names());
    EXPECT_EQ(settings.userName, "");
    EXPECT_EQ(settings.password, "");
}

TEST_F(EventDestinationsLoad, ReadsEachPart)
{
    m_parameters.SetMultiString("Destination", {"ALPHA", "beta"});
    m_parameters.SetString("DestinationUsername", "events");
    m_parameters.SetBinary("DestinationPassword", ScramblePassword("secret"));
    const EventDestinations settings = Load();
    EXPECT_EQ(settings.computers, (Names{"ALPHA", "beta"}));
    EXPECT_EQ(settings.userName, "events");
    EXPECT_EQ(settings.password, "secret");
}

TEST_F(EventDestinationsLoad, PartsOfAnotherTypeAreEmpty)
{
    m_parameters.SetString("Destination", "ALPHA");
    m_parameters.SetExpandString("DestinationUsername", "events");
    m_parameters.SetRaw("DestinationPassword", REG_SZ, ScramblePassword("secret"));
    const EventDestinations settings = Load();
    EXPECT_EQ(settings.computers, Names());
    EXPECT_EQ(settings.userName, "");
    EXPECT_EQ(settings.password, "");
}

TEST_F(EventDestinationsLoad, AnEmptyPasswordValueIsNoPassword)
{
    m_parameters.SetBinary("DestinationPassword", {});
    EXPECT_EQ(Load().password, "");
}

TEST_F(EventDestinationsLoad, AMissingKeyIsRefused)
{
    m_parameters.Delete();
    EXPECT_THROW(Load(), ConfigurationError);
}

TEST_F(EventDestinationsSave, WritesWhatIsToBeWritten)
{
    EventDestinations settings;
    settings.computers = {"ALPHA", "BETA"};
    settings.userName = "events";
    settings.password = "abc";
    settings.Save(ComputersChanged | UserNameChanged | PasswordChanged);
    support::ExpectMultiString(m_parameters, "Destination", {"ALPHA", "BETA"});
    support::ExpectString(m_parameters, "DestinationUsername", "events");
    support::ExpectBinary(m_parameters, "DestinationPassword", {'a' ^ 32, 'b' ^ 33, 'c' ^ 34, 0});
}

TEST_F(EventDestinationsSave, LeavesTheOtherPartsAlone)
{
    EventDestinations settings;
    settings.userName = "events";
    settings.Save(UserNameChanged);
    support::ExpectString(m_parameters, "DestinationUsername", "events");
    support::ExpectAbsent(m_parameters, "Destination");
    support::ExpectAbsent(m_parameters, "DestinationPassword");
}

} // namespace
