#include "Vellacore/Render/Texture2D.h"

namespace Vellacore {

Texture2D* Texture2D::Create()
{
    return new (TypeInfoT<Texture2D>::S_TypeInfo_1) Texture2D();
}

Texture2D::Texture2D() = default;

Texture2D::~Texture2D() = default;

void Texture2D::SetImage(Image* image)
{
    m_Image = image;
}

Image* Texture2D::GetImage() const
{
    return m_Image;
}

short Texture2D::GetImageWidth() const
{
    return m_Image ? m_Image->GetWidth() : 0;
}

short Texture2D::GetImageHeight() const
{
    return m_Image ? m_Image->GetHeight() : 0;
}

} // namespace Vellacore
