#ifndef VELLACORE_RENDER_FONTTEXTURE2D_H
#define VELLACORE_RENDER_FONTTEXTURE2D_H

#include "Vellacore/Import/Glyph.h"
#include "Vellacore/Math/Vector2T.h"
#include "Vellacore/Memory/Array.h"
#include "Vellacore/Render/Texture2D.h"

namespace Vellacore {

// The image of a bitmap font together with the table that finds each character in it.
class FontTexture2D : public Texture2D {
public:
    static FontTexture2D* Create();
    ~FontTexture2D() override;

    void SetGlyphData(Array<Glyph> const& glyphs);
    void GetGlyphData(Array<Glyph>& glyphs) const;
    void SetFontSize(Vector2T<Fixed> const& size);
    Vector2T<Fixed> GetFontSize() const;

protected:
    FontTexture2D();

private:
    Array<Glyph> m_GlyphData;
    Vector2T<Fixed> m_FontSize;
};

} // namespace Vellacore

#endif
