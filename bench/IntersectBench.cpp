#include "BenchSupport.h"

#include "Vellacore/Math/Intersect.h"

#include <array>

namespace Vellacore {
namespace Bench {

namespace {

template <class T>
struct Hit {
    bool found;
    T t;
    T u;
    T v;
};

// The peers' Moller-Trumbore, the same variant as the engine's so that only the arithmetic
// differs: back faces are culled, and the bounds are tested before scaling by 1 / det.
template <class T>
bool MollerTrumbore(Vector3T<T> const& origin, Vector3T<T> const& direction, Vector3T<T> const& v0, Vector3T<T> const& v1,
    Vector3T<T> const& v2, T& t, T& u, T& v)
{
    T const zero(0.0f);
    Vector3T<T> const e1 = v1 - v0;
    Vector3T<T> const e2 = v2 - v0;
    Vector3T<T> const p = direction.Cross(e2);
    T const det = e1.Dot(p);
    if (det <= zero)
        return false;

    Vector3T<T> const s = origin - v0;
    u = s.Dot(p);
    if (u < zero || u > det)
        return false;

    Vector3T<T> const q = s.Cross(e1);
    v = direction.Dot(q);
    if (v < zero || u + v > det)
        return false;

    T const k = T(1.0f) / det;
    t = e2.Dot(q) * k;
    u = u * k;
    v = v * k;
    return true;
}

struct RayTriangle {
    static constexpr char const* Name = "RayTriangle";

    // A triangle near the origin and a unit ray from up to 8 away, aimed at a point around the
    // triangle: about a third of the rays hit, the others miss or meet a back face. The extents
    // keep every intermediate product inside the 16.16 range.
    template <class Scalar>
    static std::array<Vector3T<Scalar>, 5> MakeArguments(RandomFloats& random)
    {
        Vector3T<float> const origin = random.UniformVector<float>(-8.0f, 8.0f);
        Vector3T<float> const v0 = random.UniformVector<float>(-3.0f, 3.0f);
        Vector3T<float> const v1 = random.UniformVector<float>(-3.0f, 3.0f);
        Vector3T<float> const v2 = random.UniformVector<float>(-3.0f, 3.0f);
        float const towardV1 = random.Uniform<float>(-0.1f, 0.7f);
        float const towardV2 = random.Uniform<float>(-0.1f, 0.7f);
        Vector3T<float> const target = v0 + (v1 - v0) * towardV1 + (v2 - v0) * towardV2;
        Vector3T<float> const direction = (target - origin).Normalized();
        return {Converted<Scalar>(origin), Converted<Scalar>(direction), Converted<Scalar>(v0), Converted<Scalar>(v1),
            Converted<Scalar>(v2)};
    }

    static Hit<Fixed> Apply(Vector3T<Fixed> const& origin, Vector3T<Fixed> const& direction, Vector3T<Fixed> const& v0,
        Vector3T<Fixed> const& v1, Vector3T<Fixed> const& v2)
    {
        Hit<Fixed> hit{};
        hit.found = Intersect::RayTriangle(origin, direction, v0, v1, v2, hit.t, hit.u, hit.v);
        return hit;
    }
    template <class T>
    static Hit<T> Apply(Vector3T<T> const& origin, Vector3T<T> const& direction, Vector3T<T> const& v0, Vector3T<T> const& v1,
        Vector3T<T> const& v2)
    {
        Hit<T> hit{};
        hit.found = MollerTrumbore(origin, direction, v0, v1, v2, hit.t, hit.u, hit.v);
        return hit;
    }
};

} // namespace

void RegisterIntersectBenchmarks()
{
    RegisterFamilies<RayTriangle>();
}

} // namespace Bench
} // namespace Vellacore
