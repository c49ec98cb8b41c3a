// Component-wise arithmetic, written once for the value types of this folder. A type derives from
// one of these empty bases and gives two hooks, in its storage order:
//
//   static D Combine(op, values...)   the value of op's results, component by component
//   T Reduce(op) const                op over all components, the first two first
//
// The bases hold nothing, so that a value is its components and no byte more.

#pragma once

#include <cstdint>
#include <type_traits>

/// The arithmetic of one component. Floats are the language's own. Integers wrap around in their
/// own width, whatever they are promoted to on the way, and division by 0 gives 0.
template <typename T>
struct TKvComponentMath
{
    static_assert(std::is_same_v<T, float> || (std::is_integral_v<T> && sizeof(T) <= 4));

    static constexpr T Add(T a, T b) { return static_cast<T>(Wide(a) + Wide(b)); }
    static constexpr T Subtract(T a, T b) { return static_cast<T>(Wide(a) - Wide(b)); }
    static constexpr T Multiply(T a, T b) { return static_cast<T>(Wide(a) * Wide(b)); }
    static constexpr T Divide(T a, T b)
    {
        if constexpr (std::is_integral_v<T>)
            return b == 0 ? T{} : static_cast<T>(std::int64_t{a} / std::int64_t{b});
        else
            return a / b;
    }
    static constexpr T Absolute(T a) { return a < 0 ? Subtract(0, a) : a; }

private:
    // Unsigned, since neither a sum of ints nor a product of promoted shorts may overflow.
    using Wide = std::conditional_t<std::is_integral_v<T>, std::uint32_t, T>;
};

/// A number that components of the type T can be multiplied by: any, but that a float does not
/// silently lose its fraction to an integer component.
template <typename S, typename T>
concept KvScalarFor = std::is_arithmetic_v<S> &&
    (std::is_floating_point_v<T> || std::is_integral_v<S>);

/// Sums, differences and multiples: `a + b`, `a - b`, `-a`, `a * s`, `s * a`, `a / s` and the
/// assigning forms.
template <typename D, typename T>
struct TKvLinear
{
    friend constexpr D operator+(const D& a, const D& b) { return D::Combine(Math::Add, a, b); }
    friend constexpr D operator-(const D& a, const D& b)
    {
        return D::Combine(Math::Subtract, a, b);
    }
    friend constexpr D operator-(const D& a) requires std::is_signed_v<T>
    {
        return D::Combine([](T component) { return Negate(component); }, a);
    }
    template <KvScalarFor<T> S>
    friend constexpr D operator*(const D& a, S scalar)
    {
        const auto factor = static_cast<T>(scalar);
        return D::Combine([factor](T component) { return Math::Multiply(component, factor); }, a);
    }
    template <KvScalarFor<T> S>
    friend constexpr D operator*(S scalar, const D& a)
    {
        return a * scalar;
    }
    template <KvScalarFor<T> S>
    friend constexpr D operator/(const D& a, S scalar)
    {
        const auto divisor = static_cast<T>(scalar);
        return D::Combine([divisor](T component) { return Math::Divide(component, divisor); }, a);
    }

    friend constexpr D& operator+=(D& a, const D& b) { return a = a + b; }
    friend constexpr D& operator-=(D& a, const D& b) { return a = a - b; }
    template <KvScalarFor<T> S>
    friend constexpr D& operator*=(D& a, S scalar)
    {
        return a = a * scalar;
    }
    template <KvScalarFor<T> S>
    friend constexpr D& operator/=(D& a, S scalar)
    {
        return a = a / scalar;
    }

    constexpr bool operator==(const TKvLinear&) const = default;

protected:
    using Math = TKvComponentMath<T>;

    static constexpr T Negate(T component)
    {
        if constexpr (std::is_integral_v<T>)
            return Math::Subtract(0, component);
        else
            return -component;
    }

    constexpr D& Self() { return static_cast<D&>(*this); }
    constexpr const D& Self() const { return static_cast<const D&>(*this); }
};

/// Adds `a * b` and `a / b` component by component, `a + s` and `a - s` with the same number for
/// each component, the assigning forms, and the sum of products.
template <typename D, typename T>
struct TKvComponentWise : TKvLinear<D, T>
{
    friend constexpr D operator*(const D& a, const D& b)
    {
        return D::Combine(Math::Multiply, a, b);
    }
    friend constexpr D operator/(const D& a, const D& b) { return D::Combine(Math::Divide, a, b); }
    template <KvScalarFor<T> S>
    friend constexpr D operator+(const D& a, S scalar)
    {
        const auto addend = static_cast<T>(scalar);
        return D::Combine([addend](T component) { return Math::Add(component, addend); }, a);
    }
    template <KvScalarFor<T> S>
    friend constexpr D operator-(const D& a, S scalar)
    {
        const auto addend = static_cast<T>(scalar);
        return D::Combine([addend](T component) { return Math::Subtract(component, addend); }, a);
    }

    friend constexpr D& operator*=(D& a, const D& b) { return a = a * b; }
    friend constexpr D& operator/=(D& a, const D& b) { return a = a / b; }
    template <KvScalarFor<T> S>
    friend constexpr D& operator+=(D& a, S scalar)
    {
        return a = a + scalar;
    }
    template <KvScalarFor<T> S>
    friend constexpr D& operator-=(D& a, S scalar)
    {
        return a = a - scalar;
    }

    /// The sum of the products of the components.
    [[nodiscard]] constexpr T DotProduct(const D& other) const
    {
        return (this->Self() * other).Reduce(Math::Add);
    }

    constexpr bool operator==(const TKvComponentWise&) const = default;

protected:
    using Math = TKvComponentMath<T>;
};
