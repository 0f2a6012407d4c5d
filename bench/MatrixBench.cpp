#include "BenchSupport.h"

#include "Vellacore/Math/Matrix4T.h"

#include <array>
#include <type_traits>

namespace Vellacore {
namespace Bench {

namespace {

// libfixmath has no matrix: its peer keeps sixteen elements in Matrix4T's column-major layout.
template <class T>
struct PlainMatrix {
    T m[16];
};

template <class Scalar>
struct MatrixOf {
    using Type = Matrix4T<Scalar>;
};
template <>
struct MatrixOf<Fix16Value> {
    using Type = PlainMatrix<Fix16Value>;
};
template <class Scalar>
using MatrixType = typename MatrixOf<Scalar>::Type;

// The product that applies a first, then b, as Matrix4T's: element i + j is the sum over k of
// a[i + k] * b[4k + j].
template <class T>
PlainMatrix<T> operator*(PlainMatrix<T> const& a, PlainMatrix<T> const& b)
{
    PlainMatrix<T> product;
    for (int i = 0; i < 16; i += 4)
        for (int j = 0; j < 4; ++j) {
            T sum = a.m[i] * b.m[j];
            for (int k = 1; k < 4; ++k)
                sum = sum + a.m[i + k] * b.m[4 * k + j];
            product.m[i + j] = sum;
        }
    return product;
}

// Affine inverse by adjugate over determinant for the peers; a singular matrix stays as it is.
// The 3x3 part has row r, column c in m[4c + r]; the last row stays 0 0 0 1.
template <class Matrix>
void InvertAffineByAdjugate(Matrix& a)
{
    using T = std::decay_t<decltype(a.m[0])>;
    auto const element = [&a](int row, int column) { return a.m[4 * column + row]; };
    // The cyclic order of the other rows and columns carries the cofactor's sign.
    auto const cofactor = [&element](int row, int column) {
        int const r1 = (row + 1) % 3, r2 = (row + 2) % 3, c1 = (column + 1) % 3, c2 = (column + 2) % 3;
        return element(r1, c1) * element(r2, c2) - element(r1, c2) * element(r2, c1);
    };
    T const det = element(0, 0) * cofactor(0, 0) + element(0, 1) * cofactor(0, 1) + element(0, 2) * cofactor(0, 2);
    if (det == T(0.0f))
        return;

    T const k = T(1.0f) / det;
    Matrix inverse = a;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            inverse.m[4 * column + row] = cofactor(column, row) * k;
    for (int row = 0; row < 3; ++row)
        inverse.m[12 + row] = -(inverse.m[row] * a.m[12] + inverse.m[4 + row] * a.m[13] + inverse.m[8 + row] * a.m[14]);
    a = inverse;
}

// Scaled by 0.5 to 2, turned about every axis and moved up to 100 along each: the products and
// inverses stay well inside the 16.16 range and far from singular.
template <class Scalar>
MatrixType<Scalar> RandomAffine(RandomFloats& random)
{
    Matrix4T<float> affine;
    affine.MakeScaling(random.UniformVector<float>(0.5f, 2.0f));
    for (auto makeRotation : {&Matrix4T<float>::MakeRotationX, &Matrix4T<float>::MakeRotationY, &Matrix4T<float>::MakeRotationZ}) {
        Matrix4T<float> rotation;
        (rotation.*makeRotation)(random.Uniform<float>(-180.0f, 180.0f));
        affine.Mul(rotation);
    }
    Matrix4T<float> translation;
    translation.MakeTranslation(random.UniformVector<float>(-100.0f, 100.0f));
    affine.Mul(translation);

    MatrixType<Scalar> converted;
    for (int i = 0; i < 16; ++i)
        converted.m[i] = Scalar(affine.m[i]);
    return converted;
}

struct MatrixMultiply {
    static constexpr char const* Name = "Matrix4Mul";
    template <class Scalar>
    static std::array<MatrixType<Scalar>, 2> MakeArguments(RandomFloats& random)
    {
        return {RandomAffine<Scalar>(random), RandomAffine<Scalar>(random)};
    }
    template <class Matrix>
    static Matrix Apply(Matrix const& a, Matrix const& b)
    {
        return a * b;
    }
};

struct InvertAffine {
    static constexpr char const* Name = "InvertAffine";
    template <class Scalar>
    static std::array<MatrixType<Scalar>, 1> MakeArguments(RandomFloats& random)
    {
        return {RandomAffine<Scalar>(random)};
    }
    static Matrix4T<Fixed> Apply(Matrix4T<Fixed> m)
    {
        m.InvertAffine();
        return m;
    }
    template <class Matrix>
    static Matrix Apply(Matrix m)
    {
        InvertAffineByAdjugate(m);
        return m;
    }
};

} // namespace

void RegisterMatrixBenchmarks()
{
    RegisterFamilies<MatrixMultiply, InvertAffine>();
}

} // namespace Bench
} // namespace Vellacore
