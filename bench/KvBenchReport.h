// The table that a benchmark of the library prints.

#pragma once

#include <optional>
#include <string>
#include <vector>

/// One result: a ratio or an exponent, and the most that it may be when there is a goal.
struct CKvBenchFigure
{
    std::string what;
    double value = 0;
    std::optional<double> goal;
};

/// Prints to standard output each figure beside its goal.
void KvPrintFigures(const std::vector<CKvBenchFigure>& figures);
