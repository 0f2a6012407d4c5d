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

TEST(Fixed, ConversionsAndArithmeticMatchExactIntegers)
{
    std::mt19937 rng(7);
    for (int i = 0; i < 100000; ++i) {
        I32 const a = RandomRaw(rng), b = RandomRaw(rng);
        Fixed const fa = Fixed::FromRaw(a), fb = Fixed::FromRaw(b);
        I64 const product = I64(a) * b;
        ASSERT_EQ((fa + fb).GetRaw(), Wrap(I64(a) + b));
        ASSERT_EQ((fa - fb).GetRaw(), Wrap(I64(a) - b));
        ASSERT_EQ((-fa).GetRaw(), Wrap(-I64(a)));
        I64 const floored = product / 65536 - (product % 65536 < 0 ? 1 : 0);
        ASSERT_EQ((fa * fb).GetRaw(), Wrap(floored)) << a << " * " << b;
        ASSERT_EQ(fa.ToInt(), std::floor(a / 65536.0));
        ASSERT_EQ(fa.ToFloat(), static_cast<float>(a / 65536.0));
        ASSERT_EQ(Fixed(a >> 16).GetRaw(), a & ~0xFFFF);
        double const d = a / 65536.0 * 0.999;
        ASSERT_EQ(Fixed(d).GetRaw(), static_cast<I32>(std::trunc(static_cast<float>(d) * 65536.0)));
        ASSERT_EQ(Fixed::Absolute(fa).GetRaw(), Wrap(std::llabs(I64(a))));
        I32 const c = RandomRaw(rng), lo = std::min(b, c), hi = std::max(b, c);
        ASSERT_EQ(Fixed::Clamp(fa, Fixed::FromRaw(lo), Fixed::FromRaw(hi)).GetRaw(), std::clamp(a, lo, hi));
    }
    // With crossed bounds the lower one is tested first.
    EXPECT_EQ(Fixed::Clamp(Fixed(5), Fixed(10), Fixed(0)), Fixed(10));
    EXPECT_EQ(Fixed::Clamp(Fixed(20), Fixed(10), Fixed(0)), Fixed(0));
}

TEST(Fixed, DivisionMatchesExactQuotient)
{
    std::mt19937 rng(11);
    I32 const edges[] = {INT_MIN, INT_MIN + 1, INT_MAX, -65536, -65535, 0, 65535, 65536};
    for (int i = 0; i < 120000; ++i) {
        I32 a = RandomRaw(rng), b = RandomRaw(rng);
        if (i % 4 == 1) // powers of two, the shift path
            b = WrapI32((rng() & 1 ? 1u : ~0u) << (1 + rng() % 31));
        if (i % 4 == 2)
            a = edges[rng() % 8];
        if (i % 4 == 3) { // divisors around |a| * 65536, where the quotient is one raw step or less
            a >>= 16;
            b = Wrap((rng() & 1 ? a : -I64(a)) * 65536 + int(rng() % 5) - 2);
        }
        if (b == 0 || b == 1 || b == -1)
            continue;
        I32 const exact = Wrap(I64(a) * 65536 / b);
        ASSERT_EQ(fpdiv(a, b), exact) << a << " / " << b;
        ASSERT_EQ((Fixed::FromRaw(a) / Fixed::FromRaw(b)).GetRaw(), exact);
    }
    // By one raw step the signed dividend is shifted and then negated on a sign difference, so a
    // negative dividend comes out with the sign of the true quotient flipped.
    struct { I32 a, b, expected; } const cases[] = {
        {1, 1, 65536}, {1, -1, -65536}, {-1, 1, 65536}, {-1, -1, -65536}, {INT_MIN, 1, 0}};
    for (auto const& c : cases)
        EXPECT_EQ(fpdiv(c.a, c.b), c.expected) << c.a << " / " << c.b;
    for (I32 a : {INT_MIN, -65536, 0, 1, INT_MAX}) {
        EXPECT_EQ(fpdiv(a, 0), 0);
        EXPECT_EQ((Fixed::FromRaw(a) / Fixed::Zero).GetRaw(), 0x7FFFFFFF);
    }
}

TEST(Fixed, SqrtIsFloorOfExactRoot)
{
    std::mt19937 rng(3);
    for (int i = 0; i < 50000; ++i) {
        I32 raw = RandomRaw(rng) & INT_MAX;
        if (i < 3000) // perfect squares and their neighbours show a root one step off
            raw = i < 10 ? INT_MAX - i : (i / 3) * (i / 3) + i % 3 - 1;
        U64 const radicand = U64(raw) << 16;
        U64 root = static_cast<U64>(std::sqrt(static_cast<double>(radicand)));
        root -= root * root > radicand ? 1 : 0;
        root += (root + 1) * (root + 1) <= radicand ? 1 : 0;
        ASSERT_EQ(Fixed::Sqrt(Fixed::FromRaw(raw)).GetRaw(), I32(root)) << raw;
    }
}

TEST(Fixed, TrigonometryReadsWholeDegreesOfFloatTables)
{
    Fixed::InitLookupTables();
    for (int degrees = Fixed::Min; degrees <= Fixed::Max; ++degrees) {
        for (I32 fraction : {0, 65535}) {
            Fixed const x = Fixed::FromRaw(Wrap(I64(degrees) * 65536 + fraction));
            ASSERT_EQ(Fixed::Sin(x).GetRaw(), TableEntry(sinf, degrees)) << degrees;
            ASSERT_EQ(Fixed::Cos(x).GetRaw(), TableEntry(cosf, degrees)) << degrees;
        }
    }
    for (int degrees : {-270, -90, 90, 270, 450})
        EXPECT_EQ(Fixed::Tan(Fixed(degrees)).GetRaw(), 0x7FFFFFFF) << degrees;
    for (I32 raw : {INT_MIN, -65536, 0, 12345, INT_MAX}) {
        EXPECT_EQ(Fixed::ArcSin(Fixed::FromRaw(raw)), Fixed::Zero);
        EXPECT_EQ(Fixed::ArcCos(Fixed::FromRaw(raw)).GetRaw(), I32(acosf(0.0f) * 65536.0f));
    }
    Fixed::ExitLookupTables();
}

// Tolerances are the worst measured errors, rounded up: ArcTan2 worsens on short vectors, Log towards 0.
// Exp below -5 is left out, where its alternating series cancels to an absolute error of about 0.04.
TEST(Fixed, TranscendentalsMatchLibrary)
{
    struct { double radius, toleranceDegrees; } const circles[] = {
        {0.05, 0.031}, {1, 0.002}, {100, 0.0001}, {8000, 0.00005}};
    for (auto const& c : circles) {
        for (int step = 0; step < 1440; ++step) {
            double const theta = step * S_Pi / 720;
            Fixed const y = c.radius * std::sin(theta), x = c.radius * std::cos(theta);
            double const error = ToDouble(Fixed::ArcTan2(y, x)) - std::atan2(ToDouble(y), ToDouble(x)) * 180 / S_Pi;
            ASSERT_NEAR(std::remainder(error, 360), 0, c.toleranceDegrees) << step;
        }
    }
    EXPECT_NEAR(ToDouble(Fixed::ArcTan2(Fixed::Zero, Fixed(-1))), 180, 0.0003);
    struct { double from, to, tolerance; } const logRanges[] = {
        {0.01, 0.1, 0.0067}, {0.1, 0.5, 0.00082}, {0.5, 32767, 0.00016}};
    for (auto const& r : logRanges) {
        for (double x = r.from; x < r.to; x *= 1.01)
            ASSERT_NEAR(ToDouble(Fixed::Log(Fixed(x))), std::log(ToDouble(Fixed(x))), r.tolerance) << x;
    }
    for (I32 raw = -5 * 65536; raw < 681000; raw += 97) {
        double const expected = std::exp(raw / 65536.0);
        ASSERT_NEAR(ToDouble(Fixed::Exp(Fixed::FromRaw(raw))), expected, 0.0004 + 0.00007 * expected) << raw;
    }
    for (double base : {0.25, 0.5, 2.0, 3.0, 10.0}) {
        for (double exponent : {-2.0, -0.5, 0.5, 1.0, 2.5, 3.0}) {
            double const expected = std::pow(base, exponent);
            EXPECT_NEAR(ToDouble(Fixed::Power(base, exponent)), expected, 0.0002 + 0.0005 * expected);
        }
    }
    // A negative base takes its sign from the lowest fraction bit of the exponent, not from its parity.
    EXPECT_GT(Fixed::Power(Fixed(-2), Fixed(3)), Fixed(7));
    EXPECT_LT(Fixed::Power(Fixed(-2), Fixed(3) + Fixed::Eps), Fixed(-7));
}
