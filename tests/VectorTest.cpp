#include "Vellacore/Math/Intersect.h"
#include "Vellacore/Math/Smooth.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

using namespace Vellacore;

namespace {

typedef Vector3T<Fixed> Vec3x;
typedef Vector3T<float> Vec3f;
typedef Vector3T<double> Vec3d;

double const S_Raw = 1.0 / 65536.0;
// Copied while this file's dynamic initialisers run: the constants must already be in place.
Vec3x const S_UpAtStartup = Vec3x::Up;

double D(Fixed f) { return f.GetRaw() * S_Raw; }
double D(float f) { return f; }
template <class T>
Vec3d ToDouble(Vector3T<T> const& a) { return Vec3d(D(a.x), D(a.y), D(a.z)); }
double Distance(Vec3d const& a, Vec3d const& b) { return std::sqrt(a.DistanceSquared(b)); }

template <class T>
Vector3T<T> RandomVector(std::mt19937& rng, float range)
{
    std::uniform_real_distribution<float> coord(-range, range);
    return Vector3T<T>(T(coord(rng)), T(coord(rng)), T(coord(rng)));
}

} // namespace

// Each fixed product is floored on its own, so a sum of three lies up to three raw steps below the
// exact value; x cross y must give z.
TEST(VectorTest, ProductsAgreeWithDouble)
{
    EXPECT_EQ(S_UpAtStartup.Cross(Vec3x::Backward), Vec3x::Right);
    EXPECT_EQ(Vec3f::Right.Cross(Vec3f::Up), -Vec3f::Forward);
    std::mt19937 rng(7);
    for (int i = 0; i < 500; ++i) {
        Vec3x const a = RandomVector<Fixed>(rng, 50), b = RandomVector<Fixed>(rng, 5);
        Vec3d const ad = ToDouble(a), bd = ToDouble(b);
        EXPECT_NEAR(D(a.Dot(b)), ad.Dot(bd) - 1.5 * S_Raw, 1.5 * S_Raw);
        EXPECT_NEAR(D(a.DistanceSquared(b)), ad.DistanceSquared(bd) - 1.5 * S_Raw, 1.5 * S_Raw);
        EXPECT_LT(Distance(ToDouble(a.Cross(b)), ad.Cross(bd)), 2 * S_Raw); // two floored products per component
    }
}

TEST(VectorTest, Normalize)
{
    EXPECT_EQ(Vec3x(0, 0, 1.0005f).Normalized(), Vec3x(0, 0, 1.0005f)); // squared length within the band: untouched
    EXPECT_EQ(Vec3x::Zero.Normalized(), Vec3x::Zero);
    EXPECT_EQ(Vec3f::Zero.Normalized(), Vec3f::Zero);

    std::mt19937 rng(11);
    std::uniform_real_distribution<float> scale(0.5f, 150.0f);
    for (int i = 0; i < 500; ++i) {
        Vec3f const vf = RandomVector<float>(rng, 100);
        Vec3d const unit = ToDouble(vf) * (1 / std::sqrt(ToDouble(vf).Dot(ToDouble(vf))));
        EXPECT_LT(Distance(ToDouble(vf.Normalized()), unit), 1e-6);
        Vec3x const v = Vec3x(unit.x, unit.y, unit.z) * Fixed(scale(rng));
        double const length = std::sqrt(ToDouble(v).Dot(ToDouble(v)));
        // 1 / length keeps fewer bits the longer the vector: the error grows as length * 2^-16.
        EXPECT_LT(Distance(ToDouble(v.Normalized()), ToDouble(v) * (1 / length)), (length + 8) * S_Raw);
    }
}

// Against a double Moller-Trumbore: hit or miss must agree wherever the ray is not within a hair
// of an edge or of the triangle's plane. Rays point either way, so back faces and hits behind the
// origin come up.
TEST(IntersectTest, RayTriangleAgreesWithDoubleAwayFromEdges)
{
    std::mt19937 rng(21);
    std::uniform_real_distribution<float> weight(-0.4f, 1.0f), scale(-2.5f, 2.5f);
    int hits = 0;
    for (int n = 0; n < 2000; ++n) {
        Vec3x const v0 = RandomVector<Fixed>(rng, 1), v1 = RandomVector<Fixed>(rng, 1), v2 = RandomVector<Fixed>(rng, 1);
        Vec3x const origin = RandomVector<Fixed>(rng, 3);
        Vec3x const aim = v0 + (v1 - v0) * Fixed(weight(rng)) + (v2 - v0) * Fixed(weight(rng));
        Vec3x const direction = (aim - origin) * Fixed(scale(rng));
        Vec3d const d = ToDouble(direction), e1 = ToDouble(v1 - v0), e2 = ToDouble(v2 - v0), s = ToDouble(origin - v0);
        Vec3d const p = d.Cross(e2), q = s.Cross(e1);
        double const det = e1.Dot(p), u = s.Dot(p) / det, v = d.Dot(q) / det, t = e2.Dot(q) / det;
        double const margin = std::min({u, v, 1 - u - v});
        if (std::fabs(det) < 0.05 || std::fabs(margin) < 0.01)
            continue;
        Fixed tx, ux, vx;
        bool const hit = Intersect::RayTriangle(origin, direction, v0, v1, v2, tx, ux, vx);
        ASSERT_EQ(hit, det > 0 && margin > 0) << n;
        hits += hit;
        if (hit) {
            EXPECT_LT(Distance(ToDouble(Vec3x(tx, ux, vx)), Vec3d(t, u, v)), 2e-3 * std::max(1.0, std::fabs(t))) << n;
        }
    }
    EXPECT_GT(hits, 200);

    // Exactly on the edge v0-v1 (v = 0), and in the plane, of the triangle (0,0,0), (1,0,0), (0,1,0).
    Fixed t, u, v;
    EXPECT_TRUE(Intersect::RayTriangle(Vec3x(0.5f, 0, 1), Vec3x(0, 0, -0.5f), Vec3x::Zero, Vec3x::Right, Vec3x::Up, t, u, v));
    EXPECT_EQ(Vec3x(t, u, v), Vec3x(2, 0.5f, 0));
    EXPECT_FALSE(Intersect::RayTriangle(Vec3x(-1, 0.2f, 0), Vec3x::Right, Vec3x::Zero, Vec3x::Right, Vec3x::Up, t, u, v));
}

// Only interior points move, and each replaced point already feeds the next one of the same pass.
// Fixed scales each sum by 7281 / 65536 instead of 1 / 9, pulling the points towards the origin.
template <class T>
void CheckSmooth(double weight, double tolerancePerPass)
{
    std::mt19937 rng(31);
    for (std::size_t count = 0; count < 10; ++count)
        for (int passes = -1; passes <= 3; ++passes) {
            Array<Vector3T<T>> points;
            std::vector<Vec3d> expected;
            for (std::size_t i = 0; i < count; ++i) {
                points.push_back(RandomVector<T>(rng, 100));
                expected.push_back(ToDouble(points.back()));
            }
            Array<Vector3T<T>> const original = points;
            Smooth(points, passes);
            for (int pass = 0; pass < passes; ++pass)
                for (std::size_t i = 2; i + 2 < count; ++i)
                    expected[i] = (expected[i - 2] + expected[i - 1] * 2 + expected[i] * 3 + expected[i + 1] * 2 + expected[i + 2]) * weight;
            for (std::size_t i = 0; i < count; ++i) {
                EXPECT_EQ(points[i] == original[i], i < 2 || i + 2 >= count || passes <= 0) << count << " " << i;
                EXPECT_LT(Distance(ToDouble(points[i]), expected[i]), tolerancePerPass * std::max(passes, 1));
            }
        }
}

TEST(SmoothTest, RunningFilterAgreesWithDouble)
{
    CheckSmooth<float>(1.0 / 9.0, 3e-5);
    CheckSmooth<Fixed>(7281.0 / 65536.0, 2 * S_Raw);
    Array<Vec3f> normals = {Vec3f::Up, Vec3f::Right, Vec3f::Forward, Vec3f(0, 3, 4), Vec3f::Up};
    SmoothN(normals, 2);
    for (Vec3f const& n : normals)
        EXPECT_NEAR(n.Dot(n), 1.0f, 1e-6f);
}
