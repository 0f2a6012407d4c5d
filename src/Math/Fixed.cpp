#include "Vellacore/Math/Fixed.h"

#include <cmath>
#include <memory>

namespace Vellacore {

// Defined from constant expressions, so they are in place before any constructor of another
// translation unit can read them.
const Fixed Fixed::One = Fixed::FromRaw(65536);
const Fixed Fixed::Zero = Fixed::FromRaw(0);
const Fixed Fixed::Pi = Fixed::FromRaw(205887);
const Fixed Fixed::TwoPi = Fixed::FromRaw(411774);
const Fixed Fixed::Eps = Fixed::FromRaw(1);
const Fixed Fixed::NormalMinLength = Fixed::FromRaw(65472);
const Fixed Fixed::NormalMaxLength = Fixed::FromRaw(65600);
const Fixed Fixed::RadToDeg = Fixed::FromRaw(3754936);
const Fixed Fixed::DegToRad = Fixed::FromRaw(1143);
const Fixed Fixed::LogE = Fixed::FromRaw(178145);

namespace {

constexpr int S_TableSize = 4096;
constexpr I32 S_FullTurn = 360 << 16;
constexpr I32 S_HalfTurn = 180 << 16;

enum LookupTable { SineTable, CosineTable, ArcSineTable, ArcCosineTable, LookupTableCount };

std::unique_ptr<I32[]> S_LookupTables[LookupTableCount];

// atan(2^(1 - i)) in degrees: the first entry turns a vector into the range the halving steps can
// reach, the others are the CORDIC steps proper.
constexpr int S_ArcTanSteps = 24;
constexpr I32 S_ArcTanTable[S_ArcTanSteps] = {
    4157273, 2949120, 1740967, 919879, 466945, 234379, 117304, 58666, 29335, 14668, 7334, 3667,
    1833, 917, 458, 229, 115, 57, 29, 14, 7, 4, 2, 1,
};

U32 Magnitude(I32 v)
{
    return v < 0 ? 0u - static_cast<U32>(v) : static_cast<U32>(v);
}

I32 WithSign(U32 magnitude, bool negative)
{
    return WrapI32(negative ? 0u - magnitude : magnitude);
}

// Low 32 bits of dividend * 2^16 / 2^shift, without a 64-bit shift.
U32 ScaledShift(U32 dividend, unsigned shift)
{
    return shift <= 16 ? dividend << (16 - shift) : dividend >> (shift - 16);
}

// Low 32 bits of dividend * 2^16 / divisor for 2 < divisor < 2^31, one quotient bit per step of a
// restoring long division. The remainder stays below the divisor, so shifting it left never loses a
// bit; the high bits of the quotient shift out of the top of its register.
U32 LongDivide(U32 dividend, U32 divisor)
{
    // The leading quotient bits are zero as long as the dividend bits taken so far stay below the
    // divisor; a three-level search finds how many groups of four steps that saves (0 to 28 steps).
    unsigned skipped = (dividend >> 16) < divisor ? 16 : 0;
    skipped += (dividend >> (24 - skipped)) < divisor ? 8 : 0;
    skipped += (dividend >> (28 - skipped)) < divisor ? 4 : 0;

    U32 remainder = (dividend >> 1) >> (31 - skipped);
    U32 pending = dividend << skipped;
    U32 quotient = 0;
    // Forced inline, so that the steps are straight-line code and not 48 calls.
    auto step = [&]() __attribute__((always_inline)) {
        remainder = (remainder << 1) | (pending >> 31);
        pending <<= 1;
        quotient <<= 1;
        if (remainder >= divisor) {
            remainder -= divisor;
            quotient |= 1;
        }
    };
    auto fourSteps = [&]() __attribute__((always_inline)) {
        step();
        step();
        step();
        step();
    };
    // Entered part-way and run straight to the end: 48 steps less the skipped ones.
    switch (skipped / 4) {
    case 0: fourSteps(); [[fallthrough]];
    case 1: fourSteps(); [[fallthrough]];
    case 2: fourSteps(); [[fallthrough]];
    case 3: fourSteps(); [[fallthrough]];
    case 4: fourSteps(); [[fallthrough]];
    case 5: fourSteps(); [[fallthrough]];
    case 6: fourSteps(); [[fallthrough]];
    case 7: fourSteps();
    }
    fourSteps();
    fourSteps();
    fourSteps();
    fourSteps();
    return quotient;
}

// NaN (asinf and acosf past 1) has no integer value; those arc-table entries are never read.
I32 ToRaw(float value)
{
    return std::isnan(value) ? 0 : static_cast<I32>(value * 65536.0f);
}

void FillLookupTables()
{
    for (int i = 0; i < S_TableSize; ++i) {
        float const degrees = static_cast<float>(i) * 0.087890625f;
        float const radians = degrees * 0.0174532924f;
        S_LookupTables[SineTable][i] = ToRaw(std::sin(radians));
        S_LookupTables[CosineTable][i] = ToRaw(std::cos(radians));
        S_LookupTables[ArcSineTable][i] = ToRaw(std::asin(degrees));
        S_LookupTables[ArcCosineTable][i] = ToRaw(std::acos(degrees));
    }
}

// Only whole degrees count, so every angle within one degree reads the same entry
// (Sin(90.5) == Sin(90)); the motion the games were tuned with depends on that.
unsigned DegreeIndex(Fixed const& angle)
{
    I32 raw = angle.GetRaw();
    while (raw < 0)
        raw += S_FullTurn;
    while (raw >= S_FullTurn)
        raw -= S_FullTurn;
    unsigned const degrees = static_cast<U32>(raw) >> 16;
    return degrees * S_TableSize / 360;
}

Fixed Halved(Fixed const& v, int shift)
{
    return Fixed::FromRaw(v.GetRaw() >> shift);
}

// One CORDIC step: turns (x, y) toward the positive x axis by `turn`, the angle whose tangent is
// xPart / x (the vector grows as it turns), and counts the turn into angle, which so converges to the
// direction (x, y) had at the start.
void TurnTowardAxis(Fixed& x, Fixed& y, Fixed& angle, Fixed const& xPart, Fixed const& yPart, I32 turn)
{
    if (y < Fixed::Zero) {
        x -= yPart;
        y += xPart;
        angle -= Fixed::FromRaw(turn);
    } else {
        x += yPart;
        y -= xPart;
        angle += Fixed::FromRaw(turn);
    }
}

} // namespace

int fpdiv(int a, int b)
{
    if (b == 0)
        return 0;
    bool const negative = (a < 0) != (b < 0);
    U32 const dividend = Magnitude(a);
    U32 const divisor = Magnitude(b);
    if (divisor == 1) {
        // This path negates the signed dividend rather than its magnitude, so a negative dividend
        // comes out with the wrong sign; kept so, because existing content was made against these results.
        U32 const shifted = static_cast<U32>(a) << 16;
        return WrapI32(negative ? 0u - shifted : shifted);
    }
    if (dividend < 0x10000 && divisor >= dividend << 16)
        return WithSign(divisor == dividend << 16 ? 1u : 0u, negative);
    if ((divisor & (divisor - 1)) == 0)
        return WithSign(ScaledShift(dividend, static_cast<unsigned>(__builtin_ctz(divisor))), negative);
    return WithSign(LongDivide(dividend, divisor), negative);
}

Fixed Fixed::Absolute(Fixed const& x)
{
    return x < Zero ? -x : x;
}

Fixed Fixed::Clamp(Fixed const& x, Fixed const& lo, Fixed const& hi)
{
    if (x < lo)
        return lo;
    return hi <= x ? hi : x;
}

Fixed Fixed::Sqrt(Fixed const& x)
{
    // The root of raw * 2^16 is sqrt(raw) * 2^8: the raw value of the root of x.
    U64 remainder = static_cast<U64>(static_cast<U32>(x.m_Raw)) << 16;
    U64 root = 0;
    for (U64 bit = U64(1) << 62; bit != 0; bit >>= 2) {
        if (remainder >= root + bit) {
            remainder -= root + bit;
            root = (root >> 1) + bit;
        } else {
            root >>= 1;
        }
    }
    return FromRaw(static_cast<I32>(root));
}

Fixed Fixed::Sin(Fixed const& x)
{
    return FromRaw(S_LookupTables[SineTable][DegreeIndex(x)]);
}

Fixed Fixed::Cos(Fixed const& x)
{
    return FromRaw(S_LookupTables[CosineTable][DegreeIndex(x)]);
}

// At 90 and 270 degrees the cosine entry is exactly 0, and the division gives raw 0x7FFFFFFF.
Fixed Fixed::Tan(Fixed const& x)
{
    return Sin(x) / Cos(x);
}

// The argument only ever selects entry 0 of the arc tables (its integer part, wrapped into one
// period of 65536 and shifted right by 16, is always 0), so these are constants; no engine code
// calls them.
Fixed Fixed::ArcSin(Fixed const&)
{
    return FromRaw(S_LookupTables[ArcSineTable][0]);
}

Fixed Fixed::ArcCos(Fixed const&)
{
    return FromRaw(S_LookupTables[ArcCosineTable][0]);
}

Fixed Fixed::ArcTan2(Fixed const& y, Fixed const& x)
{
    Fixed vx = x;
    Fixed vy = y;
    Fixed angle = Zero;
    if (vx < Zero) {
        vx = -vx;
        vy = -vy;
        angle = FromRaw(S_HalfTurn);
        // A vector turned over from the third quadrant must end near -180, not +180; one on the
        // negative x axis stays at +180.
        if (vy > Zero)
            angle = -angle;
    }
    TurnTowardAxis(vx, vy, angle, vx + vx, vy + vy, S_ArcTanTable[0]);
    for (int i = 0; i + 1 < S_ArcTanSteps; ++i)
        TurnTowardAxis(vx, vy, angle, Halved(vx, i), Halved(vy, i), S_ArcTanTable[i + 1]);
    return angle;
}

Fixed Fixed::Log(Fixed const& x)
{
    if (x == One)
        return Zero;
    // ln x = k + ln(x / e^k); the series below converges only up to x = 2.
    Fixed reduced = x;
    int powersOfE = 0;
    while (Absolute(reduced) >= Fixed(2)) {
        reduced = FromRaw(fpdiv(reduced.m_Raw, LogE.m_Raw));
        ++powersOfE;
    }
    // ln(1 + y) = y - y^2/2 + y^3/3 - ...
    Fixed const y = reduced - One;
    Fixed sum = y;
    Fixed power = -(y * y);
    for (Fixed n = Fixed(2);; n += One) {
        Fixed const term = power / n;
        sum += term;
        if (term == Zero)
            break;
        power = -(power * y);
    }
    return sum + Fixed(powersOfE);
}

Fixed Fixed::Exp(Fixed const& x)
{
    Fixed sum = One;
    Fixed term = One;
    for (Fixed n = One; term != Zero; n += One) {
        term *= x / n;
        sum += term;
    }
    return sum;
}

// Only the lowest fraction bit of y decides the sign of a negative base, not whether y is odd;
// kept so, because existing content was made against these results.
Fixed Fixed::Power(Fixed const& x, Fixed const& y)
{
    if (x < Zero && (y.m_Raw & 1) != 0)
        return -Exp(Log(-x) * y);
    return Exp(Log(Absolute(x)) * y);
}

void Fixed::InitLookupTables()
{
    int existing = 0;
    for (auto const& table : S_LookupTables)
        existing += table ? 1 : 0;
    if (existing == 0) {
        for (auto& table : S_LookupTables)
            table.reset(new I32[S_TableSize]);
        existing = LookupTableCount;
    }
    if (existing == LookupTableCount)
        FillLookupTables();
}

void Fixed::ExitLookupTables()
{
    for (auto& table : S_LookupTables)
        table.reset();
}

} // namespace Vellacore
