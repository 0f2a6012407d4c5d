#ifndef VELLACORE_RENDER_WIZ_RENDERWIZGL_H
#define VELLACORE_RENDER_WIZ_RENDERWIZGL_H

#include "Vellacore/Memory/Array.h"
#include "Vellacore/Memory/Ptr.h"
#include "Vellacore/Render/Render.h"
#include "Vellacore/Render/RenderTarget.h"
#include "Vellacore/Render/Wiz/GLAPI.h"
#include "Vellacore/Render/Wiz/RenderPolygonHandleWizGL.h"
#include "Vellacore/Render/Wiz/TextureHandleWizGL.h"

namespace Vellacore {

class Image;
class PolygonGeometry;
class Texture;

// The renderer of the GP2X Wiz: OpenGL ES 1.1 fixed function on EGL, every call through the GL
// table. The 240 x 320 portrait screen is seen through a 90-degree turn that is folded into every
// projection. Textures and buffer objects are made at first use and kept in the renderer's lists,
// so that Exit can unload them all while the context still exists.
class RenderWizGL : public Render {
public:
    static RenderWizGL* Create();
    // Releases the handle lists but does not call Exit: the GL objects stay with the driver.
    ~RenderWizGL() override;

    bool Init() override;
    void Exit() override;
    bool IsRenderable() const override;
    // 240 / 320, whatever the surface.
    Fixed GetAspect() const override;
    void SetColorClearValue(Vector4T<float> const& color) override;
    // Only the whole part of the depth reaches GL, as a raw fixed-point value: 1.0 clears to
    // 1/65536. Scenes made for the handheld are drawn against exactly that clear.
    void SetDepthClearValue(Fixed depth) override;
    // The Wiz has no stencil buffer; the stencil bit is refused with an error line.
    void Clear(int buffers) override;
    void SetViewMatrix(Matrix4T<Fixed> const& view) override;
    void SetProjectionMatrix(Matrix4T<Fixed> const& projection) override;
    void SetAmbientLight(Vector3T<float> const& color) override;
    void SetLights(short count) override;
    void SetLight(short slot, Light* light, Matrix4T<Fixed> const& placing) override;
    void SetFog(Fog* fog) override;
    // Does nothing when shader and colour are those of the last call: a shader whose settings
    // changed since is re-applied only when the pointer or the colour changes.
    void SetShader(Shader* shader, Vector4T<float> const& colorMul) override;
    // Render-to-texture is not wired up: every target draws to the screen.
    void SetTarget(RenderTarget* target) override;
    void Draw(Drawable* drawable, Matrix4T<Fixed> const& placing) override;
    // GL and EGL errors are read here only, once a frame.
    void SwapBuffers() override;

    // One texture unit: the texture's image (uploaded at first use), its filters and its
    // coordinate transform. Anything but a Texture2D with an image switches the unit off.
    virtual void SetTexture(int unit, Texture* texture);
    // Updates the drawable; only polygon geometry is drawn.
    virtual void Draw(Drawable* drawable);

    void DrawPolygonGeometry(PolygonGeometry* geometry);

protected:
    RenderWizGL();

private:
    bool CreateEGL();
    void QueryGL();
    void ForgetState();
    bool FitsTextureLimits(Image const& image) const;
    void UploadImage(Texture* texture, Image const& image);

    void* m_Window;
    GLint m_MaxTextureUnits;
    GLint m_MaxLights;
    GLint m_MaxTextureSize;
    EGLDisplay m_Display;
    EGLConfig m_Config;
    EGLContext m_Context;
    EGLSurface m_WindowSurface;
    Array<Ptr<TextureHandleWizGL>> m_TextureHandles;
    Array<Ptr<RenderPolygonHandleWizGL>> m_PolygonHandles;
    Ptr<RenderTarget> m_CurrentTarget;
    // Compared only, never dereferenced: the caller owns them.
    Shader* m_CurrentShader;
    Vector4T<float> m_CurrentColor;
    Fog* m_CurrentFog;
    Matrix4T<Fixed> m_ViewMatrix;
    // As loaded into GL, screen rotation included.
    Matrix4T<Fixed> m_ProjectionMatrix;
    Matrix4T<Fixed> m_ModelMatrix;
    Matrix4T<Fixed> m_ScreenRotation;
};

// Turns the handheld's framebuffer (ioctl on "/dev/fb0"); a no-op where that device does not open.
void SetScreenRotation(int rotation);
// The point v placed by m in 16.16 arithmetic, as the fixed-point GL pipeline computes it: v is
// truncated to 16.16 first.
Vector3T<float> VertexTransform(Vector3T<float> const& v, Matrix4T<Fixed> const& m);

} // namespace Vellacore

#endif
