#ifndef VELLACORE_IMPORT_GLYPH_H
#define VELLACORE_IMPORT_GLYPH_H

#include "Vellacore/Core/Types.h"

namespace Vellacore {

// Where one character of a bitmap font lies in the font's texture and how the pen moves after it,
// in texture pixels. A glyph array is indexed by character code. The nine words are also the
// record layout of glyph files.
struct Glyph {
    I32 m_Code; // -1 marks an empty entry
    I32 m_Left;
    I32 m_Top;
    I32 m_Width;
    I32 m_Height;
    I32 m_AdvanceX;
    I32 m_AdvanceY;
    I32 m_Unused;
    // Height of the glyph's top above the pen line; its lower edge lies at m_Ascent - m_Height.
    I32 m_Ascent;
};

static_assert(sizeof(Glyph) == 36, "a glyph is nine 32-bit words, as stored in glyph files");

} // namespace Vellacore

#endif
