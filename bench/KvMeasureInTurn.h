// Compares ways of doing the same within one process.

#pragma once

#include <functional>

/// CPU seconds of one call.
double KvCpuSeconds(const std::function<void()>& work);

/// CPU seconds of a call of each.
struct CKvTurnCosts
{
    double ours = 0;
    double yardstick = 0;

    double Ratio() const { return ours / yardstick; }
};

/// Runs both once to warm up, then \a rounds times in turn, so that a slow spell of the machine
/// meets both, and gives the medians.
CKvTurnCosts KvMeasureInTurn(int rounds, const std::function<void()>& ours,
                             const std::function<void()>& yardstick);
