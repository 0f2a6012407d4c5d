#include "Vellacore/Render/FontTexture2D.h"

namespace Vellacore {

FontTexture2D* FontTexture2D::Create()
{
    return new (TypeInfoT<FontTexture2D>::S_TypeInfo_1) FontTexture2D();
}

FontTexture2D::FontTexture2D() : m_FontSize(0, 0) {}

FontTexture2D::~FontTexture2D() = default;

void FontTexture2D::SetGlyphData(Array<Glyph> const& glyphs)
{
    m_GlyphData = glyphs;
}

void FontTexture2D::GetGlyphData(Array<Glyph>& glyphs) const
{
    glyphs = m_GlyphData;
}

void FontTexture2D::SetFontSize(Vector2T<Fixed> const& size)
{
    m_FontSize = size;
}

Vector2T<Fixed> FontTexture2D::GetFontSize() const
{
    return m_FontSize;
}

} // namespace Vellacore
