#include "Vellacore/Geometry/PolygonGeometry.h"
#include "Vellacore/Render/RenderPolygonHandle.h"
#include "support/CountingHandle.h"

#include <gtest/gtest.h>

#include <functional>

using namespace Vellacore;

namespace {

using CountingPolygonHandle = VellacoreTest::CountingHandleT<RenderPolygonHandle>;

Array<U16> Indices(int count)
{
    Array<U16> indices;
    for (int i = 0; i < count; ++i)
        indices.push_back(static_cast<U16>(i));
    return indices;
}

Array<Vector3T<float>> const Vertices = { { 0.0f, 0.0f, 0.0f }, { 1.0f, 0.0f, 0.0f }, { 0.0f, 1.0f, 0.5f } };
Array<Vector3T<float>> const Normals = { { 0.0f, 0.0f, 1.0f }, { 0.0f, 0.0f, 1.0f }, { 0.0f, 0.0f, -1.0f } };
Array<Vector4T<float>> const Colors = { { 1.0f, 0.0f, 0.0f, 1.0f }, { 0.0f, 1.0f, 0.0f, 0.5f }, { 0.0f, 0.0f, 1.0f, 0.0f } };
Array<Vector2T<float>> const TexCoords = { { 0.0f, 0.0f }, { 1.0f, 0.0f }, { 0.0f, 1.0f } };

} // namespace

TEST(PolygonGeometry, PrimitivesAreCountedForTheTypeSetBeforeTheIndices)
{
    struct {
        int m_Type;
        int m_NumIndices;
        int m_NumPrimitives;
    } const cases[] = {
        { PolygonGeometryData::Triangles, 9, 3 },
        { PolygonGeometryData::Triangles, 10, 3 },
        { PolygonGeometryData::Triangles, 2, 0 },
        { PolygonGeometryData::Lines, 10, 5 },
        { PolygonGeometryData::Lines, 11, 5 },
        { 2, 10, 0 },
        { -1, 10, 0 },
    };
    for (auto const& c : cases) {
        Ptr<PolygonGeometry> geometry = PolygonGeometry::Create();
        geometry->SetPrimiviteType(c.m_Type);
        geometry->SetIndexArray(Indices(c.m_NumIndices));
        EXPECT_EQ(c.m_NumPrimitives, geometry->GetNumPrimitives()) << c.m_Type << ", " << c.m_NumIndices;
    }

    Ptr<PolygonGeometry> late = PolygonGeometry::Create();
    late->SetIndexArray(Indices(12));
    late->SetPrimiviteType(PolygonGeometryData::Lines);
    EXPECT_EQ(4, late->GetNumPrimitives());
}

TEST(PolygonGeometry, SettersMarkTheirArrayAndTheTypeResetsTheMarks)
{
    struct {
        char const* m_Name;
        std::function<void(PolygonGeometry&)> m_Set;
        U32 m_Flag;
    } const cases[] = {
        { "indices", [](PolygonGeometry& g) { g.SetIndexArray(Indices(3)); }, 0x01 },
        { "vertices", [](PolygonGeometry& g) { g.SetVertexArray(Vertices); }, 0x02 },
        { "normals", [](PolygonGeometry& g) { g.SetNormalArray(Normals); }, 0x04 },
        { "colours", [](PolygonGeometry& g) { g.SetColorArray(Colors); }, 0x08 },
        { "texture set 0", [](PolygonGeometry& g) { g.SetTexCoordArray(0, TexCoords); }, 0x10 },
        { "texture set 1", [](PolygonGeometry& g) { g.SetTexCoordArray(1, TexCoords); }, 0x10 },
        { "texture set 2", [](PolygonGeometry& g) { g.SetTexCoordArray(2, TexCoords); }, 0x00 },
    };
    Ptr<PolygonGeometry> all = PolygonGeometry::Create();
    U32 expected = 0;
    for (auto const& c : cases) {
        Ptr<PolygonGeometry> alone = PolygonGeometry::Create();
        c.m_Set(*alone);
        EXPECT_EQ(c.m_Flag, alone->GetChangeFlags()) << c.m_Name;
        c.m_Set(*all);
        expected |= c.m_Flag;
        EXPECT_EQ(expected, all->GetChangeFlags()) << c.m_Name;
    }
    all->SetPrimiviteType(PolygonGeometryData::Lines);
    EXPECT_EQ(0x01u, all->GetChangeFlags());
}

TEST(PolygonGeometry, TextureSetsAreSeparateAndReadInPlace)
{
    Ptr<PolygonGeometry> geometry = PolygonGeometry::Create();
    geometry->SetVertexArray(Vertices);
    geometry->SetTexCoordArray(0, TexCoords);
    EXPECT_EQ(3, geometry->GetNumTexCoords(0));
    EXPECT_EQ(0, geometry->GetNumTexCoords(1));
    EXPECT_EQ(0, geometry->GetNumTexCoords(2));
    EXPECT_EQ(nullptr, geometry->GetTexCoordPointer(-1));
    Array<Vector2T<float>> set1 = TexCoords;
    geometry->GetTexCoordArray(1, set1);
    EXPECT_TRUE(set1.empty());

    // The renderer reads the stored arrays, not copies of them.
    PolygonGeometryData const* data = geometry->GetData();
    EXPECT_EQ(data->m_Vertices.data(), geometry->GetVertexPointer());
    EXPECT_EQ(data->m_TexCoords[0].data(), geometry->GetTexCoordPointer(0));
    EXPECT_EQ(Vertices[2].z, geometry->GetVertexPointer()[2].z);
}

TEST(PolygonGeometry, StaticBitsAnswerForAnyOfTheAskedBits)
{
    Ptr<PolygonGeometry> geometry = PolygonGeometry::Create();
    EXPECT_FALSE(geometry->IsStatic(0xFFFFFFFFu));
    geometry->SetStatic(0x05);
    geometry->SetStatic(0x10);
    EXPECT_TRUE(geometry->IsStatic(0x01));
    EXPECT_TRUE(geometry->IsStatic(0x06));
    EXPECT_FALSE(geometry->IsStatic(0x0A));
    geometry->UnsetStatic(0x14);
    EXPECT_FALSE(geometry->IsStatic(0x14));
    EXPECT_TRUE(geometry->IsStatic(0x01));
}

TEST(PolygonGeometry, SharedDataReleasesItsHandleWithTheLastGeometry)
{
    {
        Ptr<PolygonGeometry> first = PolygonGeometry::Create();
        Ptr<PolygonGeometry> second = PolygonGeometry::Create();
        second->SetData(first->GetData());
        second->SetData(nullptr);
        EXPECT_EQ(first->GetData(), second->GetData());
        EXPECT_EQ(2, HeaderOf(first->GetData())->m_RefCount);

        first->SetVertexArray(Vertices);
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
