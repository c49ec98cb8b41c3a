// Comparison of math values within a tolerance, and seeded samples of them.

#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

#include "math/KvMatrix44.h"
#include "math/KvQuaternion.h"
#include "math/KvVector3.h"

constexpr float kPi = std::numbers::pi_v<float>;

template <typename T>
::testing::AssertionResult IsNear(const T& actual, const T& expected, float tolerance)
{
    constexpr int count = sizeof(T) / sizeof(float);
    const auto* a = reinterpret_cast<const float*>(&actual);
    const auto* b = reinterpret_cast<const float*>(&expected);
    for (int i = 0; i < count; ++i) {
        if (!(std::abs(a[i] - b[i]) <= tolerance))
            return ::testing::AssertionFailure()
                   << "component " << i << ": " << a[i] << " instead of " << b[i];
    }
    return ::testing::AssertionSuccess();
}

/// Numbers that are the same in every run.
class CSeededFloats
{
public:
    float Next(float low, float high)
    {
        return low + (high - low) * static_cast<float>(m_engine() >> 8U) / 16777216.0F;
    }
    CKvVector3 NextVector(float bound)
    {
        const float x = Next(-bound, bound);
        const float y = Next(-bound, bound);
        return {x, y, Next(-bound, bound)};
    }

private:
    std::mt19937 m_engine;
};
