#include "Vellacore/Render/Texture.h"

namespace Vellacore {

Texture::Texture() : m_MinFilter(FilterLinear), m_MagFilter(FilterLinear), m_MipFilter(FilterLinear) {}

Texture::~Texture() = default;

void Texture::SetTextureHandle(TextureHandle* handle)
{
    m_TextureHandle = handle;
}

TextureHandle* Texture::GetTextureHandle() const
{
    return m_TextureHandle;
}

void Texture::SetTextureTransform(Transform* transform)
{
    m_TextureTransform = transform;
}

Transform* Texture::GetTextureTransform() const
{
    return m_TextureTransform;
}

void Texture::SetMinFilter(Filter filter)
{
    m_MinFilter = filter;
}

Texture::Filter Texture::GetMinFilter() const
{
    return m_MinFilter;
}

void Texture::SetMagFilter(Filter filter)
{
    m_MagFilter = filter;
}

Texture::Filter Texture::GetMagFilter() const
{
    return m_MagFilter;
}

void Texture::SetMipFilter(Filter filter)
{
    m_MipFilter = filter;
}

Texture::Filter Texture::GetMipFilter() const
{
    return m_MipFilter;
}

} // namespace Vellacore
