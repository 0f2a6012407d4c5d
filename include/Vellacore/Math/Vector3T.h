#ifndef VELLACORE_MATH_VECTOR3T_H
#define VELLACORE_MATH_VECTOR3T_H

#include "Vellacore/Math/Fixed.h"

namespace Vellacore {

// Points and directions in a right-handed frame with y up and the view along minus z. For Fixed
// every product is a 64-bit product shifted right by 16 on its own and the sums wrap at 32 bits,
// which is exactly what Fixed's operators do, so one template body serves both instances.
// The default constructor leaves the components uninitialised.
template <class T>
class Vector3T {
public:
    static const Vector3T Zero;
    static const Vector3T Up;
    static const Vector3T Forward;
    static const Vector3T Backward;
    static const Vector3T Left;
    static const Vector3T Right;

    Vector3T() = default;
    constexpr Vector3T(T ax, T ay, T az) : x(ax), y(ay), z(az) {}

    Vector3T operator+(Vector3T const& b) const { return Vector3T(x + b.x, y + b.y, z + b.z); }
    Vector3T operator-(Vector3T const& b) const { return Vector3T(x - b.x, y - b.y, z - b.z); }
    Vector3T operator-() const { return Vector3T(-x, -y, -z); }
    Vector3T operator*(T s) const { return Vector3T(x * s, y * s, z * s); }
    Vector3T& operator+=(Vector3T const& b) { return *this = *this + b; }
    Vector3T& operator-=(Vector3T const& b) { return *this = *this - b; }
    Vector3T& operator*=(T s) { return *this = *this * s; }
    bool operator==(Vector3T const& b) const { return x == b.x && y == b.y && z == b.z; }
    bool operator!=(Vector3T const& b) const { return !(*this == b); }

    T Dot(Vector3T const& b) const { return x * b.x + y * b.y + z * b.z; }
    Vector3T Cross(Vector3T const& b) const { return Vector3T(y * b.z - z * b.y, z * b.x - x * b.z, x * b.y - y * b.x); }
    T DistanceSquared(Vector3T const& b) const
    {
        Vector3T d = b - *this;
        return d.Dot(d);
    }
    // Float only.
    T Distance(Vector3T const& b) const;
    void Normalize();
    Vector3T Normalized() const
    {
        Vector3T n(*this);
        n.Normalize();
        return n;
    }

    T x;
    T y;
    T z;
};

// Constant initialisation (the constructor is constexpr), so the constants are valid before any
// dynamic initialiser of another translation unit runs.
template <class T>
const Vector3T<T> Vector3T<T>::Zero(0, 0, 0);
template <class T>
const Vector3T<T> Vector3T<T>::Up(0, 1, 0);
template <class T>
const Vector3T<T> Vector3T<T>::Forward(0, 0, -1);
template <class T>
const Vector3T<T> Vector3T<T>::Backward(0, 0, 1);
template <class T>
const Vector3T<T> Vector3T<T>::Left(-1, 0, 0);
template <class T>
const Vector3T<T> Vector3T<T>::Right(1, 0, 0);

template <>
void Vector3T<Fixed>::Normalize();
template <>
void Vector3T<float>::Normalize();
template <>
float Vector3T<float>::Distance(Vector3T const& b) const;

} // namespace Vellacore

#endif
