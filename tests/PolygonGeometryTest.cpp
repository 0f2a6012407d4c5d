#include "Vellacore/Geometry/PolygonGeometry.h"
#include "Vellacore/Render/RenderPolygonHandle.h"
#include "support/CountingHandle.h"

#include <gtest/gtest.h>

#include <functional>
#include <numeric>

using namespace Vellacore;

namespace {

using CountingPolygonHandle = VellacoreTest::CountingHandleT<RenderPolygonHandle>;

Array<U16> Indices(int count)
{
    Array<U16> indices(count);
    std::iota(indices.begin(), indices.end(), U16(0));
    return indices;
}

Array<Vector2T<float>> const TexCoords(3);

} // namespace

TEST(PolygonGeometry, PrimitivesAreCountedForTheTypeSetBeforeTheIndices)
{
    struct { int type, indices, primitives; } const cases[] = {
        { PolygonGeometryData::Triangles, 10, 3 }, { PolygonGeometryData::Triangles, 2, 0 },
        { PolygonGeometryData::Lines, 11, 5 }, { 2, 10, 0 }, { -1, 10, 0 } };
    for (auto const& c : cases) {
        Ptr<PolygonGeometry> geometry = PolygonGeometry::Create();
        geometry->SetPrimiviteType(c.type);
        geometry->SetIndexArray(Indices(c.indices));
        EXPECT_EQ(c.primitives, geometry->GetNumPrimitives()) << c.type << ", " << c.indices;
    }
    Ptr<PolygonGeometry> late = PolygonGeometry::Create();
    late->SetIndexArray(Indices(12));
    late->SetPrimiviteType(PolygonGeometryData::Lines);
    EXPECT_EQ(4, late->GetNumPrimitives());
}

TEST(PolygonGeometry, SettersMarkTheirArrayAndTheTypeResetsTheMarks)
{
    struct { char const* name; std::function<void(PolygonGeometry&)> set; U32 flag; } const cases[] = {
        { "indices", [](PolygonGeometry& g) { g.SetIndexArray(Indices(3)); }, 0x01 },
        { "vertices", [](PolygonGeometry& g) { g.SetVertexArray({}); }, 0x02 },
        { "normals", [](PolygonGeometry& g) { g.SetNormalArray({}); }, 0x04 },
        { "colours", [](PolygonGeometry& g) { g.SetColorArray({}); }, 0x08 },
        { "texture set 0", [](PolygonGeometry& g) { g.SetTexCoordArray(0, TexCoords); }, 0x10 },
        { "texture set 1", [](PolygonGeometry& g) { g.SetTexCoordArray(1, TexCoords); }, 0x10 },
        { "texture set 2", [](PolygonGeometry& g) { g.SetTexCoordArray(2, TexCoords); }, 0x00 },
    };
    Ptr<PolygonGeometry> all = PolygonGeometry::Create();
    U32 expected = 0;
    for (auto const& c : cases) {
        Ptr<PolygonGeometry> alone = PolygonGeometry::Create();
        c.set(*alone);
        EXPECT_EQ(c.flag, alone->GetChangeFlags()) << c.name;
        c.set(*all);
        expected |= c.flag;
        EXPECT_EQ(expected, all->GetChangeFlags()) << c.name;
    }
    all->SetPrimiviteType(PolygonGeometryData::Lines);
    EXPECT_EQ(0x01u, all->GetChangeFlags());

    // Texture sets other than 0 and 1 read as empty.
    Array<Vector2T<float>> missing = TexCoords;
    all->GetTexCoordArray(2, missing);
    EXPECT_TRUE(missing.empty());
    EXPECT_EQ(0, all->GetNumTexCoords(-1));
    EXPECT_EQ(nullptr, all->GetTexCoordPointer(2));
}

TEST(PolygonGeometry, SharedDataReleasesItsHandleWithTheLastGeometry)
{
    {
        Ptr<PolygonGeometry> first = PolygonGeometry::Create(), second = PolygonGeometry::Create();
        second->SetData(first->GetData());
        second->SetData(nullptr);
        EXPECT_EQ(first->GetData(), second->GetData());
        EXPECT_EQ(2, HeaderOf(first->GetData())->m_RefCount);
        first->SetVertexArray(Array<Vector3T<float>>(3));
        EXPECT_EQ(3, second->GetNumVertices());

        // Setting the same handle again must not drop it; a new one replaces it.
        second->SetRenderPolygonHandle(CountingPolygonHandle::Create());
        second->SetRenderPolygonHandle(second->GetRenderPolygonHandle());
        EXPECT_EQ(1, CountingPolygonHandle::S_Alive);
        first->SetRenderPolygonHandle(CountingPolygonHandle::Create());
        EXPECT_EQ(1, CountingPolygonHandle::S_Alive);
        EXPECT_EQ(first->GetRenderPolygonHandle(), second->GetRenderPolygonHandle());
        first = nullptr;
        EXPECT_EQ(1, CountingPolygonHandle::S_Alive);
    }
    EXPECT_EQ(0, CountingPolygonHandle::S_Alive);
}
