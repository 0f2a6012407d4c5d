#include "Vellacore/Image/Image.h"

#include "Vellacore/Core/Assert.h"

#include <cstdint>

namespace Vellacore {

Image* Image::Create()
{
    return new (TypeInfoT<Image>::S_TypeInfo_1) Image();
}

Image::Image() : m_Width(0), m_Height(0), m_Format(FormatNone) {}

Image::~Image() = default;

int Image::GetPixelSize(Format format)
{
    switch (format) {
    case FormatLuminance:
        return 1;
    case FormatLuminanceAlpha:
        return 2;
    case FormatRGB:
        return 3;
    case FormatRGBA:
        return 4;
    default:
        return 0;
    }
}

bool Image::Allocate(Format format, short width, short height)
{
    if (width <= 0 || height <= 0)
        Assert("w>0 && h>0", "Image/Image", 56);
    m_Width = width;
    m_Height = height;
    m_Format = format;

    // 32767 x 32767 RGBA does not fit the allocator's element count; such an image cannot be made.
    // Old data is dropped even then: it no longer matches the stored size and format.
    I64 size = static_cast<I64>(width) * height * GetPixelSize(format);
    if (size == 0 || size > INT32_MAX) {
        m_Data = nullptr;
        return false;
    }
    int count = static_cast<int>(size);
    m_Data = new (count, TypeInfoT<U8>::S_TypeInfo_N) U8[count];
    return true;
}

void Image::ReleaseData()
{
    m_Data = nullptr;
}

} // namespace Vellacore
