#include "Vellacore/Geometry/PolygonGeometryData.h"

namespace Vellacore {

PolygonGeometryData* PolygonGeometryData::Create()
{
    return new (TypeInfoT<PolygonGeometryData>::S_TypeInfo_1) PolygonGeometryData();
}

PolygonGeometryData::PolygonGeometryData()
    : m_ChangeFlags(0), m_StaticFlags(0), m_PrimitiveType(Triangles), m_NumPrimitives(0)
{
}

} // namespace Vellacore
