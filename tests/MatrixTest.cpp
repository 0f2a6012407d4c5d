#include "Vellacore/Math/Matrix4T.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

using namespace Vellacore;

namespace {

typedef Matrix4T<Fixed> Mat4x;
typedef Matrix4T<float> Mat4f;
typedef Vector3T<Fixed> Vec3x;
typedef std::array<double, 4> Vec4d;
typedef std::array<double, 16> Mat4d;

double const S_Raw = 1.0 / 65536.0;
double const S_Pi = std::acos(-1.0);

double D(Fixed f) { return f.GetRaw() * S_Raw; }
double D(float f) { return f; }
Vec4d Point(Vec3x const& p, double w) { return {D(p.x), D(p.y), D(p.z), w}; }
Vec4d Column(Mat4d const& a, int c) { return {a[4 * c], a[4 * c + 1], a[4 * c + 2], a[4 * c + 3]}; }
double Dot3(Vec4d const& a, Vec4d const& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
Vec4d Cross3(Vec4d const& a, Vec4d const& b) { return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0], 0}; }
bool Same(Mat4x const& a, Mat4x const& b) { return std::equal(a.m, a.m + 16, b.m); }

template <class T>
Mat4d ToDouble(Matrix4T<T> const& a)
{
    Mat4d d;
    std::transform(a.m, a.m + 16, d.begin(), [](T e) { return D(e); });
    return d;
}

// Element k is row k % 4 of column k / 4; column c is the image of axis c.
Vec4d Apply(Mat4d const& a, Vec4d const& p)
{
    Vec4d image = {0, 0, 0, 0};
    for (int k = 0; k < 16; ++k)
        image[k % 4] += a[k] * p[k / 4];
    return image;
}

// The 3x3 part in -2..2, the translation in -range..range, last row 0 0 0 1.
Mat4x RandomAffine(std::mt19937& rng, float range)
{
    std::uniform_real_distribution<float> unit(-1.0f, 1.0f);
    Mat4x a = Mat4x::Identity;
    for (int i = 0; i < 15; ++i)
        a.m[i] = i % 4 == 3 ? a.m[i] : Fixed((i < 12 ? 2.0f : range) * unit(rng));
    return a;
}

} // namespace

// A * B applies A first: column c of the product is B applied to column c of A. A fixed element
// sums four floored products, a transformed coordinate three.
TEST(MatrixTest, ProductsAndTransformsAgreeWithDouble)
{
    std::mt19937 rng(3);
    for (int n = 0; n < 200; ++n) {
        Mat4x const a = RandomAffine(rng, 50), b = RandomAffine(rng, 50);
        Mat4d const ab = ToDouble(a * b);
        for (int i = 0; i < 16; ++i)
            EXPECT_NEAR(ab[i], Apply(ToDouble(b), Column(ToDouble(a), i / 4))[i % 4], 4 * S_Raw);
        Vec3x const p = Vec3x(10, -20, 30) * Fixed(std::generate_canonical<float, 24>(rng));
        for (int j = 0; j < 3; ++j) {
            EXPECT_NEAR(Point(Mat4x::Transform(p, a), 1)[j], Apply(ToDouble(a), Point(p, 1))[j], 3 * S_Raw);
            EXPECT_NEAR(Point(Mat4x::Rotate(p, a), 0)[j], Apply(ToDouble(a), Point(p, 0))[j], 3 * S_Raw);
        }
    }
}

// Counter-clockwise: a turn about x takes y towards z, about y z towards x, about z x towards y.
// Fixed angles are whole degrees into a table of 4096 steps per turn.
TEST(MatrixTest, Rotations)
{
    Fixed::InitLookupTables();
    auto make = [](auto& m, int axis, auto degrees) {
        axis == 0 ? m.MakeRotationX(degrees) : axis == 1 ? m.MakeRotationY(degrees) : m.MakeRotationZ(degrees);
    };
    for (int axis = 0; axis < 3; ++axis) {
        Mat4x r;
        Mat4f rf;
        int const from = (axis + 1) % 3, to = (axis + 2) % 3;
        Vec4d start = {0, 0, 0, 0};
        start[from] = 1;
        for (int degrees = -400; degrees <= 400; degrees += 23) {
            make(r, axis, Fixed(degrees));
            make(rf, axis, float(degrees));
            double const table = ((degrees % 360 + 360) % 360 * 4096 / 360) * (2 * S_Pi / 4096);
            EXPECT_NEAR(Apply(ToDouble(r), start)[from], std::cos(table), 2 * S_Raw) << degrees;
            EXPECT_NEAR(Apply(ToDouble(r), start)[to], std::sin(table), 2 * S_Raw) << degrees;
            EXPECT_NEAR(Apply(ToDouble(rf), start)[to], std::sin(degrees * S_Pi / 180), 1e-6) << degrees;
        }
    }
    Fixed::ExitLookupTables();
}

// Singular matrices (flat along an axis, or with a determinant of about 0.001 lost against terms of
// about 1000) are left as they are.
TEST(MatrixTest, InvertAffine)
{
    std::mt19937 rng(5);
    for (int n = 0; n < 300; ++n) {
        Mat4x inverse = RandomAffine(rng, 20);
        Mat4d const a = ToDouble(inverse);
        if (std::fabs(Dot3(Column(a, 0), Cross3(Column(a, 1), Column(a, 2)))) < 1)
            continue;
        inverse.InvertAffine();
        for (int i = 0; i < 16; ++i) // measured worst 0.0025
            EXPECT_NEAR(Apply(a, Column(ToDouble(inverse), i / 4))[i % 4], i % 5 == 0 ? 1.0 : 0.0, 0.005) << n;
    }
    Mat4x singular[4] = {Mat4x::Identity, Mat4x::Identity, Mat4x::Identity,
        Mat4x(10, 10, 10, 0, 10, 10.01f, 10, 0, 10, 10, 10.01f, 0, 1, 2, 3, 1)};
    for (int axis = 0; axis < 3; ++axis)
        singular[axis].m[5 * axis] = 0;
    for (Mat4x const& s : singular) {
        Mat4x a = s;
        a.InvertAffine();
        EXPECT_TRUE(Same(a, s));
    }
}

// Perspective: the corners of the near and far rectangles land on x/w, y/w = -1 or 1 and on depth
// z/w = 0 (near) or 1 (far). Orthographic, read row by row as its translation sits in m3, m7, m11:
// the box lands on -1 or 1 in all three. A zero extent divides by zero with the operator's rule.
TEST(MatrixTest, Frustums)
{
    double const left = -0.5, right = 2, bottom = -1, top = 3, nearPlane = 0.25, farPlane = 50;
    Mat4x perspective, orthographic;
    perspective.MakeFrustumPerspective(left, right, bottom, top, nearPlane, farPlane);
    orthographic.MakeFrustumOrthographic(left, right, bottom, top, nearPlane, farPlane);
    Mat4d const o = ToDouble(orthographic);
    Mat4d rows;
    for (int i = 0; i < 16; ++i)
        rows[i] = o[4 * (i % 4) + i / 4];
    for (int corner = 0; corner < 8; ++corner) {
        int const sx = corner & 1, sy = (corner >> 1) & 1, far = corner >> 2;
        double const depth = far ? farPlane : nearPlane, x = sx ? right : left, y = sy ? top : bottom;
        Vec4d const clip = Apply(ToDouble(perspective), {x * depth / nearPlane, y * depth / nearPlane, -depth, 1});
        Vec4d const box = Apply(rows, {x, y, -depth, 1}), expected = {2.0 * sx - 1, 2.0 * sy - 1, 2.0 * far - 1};
        for (int j = 0; j < 3; ++j) {
            EXPECT_NEAR(clip[j] / clip[3], j == 2 ? far : expected[j], 1e-4) << corner;
            EXPECT_NEAR(box[j], expected[j], 2 * S_Raw * (1 + depth)) << corner;
        }
    }

    perspective.MakeFrustumPerspective(1, 1, 1, 1, 1, 1);
    orthographic.MakeFrustumOrthographic(1, 1, 1, 1, 1, 1);
    for (int i : {0, 5, 8, 9, 10, 14})
        EXPECT_EQ(perspective.m[i].GetRaw(), 0x7FFFFFFF) << i;
    for (int i : {0, 5, 10})
        EXPECT_EQ(orthographic.m[i].GetRaw(), 0x7FFFFFFF) << i;
    for (int i : {3, 7, 11})
        EXPECT_EQ(orthographic.m[i].GetRaw(), WrapI32(0x80000001u)) << i;
}

// Camera to world: a right-handed orthonormal frame at the eye with -z towards the target. Its
// inverse, the view matrix, puts the target straight ahead.
TEST(MatrixTest, LookAt)
{
    std::mt19937 rng(9);
    std::uniform_real_distribution<float> coord(-10.0f, 10.0f);
    for (int n = 0; n < 200; ++n) {
        Vec3x const eye(coord(rng), coord(rng), coord(rng)), target(coord(rng), coord(rng), coord(rng));
        Vec3x const up = Vec3x(coord(rng), coord(rng), coord(rng)) * Fixed(0.1f);
        Vec4d const ahead = Point(target - eye, 0), side = Cross3(ahead, Point(up, 0));
        double const distance = std::sqrt(Dot3(ahead, ahead));
        if (distance < 1 || Dot3(side, side) < 0.1 * distance * distance * Dot3(Point(up, 0), Point(up, 0)))
            continue;
        Mat4x frame;
        frame.MakeLookAt(eye, target, up);
        Vec4d const x = Column(ToDouble(frame), 0), y = Column(ToDouble(frame), 1), z = Column(ToDouble(frame), 2);
        for (double error : {Dot3(x, x) - 1, Dot3(y, y) - 1, Dot3(Cross3(x, y), z) - 1, Dot3(x, y), Dot3(y, z), Dot3(z, x)})
            EXPECT_NEAR(error, 0.0, 4e-3) << n;
        EXPECT_NEAR(Dot3(z, ahead), -distance, 2e-3 * distance);
        EXPECT_GT(Dot3(y, Point(up, 0)), 0.0);
        EXPECT_EQ(frame.GetM3Vector4(), Vector4T<Fixed>(eye.x, eye.y, eye.z, 1));
        Mat4x view = frame;
        view.InvertAffine();
        Vec4d const seen = Point(Mat4x::Transform(target, view), 1);
        EXPECT_LT(std::hypot(seen[0], seen[1], seen[2] + distance), 1e-3 * distance);
    }
}
