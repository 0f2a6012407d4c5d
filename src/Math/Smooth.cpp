#include "Vellacore/Math/Smooth.h"

namespace Vellacore {

namespace {

// In place and in order: points i - 2 and i - 1 already hold this pass's values.
template <class S>
void SmoothRunningT(Array<Vector3T<S>>& points, int passes, S ninth)
{
    std::size_t const n = points.size();
    for (int pass = 0; pass < passes; ++pass)
        for (std::size_t i = 2; i + 2 < n; ++i)
            points[i] = (points[i - 2] + points[i - 1] * S(2) + points[i] * S(3) + points[i + 1] * S(2) + points[i + 2]) * ninth;
}

} // namespace

template <>
void Smooth(Array<Vector3T<Fixed>>& points, int passes)
{
    SmoothRunningT(points, passes, Fixed::FromRaw(7281));
}

template <>
void Smooth(Array<Vector3T<float>>& points, int passes)
{
    SmoothRunningT(points, passes, 0.11111111f);
}

template <class T>
void SmoothN(Array<T>& points, int passes)
{
    Smooth(points, passes);
    for (T& point : points)
        point.Normalize();
}

template void SmoothN(Array<Vector3T<float>>& points, int passes);

} // namespace Vellacore
