#ifndef VELLACORE_IMAGE_IMAGE_H
#define VELLACORE_IMAGE_IMAGE_H

#include "Vellacore/Core/Object.h"
#include "Vellacore/Core/Types.h"
#include "Vellacore/Memory/Ptr.h"

namespace Vellacore {

// An in-memory raster of 8-bit channels, rows packed without padding. Textures hand the data to
// the renderer as it is, so the formats are the ones GL uploads directly.
class Image : public Object {
public:
    enum Format : I32 {
        FormatNone = 0,
        FormatLuminance = 1,
        FormatRGB = 2,
        FormatRGBA = 3,
        FormatLuminanceAlpha = 4
    };

    static Image* Create();
    ~Image() override;

    // Replaces the data with an uninitialised block for the size and format. Size and format are
    // kept even when no data can be made for them; the image then has none. A width or height
    // below 1 is a programming error and aborts.
    bool Allocate(Format format, short width, short height);
    void ReleaseData();

    short GetWidth() const { return m_Width; }
    short GetHeight() const { return m_Height; }
    Format GetFormat() const { return m_Format; }
    // The first pixel byte, or null without data.
    U8* GetDataPtr() { return m_Data; }
    U8 const* GetDataPtr() const { return m_Data; }

    // Bytes per pixel of a format; 0 for a format that holds no pixels.
    static int GetPixelSize(Format format);

protected:
    Image();

private:
    Ptr<U8> m_Data;
    I16 m_Width;
    I16 m_Height;
    Format m_Format;
};

} // namespace Vellacore

#endif
