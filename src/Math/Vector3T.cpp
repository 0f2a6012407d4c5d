#include "Vellacore/Math/Vector3T.h"

#include <cmath>

namespace Vellacore {

// The squared length is compared with the tolerance band, so vectors that are already unit length
// (the common case for normals and axes) cost no square root. A zero vector stays zero: its root
// is 0 and the division gives 0x7FFFFFFF, which scales zeros to zeros.
template <>
void Vector3T<Fixed>::Normalize()
{
    Fixed lengthSquared = Dot(*this);
    if (lengthSquared >= Fixed::NormalMinLength && lengthSquared <= Fixed::NormalMaxLength)
        return;
    *this *= Fixed(1) / Fixed::Sqrt(lengthSquared);
}

template <>
void Vector3T<float>::Normalize()
{
    float lengthSquared = Dot(*this);
    if (lengthSquared == 0.0f)
        return;
    *this *= 1.0f / std::sqrt(lengthSquared);
}

template <>
float Vector3T<float>::Distance(Vector3T const& b) const
{
    return std::sqrt(DistanceSquared(b));
}

} // namespace Vellacore
