// Exceptions that are thrown while there is no memory.
#include "sysaccess/core/ExceptionMemory.h"

#include "support/ModuleMemory.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace {

// More than the reserve has blocks: each must come back.
TEST(ExceptionMemory, LastsForAnyNumberOfExceptionsOneAfterTheOther)
{
    PrepareExceptions();
    support::ModuleMemory memory(GetModuleHandleA(nullptr));
    int caught = 0;
    memory.Arm(1, 1000, GetCurrentThreadId());
    for (int i = 0; i < 100; ++i) {
        try {
            throw i;
        } catch (int) {
            ++caught;
        }
    }
    memory.Disarm();
    EXPECT_EQ(caught, 100);
    EXPECT_GE(memory.Taken(), 100);
}

} // namespace
