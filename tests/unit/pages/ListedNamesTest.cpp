// The search for a name without the list box that shows the names.
#include "pages/core/ListedNames.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

using FirstMatch = ListedNames::FirstMatch;

ListedNames Listing(const std::vector<std::string>& names)
{
    ListedNames listed;
    for (const std::string& name : names)
        listed.Add(name);
    return listed;
}

TEST(ListedNames, AnUnknownNameIsNowhere)
{
    EXPECT_EQ(Listing({"foo.exe"}).Find("foo"), FirstMatch::AnotherOrNone);
    EXPECT_EQ(Listing({}).Find(""), FirstMatch::AnotherOrNone);
}

TEST(ListedNames, ANameThatNoOtherBeginsWithIsFound)
{
    EXPECT_EQ(Listing({"foo.exe", "fo", "food.exe"}).Find("foo.exe"), FirstMatch::TheName);
}

TEST(ListedNames, WithAnotherNameThatBeginsAlikeTheListDecides)
{
    EXPECT_EQ(Listing({"foo", "foo bar"}).Find("foo"), FirstMatch::AskTheList);
}

TEST(ListedNames, ADoubledNameIsForTheListToFind)
{
    EXPECT_EQ(Listing({"foo", "foo"}).Find("foo"), FirstMatch::AskTheList);
}

TEST(ListedNames, ANameInBracketsMayBeFoundFirst)
{
    EXPECT_EQ(Listing({"[system process]", "system"}).Find("system"), FirstMatch::AskTheList);
    EXPECT_EQ(Listing({"[-c-]", "c"}).Find("c"), FirstMatch::AskTheList);
}

TEST(ListedNames, WhatStandsBehindABracketIsNoName)
{
    EXPECT_EQ(Listing({"[system"}).Find("system"), FirstMatch::AnotherOrNone);
    EXPECT_EQ(Listing({"[-system"}).Find("system"), FirstMatch::AnotherOrNone);
}

TEST(ListedNames, ALineBearsItsTextBeforeTheTab)
{
    EXPECT_EQ(Listing({"a\tb"}).Find("a"), FirstMatch::TheName);
    EXPECT_EQ(Listing({"a\tb"}).Find("a\tb"), FirstMatch::AnotherOrNone);
}

TEST(ListedNames, LettersBeyondAsciiAreForTheListToCompare)
{
    EXPECT_EQ(Listing({"b\xE4r"}).Find("b\xE4r"), FirstMatch::AskTheList);
    EXPECT_EQ(Listing({"b\xE4r"}).Find("b\xF6r"), FirstMatch::AnotherOrNone);
}

} // namespace
