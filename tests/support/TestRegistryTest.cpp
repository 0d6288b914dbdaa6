// The keys for tests, against the registry itself.
#include "support/TestRegistry.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace {

using support::Bytes;
using support::SavedKey;
using support::ScratchKey;
using support::StoredValue;
using support::TestKey;

const char path[] = "SOFTWARE\\vtnmgmt-test-of-keys";

TEST(ScratchKey, StartsEmptyWhateverWasThere)
{
    TestKey(path).SetDword("Left", 1);
    TestKey(path).Subkey("Below").SetDword("Left", 1);

    const ScratchKey key(path);

    EXPECT_TRUE(key.Exists());
    EXPECT_TRUE(key.ValueNames().empty());
    EXPECT_TRUE(key.SubkeyNames().empty());
}

TEST(ScratchKey, IsGoneAtTheEndWithEverythingBelow)
{
    {
        const ScratchKey key(path);
        key.Subkey("A").Subkey("B").SetDword("Value", 1);
    }
    EXPECT_FALSE(TestKey(path).Exists());
}

TEST(TestKey, StoresEachKindOfValueByteForByte)
{
    const ScratchKey key;
    key.SetString("Text", "ab");
    key.SetUnterminatedString("Bare", "ab");
    key.SetExpandString("Expand", "%A%");
    key.SetMultiString("List", {"a", "bc"});
    key.SetMultiString("Nothing", {});
    key.SetBinary("Bytes", {1, 0, 255});
    key.SetRaw("Odd", 12, {7});

    EXPECT_EQ(key.Value("Text"), (StoredValue{REG_SZ, {'a', 'b', 0}}));
    EXPECT_EQ(key.Value("Bare"), (StoredValue{REG_SZ, {'a', 'b'}}));
    EXPECT_EQ(key.Value("Expand"), (StoredValue{REG_EXPAND_SZ, {'%', 'A', '%', 0}}));
    EXPECT_EQ(key.Value("List"), (StoredValue{REG_MULTI_SZ, {'a', 0, 'b', 'c', 0, 0}}));
    EXPECT_EQ(key.Value("Nothing"), (StoredValue{REG_MULTI_SZ, {0}}));
    EXPECT_EQ(key.Value("Bytes"), (StoredValue{REG_BINARY, {1, 0, 255}}));
    EXPECT_EQ(key.Value("Odd"), (StoredValue{12, {7}}));
}

TEST(TestKey, MakesASubkeyTooLongForAPath)
{
    const std::string longest(255, 'x');
    const ScratchKey key;
    key.CreateSubkey(longest);
    EXPECT_EQ(key.SubkeyNames(), std::vector<std::string>{longest});
}

TEST(TestKey, DeletesValuesAndForgivesAbsentOnes)
{
    const ScratchKey key;
    key.SetDword("Value", 1);
    key.DeleteValue("Value");
    key.DeleteValue("Value");
    EXPECT_EQ(key.Value("Value"), std::nullopt);
    EXPECT_EQ(key.Subkey("Absent").Value("Value"), std::nullopt);
}

TEST(SavedKey, PutsTheWholeTreeBack)
{
    const ScratchKey key(path);
    key.SetUnterminatedString("Bare", "ab");
    key.Subkey("Below").SetDword("Value", 5);
    {
        const SavedKey saved(path);
        saved.Clear();
        saved.SetString("Bare", "other");
        saved.Subkey("New").Create();
        EXPECT_EQ(saved.SubkeyNames(), std::vector<std::string>{"New"});
    }
    EXPECT_EQ(key.Value("Bare"), (StoredValue{REG_SZ, {'a', 'b'}}));
    EXPECT_EQ(key.SubkeyNames(), std::vector<std::string>{"Below"});
    ExpectDword(key.Subkey("Below"), "Value", 5);
}

TEST(SavedKey, BringsADeletedKeyBack)
{
    const ScratchKey key(path);
    key.SetDword("Value", 5);
    {
        const SavedKey saved(path);
        saved.Delete();
        EXPECT_FALSE(key.Exists());
    }
    ExpectDword(key, "Value", 5);
}

TEST(SavedKey, LeavesNothingWhereNothingWas)
{
    {
        const SavedKey saved(path);
        saved.Subkey("Below").SetDword("Value", 1);
    }
    EXPECT_FALSE(TestKey(path).Exists());
}

TEST(RegistryExpectations, HoldForWhatIsStored)
{
    const ScratchKey key;
    key.SetDword("Number", 7);
    key.SetString("Text", "ab");
    key.SetMultiString("List", {"a"});
    key.SetBinary("Bytes", {1});
    ExpectDword(key, "Number", 7);
    ExpectString(key, "Text", "ab");
    ExpectMultiString(key, "List", {"a"});
    ExpectBinary(key, "Bytes", {1});
    ExpectAbsent(key, "None");
}

TEST(RegistryExpectations, FailForAnotherValueTypeOrEnd)
{
    static const ScratchKey key;
    key.SetDword("Number", 7);
    key.SetUnterminatedString("Bare", "ab");
    key.SetBinary("Bytes", {7, 0, 0, 0});
    EXPECT_NONFATAL_FAILURE(ExpectDword(key, "Number", 8), "value \"Number\"");
    EXPECT_NONFATAL_FAILURE(ExpectDword(key, "Bytes", 7), "type 3");
    EXPECT_NONFATAL_FAILURE(ExpectString(key, "Bare", "ab"), "2 bytes");
    EXPECT_NONFATAL_FAILURE(ExpectBinary(key, "Number", {7, 0, 0, 0}), "type 4");
    EXPECT_NONFATAL_FAILURE(ExpectMultiString(key, "None", {}), "nullopt");
    EXPECT_NONFATAL_FAILURE(ExpectAbsent(key, "Number"), "type 4");
    key.Delete();
}

} // namespace
