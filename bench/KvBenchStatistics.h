// What the benchmark makes of its measurements.

#pragma once

#include <span>
#include <vector>

/// The middle one of the values, or the mean of the two in the middle. There must be one at least.
double KvMedian(std::vector<double> values);

/// The exponent e of the power law cost = c * size^e that fits the points best: the slope of the
/// least-squares line through their logarithms. Two points at least, all values above 0.
double KvGrowthExponent(std::span<const double> sizes, std::span<const double> costs);
