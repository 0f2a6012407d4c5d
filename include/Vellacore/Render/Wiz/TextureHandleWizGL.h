#ifndef VELLACORE_RENDER_WIZ_TEXTUREHANDLEWIZGL_H
#define VELLACORE_RENDER_WIZ_TEXTUREHANDLEWIZGL_H

#include "Vellacore/Render/TextureHandle.h"
#include "Vellacore/Render/Wiz/GLAPI.h"

namespace Vellacore {

class RenderWizGL;

// One GL texture name. Destroying the handle does not delete the texture: the renderer unloads
// every handle it made while the context still exists (RenderWizGL::Exit).
class TextureHandleWizGL : public TextureHandle {
public:
    static TextureHandleWizGL* Create(RenderWizGL* renderer);
    ~TextureHandleWizGL() override;

    void Unload() override;
    // Takes a new name from GL; the context must be current.
    virtual void GenTexture();

    // 0 while the handle holds no texture.
    GLuint GetTexID() const;
    // The renderer that made the handle; null once that renderer has shut down.
    RenderWizGL* GetRenderer() const;
    void ClearRenderer();

protected:
    explicit TextureHandleWizGL(RenderWizGL* renderer);

    GLuint m_TexID;

private:
    RenderWizGL* m_Renderer;
};

} // namespace Vellacore

#endif
