#ifndef VELLACORE_RENDER_WIZ_RENDERTARGETHANDLEWIZGL_H
#define VELLACORE_RENDER_WIZ_RENDERTARGETHANDLEWIZGL_H

#include "Vellacore/Render/Wiz/TextureHandleWizGL.h"

namespace Vellacore {

// An EGL pixel-buffer surface for a render target, with the texture name that goes with it. A
// handle makes one surface in its life: once a config was chosen, CreateSurface does nothing,
// even after Unload.
class RenderTargetHandleWizGL : public TextureHandleWizGL {
public:
    static RenderTargetHandleWizGL* Create();
    ~RenderTargetHandleWizGL() override;

    // Destroys the surface, then deletes the texture.
    void Unload() override;
    // Makes a width x height pixel buffer on the display and logs the config it got.
    virtual void CreateSurface(EGLDisplay display, int width, int height);

protected:
    RenderTargetHandleWizGL();

private:
    void LogConfig() const;

    EGLSurface m_Surface;
    EGLDisplay m_Display;
    EGLConfig m_Config;
};

} // namespace Vellacore

#endif
