#include "BenchSupport.h"

#include <array>
#include <cmath>
#include <type_traits>

namespace Vellacore {
namespace Bench {

namespace {

constexpr float DegreesToRadians = 0.0174532924f;

// Vellacore's angles are degrees, the peers' radians.
template <class Scalar>
Scalar Angle(float degrees)
{
    return Scalar(std::is_same_v<Scalar, Fixed> ? degrees : degrees * DegreesToRadians);
}

struct Multiply {
    static constexpr char const* Name = "Multiply";
    // Products up to 22500 stay inside the 16.16 range.
    template <class Scalar>
    static std::array<Scalar, 2> MakeArguments(RandomFloats& random)
    {
        return {random.Uniform<Scalar>(-150.0f, 150.0f), random.Uniform<Scalar>(-150.0f, 150.0f)};
    }
    template <class Scalar>
    static Scalar Apply(Scalar a, Scalar b)
    {
        return a * b;
    }
};

struct Divide {
    static constexpr char const* Name = "Divide";
    // Divisors kept away from zero, so that no flavour takes its overflow shortcut.
    template <class Scalar>
    static std::array<Scalar, 2> MakeArguments(RandomFloats& random)
    {
        return {random.Uniform<Scalar>(-1000.0f, 1000.0f), random.Uniform<Scalar>(0.5f, 100.0f)};
    }
    template <class Scalar>
    static Scalar Apply(Scalar a, Scalar b)
    {
        return a / b;
    }
};

struct SquareRoot {
    static constexpr char const* Name = "Sqrt";
    template <class Scalar>
    static std::array<Scalar, 1> MakeArguments(RandomFloats& random)
    {
        return {random.Uniform<Scalar>(0.0f, 30000.0f)};
    }
    static Fixed Apply(Fixed x) { return Fixed::Sqrt(x); }
    static Fix16Value Apply(Fix16Value x) { return Fix16Value::FromRaw(fix16_sqrt(x.GetRaw())); }
    static float Apply(float x) { return std::sqrt(x); }
};

struct Sine {
    static constexpr char const* Name = "Sin";
    // A full turn either way, so that every flavour reduces its argument.
    template <class Scalar>
    static std::array<Scalar, 1> MakeArguments(RandomFloats& random)
    {
        return {Angle<Scalar>(random.Uniform<float>(-360.0f, 360.0f))};
    }
    static Fixed Apply(Fixed degrees) { return Fixed::Sin(degrees); }
    static Fix16Value Apply(Fix16Value radians) { return Fix16Value::FromRaw(fix16_sin(radians.GetRaw())); }
    static float Apply(float radians) { return std::sin(radians); }
};

struct ArcTangent2 {
    static constexpr char const* Name = "ArcTan2";
    // Vectors in all four quadrants; y comes first, as in every flavour's signature.
    template <class Scalar>
    static std::array<Scalar, 2> MakeArguments(RandomFloats& random)
    {
        return {random.Uniform<Scalar>(-100.0f, 100.0f), random.Uniform<Scalar>(-100.0f, 100.0f)};
    }
    static Fixed Apply(Fixed y, Fixed x) { return Fixed::ArcTan2(y, x); }
    static Fix16Value Apply(Fix16Value y, Fix16Value x) { return Fix16Value::FromRaw(fix16_atan2(y.GetRaw(), x.GetRaw())); }
    static float Apply(float y, float x) { return std::atan2(y, x); }
};

} // namespace

void RegisterScalarBenchmarks()
{
    RegisterFamilies<Multiply, Divide, SquareRoot, Sine, ArcTangent2>();
}

} // namespace Bench
} // namespace Vellacore
