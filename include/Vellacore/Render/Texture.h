#ifndef VELLACORE_RENDER_TEXTURE_H
#define VELLACORE_RENDER_TEXTURE_H

#include "Vellacore/Core/Object.h"
#include "Vellacore/Core/Types.h"
#include "Vellacore/Memory/Ptr.h"
#include "Vellacore/Render/TextureHandle.h"

namespace Vellacore {

class Transform;

// Anything a shader can sample: an image (Texture2D) or a surface a camera draws into
// (RenderTarget). The renderer attaches its handle at first use.
class Texture : public Object {
public:
    // Sampling choices, which the renderer turns into its own modes; as minification filter,
    // FilterNone samples without blending between mip levels.
    enum Filter : I32 { FilterNearest = 0, FilterLinear = 1, FilterNone = 2 };

    ~Texture() override = 0;

    // The texture keeps one counted reference to its handle and gives it up when it is destroyed
    // or given another handle; see TextureHandle for who else holds one.
    virtual void SetTextureHandle(TextureHandle* handle);
    TextureHandle* GetTextureHandle() const;
    // Optional transform of the texture coordinates, normally a TextureTransform.
    void SetTextureTransform(Transform* transform);
    Transform* GetTextureTransform() const;
    void SetMinFilter(Filter filter);
    Filter GetMinFilter() const;
    void SetMagFilter(Filter filter);
    Filter GetMagFilter() const;
    void SetMipFilter(Filter filter);
    Filter GetMipFilter() const;

protected:
    Texture();

private:
    Ptr<TextureHandle> m_TextureHandle;
    Ptr<Transform> m_TextureTransform;
    Filter m_MinFilter;
    Filter m_MagFilter;
    Filter m_MipFilter;
};

} // namespace Vellacore

#endif
