// The import-table hook itself, on this program's own imports.
#include "imports/ImportHook.h"
#include "support/ThisProgram.h"

#include <gtest/gtest.h>

namespace {

using support::thisProgram;

// The compiler takes an import table's entries for constants, so a function that hooks an import may not call
// it itself.
[[gnu::noinline]] DWORD TickCount()
{
    return GetTickCount();
}

TEST(ImportHook, AnswersTheCallAndGivesTheOriginalBack)
{
    const DWORD before = TickCount();
    {
        auto hook = support::HookImport<decltype(GetTickCount)>(
            thisProgram, "GetTickCount", [](auto original) { return original() & 0U; });
        EXPECT_EQ(TickCount(), 0U);
    }
    EXPECT_GE(TickCount(), before);
}

TEST(ImportHook, RefusesAFunctionThatIsNotImported)
{
    const auto hookNothing = [] {
        auto hook = support::HookImport<BOOL()>(thisProgram, "NoSuchFunction",
                                                [](auto original) { return original(); });
    };
    EXPECT_THROW(hookNothing(), std::runtime_error);
}

TEST(ImportHook, RefusesALambdaExpressionThatIsActive)
{
    const auto hook = [](const char* function) {
        return support::HookImport<decltype(GetTickCount)>(thisProgram, function,
                                                           [](auto original) { return original(); });
    };
    auto first = hook("GetTickCount");
    EXPECT_THROW(auto second = hook("GetCurrentProcessId"), std::logic_error);
}

TEST(ReplacedImport, LeavesAModuleWithoutTheImport)
{
    const support::ReplacedImport none(thisProgram, "NoSuchFunction", &TickCount);
    EXPECT_FALSE(none.IsImported());
    EXPECT_EQ(none.Original<DWORD()>(), nullptr);
}

TEST(ImportHook, NestedHooksOnOneImportEndInReverseOrder)
{
    auto outer =
        support::HookImport<decltype(GetTickCount)>(thisProgram, "GetTickCount", [](auto) { return 1UL; });
    {
        auto inner = support::HookImport<decltype(GetTickCount)>(
            thisProgram, "GetTickCount", [](auto original) { return original() + 1; });
        EXPECT_EQ(TickCount(), 2U);
    }
    EXPECT_EQ(TickCount(), 1U);
}

} // namespace
