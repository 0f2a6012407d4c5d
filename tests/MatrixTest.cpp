#include "Vellacore/Math/Matrix4T.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

using namespace Vellacore;

namespace {

typedef Matrix4T<Fixed> Mat4x;
typedef Vector3T<Fixed> Vec3x;
typedef std::array<double, 4> Vec4d;

double const S_Raw = 1.0 / 65536.0;

double D(Fixed f) { return f.GetRaw() * S_Raw; }
Vec4d Point(Vec3x const& p, double w) { return {D(p.x), D(p.y), D(p.z), w}; }
double Dot(Vec4d const& a, Vec4d const& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3]; }
Vec4d Cross3(Vec4d const& a, Vec4d const& b) { return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0], 0}; }
bool Same(Mat4x const& a, Mat4x const& b) { return std::equal(a.m, a.m + 16, b.m); }

// Element k is row k % 4 of column k / 4; column c is the image of axis c.
Vec4d Column(Mat4x const& a, int c) { return {D(a.m[4 * c]), D(a.m[4 * c + 1]), D(a.m[4 * c + 2]), D(a.m[4 * c + 3])}; }
Vec4d Apply(Mat4x const& a, Vec4d const& p)
{
    Vec4d image = {0, 0, 0, 0};
    for (int k = 0; k < 16; ++k)
        image[k % 4] += D(a.m[k]) * p[k / 4];
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
        Mat4x const a = RandomAffine(rng, 50), b = RandomAffine(rng, 50), ab = a * b;
        for (int i = 0; i < 16; ++i)
            EXPECT_NEAR(D(ab.m[i]), Apply(b, Column(a, i / 4))[i % 4], 4 * S_Raw);
        Vec3x const p = Vec3x(10, -20, 30) * Fixed(std::generate_canonical<float, 24>(rng));
        for (int j = 0; j < 3; ++j) {
            EXPECT_NEAR(Point(Mat4x::Transform(p, a), 1)[j], Apply(a, Point(p, 1))[j], 3 * S_Raw);
            EXPECT_NEAR(Point(Mat4x::Rotate(p, a), 0)[j], Apply(a, Point(p, 0))[j], 3 * S_Raw);
        }
    }
}

// Left as they are: a matrix flat along y (every term of the determinant 0), and one whose
// determinant of about 0.001 is lost against terms of about 1000.
TEST(MatrixTest, InvertAffine)
{
    std::mt19937 rng(5);
    for (int n = 0; n < 300; ++n) {
        Mat4x const a = RandomAffine(rng, 20);
        if (std::fabs(Dot(Column(a, 0), Cross3(Column(a, 1), Column(a, 2)))) < 1)
            continue;
        Mat4x inverse = a;
        inverse.InvertAffine();
        for (int i = 0; i < 16; ++i) // measured worst 0.0025
            EXPECT_NEAR(Apply(a, Column(inverse, i / 4))[i % 4], i % 5 == 0 ? 1.0 : 0.0, 0.005) << n;
    }
    for (Mat4x const& singular : {Mat4x(1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1),
             Mat4x(10, 10, 10, 0, 10, 10.01f, 10, 0, 10, 10, 10.01f, 0, 1, 2, 3, 1)}) {
        Mat4x a = singular;
        a.InvertAffine();
        EXPECT_TRUE(Same(a, singular));
    }
}

// Perspective: the corners of the near and far rectangles land on x/w, y/w = -1 or 1 and on depth
// z/w = 0 (near) or 1 (far). Orthographic (row j stored as column j, so its translation is in m3,
// m7, m11): on -1 or 1 in all three. A zero extent divides by zero with the operator's rule.
TEST(MatrixTest, Frustums)
{
    double const left = -0.5, right = 2, bottom = -1, top = 3, nearPlane = 0.25, farPlane = 50;
    Mat4x perspective, orthographic;
    perspective.MakeFrustumPerspective(left, right, bottom, top, nearPlane, farPlane);
    orthographic.MakeFrustumOrthographic(left, right, bottom, top, nearPlane, farPlane);
    for (int corner = 0; corner < 8; ++corner) {
        int const sx = corner & 1, sy = (corner >> 1) & 1, far = corner >> 2;
        double const depth = far ? farPlane : nearPlane, x = sx ? right : left, y = sy ? top : bottom;
        Vec4d const clip = Apply(perspective, {x * depth / nearPlane, y * depth / nearPlane, -depth, 1});
        Vec4d const expected = {2.0 * sx - 1, 2.0 * sy - 1, 2.0 * far - 1};
        for (int j = 0; j < 3; ++j) {
            EXPECT_NEAR(clip[j] / clip[3], j == 2 ? far : expected[j], 1e-4) << corner;
            EXPECT_NEAR(Dot(Column(orthographic, j), {x, y, -depth, 1}), expected[j], 2 * S_Raw * (1 + depth)) << corner;
        }
    }
    perspective.MakeFrustumPerspective(1, 1, 1, 1, 1, 1);
    orthographic.MakeFrustumOrthographic(1, 1, 1, 1, 1, 1);
    Fixed const h = Fixed::FromRaw(0x7FFFFFFF);
    EXPECT_TRUE(Same(perspective, Mat4x(h, 0, 0, 0, 0, h, 0, 0, h, h, h, -1, 0, 0, h, 0)));
    EXPECT_TRUE(Same(orthographic, Mat4x(h, 0, 0, -h, 0, h, 0, -h, 0, 0, h, -h, 0, 0, 0, 1)));
}

// Camera to world: a right-handed orthonormal frame at the eye with -z towards the target.
TEST(MatrixTest, LookAt)
{
    std::mt19937 rng(9);
    std::uniform_real_distribution<float> coord(-10.0f, 10.0f);
    for (int n = 0; n < 200; ++n) {
        Vec3x const eye(coord(rng), coord(rng), coord(rng)), target(coord(rng), coord(rng), coord(rng));
        Vec3x const up = Vec3x(coord(rng), coord(rng), coord(rng)) * Fixed(0.1f);
        Vec4d const ahead = Point(target - eye, 0), side = Cross3(ahead, Point(up, 0));
        double const distance = std::sqrt(Dot(ahead, ahead));
        if (distance < 1 || Dot(side, side) < 0.1 * distance * distance * Dot(Point(up, 0), Point(up, 0)))
            continue;
        Mat4x frame;
        frame.MakeLookAt(eye, target, up);
        Vec4d const x = Column(frame, 0), y = Column(frame, 1), z = Column(frame, 2);
        for (double error : {Dot(x, x) - 1, Dot(y, y) - 1, Dot(Cross3(x, y), z) - 1, Dot(x, y), Dot(y, z), Dot(z, x)})
            EXPECT_NEAR(error, 0.0, 4e-3) << n;
        EXPECT_NEAR(Dot(z, ahead), -distance, 2e-3 * distance);
        EXPECT_GT(Dot(y, Point(up, 0)), 0.0);
        EXPECT_EQ(frame.GetM3Vector4(), Vector4T<Fixed>(eye.x, eye.y, eye.z, 1));
    }
}
