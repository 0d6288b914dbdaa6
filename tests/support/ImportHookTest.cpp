// The import-table hook itself, on this program's own imports.
#include "imports/ImportHook.h"

#include <gtest/gtest.h>

namespace {

// The compiler takes an import table's entries for constants, so a function that hooks an import may not call
// it itself.
[[gnu::noinline]] DWORD Ticks()
{
    return GetTickCount();
}

TEST(ImportHook, AnswersTheCallAndGivesTheOriginalBack)
{
    const DWORD before = Ticks();
    {
        auto hook = support::HookImport<decltype(GetTickCount)>(
            GetModuleHandleA(nullptr), "GetTickCount", [](auto original) { return original() & 0U; });
        EXPECT_EQ(Ticks(), 0U);
    }
    EXPECT_GE(Ticks(), before);
}

TEST(ImportHook, RefusesAFunctionThatIsNotImported)
{
    const auto hookNothing = [] {
        auto hook = support::HookImport<BOOL()>(GetModuleHandleA(nullptr), "NoSuchFunction",
                                                [](auto original) { return original(); });
    };
    EXPECT_THROW(hookNothing(), std::runtime_error);
}

TEST(ImportHook, RefusesALambdaExpressionThatIsActive)
{
    const auto hook = [](const char* function) {
        return support::HookImport<decltype(GetTickCount)>(GetModuleHandleA(nullptr), function,
                                                           [](auto original) { return original(); });
    };
    auto first = hook("GetTickCount");
    EXPECT_THROW(auto second = hook("GetCurrentProcessId"), std::logic_error);
}

TEST(ReplacedImport, LeavesAModuleWithoutTheImport)
{
    const support::ReplacedImport none(GetModuleHandleA(nullptr), "NoSuchFunction", &Ticks);
    EXPECT_FALSE(none.IsImported());
    EXPECT_EQ(none.Original<DWORD()>(), nullptr);
}

TEST(ImportHook, NestedHooksOnOneImportEndInReverseOrder)
{
    const HMODULE self = GetModuleHandleA(nullptr);
    auto outer = support::HookImport<decltype(GetTickCount)>(self, "GetTickCount", [](auto) { return 1UL; });
    {
        auto inner = support::HookImport<decltype(GetTickCount)>(
            self, "GetTickCount", [](auto original) { return original() + 1; });
        EXPECT_EQ(Ticks(), 2U);
    }
    EXPECT_EQ(Ticks(), 1U);
}

} // namespace
