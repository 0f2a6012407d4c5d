#include "Vellacore/Math/Intersect.h"

namespace Vellacore {
namespace Intersect {

// Moller-Trumbore with back-face culling. The bounds are tested on the values before they are
// scaled by 1 / det, so a miss costs no division and a hit exactly one.
bool RayTriangle(Vector3T<Fixed> const& origin, Vector3T<Fixed> const& direction, Vector3T<Fixed> const& v0,
    Vector3T<Fixed> const& v1, Vector3T<Fixed> const& v2, Fixed& t, Fixed& u, Fixed& v)
{
    Vector3T<Fixed> const e1 = v1 - v0;
    Vector3T<Fixed> const e2 = v2 - v0;
    Vector3T<Fixed> const p = direction.Cross(e2);
    Fixed const det = e1.Dot(p);
    // Zero or negative: the ray runs in the plane or sees the back face.
    if (det < Fixed::Eps)
        return false;

    Vector3T<Fixed> const s = origin - v0;
    u = s.Dot(p);
    if (u < Fixed(0) || u > det)
        return false;

    Vector3T<Fixed> const q = s.Cross(e1);
    v = direction.Dot(q);
    if (v < Fixed(0) || u + v > det)
        return false;

    t = e2.Dot(q);
    Fixed const k = Fixed(1) / det;
    t *= k;
    u *= k;
    v *= k;
    return true;
}

} // namespace Intersect
} // namespace Vellacore
