// What the comparing benchmarks share: a clock, medians, and two subjects measured in turn. Each result is
// one row for ./bench, fields apart by tabs: what was measured, the applet's figure, the other's, their
// ratio, the target.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

using Milliseconds = std::chrono::duration<double, std::milli>;

inline constexpr int measuredRounds = 21;

inline double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// Milliseconds that the action takes.
template <typename Action>
double TimeOf(Action action)
{
    const auto start = std::chrono::steady_clock::now();
    action();
    return Milliseconds(std::chrono::steady_clock::now() - start).count();
}

struct Medians
{
    double applet;
    double other;
};

// Runs both in turn, A B A B; each returns its time. The first round of each warms up and does not count.
template <typename Applet, typename Other>
Medians MeasureInTurn(Applet applet, Other other)
{
    std::vector<double> appletTimes;
    std::vector<double> otherTimes;
    for (int round = 0; round <= measuredRounds; ++round) {
        appletTimes.push_back(applet());
        otherTimes.push_back(other());
    }
    appletTimes.erase(appletTimes.begin());
    otherTimes.erase(otherTimes.begin());
    return {Median(appletTimes), Median(otherTimes)};
}

// A target of 0 is none.
inline void PrintRow(const char* name, const Medians& medians, const char* unit, double target)
{
    std::printf("row\t%s\t%.2f %s\t%.2f %s\t%.2f\t", name, medians.applet, unit, medians.other, unit,
                medians.applet / medians.other);
    if (target > 0)
        std::printf("%.2f", target);
    std::printf("\n");
}
