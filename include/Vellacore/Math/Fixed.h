#ifndef VELLACORE_MATH_FIXED_H
#define VELLACORE_MATH_FIXED_H

#include "Vellacore/Core/Types.h"

namespace Vellacore {

// Raw quotient a * 65536 / b of two raw 16.16 values without a hardware divide; 0 for b == 0.
int fpdiv(int a, int b);

// Signed 16.16 fixed point. The handheld has no FPU, so every position, angle (degrees), time and
// matrix in the engine is one of these. Sums, differences, negation and products wrap around at 32
// bits; they are computed in unsigned arithmetic so the wrap is defined behaviour.
class Fixed {
public:
    static const Fixed One;
    static const Fixed Zero;
    static const Fixed Pi;
    static const Fixed TwoPi;
    static const Fixed Eps;
    static const Fixed NormalMinLength;
    static const Fixed NormalMaxLength;
    static const Fixed RadToDeg;
    static const Fixed DegToRad;
    static const Fixed LogE;
    // Whole numbers, not raw values: the range of the integer part.
    static const int Max = 32767;
    static const int Min = -32768;

    Fixed() = default;
    constexpr Fixed(int n) : m_Raw(WrapI32(static_cast<U32>(n) << 16)) {}
    constexpr Fixed(float f) : m_Raw(static_cast<I32>(f * 65536.0f)) {}
    // Doubles go through float so that a literal such as 4.0 converts exactly as 4.0f does.
    constexpr Fixed(double d) : Fixed(static_cast<float>(d)) {}

    static constexpr Fixed FromRaw(I32 raw) { return Fixed(RawTag(), raw); }
    constexpr I32 GetRaw() const { return m_Raw; }
    void SetRaw(I32 raw) { m_Raw = raw; }
    constexpr float ToFloat() const { return static_cast<float>(m_Raw) * 1.52587890625e-05f; }
    // Whole part, rounded toward minus infinity.
    constexpr int ToInt() const { return m_Raw >> 16; }

    constexpr Fixed operator-() const { return FromRaw(WrapI32(0u - static_cast<U32>(m_Raw))); }
    // Hidden friends, so that a whole number or a float converts on either side: 2 * x, x * 2.
    friend constexpr Fixed operator+(Fixed a, Fixed b) { return FromRaw(WrapI32(static_cast<U32>(a.m_Raw) + static_cast<U32>(b.m_Raw))); }
    friend constexpr Fixed operator-(Fixed a, Fixed b) { return FromRaw(WrapI32(static_cast<U32>(a.m_Raw) - static_cast<U32>(b.m_Raw))); }
    // 64-bit product shifted right by 16 (rounds toward minus infinity), low 32 bits kept.
    friend constexpr Fixed operator*(Fixed a, Fixed b) { return FromRaw(WrapI32(static_cast<U32>(static_cast<U64>((static_cast<I64>(a.m_Raw) * b.m_Raw) >> 16)))); }
    // A raw zero divisor gives raw 0x7FFFFFFF whatever the sign of the dividend.
    friend Fixed operator/(Fixed a, Fixed b) { return FromRaw(b.m_Raw == 0 ? 0x7FFFFFFF : fpdiv(a.m_Raw, b.m_Raw)); }

    Fixed& operator+=(Fixed b) { return *this = *this + b; }
    Fixed& operator-=(Fixed b) { return *this = *this - b; }
    Fixed& operator*=(Fixed b) { return *this = *this * b; }
    Fixed& operator/=(Fixed b) { return *this = *this / b; }

    friend constexpr bool operator==(Fixed a, Fixed b) { return a.m_Raw == b.m_Raw; }
    friend constexpr bool operator!=(Fixed a, Fixed b) { return a.m_Raw != b.m_Raw; }
    friend constexpr bool operator<(Fixed a, Fixed b) { return a.m_Raw < b.m_Raw; }
    friend constexpr bool operator<=(Fixed a, Fixed b) { return a.m_Raw <= b.m_Raw; }
    friend constexpr bool operator>(Fixed a, Fixed b) { return a.m_Raw > b.m_Raw; }
    friend constexpr bool operator>=(Fixed a, Fixed b) { return a.m_Raw >= b.m_Raw; }

    static Fixed Absolute(Fixed const& x);
    static Fixed Clamp(Fixed const& x, Fixed const& lo, Fixed const& hi);
    static Fixed Sqrt(Fixed const& x);
    // Angles in degrees, one-degree resolution; need InitLookupTables().
    static Fixed Sin(Fixed const& x);
    static Fixed Cos(Fixed const& x);
    static Fixed Tan(Fixed const& x);
    static Fixed ArcSin(Fixed const& x);
    static Fixed ArcCos(Fixed const& x);
    // Angle of the vector (x, y) in degrees, -180 to 180; y comes first.
    static Fixed ArcTan2(Fixed const& y, Fixed const& x);
    static Fixed Log(Fixed const& x);
    static Fixed Exp(Fixed const& x);
    static Fixed Power(Fixed const& x, Fixed const& y);

    static void InitLookupTables();
    static void ExitLookupTables();

private:
    struct RawTag {};
    constexpr Fixed(RawTag, I32 raw) : m_Raw(raw) {}

    I32 m_Raw;
};

static_assert(sizeof(Fixed) == 4, "Fixed is exactly one 32-bit word");

} // namespace Vellacore

#endif
