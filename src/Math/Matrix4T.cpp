#include "Vellacore/Math/Matrix4T.h"

#include <cmath>

namespace Vellacore {

namespace {

float const S_DegreesToRadians = 0.0174532924f;

Fixed SineOfDegrees(Fixed degrees)
{
    return Fixed::Sin(degrees);
}

Fixed CosineOfDegrees(Fixed degrees)
{
    return Fixed::Cos(degrees);
}

float SineOfDegrees(float degrees)
{
    return std::sin(degrees * S_DegreesToRadians);
}

float CosineOfDegrees(float degrees)
{
    return std::cos(degrees * S_DegreesToRadians);
}

// Element of the 3x3 part at row r and column c of the mathematical matrix.
Fixed Element(Matrix4T<Fixed> const& a, int r, int c)
{
    return a.m[4 * c + r];
}

// Entry (r, c) of the adjugate: the cofactor of (c, r), written cyclically so that its sign is
// built in.
Fixed Adjugate(Matrix4T<Fixed> const& a, int r, int c)
{
    int const r1 = (r + 1) % 3, r2 = (r + 2) % 3, c1 = (c + 1) % 3, c2 = (c + 2) % 3;
    return Element(a, c1, r1) * Element(a, c2, r2) - Element(a, c1, r2) * Element(a, c2, r1);
}

} // namespace

template <class T>
void Matrix4T<T>::Mul(Matrix4T const& b)
{
    // Into a separate result, so that a.Mul(a) reads only the original elements.
    Matrix4T product;
    for (int i = 0; i < 16; i += 4)
        for (int j = 0; j < 4; ++j)
            product.m[i + j] = m[i] * b.m[j] + m[i + 1] * b.m[4 + j] + m[i + 2] * b.m[8 + j] + m[i + 3] * b.m[12 + j];
    *this = product;
}

template <class T>
void Matrix4T<T>::MakeRotation(int i, int j, T degrees)
{
    T const s = SineOfDegrees(degrees);
    T const c = CosineOfDegrees(degrees);
    *this = Identity;
    m[5 * i] = c;
    m[4 * i + j] = s;
    m[4 * j + i] = -s;
    m[5 * j] = c;
}

template <>
void Matrix4T<Fixed>::InvertAffine()
{
    Fixed const terms[6] = {m[0] * m[5] * m[10], m[1] * m[6] * m[8], m[4] * m[2] * m[9],
        -(m[2] * m[5] * m[8]), -(m[1] * m[4] * m[10]), -(m[0] * m[6] * m[9])};
    Fixed positive = 0;
    Fixed negative = 0;
    for (Fixed term : terms)
        (term >= Fixed(0) ? positive : negative) += term;
    Fixed const det = positive + negative;
    if (det == Fixed(0))
        return;
    // Nearly dependent axes show as a determinant far smaller than its terms; inverting would only
    // amplify their rounding.
    if (Fixed::Absolute(det / (positive - negative)) < Fixed::Eps)
        return;

    Fixed const k = Fixed(1) / det;
    Matrix4T inverse = Identity;
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 3; ++c)
            inverse.m[4 * c + r] = Adjugate(*this, r, c) * k;
    inverse.SetTranslation(-Rotate(GetM3Vector3(), inverse));
    *this = inverse;
}

template <>
void Matrix4T<Fixed>::MakeFrustumPerspective(Fixed left, Fixed right, Fixed bottom, Fixed top, Fixed nearPlane, Fixed farPlane)
{
    Fixed const width = right - left;
    Fixed const height = top - bottom;
    Fixed const depth = nearPlane - farPlane;
    *this = Matrix4T(2 * nearPlane / width, 0, 0, 0,
        0, 2 * nearPlane / height, 0, 0,
        (left + right) / width, (bottom + top) / height, farPlane / depth, -1,
        0, 0, farPlane * nearPlane / depth, 0);
}

template <>
void Matrix4T<Fixed>::MakeFrustumOrthographic(Fixed left, Fixed right, Fixed bottom, Fixed top, Fixed nearPlane, Fixed farPlane)
{
    Fixed const width = right - left;
    Fixed const height = top - bottom;
    Fixed const depth = farPlane - nearPlane;
    *this = Matrix4T(Fixed(2) / width, 0, 0, -((left + right) / width),
        0, Fixed(2) / height, 0, -((bottom + top) / height),
        0, 0, Fixed(-2) / depth, -((nearPlane + farPlane) / depth),
        0, 0, 0, 1);
}

template <>
void Matrix4T<Fixed>::MakeLookAt(Vector3T<Fixed> const& eye, Vector3T<Fixed> const& target, Vector3T<Fixed> const& up)
{
    Vector3T<Fixed> const z = (eye - target).Normalized();
    Vector3T<Fixed> x = up.Cross(z);
    // From x before it is normalised: z is unit, so y comes out as long as x and is normalised the
    // same way.
    Vector3T<Fixed> y = z.Cross(x);
    x.Normalize();
    y.Normalize();
    *this = Matrix4T(x.x, x.y, x.z, 0, y.x, y.y, y.z, 0, z.x, z.y, z.z, 0, eye.x, eye.y, eye.z, 1);
}

template class Matrix4T<Fixed>;
template class Matrix4T<float>;

} // namespace Vellacore
