#ifndef VELLACORE_SYSTEM_RANDOM_H
#define VELLACORE_SYSTEM_RANDOM_H

#include "Vellacore/Math/Fixed.h"

namespace Vellacore {

// The engine's one random sequence: MT19937 with the reference implementation's seeding and its
// 31-bit and closed-interval real outputs, so a seed gives the same numbers on every machine.
// Unseeded, it starts as the reference does, from seed 5489.
class Random {
public:
    static void Seed(unsigned int s);
    // 0 to 2^31 - 1.
    static int GetI32();
    // 0 to 1.0, both ends included.
    static Fixed GetFlt();
    // min to max, both ends included; min above max gives values between max and min.
    static Fixed GetFlt(Fixed min, Fixed max);
};

} // namespace Vellacore

#endif
