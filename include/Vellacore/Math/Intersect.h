#ifndef VELLACORE_MATH_INTERSECT_H
#define VELLACORE_MATH_INTERSECT_H

#include "Vellacore/Math/Vector3T.h"

namespace Vellacore {
namespace Intersect {

// True when the ray hits the front side of the triangle (counter-clockwise v0, v1, v2 seen from
// the origin). Then t is the distance along the ray in units of the direction's length, possibly
// negative (a hit behind the origin; callers test t), and u, v are the barycentric weights of v1
// and v2. On a miss u and v may hold intermediate values.
bool RayTriangle(Vector3T<Fixed> const& origin, Vector3T<Fixed> const& direction, Vector3T<Fixed> const& v0,
    Vector3T<Fixed> const& v1, Vector3T<Fixed> const& v2, Fixed& t, Fixed& u, Fixed& v);

} // namespace Intersect
} // namespace Vellacore

#endif
