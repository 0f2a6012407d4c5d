#include "Vellacore/Geometry/PolygonGeometry.h"

namespace Vellacore {

namespace {

bool IsTexCoordSet(int set)
{
    return set >= 0 && set < PolygonGeometryData::S_NumTexCoordSets;
}

template <class T>
void Store(Array<T>& target, Array<T> const& source, U32& changeFlags, U32 changeFlag)
{
    target = source;
    changeFlags |= changeFlag;
}

template <class T>
int Count(Array<T> const& array)
{
    return static_cast<int>(array.size());
}

// Left-over indices that make no whole primitive are ignored.
int CountPrimitives(int type, int numIndices)
{
    switch (type) {
    case PolygonGeometryData::Triangles:
        return numIndices / 3;
    case PolygonGeometryData::Lines:
        return numIndices / 2;
    default:
        return 0;
    }
}

} // namespace

PolygonGeometry* PolygonGeometry::Create()
{
    return new (TypeInfoT<PolygonGeometry>::S_TypeInfo_1) PolygonGeometry();
}

PolygonGeometry::PolygonGeometry() : m_Data(PolygonGeometryData::Create()) {}

PolygonGeometry::~PolygonGeometry() = default;

void PolygonGeometry::UpdateDrawable() {}

Vector2T<float> const* PolygonGeometry::GetTexCoordPointer(int set) const
{
    return IsTexCoordSet(set) ? m_Data->m_TexCoords[set].data() : nullptr;
}

U16 const* PolygonGeometry::GetIndexPointer() const
{
    return m_Data->m_Indices.data();
}

Vector3T<float> const* PolygonGeometry::GetVertexPointer() const
{
    return m_Data->m_Vertices.data();
}

Vector4T<float> const* PolygonGeometry::GetColorPointer() const
{
    return m_Data->m_Colors.data();
}

Vector3T<float> const* PolygonGeometry::GetNormalPointer() const
{
    return m_Data->m_Normals.data();
}

int PolygonGeometry::GetNumPrimitives() const
{
    return m_Data->m_NumPrimitives;
}

void PolygonGeometry::SetIndexArray(Array<U16> const& indices)
{
    Store(m_Data->m_Indices, indices, m_Data->m_ChangeFlags, PolygonGeometryData::IndicesChanged);
    m_Data->m_NumPrimitives = CountPrimitives(m_Data->m_PrimitiveType, Count(indices));
}

void PolygonGeometry::SetVertexArray(Array<Vector3T<float>> const& vertices)
{
    Store(m_Data->m_Vertices, vertices, m_Data->m_ChangeFlags, PolygonGeometryData::VerticesChanged);
}

void PolygonGeometry::SetNormalArray(Array<Vector3T<float>> const& normals)
{
    Store(m_Data->m_Normals, normals, m_Data->m_ChangeFlags, PolygonGeometryData::NormalsChanged);
}

void PolygonGeometry::SetColorArray(Array<Vector4T<float>> const& colors)
{
    Store(m_Data->m_Colors, colors, m_Data->m_ChangeFlags, PolygonGeometryData::ColorsChanged);
}

void PolygonGeometry::SetTexCoordArray(int set, Array<Vector2T<float>> const& texCoords)
{
    if (IsTexCoordSet(set))
        Store(m_Data->m_TexCoords[set], texCoords, m_Data->m_ChangeFlags, PolygonGeometryData::TexCoordsChanged);
}

void PolygonGeometry::GetIndexArray(Array<U16>& indices) const
{
    indices = m_Data->m_Indices;
}

void PolygonGeometry::GetVertexArray(Array<Vector3T<float>>& vertices) const
{
    vertices = m_Data->m_Vertices;
}

void PolygonGeometry::GetNormalArray(Array<Vector3T<float>>& normals) const
{
    normals = m_Data->m_Normals;
}

void PolygonGeometry::GetColorArray(Array<Vector4T<float>>& colors) const
{
    colors = m_Data->m_Colors;
}

void PolygonGeometry::GetTexCoordArray(int set, Array<Vector2T<float>>& texCoords) const
{
    if (IsTexCoordSet(set))
        texCoords = m_Data->m_TexCoords[set];
    else
        texCoords.clear();
}

int PolygonGeometry::GetNumIndices() const
{
    return Count(m_Data->m_Indices);
}

int PolygonGeometry::GetNumVertices() const
{
    return Count(m_Data->m_Vertices);
}

int PolygonGeometry::GetNumNormals() const
{
    return Count(m_Data->m_Normals);
}

int PolygonGeometry::GetNumColors() const
{
    return Count(m_Data->m_Colors);
}

int PolygonGeometry::GetNumTexCoords(int set) const
{
    return IsTexCoordSet(set) ? Count(m_Data->m_TexCoords[set]) : 0;
}

void PolygonGeometry::SetPrimiviteType(int type)
{
    m_Data->m_PrimitiveType = type;
    m_Data->m_ChangeFlags = PolygonGeometryData::IndicesChanged;
}

int PolygonGeometry::GetPrimiviteType() const
{
    return m_Data->m_PrimitiveType;
}

U32 PolygonGeometry::GetChangeFlags() const
{
    return m_Data->m_ChangeFlags;
}

void PolygonGeometry::SetStatic(unsigned int bits)
{
    m_Data->m_StaticFlags |= bits;
}

void PolygonGeometry::UnsetStatic(unsigned int bits)
{
    m_Data->m_StaticFlags &= ~bits;
}

bool PolygonGeometry::IsStatic(unsigned int bits) const
{
    return (m_Data->m_StaticFlags & bits) != 0;
}

void PolygonGeometry::SetRenderPolygonHandle(RenderPolygonHandle* handle)
{
    m_Data->m_RenderHandle = handle;
}

RenderPolygonHandle* PolygonGeometry::GetRenderPolygonHandle() const
{
    return m_Data->m_RenderHandle;
}

void PolygonGeometry::SetData(PolygonGeometryData* data)
{
    if (data)
        m_Data = data;
}

PolygonGeometryData* PolygonGeometry::GetData() const
{
    return m_Data;
}

bool PolygonGeometry::Intersect(Vector3T<Fixed> const&, Vector3T<Fixed> const&, Fixed&, Fixed&, Fixed&) const
{
    return false;
}

} // namespace Vellacore
