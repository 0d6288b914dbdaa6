// How the helpers of the tests report: at the line of the test that called them, not at their own.
#pragma once

#include <gtest/gtest.h>
#include <source_location>
#include <string>

namespace support {

using Location = std::source_location;

// Fails the running test at `where`, whichever thread reports it.
void ReportFailure(const Location& where, const std::string& message);

// Fails the running test at `where`, showing both values, unless they are equal.
template <typename Value>
void ExpectEqual(const Value& expected, const Value& found, const std::string& what, const Location& where)
{
    if (expected == found)
        return;
    ReportFailure(where, what + "\n  expected: " + testing::PrintToString(expected) +
                             "\n     found: " + testing::PrintToString(found));
}

} // namespace support
