#ifndef VELLACORE_MATH_VECTOR4T_H
#define VELLACORE_MATH_VECTOR4T_H

#include "Vellacore/Math/Fixed.h"

namespace Vellacore {

// Homogeneous points and matrix columns; the float instance carries RGBA colours (x red, y green,
// z blue, w alpha). The default constructor leaves the components uninitialised.
template <class T>
class Vector4T {
public:
    Vector4T() = default;
    constexpr Vector4T(T ax, T ay, T az, T aw) : x(ax), y(ay), z(az), w(aw) {}

    Vector4T operator+(Vector4T const& b) const { return Vector4T(x + b.x, y + b.y, z + b.z, w + b.w); }
    Vector4T operator-(Vector4T const& b) const { return Vector4T(x - b.x, y - b.y, z - b.z, w - b.w); }
    Vector4T operator-() const { return Vector4T(-x, -y, -z, -w); }
    Vector4T operator*(T s) const { return Vector4T(x * s, y * s, z * s, w * s); }
    bool operator==(Vector4T const& b) const { return x == b.x && y == b.y && z == b.z && w == b.w; }
    bool operator!=(Vector4T const& b) const { return !(*this == b); }

    T x;
    T y;
    T z;
    T w;
};

} // namespace Vellacore

#endif
