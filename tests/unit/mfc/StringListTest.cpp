// CStringList.
#include <afxcoll.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

std::vector<std::string> Forward(const CStringList& list)
{
    std::vector<std::string> texts;
    POSITION position = list.GetHeadPosition();
    while (position != nullptr)
        texts.emplace_back(list.GetNext(position));
    return texts;
}

std::vector<std::string> Backward(const CStringList& list)
{
    std::vector<std::string> texts;
    POSITION position = list.GetTailPosition();
    while (position != nullptr)
        texts.emplace_back(list.GetPrev(position));
    return texts;
}

using Texts = std::vector<std::string>;

TEST(StringList, StartsEmpty)
{
    const CStringList list(20);

    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_EQ(list.GetHeadPosition(), nullptr);
    EXPECT_EQ(list.GetTailPosition(), nullptr);
}

TEST(StringList, GrowsAtBothEnds)
{
    CStringList list;
    list.AddTail("b");
    list.AddTail("c");
    list.AddHead("a");

    EXPECT_EQ(list.GetCount(), 3);
    EXPECT_FALSE(list.IsEmpty());
    EXPECT_EQ(list.GetHead(), "a");
    EXPECT_EQ(list.GetTail(), "c");
    EXPECT_EQ(Forward(list), (Texts{"a", "b", "c"}));
    EXPECT_EQ(Backward(list), (Texts{"c", "b", "a"}));
}

TEST(StringList, ShrinksAtBothEnds)
{
    CStringList list;
    list.AddTail("a");
    list.AddTail("b");
    list.AddTail("c");

    EXPECT_EQ(list.RemoveHead(), "a");
    EXPECT_EQ(list.RemoveTail(), "c");
    EXPECT_EQ(Forward(list), (Texts{"b"}));
    EXPECT_EQ(list.RemoveHead(), "b");
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetTailPosition(), nullptr);
}

TEST(StringList, KeepsItsOrderWhenAMiddleElementGoes)
{
    CStringList list;
    list.AddTail("a");
    const POSITION middle = list.AddTail("b");
    list.AddTail("c");
    list.RemoveAt(middle);

    EXPECT_EQ(Forward(list), (Texts{"a", "c"}));
    EXPECT_EQ(Backward(list), (Texts{"c", "a"}));
    EXPECT_EQ(list.GetCount(), 2);
}

TEST(StringList, CanBeFilledAgainAfterItWasEmptied)
{
    CStringList list;
    list.AddTail("a");
    list.AddTail("b");
    list.RemoveAll();
    EXPECT_TRUE(list.IsEmpty());
    list.AddHead("c");

    EXPECT_EQ(Backward(list), (Texts{"c"}));
}

TEST(StringList, FindsEqualTexts)
{
    CStringList list;
    const POSITION first = list.AddTail("SNMP");
    list.AddTail("other");
    const POSITION last = list.AddTail("SNMP");

    EXPECT_EQ(list.Find("SNMP"), first);
    EXPECT_EQ(list.Find("SNMP", first), last);
    EXPECT_EQ(list.Find("SNMP", last), nullptr);
    EXPECT_EQ(list.Find("snmp"), nullptr);
}

TEST(StringList, ChangesAnElementInPlace)
{
    CStringList list;
    const POSITION position = list.AddTail("old");
    list.SetAt(position, "new");

    EXPECT_EQ(list.GetAt(position), "new");
}

} // namespace
