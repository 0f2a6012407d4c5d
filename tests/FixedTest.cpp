#include "Vellacore/Math/Fixed.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <random>

using namespace Vellacore;

namespace {

double const S_Pi = std::acos(-1.0);

I32 Wrap(I64 v) { return WrapI32(static_cast<U32>(static_cast<U64>(v))); }

// Random raw value of random bit length, so that small and large magnitudes are equally common.
I32 RandomRaw(std::mt19937& rng) { return WrapI32(static_cast<U32>(rng())) >> (rng() % 32); }

double ToDouble(Fixed f) { return f.GetRaw() / 65536.0; }

// The float formula of the tables, evaluated here independently for a whole number of degrees.
I32 TableEntry(float (*function)(float), int degrees)
{
    int const index = (degrees % 360 + 360) % 360 * 4096 / 360;
    return static_cast<I32>(function(static_cast<float>(index) * 0.087890625f * 0.0174532924f) * 65536.0f);
}

} // namespace

TEST(Fixed, ArithmeticMatchesExactIntegers)
{
    std::mt19937 rng(7);
    for (int i = 0; i < 100000; ++i) {
        I32 const a = RandomRaw(rng), b = RandomRaw(rng), c = RandomRaw(rng), lo = std::min(b, c), hi = std::max(b, c);
        Fixed const fa = Fixed::FromRaw(a), fb = Fixed::FromRaw(b);
        I64 const product = I64(a) * b;
        ASSERT_EQ((fa + fb).GetRaw(), Wrap(I64(a) + b));
        ASSERT_EQ((fa - fb).GetRaw(), Wrap(I64(a) - b));
        ASSERT_EQ((-fa).GetRaw(), Wrap(-I64(a)));
        ASSERT_EQ((fa * fb).GetRaw(), Wrap(product / 65536 - (product % 65536 < 0 ? 1 : 0))) << a << " * " << b;
        ASSERT_EQ(fa.ToInt(), std::floor(a / 65536.0));
        ASSERT_EQ(Fixed::Absolute(fa).GetRaw(), Wrap(std::llabs(I64(a))));
        ASSERT_EQ(Fixed::Clamp(fa, Fixed::FromRaw(lo), Fixed::FromRaw(hi)).GetRaw(), std::clamp(a, lo, hi));
    }
    EXPECT_EQ(Fixed::Clamp(Fixed(5), Fixed(10), Fixed(0)), Fixed(10)); // crossed bounds: the lower one is tested first
    EXPECT_EQ(Fixed::Clamp(Fixed(20), Fixed(10), Fixed(0)), Fixed(0));
}

// Dividing by one raw step negates the signed dividend (not its magnitude) on a sign difference, so
// the result is |a| with the sign of b. A zero divisor gives 0, or 0x7FFFFFFF through the operator.
TEST(Fixed, DivisionMatchesExactQuotient)
{
    std::mt19937 rng(11);
    I32 const edges[] = {INT_MIN, INT_MIN + 1, INT_MAX, -65536, -65535, -1, 0, 1, 65535, 65536};
    for (int i = 0; i < 120000; ++i) {
        I32 a = RandomRaw(rng), b = RandomRaw(rng);
        if (i % 4 == 1) // powers of two, the shift path
            b = WrapI32((rng() & 1 ? 1u : ~0u) << (1 + rng() % 31));
        if (i % 4 == 2) // boundary dividends, half of them over boundary divisors
            a = edges[rng() % 10], b = rng() & 1 ? b : edges[rng() % 10];
        if (i % 4 == 3) // divisors around |a| * 65536, where the quotient is one raw step or less
            a >>= 16, b = Wrap((rng() & 1 ? a : -I64(a)) * 65536 + int(rng() % 5) - 2);
        I64 const exact = b == 0 ? 0 : b == 1 || b == -1 ? std::llabs(I64(a)) * b * 65536 : I64(a) * 65536 / b;
        ASSERT_EQ(fpdiv(a, b), Wrap(exact)) << a << " / " << b;
        ASSERT_EQ((Fixed::FromRaw(a) / Fixed::FromRaw(b)).GetRaw(), b == 0 ? 0x7FFFFFFF : Wrap(exact)) << a << " / " << b;
    }
}

TEST(Fixed, SqrtIsFloorOfExactRoot)
{
    std::mt19937 rng(3);
    for (int i = 0; i < 50000; ++i) {
        I32 raw = RandomRaw(rng) & INT_MAX;
        if (i < 3000) // perfect squares and their neighbours show a root one step off
            raw = i < 10 ? INT_MAX - i : (i / 3) * (i / 3) + i % 3 - 1;
        // The radicand raw * 2^16 stays below 2^47, where the rounded double root floors to the exact one.
        ASSERT_EQ(Fixed::Sqrt(Fixed::FromRaw(raw)).GetRaw(), I32(std::sqrt(double(U64(raw) << 16)))) << raw;
    }
}

TEST(Fixed, TrigonometryReadsWholeDegreesOfFloatTables)
{
    Fixed::InitLookupTables();
    for (int degrees = Fixed::Min; degrees <= Fixed::Max; ++degrees)
        for (I32 fraction : {0, 65535}) {
            Fixed const x = Fixed::FromRaw(Wrap(I64(degrees) * 65536 + fraction));
            ASSERT_EQ(Fixed::Sin(x).GetRaw(), TableEntry(sinf, degrees)) << degrees;
            ASSERT_EQ(Fixed::Cos(x).GetRaw(), TableEntry(cosf, degrees)) << degrees;
        }
    for (int degrees : {-270, -90, 90, 270, 450})
        EXPECT_EQ(Fixed::Tan(Fixed(degrees)).GetRaw(), 0x7FFFFFFF) << degrees;
    EXPECT_EQ(Fixed::ArcSin(Fixed::FromRaw(INT_MIN)), Fixed::Zero); // whatever the argument: entry 0
    EXPECT_EQ(Fixed::ArcCos(Fixed::FromRaw(12345)).GetRaw(), I32(acosf(0.0f) * 65536.0f));
    Fixed::ExitLookupTables();
}

// Tolerances are the worst measured errors, rounded up: ArcTan2 worsens on short vectors, Log towards 0.
// Exp below -5 is left out, where its alternating series cancels to an absolute error of about 0.04.
TEST(Fixed, TranscendentalsMatchLibrary)
{
    struct { double radius, toleranceDegrees; } const circles[] = {{0.05, 0.031}, {1, 0.002}, {100, 0.0001}, {8000, 0.00005}};
    for (auto const& c : circles)
        for (int step = 0; step < 1440; ++step) {
            Fixed const y = c.radius * std::sin(step * S_Pi / 720), x = c.radius * std::cos(step * S_Pi / 720);
            double const error = ToDouble(Fixed::ArcTan2(y, x)) - std::atan2(ToDouble(y), ToDouble(x)) * 180 / S_Pi;
            ASSERT_NEAR(std::remainder(error, 360), 0, c.toleranceDegrees) << step;
        }
    EXPECT_NEAR(ToDouble(Fixed::ArcTan2(Fixed::Zero, Fixed(-1))), 180, 0.0003);
    struct { double from, to, tolerance; } const logRanges[] = {{0.01, 0.1, 0.0067}, {0.1, 0.5, 0.00082}, {0.5, 32767, 0.00016}};
    for (auto const& r : logRanges)
        for (double x = r.from; x < r.to; x *= 1.01)
            ASSERT_NEAR(ToDouble(Fixed::Log(Fixed(x))), std::log(ToDouble(Fixed(x))), r.tolerance) << x;
    for (I32 raw = -5 * 65536; raw < 681000; raw += 97)
        ASSERT_NEAR(ToDouble(Fixed::Exp(Fixed::FromRaw(raw))), std::exp(raw / 65536.0), 0.0004 + 0.00007 * std::exp(raw / 65536.0)) << raw;
    // A negative base takes its sign from the lowest fraction bit of the exponent, not from its parity.
    EXPECT_NEAR(ToDouble(Fixed::Power(Fixed(-2), Fixed(3))), 8, 0.0042);
    EXPECT_NEAR(ToDouble(Fixed::Power(Fixed(-2), Fixed(3) + Fixed::Eps)), -8, 0.0042);
}
