#ifndef VELLACORE_MATH_VECTOR2T_H
#define VELLACORE_MATH_VECTOR2T_H

#include "Vellacore/Math/Fixed.h"

namespace Vellacore {

// Sizes, clipping ranges, resolutions and texture coordinates. The default constructor leaves the
// components uninitialised so that arrays of vectors cost nothing to create.
template <class T>
class Vector2T {
public:
    Vector2T() = default;
    constexpr Vector2T(T ax, T ay) : x(ax), y(ay) {}

    Vector2T operator+(Vector2T const& b) const { return Vector2T(x + b.x, y + b.y); }
    Vector2T operator-(Vector2T const& b) const { return Vector2T(x - b.x, y - b.y); }
    Vector2T operator-() const { return Vector2T(-x, -y); }
    Vector2T operator*(T s) const { return Vector2T(x * s, y * s); }
    bool operator==(Vector2T const& b) const { return x == b.x && y == b.y; }
    bool operator!=(Vector2T const& b) const { return !(*this == b); }

    T x;
    T y;
};

} // namespace Vellacore

#endif
