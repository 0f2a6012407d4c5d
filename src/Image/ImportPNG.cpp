#include "Vellacore/Image/ImportPNG.h"

#include "Vellacore/Core/Logger.h"

#include <png.h>

#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace Vellacore {
namespace Import {

namespace {

int const ReadTransforms =
    PNG_TRANSFORM_STRIP_16 | PNG_TRANSFORM_PACKING | PNG_TRANSFORM_EXPAND | PNG_TRANSFORM_SWAP_ENDIAN;

// The file and both libpng structures, released together on every way out of the import.
class PNGReader {
public:
    explicit PNGReader(std::FILE* file)
        : m_File(file),
          m_Png(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr)),
          m_Info(m_Png ? png_create_info_struct(m_Png) : nullptr)
    {
    }
    // libpng accepts structures that were never made.
    ~PNGReader()
    {
        png_destroy_read_struct(&m_Png, &m_Info, nullptr);
        std::fclose(m_File);
    }
    PNGReader(PNGReader const&) = delete;
    PNGReader& operator=(PNGReader const&) = delete;

    bool IsReady() const { return m_Info != nullptr; }

    // libpng reports errors by a long jump back here. Only libpng's C frames lie between the jump
    // and this frame, and this frame holds nothing with a destructor, so no cleanup is skipped.
    bool ReadAll()
    {
        if (setjmp(png_jmpbuf(m_Png)))
            return false;
        png_init_io(m_Png, m_File);
        png_set_sig_bytes(m_Png, 0);
        png_read_png(m_Png, m_Info, ReadTransforms, nullptr);
        return true;
    }

    unsigned int GetRowBytes() const { return static_cast<unsigned int>(png_get_rowbytes(m_Png, m_Info)); }
    png_uint_32 GetWidth() const { return png_get_image_width(m_Png, m_Info); }
    png_uint_32 GetHeight() const { return png_get_image_height(m_Png, m_Info); }
    int GetBitDepth() const { return png_get_bit_depth(m_Png, m_Info); }
    int GetColorType() const { return png_get_color_type(m_Png, m_Info); }
    png_bytepp GetRows() const { return png_get_rows(m_Png, m_Info); }

private:
    std::FILE* m_File;
    png_structp m_Png;
    png_infop m_Info;
};

// The image format of an expanded 8-bit colour type; FormatNone for anything else.
Image::Format FormatOf(int bitDepth, int colorType)
{
    if (bitDepth != 8)
        return Image::FormatNone;
    switch (colorType) {
    case PNG_COLOR_TYPE_GRAY:
        return Image::FormatLuminance;
    case PNG_COLOR_TYPE_RGB:
        return Image::FormatRGB;
    case PNG_COLOR_TYPE_GRAY_ALPHA:
        return Image::FormatLuminanceAlpha;
    case PNG_COLOR_TYPE_RGB_ALPHA:
        return Image::FormatRGBA;
    default:
        return Image::FormatNone;
    }
}

// Addresses are logged in the 32-bit form the handheld prints; a 64-bit host shows the low half.
unsigned int LowAddress(void const* p)
{
    return static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(p));
}

// Image sides are signed 16-bit; a larger PNG side would wrap to a size Allocate aborts on.
bool FitsImageSide(png_uint_32 side)
{
    return side <= static_cast<png_uint_32>(INT16_MAX);
}

Image* CopyRows(PNGReader const& reader, Image::Format format, bool flip)
{
    png_uint_32 width = reader.GetWidth();
    png_uint_32 height = reader.GetHeight();
    // Not yet in any Ptr: a failure destroys it by hand.
    Image* image = Image::Create();
    if (!FitsImageSide(width) || !FitsImageSide(height)
        || !image->Allocate(format, static_cast<short>(width), static_cast<short>(height))) {
        Logger::Instance()->p("[E] ").p("Import::ImportPNG: could not allocate data for Image.").pLF();
        Destruct1(image);
        return nullptr;
    }

    // After the expansion every row holds exactly width 8-bit pixels of the image's format, so
    // libpng's row length is the image's row length.
    unsigned int rowBytes = reader.GetRowBytes();
    png_bytepp rows = reader.GetRows();
    U8* data = image->GetDataPtr();
    Logger::Instance()->p("[D] ").p("png_get_rows, rowbytes=").p(rowBytes)
        .p(" image addr=").px(LowAddress(data)).p(" rowptr=").px(LowAddress(rows)).pLF();
    for (png_uint_32 i = 0; i < height; ++i) {
        png_uint_32 target = flip ? height - 1 - i : i;
        std::memcpy(data + static_cast<std::size_t>(target) * rowBytes, rows[i], rowBytes);
    }
    return image;
}

} // namespace

Image* ImportPNG(std::string path, bool flip)
{
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) {
        Logger::Instance()->p("[E] ").p("Import::ImportPNG: failed to open file: ").p(path).pLF();
        return nullptr;
    }
    PNGReader reader(file);
    if (!reader.IsReady() || !reader.ReadAll())
        return nullptr;

    int bitDepth = reader.GetBitDepth();
    int colorType = reader.GetColorType();
    Image::Format format = FormatOf(bitDepth, colorType);
    if (format == Image::FormatNone) {
        Logger::Instance()->p("[E] ").p("Import::ImportPNG: unsupported image format (depth=").p(bitDepth)
            .p(" color_type=").p(colorType).p(")").pLF();
        return nullptr;
    }
    return CopyRows(reader, format, flip);
}

} // namespace Import
} // namespace Vellacore
