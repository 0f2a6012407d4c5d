#ifndef VELLACORE_GEOMETRY_POLYGONGEOMETRYDATA_H
#define VELLACORE_GEOMETRY_POLYGONGEOMETRYDATA_H

#include "Vellacore/Core/Types.h"
#include "Vellacore/Math/Vector2T.h"
#include "Vellacore/Math/Vector3T.h"
#include "Vellacore/Math/Vector4T.h"
#include "Vellacore/Memory/Array.h"
#include "Vellacore/Memory/Ptr.h"
#include "Vellacore/Render/RenderPolygonHandle.h"

namespace Vellacore {

// The arrays of a mesh, shareable between geometries through Ptr. A counted record but no Object:
// it comes from the typed allocator (Create), and the block's type record, which names the exact
// allocated type, destroys it. That is why the destructor need not be virtual even though the
// skinned geometry's data derives from this record.
struct PolygonGeometryData {
    // Bits of m_ChangeFlags: arrays changed since the renderer last took them.
    enum ChangeFlag : U32 {
        IndicesChanged = 0x01,
        VerticesChanged = 0x02,
        NormalsChanged = 0x04,
        ColorsChanged = 0x08,
        TexCoordsChanged = 0x10
    };
    enum PrimitiveType : I32 { Triangles = 0, Lines = 1 };
    static int const S_NumTexCoordSets = 2;

    static PolygonGeometryData* Create();
    PolygonGeometryData();

    Array<U16> m_Indices;
    Array<Vector3T<float>> m_Vertices;
    Array<Vector3T<float>> m_Normals;
    Array<Vector2T<float>> m_TexCoords[S_NumTexCoordSets];
    Array<Vector4T<float>> m_Colors;
    U32 m_ChangeFlags;
    // Arrays the renderer may keep in hardware buffers; the renderer gives the bits their meaning.
    U32 m_StaticFlags;
    I32 m_PrimitiveType;
    I32 m_NumPrimitives;
    // Released with the data, so the buffers live exactly as long as the arrays they copy.
    Ptr<RenderPolygonHandle> m_RenderHandle;
};

} // namespace Vellacore

#endif
