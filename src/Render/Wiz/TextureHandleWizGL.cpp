#include "Vellacore/Render/Wiz/TextureHandleWizGL.h"

#include "Vellacore/Core/Assert.h"
#include "Vellacore/Memory/Memory.h"
#include "WizLog.h"

namespace Vellacore {

TextureHandleWizGL* TextureHandleWizGL::Create(RenderWizGL* renderer)
{
    return new (TypeInfoT<TextureHandleWizGL>::S_TypeInfo_1) TextureHandleWizGL(renderer);
}

TextureHandleWizGL::TextureHandleWizGL(RenderWizGL* renderer) : m_TexID(0), m_Renderer(renderer) {}

TextureHandleWizGL::~TextureHandleWizGL() = default;

void TextureHandleWizGL::Unload()
{
    if (m_TexID == 0)
        return;
    WizLog("[D] ", "TextureHandleWizGL::Unload: Delete Texture #", Hex{ m_TexID });
    GL->glDeleteTextures(1, &m_TexID);
    m_TexID = 0;
}

void TextureHandleWizGL::GenTexture()
{
    GL->glGenTextures(1, &m_TexID);
    // Name 0 is GL's "no texture": binding it would silently draw untextured.
    if (m_TexID == 0)
        Assert("m_TexID!=0", "Render/Wiz/RenderWizGL", 161);
    WizLog("[D] ", "TexID=", Hex{ m_TexID });
}

GLuint TextureHandleWizGL::GetTexID() const
{
    return m_TexID;
}

RenderWizGL* TextureHandleWizGL::GetRenderer() const
{
    return m_Renderer;
}

void TextureHandleWizGL::ClearRenderer()
{
    m_Renderer = nullptr;
}

} // namespace Vellacore
