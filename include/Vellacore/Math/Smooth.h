#ifndef VELLACORE_MATH_SMOOTH_H
#define VELLACORE_MATH_SMOOTH_H

#include "Vellacore/Math/Vector3T.h"
#include "Vellacore/Memory/Array.h"

namespace Vellacore {

// Smooths a line of points in place with the weights 1-2-3-2-1, `passes` times. The first two and
// the last two points never move, so the ends of the line stay put. Each point is replaced as soon
// as it is computed, so the next one already sees its smoothed predecessors: a running filter.
// The Fixed instance scales each sum by raw 7281 (1/9 truncated), which shrinks the points towards
// the origin by 0.99991 per pass.
template <class T>
void Smooth(Array<T>& points, int passes);

// Smooth, then Normalize() every point: for arrays of normals. Instantiated for Vector3T<float>.
template <class T>
void SmoothN(Array<T>& points, int passes);

template <>
void Smooth(Array<Vector3T<Fixed>>& points, int passes);
template <>
void Smooth(Array<Vector3T<float>>& points, int passes);

extern template void SmoothN(Array<Vector3T<float>>& points, int passes);

} // namespace Vellacore

#endif
