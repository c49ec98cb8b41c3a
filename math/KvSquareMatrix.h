// Square matrices of floats, stored row by row: the element of row r and column c stands at index
// N * r + c. CKvMatrix22, CKvMatrix33 and CKvMatrix44 are made of this.

#pragma once

#include <array>
#include <cassert>
#include <cstddef>

/// A plain value of N x N floats. A default-constructed one must be assigned before it is read.
template <int N>
struct TKvSquareMatrix
{
    std::array<float, static_cast<std::size_t>(N) * N> elements;

    TKvSquareMatrix() = default;

    /// The identity, or for 0 a value that must be assigned before it is read.
    constexpr explicit TKvSquareMatrix(int isIdentity)
    {
        if (isIdentity != 0)
            setIdentity();
    }

    /// Both indices must be below N; in a release build, any other counts as the last one.
    constexpr float& operator()(int row, int column) { return elements[Index(row, column)]; }
    constexpr const float& operator()(int row, int column) const
    {
        return elements[Index(row, column)];
    }

    constexpr bool operator==(const TKvSquareMatrix&) const = default;

    constexpr void setIdentity()
    {
        elements = {};
        for (int i = 0; i < N; ++i)
            (*this)(i, i) = 1.0F;
    }

private:
    static constexpr std::size_t Index(int row, int column)
    {
        return Bounded(row) * N + Bounded(column);
    }
    static constexpr std::size_t Bounded(int index)
    {
        assert(index >= 0 && index < N);
        return static_cast<std::size_t>(index >= 0 && index < N ? index : N - 1);
    }
};
