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
Vec3x const S_UpAtStartup = Vec3x::Up; // copied by a dynamic initialiser: the constants must be in place already

Vec3d ToDouble(Vec3x const& a) { return Vec3d(a.x.GetRaw(), a.y.GetRaw(), a.z.GetRaw()) * S_Raw; }
Vec3d ToDouble(Vec3f const& a) { return Vec3d(a.x, a.y, a.z); }
double Length(Vec3d const& a) { return std::sqrt(a.Dot(a)); }
float Uniform(std::mt19937& rng, float range) { return std::uniform_real_distribution<float>(-range, range)(rng); }
template <class T>
Vector3T<T> RandomVector(std::mt19937& rng, float r) { return Vector3T<T>(T(Uniform(rng, r)), T(Uniform(rng, r)), T(Uniform(rng, r))); }

} // namespace

// Each fixed product is floored on its own: +0.5, -0.5, -0.5 raw steps sum to -2. Normalize: the fixed
// error grows as length * 2^-16; a squared length within the band is left as it is, zero stays zero.
TEST(VectorTest, ProductsAndNormalize)
{
    EXPECT_EQ(Vec3x(Fixed::Eps, -Fixed::Eps, -Fixed::Eps).Dot(Vec3x(0.5f, 0.5f, 0.5f)).GetRaw(), -2);
    EXPECT_EQ(S_UpAtStartup.Cross(Vec3x::Backward), Vec3x::Right);
    EXPECT_EQ(Vec3x(0, 0, 1.0005f).Normalized(), Vec3x(0, 0, 1.0005f));
    EXPECT_EQ(Vec3x::Zero.Normalized(), Vec3x::Zero);
    EXPECT_EQ(Vec3f::Zero.Normalized(), Vec3f::Zero);
    std::mt19937 rng(11);
    for (int i = 0; i < 500; ++i) {
        Vec3f const vf = RandomVector<float>(rng, 100);
        Vec3x const v = Vec3x(vf.x, vf.y, vf.z) * Fixed((std::fabs(Uniform(rng, 150)) + 0.5f) / Length(ToDouble(vf)));
        EXPECT_LT(Length(ToDouble(vf.Normalized()) - ToDouble(vf) * (1 / Length(ToDouble(vf)))), 1e-6);
        EXPECT_LT(Length(ToDouble(v.Normalized()) - ToDouble(v) * (1 / Length(ToDouble(v)))), (Length(ToDouble(v)) + 8) * S_Raw);
    }
}

// Against a double Moller-Trumbore away from the edges and the plane; rays point either way, so back
// faces and hits behind the origin come up. Exactly on the edge v0-v1 a ray hits, in the plane it misses.
TEST(IntersectTest, RayTriangleAgreesWithDouble)
{
    std::mt19937 rng(21);
    Fixed tx, ux, vx;
    for (int n = 0; n < 2000; ++n) {
        Vec3x const v0 = RandomVector<Fixed>(rng, 1), v1 = RandomVector<Fixed>(rng, 1), v2 = RandomVector<Fixed>(rng, 1);
        Vec3x const aim = v0 + (v1 - v0) * Fixed(0.3f + Uniform(rng, 0.7f)) + (v2 - v0) * Fixed(0.3f + Uniform(rng, 0.7f));
        Vec3x const origin = RandomVector<Fixed>(rng, 3), direction = (aim - origin) * Fixed(Uniform(rng, 2.5f));
        Vec3d const d = ToDouble(direction), e1 = ToDouble(v1 - v0), e2 = ToDouble(v2 - v0), s = ToDouble(origin - v0);
        Vec3d const p = d.Cross(e2), q = s.Cross(e1);
        double const det = e1.Dot(p), u = s.Dot(p) / det, v = d.Dot(q) / det, t = e2.Dot(q) / det;
        double const margin = std::min({u, v, 1 - u - v});
        if (std::fabs(det) < 0.05 || std::fabs(margin) < 0.01)
            continue;
        ASSERT_EQ(Intersect::RayTriangle(origin, direction, v0, v1, v2, tx, ux, vx), det > 0 && margin > 0) << n;
        if (det < 0 || margin < 0)
            continue;
        EXPECT_LT(Length(ToDouble(Vec3x(tx, ux, vx)) - Vec3d(t, u, v)), 2e-3 * std::max(1.0, std::fabs(t))) << n;
    }
    EXPECT_TRUE(Intersect::RayTriangle(Vec3x(0.5f, 0, 1), Vec3x(0, 0, -0.5f), Vec3x::Zero, Vec3x::Right, Vec3x::Up, tx, ux, vx));
    EXPECT_EQ(Vec3x(tx, ux, vx), Vec3x(2, 0.5f, 0));
    EXPECT_FALSE(Intersect::RayTriangle(Vec3x(-1, 0.2f, 0), Vec3x::Right, Vec3x::Zero, Vec3x::Right, Vec3x::Up, tx, ux, vx));
}

// The first two and last two points stay exactly; each replaced point already feeds the next one.
template <class T>
void CheckSmooth(double weight, double tolerancePerPass)
{
    std::mt19937 rng(31);
    for (std::size_t count = 0; count < 10; ++count)
        for (int passes = -1; passes <= 3; ++passes) {
            Array<Vector3T<T>> points(count);
            std::vector<Vec3d> expected(count);
            for (std::size_t i = 0; i < count; ++i)
                expected[i] = ToDouble(points[i] = RandomVector<T>(rng, 100));
            Smooth(points, passes);
            for (int pass = 0; pass < passes; ++pass)
                for (std::size_t i = 2; i + 2 < count; ++i)
                    expected[i] = (expected[i - 2] + expected[i - 1] * 2 + expected[i] * 3 + expected[i + 1] * 2 + expected[i + 2]) * weight;
            double const tolerance = tolerancePerPass * std::max(passes, 0);
            for (std::size_t i = 0; i < count; ++i)
                EXPECT_LE(Length(ToDouble(points[i]) - expected[i]), i < 2 || i + 2 >= count ? 0 : tolerance) << count << " " << i;
        }
}

TEST(SmoothTest, RunningFilterAgreesWithDouble)
{
    CheckSmooth<float>(1.0 / 9.0, 3e-5);
    CheckSmooth<Fixed>(7281.0 / 65536.0, 2 * S_Raw); // 1 / 9 truncated: the points shrink towards the origin
    Array<Vec3f> normals = {Vec3f::Up, Vec3f::Right, Vec3f::Forward, Vec3f(0, 3, 4), Vec3f::Up};
    SmoothN(normals, 2);
    EXPECT_TRUE(std::all_of(normals.begin(), normals.end(), [](Vec3f const& n) { return std::fabs(n.Dot(n) - 1.0f) <= 1e-6f; }));
}
