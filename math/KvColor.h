// Colours as plain values of three or four channels; T is unsigned char, unsigned short or float.
// No instantiation converts: the same number is stored whatever the channel's type, and float
// colours (normally 0 to 1) are not clamped.

#pragma once

/// Channels stand in the order of the name. A default-constructed colour must be assigned before it
/// is read.
template <typename T>
struct CKvRGB
{
    /// The count of channels.
    static constexpr int e_max = 3;

    T r;
    T g;
    T b;

    CKvRGB() = default;
    constexpr CKvRGB(T red, T green, T blue) : r(red), g(green), b(blue) {}

    /// The channel by meaning: 0 red, 1 green, 2 blue; any index beyond gives blue.
    constexpr T& operator[](int index) { return index == 0 ? r : index == 1 ? g : b; }
    constexpr const T& operator[](int index) const { return index == 0 ? r : index == 1 ? g : b; }

    constexpr bool operator==(const CKvRGB&) const = default;
};

/// Channels stand in the order of the name. A default-constructed colour must be assigned before it
/// is read.
template <typename T>
struct CKvRGBA
{
    /// The count of channels.
    static constexpr int e_max = 4;

    T r;
    T g;
    T b;
    T a;

    CKvRGBA() = default;
    constexpr CKvRGBA(T red, T green, T blue, T alpha) : r(red), g(green), b(blue), a(alpha) {}

    /// The channel by meaning: 0 red, 1 green, 2 blue, 3 alpha; any index beyond gives alpha.
    constexpr T& operator[](int index)
    {
        return index == 0 ? r : index == 1 ? g : index == 2 ? b : a;
    }
    constexpr const T& operator[](int index) const
    {
        return index == 0 ? r : index == 1 ? g : index == 2 ? b : a;
    }

    constexpr bool operator==(const CKvRGBA&) const = default;
};
