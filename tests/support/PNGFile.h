#ifndef VELLACORE_TESTS_PNGFILE_H
#define VELLACORE_TESTS_PNGFILE_H

#include <png.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace VellacoreTest {

// A PNG as it is stored: rows hold the samples packed and big-endian, as libpng writes them.
struct StoredPNG {
    int m_ColorType, m_BitDepth;
    png_uint_32 m_Width, m_Height;
    std::vector<unsigned char> m_Rows;
    std::vector<png_color> m_Palette = {};
    std::vector<unsigned char> m_PaletteAlpha = {};
    int m_GreyKey = -1; // grey value a tRNS chunk makes transparent, or -1 for none
};

// Writes the file with libpng's writer; a libpng error ends the test program.
inline void WritePNG(std::string const& path, StoredPNG const& stored)
{
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (!file)
        std::abort();
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file);
    png_set_IHDR(png, info, stored.m_Width, stored.m_Height, stored.m_BitDepth, stored.m_ColorType,
        PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (!stored.m_Palette.empty())
        png_set_PLTE(png, info, stored.m_Palette.data(), static_cast<int>(stored.m_Palette.size()));
    if (!stored.m_PaletteAlpha.empty())
        png_set_tRNS(png, info, stored.m_PaletteAlpha.data(), static_cast<int>(stored.m_PaletteAlpha.size()), nullptr);
    if (stored.m_GreyKey >= 0) {
        png_color_16 key = {};
        key.gray = static_cast<png_uint_16>(stored.m_GreyKey);
        png_set_tRNS(png, info, nullptr, 0, &key);
    }
    std::vector<png_bytep> rows;
    for (png_uint_32 y = 0; y < stored.m_Height; ++y)
        rows.push_back(const_cast<png_bytep>(stored.m_Rows.data() + y * (stored.m_Rows.size() / stored.m_Height)));
    png_set_rows(png, info, rows.data());
    png_write_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
    png_destroy_write_struct(&png, &info);
    std::fclose(file);
}

} // namespace VellacoreTest

#endif
