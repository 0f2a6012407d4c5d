#ifndef VELLACORE_BENCH_BENCHSUPPORT_H
#define VELLACORE_BENCH_BENCHSUPPORT_H

#include "Vellacore/Math/Fixed.h"
#include "Vellacore/Math/Vector3T.h"

#include <benchmark/benchmark.h>
#include <libfixmath/fix16.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace Vellacore {
namespace Bench {

// fix16_t behind operators, so that each peer algorithm is written once for it and for float. Every
// operator is the libfixmath call a hand-written fix16 version would make. The Fix16 class that
// libfixmath ships adds and subtracts with plain int operators instead, skipping the overflow check
// of fix16_add and fix16_sub, so it would not time the library's C functions.
class Fix16Value {
public:
    Fix16Value() = default;
    explicit Fix16Value(float f) : m_Raw(fix16_from_float(f)) {}

    static Fix16Value FromRaw(fix16_t raw)
    {
        Fix16Value x;
        x.m_Raw = raw;
        return x;
    }
    fix16_t GetRaw() const { return m_Raw; }

    // Through unsigned arithmetic, as fix16_abs does, so that negating the minimum wraps.
    Fix16Value operator-() const { return FromRaw(static_cast<fix16_t>(0u - static_cast<std::uint32_t>(m_Raw))); }
    friend Fix16Value operator+(Fix16Value a, Fix16Value b) { return FromRaw(fix16_add(a.m_Raw, b.m_Raw)); }
    friend Fix16Value operator-(Fix16Value a, Fix16Value b) { return FromRaw(fix16_sub(a.m_Raw, b.m_Raw)); }
    friend Fix16Value operator*(Fix16Value a, Fix16Value b) { return FromRaw(fix16_mul(a.m_Raw, b.m_Raw)); }
    friend Fix16Value operator/(Fix16Value a, Fix16Value b) { return FromRaw(fix16_div(a.m_Raw, b.m_Raw)); }

    friend bool operator==(Fix16Value a, Fix16Value b) { return a.m_Raw == b.m_Raw; }
    friend bool operator<(Fix16Value a, Fix16Value b) { return a.m_Raw < b.m_Raw; }
    friend bool operator>(Fix16Value a, Fix16Value b) { return a.m_Raw > b.m_Raw; }
    friend bool operator<=(Fix16Value a, Fix16Value b) { return a.m_Raw <= b.m_Raw; }

private:
    fix16_t m_Raw;
};

// Every benchmark comes in three flavours, told apart by their scalar type.
template <class Scalar>
inline constexpr char const* FlavourName = nullptr;
template <>
inline constexpr char const* FlavourName<Fixed> = "Vellacore";
template <>
inline constexpr char const* FlavourName<Fix16Value> = "libfixmath";
template <>
inline constexpr char const* FlavourName<float> = "float";

// Uniform floats from one fixed seed: every flavour, and every run, draws the same values in the
// same order, each converted to its own scalar type.
class RandomFloats {
public:
    template <class Scalar>
    Scalar Uniform(float lo, float hi)
    {
        return Scalar(std::uniform_real_distribution<float>(lo, hi)(m_Engine));
    }

    // Braced, so that the components are drawn in order x, y, z.
    template <class Scalar>
    Vector3T<Scalar> UniformVector(float lo, float hi)
    {
        return Vector3T<Scalar>{Uniform<Scalar>(lo, hi), Uniform<Scalar>(lo, hi), Uniform<Scalar>(lo, hi)};
    }

private:
    std::mt19937 m_Engine{20240521u};
};

template <class Scalar>
Vector3T<Scalar> Converted(Vector3T<float> const& v)
{
    return Vector3T<Scalar>{Scalar(v.x), Scalar(v.y), Scalar(v.z)};
}

// Enough inputs that the compiler cannot fold them, few enough to stay in the data cache.
constexpr std::size_t InputCount = 1024;

// Times Op::Apply over argument lists made by Op::MakeArguments before the clock starts. One
// iteration runs through all of them; each result is kept so that no call can be dropped.
template <class Op, class Scalar>
void TimeOverInputs(benchmark::State& state)
{
    RandomFloats random;
    std::vector<decltype(Op::template MakeArguments<Scalar>(random))> inputs;
    inputs.reserve(InputCount);
    for (std::size_t i = 0; i < InputCount; ++i)
        inputs.push_back(Op::template MakeArguments<Scalar>(random));

    for (auto _ : state) {
        for (auto const& arguments : inputs) {
            auto result = std::apply([](auto const&... a) { return Op::Apply(a...); }, arguments);
            benchmark::DoNotOptimize(result);
        }
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(inputs.size()));
}

// Registers Op::Name/Vellacore, Op::Name/libfixmath and Op::Name/float: the names the ratio table
// pairs up.
template <class Op, class... Scalars>
void RegisterFlavours()
{
    (benchmark::RegisterBenchmark((std::string(Op::Name) + '/' + FlavourName<Scalars>).c_str(), &TimeOverInputs<Op, Scalars>),
        ...);
}

template <class... Ops>
void RegisterFamilies()
{
    (RegisterFlavours<Ops, Fixed, Fix16Value, float>(), ...);
}

void RegisterScalarBenchmarks();
void RegisterMatrixBenchmarks();
void RegisterIntersectBenchmarks();
void RegisterDrawTreeBenchmarks();

} // namespace Bench
} // namespace Vellacore

#endif
