#include "Vellacore/Geometry/PolygonGeometry.h"
#include "Vellacore/Render/RenderPolygonHandle.h"
#include "support/CountingHandle.h"

#include <gtest/gtest.h>

#include <functional>

using namespace Vellacore;

using CountingPolygonHandle = VellacoreTest::CountingHandleT<RenderPolygonHandle>;
typedef PolygonGeometry G;

TEST(PolygonGeometry, PrimitivesAreCountedForTheTypeSetBeforeTheIndices)
{
    struct { int type, indices, primitives; } const cases[] = {
        { PolygonGeometryData::Lines, 11, 5 }, { 2, 10, 0 }, { -1, 10, 0 }, { PolygonGeometryData::Triangles, 2, 0 },
        { PolygonGeometryData::Triangles, 10, 3 } };
    Ptr<G> geometry = G::Create();
    for (auto const& c : cases) {
        geometry->SetPrimiviteType(c.type);
        geometry->SetIndexArray(Array<U16>(c.indices));
        EXPECT_EQ(c.primitives, geometry->GetNumPrimitives()) << c.type << ", " << c.indices;
    }
    geometry->SetPrimiviteType(PolygonGeometryData::Lines);
    EXPECT_EQ(3, geometry->GetNumPrimitives()) << "a later type does not recount the indices already there";
}

TEST(PolygonGeometry, SettersMarkTheirArrayAndTheTypeResetsTheMarks)
{
    struct { std::function<void(G&)> set; U32 flag; } const cases[] = {
        { [](G& g) { g.SetIndexArray(Array<U16>(3)); }, 0x01 }, { [](G& g) { g.SetVertexArray({}); }, 0x02 },
        { [](G& g) { g.SetNormalArray({}); }, 0x04 }, { [](G& g) { g.SetColorArray({}); }, 0x08 },
        { [](G& g) { g.SetTexCoordArray(0, {}); }, 0x10 }, { [](G& g) { g.SetTexCoordArray(1, {}); }, 0x10 },
        { [](G& g) { g.SetTexCoordArray(2, {}); }, 0x00 } };
    Ptr<G> all = G::Create();
    U32 expected = 0;
    for (auto const& c : cases) {
        Ptr<G> alone = G::Create();
        c.set(*alone);
        c.set(*all);
        EXPECT_EQ(c.flag, alone->GetChangeFlags()) << "setter " << &c - cases;
        EXPECT_EQ(expected |= c.flag, all->GetChangeFlags()) << "setter " << &c - cases;
    }
    all->SetPrimiviteType(PolygonGeometryData::Lines);
    EXPECT_EQ(0x01u, all->GetChangeFlags());
}

TEST(PolygonGeometry, SharedDataReleasesItsHandleWithTheLastGeometry)
{
    {
        Ptr<G> first = G::Create(), second = G::Create();
        second->SetData(first->GetData());
        second->SetData(nullptr);
        EXPECT_EQ(first->GetData(), second->GetData());
        EXPECT_EQ(2, HeaderOf(first->GetData())->m_RefCount);
        // Setting the same handle again must not drop it; a new one replaces it.
        second->SetRenderPolygonHandle(CountingPolygonHandle::Create());
        second->SetRenderPolygonHandle(second->GetRenderPolygonHandle());
        EXPECT_EQ(1, CountingPolygonHandle::S_Alive);
        first->SetRenderPolygonHandle(CountingPolygonHandle::Create());
        EXPECT_EQ(1, CountingPolygonHandle::S_Alive);
        first = nullptr;
        EXPECT_EQ(1, CountingPolygonHandle::S_Alive);
    }
    EXPECT_EQ(0, CountingPolygonHandle::S_Alive);
}
