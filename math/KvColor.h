// Colours as plain values of three or four channels; T is unsigned char, unsigned short or float.
// Channels stand in the order of the template's name, in memory and in its constructor. No
// instantiation converts: the same number is stored whatever the channel's type, and float colours
// (normally 0 to 1) are not clamped.

#pragma once

#include <type_traits>

#include "math/KvColorOperations.h"

/// Red, green, blue. A default-constructed colour must be assigned before it is read.
template <typename T>
struct CKvRGB : TKvColor3<CKvRGB<T>, T>
{
    T r;
    T g;
    T b;

    CKvRGB() = default;
    constexpr CKvRGB(T red, T green, T blue) : r(red), g(green), b(blue) {}

    constexpr bool operator==(const CKvRGB&) const = default;

    /// Hooks of the component-wise arithmetic.
    template <typename Op>
    static constexpr CKvRGB Combine(Op op, const auto&... colors)
    {
        return {op(colors.r...), op(colors.g...), op(colors.b...)};
    }
    template <typename Op>
    [[nodiscard]] constexpr T Reduce(Op op) const
    {
        return op(op(r, g), b);
    }
};

/// Red, green, blue, alpha. A default-constructed colour must be assigned before it is read.
template <typename T>
struct CKvRGBA : TKvColor4<CKvRGBA<T>, T>
{
    T r;
    T g;
    T b;
    T a;

    CKvRGBA() = default;
    constexpr CKvRGBA(T red, T green, T blue, T alpha) : r(red), g(green), b(blue), a(alpha) {}

    constexpr bool operator==(const CKvRGBA&) const = default;

    [[nodiscard]] constexpr CKvRGB<T> GetRGB() const { return {r, g, b}; }

    /// Hooks of the component-wise arithmetic.
    template <typename Op>
    static constexpr CKvRGBA Combine(Op op, const auto&... colors)
    {
        return {op(colors.r...), op(colors.g...), op(colors.b...), op(colors.a...)};
    }
    template <typename Op>
    [[nodiscard]] constexpr T Reduce(Op op) const
    {
        return op(op(op(r, g), b), a);
    }
};

/// Blue, green, red. A default-constructed colour must be assigned before it is read.
template <typename T>
struct CKvBGR : TKvColor3<CKvBGR<T>, T>
{
    T b;
    T g;
    T r;

    CKvBGR() = default;
    constexpr CKvBGR(T blue, T green, T red) : b(blue), g(green), r(red) {}

    constexpr bool operator==(const CKvBGR&) const = default;

    /// Hooks of the component-wise arithmetic.
    template <typename Op>
    static constexpr CKvBGR Combine(Op op, const auto&... colors)
    {
        return {op(colors.b...), op(colors.g...), op(colors.r...)};
    }
    template <typename Op>
    [[nodiscard]] constexpr T Reduce(Op op) const
    {
        return op(op(b, g), r);
    }
};

/// Alpha, red, green, blue. A default-constructed colour must be assigned before it is read.
template <typename T>
struct CKvARGB : TKvColor4<CKvARGB<T>, T>
{
    T a;
    T r;
    T g;
    T b;

    CKvARGB() = default;
    constexpr CKvARGB(T alpha, T red, T green, T blue) : a(alpha), r(red), g(green), b(blue) {}

    constexpr bool operator==(const CKvARGB&) const = default;

    /// Hooks of the component-wise arithmetic.
    template <typename Op>
    static constexpr CKvARGB Combine(Op op, const auto&... colors)
    {
        return {op(colors.a...), op(colors.r...), op(colors.g...), op(colors.b...)};
    }
    template <typename Op>
    [[nodiscard]] constexpr T Reduce(Op op) const
    {
        return op(op(op(a, r), g), b);
    }
};

static_assert(sizeof(CKvRGB<float>) == 12 && sizeof(CKvARGB<unsigned char>) == 4 &&
              std::is_trivial_v<CKvRGBA<float>> && std::is_standard_layout_v<CKvRGBA<float>>);
