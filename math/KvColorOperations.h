// What the colour templates have in common, whatever the order of their channels in memory. All of
// these bases hold nothing. Arithmetic is component-wise in the channel's type: integer channels
// wrap around, and division by 0 gives 0.

#pragma once

#include <concepts>

#include "math/KvComponentWise.h"

/// What is done with red, green and blue alone; alpha, if there is one, stays.
template <typename Color, typename T>
struct TKvColorOperations : TKvComponentWise<Color, T>
{
    static_assert(std::same_as<T, unsigned char> || std::same_as<T, unsigned short> ||
                  std::same_as<T, float>);

    [[nodiscard]] constexpr T GetR() const { return this->Self().r; }
    [[nodiscard]] constexpr T GetG() const { return this->Self().g; }
    [[nodiscard]] constexpr T GetB() const { return this->Self().b; }
    constexpr void SetR(T red) { this->Self().r = red; }
    constexpr void SetG(T green) { this->Self().g = green; }
    constexpr void SetB(T blue) { this->Self().b = blue; }

    /// 0.299 red + 0.587 green + 0.114 blue in single precision; integer channels truncate the sum.
    [[nodiscard]] constexpr T GetLuminance() const
    {
        // The weights add up to 1 within an ulp, so the sum is in the range of every channel type.
        return static_cast<T>(0.299F * static_cast<float>(GetR()) +
                              0.587F * static_cast<float>(GetG()) +
                              0.114F * static_cast<float>(GetB()));
    }

    /// Sets red, green and blue to the luminance.
    constexpr void SetGrayScale()
    {
        const T luminance = GetLuminance();
        SetR(luminance);
        SetG(luminance);
        SetB(luminance);
    }

    /// The largest of red, green and blue.
    [[nodiscard]] constexpr T GetHighestChannelValue() const
    {
        const T highest = GetR() < GetG() ? GetG() : GetR();
        return highest < GetB() ? GetB() : highest;
    }

    /// A channel below \a min becomes \a min, then one above \a max becomes \a max.
    constexpr void ClampR(T min, T max) { Clamp(this->Self().r, min, max); }
    constexpr void ClampG(T min, T max) { Clamp(this->Self().g, min, max); }
    constexpr void ClampB(T min, T max) { Clamp(this->Self().b, min, max); }
    constexpr void ClampRGB(T min, T max)
    {
        ClampR(min, max);
        ClampG(min, max);
        ClampB(min, max);
    }

    constexpr bool operator==(const TKvColorOperations&) const = default;

protected:
    static constexpr void Clamp(T& channel, T min, T max)
    {
        if (channel < min)
            channel = min;
        if (channel > max)
            channel = max;
    }
};

/// The base of the templates without alpha.
template <typename Color, typename T>
struct TKvColor3 : TKvColorOperations<Color, T>
{
    /// The count of channels.
    static constexpr int e_max = 3;

    /// The channel by meaning, not by storage: 0 red, 1 green, 2 blue; any index beyond gives blue.
    constexpr T& operator[](int index) { return Channel(this->Self(), index); }
    constexpr const T& operator[](int index) const { return Channel(this->Self(), index); }

    /// The sum of the channels' products in the channel's type: integers wrap around. Single values
    /// stand in the order of the constructor's.
    using TKvColorOperations<Color, T>::DotProduct;
    [[nodiscard]] constexpr T DotProduct(T first, T second, T third) const
    {
        return DotProduct(Color(first, second, third));
    }

    /// As ClampRGB().
    constexpr void ClampBGR(T min, T max) { this->ClampRGB(min, max); }

    constexpr bool operator==(const TKvColor3&) const = default;

private:
    static constexpr auto& Channel(auto& color, int index)
    {
        return index == 0 ? color.r : index == 1 ? color.g : color.b;
    }
};

/// The base of the templates with alpha.
template <typename Color, typename T>
struct TKvColor4 : TKvColorOperations<Color, T>
{
    /// The count of channels.
    static constexpr int e_max = 4;

    /// The channel by meaning, not by storage: 0 red, 1 green, 2 blue, 3 alpha; any index beyond
    /// gives alpha.
    constexpr T& operator[](int index) { return Channel(this->Self(), index); }
    constexpr const T& operator[](int index) const { return Channel(this->Self(), index); }

    [[nodiscard]] constexpr T GetA() const { return this->Self().a; }
    constexpr void SetA(T alpha) { this->Self().a = alpha; }

    /// The sum of the channels' products, alpha's included, in the channel's type: integers wrap
    /// around. Single values stand in the order of the constructor's.
    using TKvColorOperations<Color, T>::DotProduct;
    [[nodiscard]] constexpr T DotProduct(T first, T second, T third, T fourth) const
    {
        return DotProduct(Color(first, second, third, fourth));
    }

    constexpr void ClampA(T min, T max) { this->Clamp(this->Self().a, min, max); }

    /// Clamps all four channels.
    constexpr void ClampARGB(T min, T max)
    {
        ClampA(min, max);
        this->ClampRGB(min, max);
    }

    constexpr bool operator==(const TKvColor4&) const = default;

private:
    static constexpr auto& Channel(auto& color, int index)
    {
        return index == 0 ? color.r : index == 1 ? color.g : index == 2 ? color.b : color.a;
    }
};
