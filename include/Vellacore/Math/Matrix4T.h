#ifndef VELLACORE_MATH_MATRIX4T_H
#define VELLACORE_MATH_MATRIX4T_H

#include "Vellacore/Math/Vector3T.h"
#include "Vellacore/Math/Vector4T.h"

namespace Vellacore {

// A 4x4 matrix in the memory layout of a column-major OpenGL matrix, so v() can go straight to the
// renderer: m[0..3] is the image of the x axis, m[4..7] of y, m[8..11] of z, m[12..14] the
// translation. A point maps to x' = m0 x + m4 y + m8 z + m12 and so on, and A * B applies A first.
// Every Fixed product is shifted right by 16 on its own and the sums wrap at 32 bits.
template <class T>
class Matrix4T {
public:
    static const Matrix4T Identity;

    // No work: most matrices are overwritten by one of the Make functions at once.
    Matrix4T() = default;
    constexpr Matrix4T(T m0, T m1, T m2, T m3, T m4, T m5, T m6, T m7, T m8, T m9, T m10, T m11, T m12, T m13, T m14, T m15)
        : m{m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15}
    {
    }

    T const* v() const { return &m[0]; }
    Vector4T<T> GetM2Vector4() const { return Vector4T<T>(m[8], m[9], m[10], m[11]); }
    Vector4T<T> GetM3Vector4() const { return Vector4T<T>(m[12], m[13], m[14], m[15]); }
    Vector3T<T> GetM3Vector3() const { return Vector3T<T>(m[12], m[13], m[14]); }

    void MakeIdentity() { *this = Identity; }
    void MakeTranslation(Vector3T<T> const& t)
    {
        *this = Identity;
        SetTranslation(t);
    }
    void MakeScaling(Vector3T<T> const& s) { *this = Matrix4T(s.x, 0, 0, 0, 0, s.y, 0, 0, 0, 0, s.z, 0, 0, 0, 0, 1); }
    // Counter-clockwise about the axis; degrees. Fixed angles have one-degree resolution.
    void MakeRotationX(T degrees) { MakeRotation(1, 2, degrees); }
    void MakeRotationY(T degrees) { MakeRotation(2, 0, degrees); }
    void MakeRotationZ(T degrees) { MakeRotation(0, 1, degrees); }

    // This becomes this * b: the product that applies this first, then b.
    void Mul(Matrix4T const& b);
    Matrix4T operator*(Matrix4T const& b) const
    {
        Matrix4T product(*this);
        product.Mul(b);
        return product;
    }

    // Points, translation included.
    static Vector3T<T> Transform(Vector3T<T> const& p, Matrix4T const& matrix) { return Rotate(p, matrix) + matrix.GetM3Vector3(); }
    // Directions and normals: the 3x3 part only.
    static Vector3T<T> Rotate(Vector3T<T> const& d, Matrix4T const& matrix)
    {
        T const* a = matrix.m;
        return Vector3T<T>(a[0] * d.x + a[4] * d.y + a[8] * d.z, a[1] * d.x + a[5] * d.y + a[9] * d.z, a[2] * d.x + a[6] * d.y + a[10] * d.z);
    }

    // Fixed only. Inverse of a matrix whose last row is 0 0 0 1; a singular matrix, or one whose
    // determinant drowns in the rounding of its own terms, is left unchanged.
    void InvertAffine();
    // Fixed only. Clip-space depth over w runs from 0 at the near plane to 1 at the far plane. A
    // zero extent gives 0x7FFFFFFF in the elements divided by it.
    void MakeFrustumPerspective(T left, T right, T bottom, T top, T nearPlane, T farPlane);
    // Fixed only. The translation terms are stored in m3, m7 and m11, transposed compared with
    // MakeTranslation and the perspective matrix. A zero extent gives 0x7FFFFFFF in the scale
    // element and its negation, 0x80000001, in the translation element.
    void MakeFrustumOrthographic(T left, T right, T bottom, T top, T nearPlane, T farPlane);
    // Fixed only. Places an object at eye looking at target (camera to world, with -z towards the
    // target); the view matrix is its InvertAffine().
    void MakeLookAt(Vector3T<T> const& eye, Vector3T<T> const& target, Vector3T<T> const& up);

    T m[16];

private:
    // Identity with the plane of axes i and j turned from i towards j.
    void MakeRotation(int i, int j, T degrees);
    void SetTranslation(Vector3T<T> const& t)
    {
        m[12] = t.x;
        m[13] = t.y;
        m[14] = t.z;
    }
};

// Constant initialisation, valid before any dynamic initialiser of another translation unit runs.
template <class T>
const Matrix4T<T> Matrix4T<T>::Identity(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);

template <>
void Matrix4T<Fixed>::InvertAffine();
template <>
void Matrix4T<Fixed>::MakeFrustumPerspective(Fixed left, Fixed right, Fixed bottom, Fixed top, Fixed nearPlane, Fixed farPlane);
template <>
void Matrix4T<Fixed>::MakeFrustumOrthographic(Fixed left, Fixed right, Fixed bottom, Fixed top, Fixed nearPlane, Fixed farPlane);
template <>
void Matrix4T<Fixed>::MakeLookAt(Vector3T<Fixed> const& eye, Vector3T<Fixed> const& target, Vector3T<Fixed> const& up);

} // namespace Vellacore

#endif
