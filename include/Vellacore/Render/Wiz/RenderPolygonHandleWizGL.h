#ifndef VELLACORE_RENDER_WIZ_RENDERPOLYGONHANDLEWIZGL_H
#define VELLACORE_RENDER_WIZ_RENDERPOLYGONHANDLEWIZGL_H

#include "Vellacore/Core/Types.h"
#include "Vellacore/Render/RenderPolygonHandle.h"
#include "Vellacore/Render/Wiz/GLAPI.h"

namespace Vellacore {

class PolygonGeometry;
class RenderWizGL;

// The GL buffer objects holding the static arrays of one polygon geometry, filled once at the
// geometry's first draw. Destroying the handle deletes its buffers.
class RenderPolygonHandleWizGL : public RenderPolygonHandle {
public:
    // PolygonGeometry::SetStatic bits: the arrays the renderer keeps in buffer objects.
    enum StaticArray : U32 {
        StaticVertices = 1,
        StaticIndices = 2,
        StaticNormals = 4,
        StaticColors = 8,
        StaticTexCoords0 = 16,
        StaticTexCoords1 = 32
    };
    // Which array each buffer name holds; slots 0 and 7 stay empty.
    enum BufferIndex : int {
        VertexBuffer = 1,
        NormalBuffer = 2,
        IndexBuffer = 3,
        TexCoord0Buffer = 4,
        TexCoord1Buffer = 5,
        ColorBuffer = 6,
        NumBuffers = 8
    };

    static RenderPolygonHandleWizGL* Create(RenderWizGL* renderer);
    ~RenderPolygonHandleWizGL() override;

    void Unload() override;
    // Uploads the geometry's static arrays; an array that is empty gets no buffer.
    virtual void CreateBufferData(PolygonGeometry* geometry);

    // 0 when the handle holds no buffer for that array.
    GLuint GetBuffer(BufferIndex index) const;

protected:
    // The renderer is not kept: buffers are released by the handle itself.
    explicit RenderPolygonHandleWizGL(RenderWizGL* renderer);

private:
    GLuint m_Buffers[NumBuffers];
};

} // namespace Vellacore

#endif
