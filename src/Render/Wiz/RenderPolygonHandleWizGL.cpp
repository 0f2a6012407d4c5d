#include "Vellacore/Render/Wiz/RenderPolygonHandleWizGL.h"

#include "Vellacore/Geometry/PolygonGeometry.h"
#include "Vellacore/Memory/Memory.h"
#include "WizLog.h"

namespace Vellacore {

namespace {

// One static array: where it goes and how it is read from the geometry. The data is read through
// the geometry's virtual getters, so derived geometries upload the arrays they compute.
struct StaticArraySource {
    U32 m_Bit;
    RenderPolygonHandleWizGL::BufferIndex m_Index;
    GLenum m_Target;
    int m_ElementSize;
    // Vertices and indices get a buffer even when empty; the other arrays only when they exist.
    bool m_Optional;
    int (*m_Count)(PolygonGeometry const& g);
    void const* (*m_Data)(PolygonGeometry const& g);
};

using Handle = RenderPolygonHandleWizGL;

StaticArraySource const S_Sources[] = {
    { Handle::StaticVertices, Handle::VertexBuffer, GL_ARRAY_BUFFER, 12, false,
        [](PolygonGeometry const& g) { return g.GetNumVertices(); },
        [](PolygonGeometry const& g) -> void const* { return g.GetVertexPointer(); } },
    { Handle::StaticIndices, Handle::IndexBuffer, GL_ELEMENT_ARRAY_BUFFER, 2, false,
        [](PolygonGeometry const& g) { return g.GetNumIndices(); },
        [](PolygonGeometry const& g) -> void const* { return g.GetIndexPointer(); } },
    { Handle::StaticNormals, Handle::NormalBuffer, GL_ARRAY_BUFFER, 12, true,
        [](PolygonGeometry const& g) { return g.GetNumNormals(); },
        [](PolygonGeometry const& g) -> void const* { return g.GetNormalPointer(); } },
    { Handle::StaticColors, Handle::ColorBuffer, GL_ARRAY_BUFFER, 16, true,
        [](PolygonGeometry const& g) { return g.GetNumColors(); },
        [](PolygonGeometry const& g) -> void const* { return g.GetColorPointer(); } },
    { Handle::StaticTexCoords0, Handle::TexCoord0Buffer, GL_ARRAY_BUFFER, 8, true,
        [](PolygonGeometry const& g) { return g.GetNumTexCoords(0); },
        [](PolygonGeometry const& g) -> void const* { return g.GetTexCoordPointer(0); } },
    { Handle::StaticTexCoords1, Handle::TexCoord1Buffer, GL_ARRAY_BUFFER, 8, true,
        [](PolygonGeometry const& g) { return g.GetNumTexCoords(1); },
        [](PolygonGeometry const& g) -> void const* { return g.GetTexCoordPointer(1); } },
};

} // namespace

RenderPolygonHandleWizGL* RenderPolygonHandleWizGL::Create(RenderWizGL* renderer)
{
    return new (TypeInfoT<RenderPolygonHandleWizGL>::S_TypeInfo_1) RenderPolygonHandleWizGL(renderer);
}

RenderPolygonHandleWizGL::RenderPolygonHandleWizGL(RenderWizGL*) : m_Buffers() {}

RenderPolygonHandleWizGL::~RenderPolygonHandleWizGL()
{
    Unload();
}

void RenderPolygonHandleWizGL::Unload()
{
    for (GLuint& buffer : m_Buffers) {
        if (buffer != 0) {
            WizLog("[D] ", "RenderPolygonHandleWizGL::Unload: Delete BufferID #", Hex{ buffer });
            GL->glDeleteBuffers(1, &buffer);
        }
        buffer = 0;
    }
}

void RenderPolygonHandleWizGL::CreateBufferData(PolygonGeometry* geometry)
{
    if (geometry->GetNumVertices() == 0)
        return;
    for (StaticArraySource const& source : S_Sources) {
        int const count = source.m_Count(*geometry);
        if (!geometry->IsStatic(source.m_Bit) || (source.m_Optional && count == 0))
            continue;
        GLuint& buffer = m_Buffers[source.m_Index];
        GL->glGenBuffers(1, &buffer);
        WizLog("[D] ", "RenderPolygonHandleWizGL::GenBuffer: BufferID #", Hex{ buffer });
        GL->glBindBuffer(source.m_Target, buffer);
        GL->glBufferData(source.m_Target, static_cast<GLsizeiptr>(count) * source.m_ElementSize,
            source.m_Data(*geometry), GL_STATIC_DRAW);
        GL->glBindBuffer(source.m_Target, 0);
    }
}

GLuint RenderPolygonHandleWizGL::GetBuffer(BufferIndex index) const
{
    return m_Buffers[index];
}

} // namespace Vellacore
