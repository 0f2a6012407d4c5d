#include "Vellacore/System/Random.h"

#include <random>

namespace Vellacore {

namespace {

// std::mt19937's seeding is the reference's init_genrand, and its default seed the reference's.
std::mt19937 S_Generator;

U32 Next()
{
    return static_cast<U32>(S_Generator());
}

} // namespace

void Random::Seed(unsigned int s)
{
    S_Generator.seed(s);
}

int Random::GetI32()
{
    return static_cast<int>(Next() >> 1);
}

Fixed Random::GetFlt()
{
    return Fixed::FromRaw(static_cast<I32>(Next() * (1.0 / 4294967295.0) * 65536.0));
}

Fixed Random::GetFlt(Fixed min, Fixed max)
{
    return min + GetFlt() * (max - min);
}

} // namespace Vellacore
