#include "Vellacore/Core/Logger.h"
#include "Vellacore/Image/Image.h"
#include "Vellacore/Image/ImportPNG.h"
#include "support/PNGFile.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using namespace Vellacore;
using VellacoreTest::ReadFile;
using VellacoreTest::StoredPNG;
using VellacoreTest::WritePNG;

namespace {

std::string const Banner = "---- START  (BUILD: Apr 26 2010 / 18:27:56) ----\n";

// Every colour type and bit depth, each 3 x 2 pixels so that sub-byte rows end in padding bits.
struct DecodeCase {
    char const* m_Name;
    StoredPNG m_Stored;
    Image::Format m_Format;
    std::vector<U8> m_Pixels; // top row first
};

std::vector<png_color> const Palette = { { 10, 20, 30 }, { 40, 50, 60 }, { 70, 80, 90 }, { 100, 110, 120 } };

std::vector<DecodeCase> const DecodeCases = {
    { "grey1", { PNG_COLOR_TYPE_GRAY, 1, 3, 2, { 0xA0, 0x60 }, {}, {} },
        Image::FormatLuminance, { 255, 0, 255, 0, 255, 255 } },
    { "grey2", { PNG_COLOR_TYPE_GRAY, 2, 3, 2, { 0xD8, 0x30 }, {}, {} },
        Image::FormatLuminance, { 255, 85, 170, 0, 255, 0 } },
    { "grey4", { PNG_COLOR_TYPE_GRAY, 4, 3, 2, { 0xF1, 0x80, 0x0A, 0x30 }, {}, {} },
        Image::FormatLuminance, { 255, 17, 136, 0, 170, 51 } },
    { "grey8", { PNG_COLOR_TYPE_GRAY, 8, 3, 2, { 1, 2, 3, 4, 5, 6 }, {}, {} },
        Image::FormatLuminance, { 1, 2, 3, 4, 5, 6 } },
    { "grey16", { PNG_COLOR_TYPE_GRAY, 16, 3, 2, { 0x12, 0x34, 0xAB, 0xCD, 0xFF, 0x00, 0x00, 0xFF, 0x7F, 0x80, 0x01, 0x02 }, {}, {} },
        Image::FormatLuminance, { 0x12, 0xAB, 0xFF, 0x00, 0x7F, 0x01 } },
    { "grey8 with key", { PNG_COLOR_TYPE_GRAY, 8, 3, 2, { 9, 2, 9, 4, 9, 6 }, {}, {}, 9 },
        Image::FormatLuminanceAlpha, { 9, 0, 2, 255, 9, 0, 4, 255, 9, 0, 6, 255 } },
    { "grey+alpha8", { PNG_COLOR_TYPE_GRAY_ALPHA, 8, 3, 2, { 1, 11, 2, 12, 3, 13, 4, 14, 5, 15, 6, 16 }, {}, {} },
        Image::FormatLuminanceAlpha, { 1, 11, 2, 12, 3, 13, 4, 14, 5, 15, 6, 16 } },
    { "grey+alpha16",
        { PNG_COLOR_TYPE_GRAY_ALPHA, 16, 3, 2,
            { 1, 0, 11, 0, 2, 0, 12, 0, 3, 0, 13, 0, 4, 9, 14, 9, 5, 9, 15, 9, 6, 9, 16, 9 }, {}, {} },
        Image::FormatLuminanceAlpha, { 1, 11, 2, 12, 3, 13, 4, 14, 5, 15, 6, 16 } },
    { "rgb8", { PNG_COLOR_TYPE_RGB, 8, 3, 2, { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18 }, {}, {} },
        Image::FormatRGB, { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18 } },
    { "rgb16",
        { PNG_COLOR_TYPE_RGB, 16, 3, 2,
            { 1, 99, 2, 99, 3, 99, 4, 99, 5, 99, 6, 99, 7, 99, 8, 99, 9, 99,
                10, 0, 11, 0, 12, 0, 13, 0, 14, 0, 15, 0, 16, 0, 17, 0, 18, 0 }, {}, {} },
        Image::FormatRGB, { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18 } },
    { "rgba8",
        { PNG_COLOR_TYPE_RGB_ALPHA, 8, 3, 2,
            { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24 }, {}, {} },
        Image::FormatRGBA, { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24 } },
    { "rgba16",
        { PNG_COLOR_TYPE_RGB_ALPHA, 16, 3, 2,
            { 1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7, 8, 8, 9, 9, 10, 10, 11, 11, 12, 12,
                13, 0, 14, 0, 15, 0, 16, 0, 17, 0, 18, 0, 19, 0, 20, 0, 21, 0, 22, 0, 23, 0, 24, 0xFF }, {}, {} },
        Image::FormatRGBA, { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24 } },
    { "palette2", { PNG_COLOR_TYPE_PALETTE, 2, 3, 2, { 0x18, 0xE4 }, Palette, {} },
        Image::FormatRGB, { 10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120, 70, 80, 90, 40, 50, 60 } },
    { "palette8 with tRNS", { PNG_COLOR_TYPE_PALETTE, 8, 3, 2, { 0, 1, 2, 3, 2, 1 }, Palette, { 0, 128 } },
        Image::FormatRGBA,
        { 10, 20, 30, 0, 40, 50, 60, 128, 70, 80, 90, 255, 100, 110, 120, 255, 70, 80, 90, 255, 40, 50, 60, 128 } },
};

std::vector<U8> PixelsOf(Image const& image)
{
    U8 const* data = image.GetDataPtr();
    return std::vector<U8>(data, data + image.GetWidth() * image.GetHeight() * Image::GetPixelSize(image.GetFormat()));
}

std::vector<U8> BottomRowFirst(std::vector<U8> const& pixels, std::size_t rows)
{
    std::size_t rowBytes = pixels.size() / rows;
    std::vector<U8> flipped;
    for (std::size_t y = rows; y > 0; --y)
        flipped.insert(flipped.end(), pixels.begin() + (y - 1) * rowBytes, pixels.begin() + y * rowBytes);
    return flipped;
}

std::size_t CountOpenFiles()
{
    std::size_t count = 0;
    for (auto const& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        (void)entry;
        ++count;
    }
    return count;
}

std::string LogAfterBanner()
{
    return ReadFile("Xapp.log").substr(Banner.size());
}

// Lives on the stack, so that a child process that aborts leaves no block for the leak checkers.
class StackImage : public Image {
};

// A 64 x 64 RGB gradient: its image data spans enough bytes to cut the file in the middle of it.
StoredPNG Gradient()
{
    StoredPNG stored = { PNG_COLOR_TYPE_RGB, 8, 64, 64, {}, {}, {} };
    for (int i = 0; i < 64 * 64 * 3; ++i)
        stored.m_Rows.push_back(static_cast<U8>(i * 7 + i / 191));
    return stored;
}

} // namespace

TEST(Image, AllocateSizesTheDataByFormatOrMakesNone)
{
    struct {
        Image::Format m_Format;
        short m_Width;
        short m_Height;
        int m_Bytes; // 0: the allocation fails
    } const cases[] = {
        { Image::FormatLuminance, 5, 3, 15 },
        { Image::FormatLuminanceAlpha, 5, 3, 30 },
        { Image::FormatRGB, 5, 3, 45 },
        { Image::FormatRGBA, 5, 3, 60 },
        { Image::FormatNone, 4, 2, 0 },
        { static_cast<Image::Format>(5), 4, 2, 0 },
        { Image::FormatRGB, 1, 1, 3 },
        // More bytes than one allocation can count.
        { Image::FormatRGBA, 32767, 32767, 0 },
    };
    Ptr<Image> image = Image::Create();
    for (auto const& c : cases) {
        // Each case replaces the data of the one before; a block kept by mistake shows as a leak.
        EXPECT_EQ(c.m_Bytes > 0, image->Allocate(c.m_Format, c.m_Width, c.m_Height));
        EXPECT_EQ(c.m_Format, image->GetFormat());
        EXPECT_EQ(c.m_Width, image->GetWidth());
        EXPECT_EQ(c.m_Height, image->GetHeight());
        if (c.m_Bytes > 0)
            EXPECT_EQ(c.m_Bytes, HeaderOf(image->GetDataPtr())->m_Count);
        else
            EXPECT_EQ(nullptr, image->GetDataPtr());
    }
}

TEST(Image, EmptySizeAbortsWithLoggedAssertion)
{
    int const sizes[][2] = { { 0, 1 }, { 1, 0 }, { -3, 4 } };
    for (auto const& size : sizes) {
        VellacoreTest::TempDir dir;
        EXPECT_DEATH(
            {
                Logger::Init();
                StackImage image;
                image.Allocate(Image::FormatRGB, static_cast<short>(size[0]), static_cast<short>(size[1]));
            },
            "");
        EXPECT_EQ(Banner + "[E] Image/Image(56)w>0 && h>0\n", ReadFile("Xapp.log"));
    }
}

TEST(ImportPNG, DecodesEveryColourTypeToEightBitChannels)
{
    VellacoreTest::TempDir dir;
    Logger::Init();
    for (DecodeCase const& c : DecodeCases) {
        SCOPED_TRACE(c.m_Name);
        WritePNG("case.png", c.m_Stored);
        for (bool flip : { false, true }) {
            Ptr<Image> image = Import::ImportPNG("case.png", flip);
            ASSERT_NE(nullptr, image.Get());
            EXPECT_EQ(c.m_Format, image->GetFormat());
            EXPECT_EQ(3, image->GetWidth());
            EXPECT_EQ(2, image->GetHeight());
            EXPECT_EQ(flip ? BottomRowFirst(c.m_Pixels, 2) : c.m_Pixels, PixelsOf(*image));
        }
    }
    Logger::Exit();
}

TEST(ImportPNG, UnreadableFilesFailWithoutLeaksOrOpenFiles)
{
    VellacoreTest::TempDir dir;
    Logger::Init();
    WritePNG("whole.png", Gradient());
    std::string whole = ReadFile("whole.png");
    struct {
        char const* m_Name;
        std::string m_Contents;
    } const cases[] = {
        { "cut in the image data", whole.substr(0, whole.size() / 2) },
        { "cut in the header", whole.substr(0, 20) },
        { "not a PNG", "GIF89a, or anything else that is not a PNG" },
        { "empty", "" },
    };
    std::size_t openFiles = CountOpenFiles();
    for (auto const& c : cases) {
        SCOPED_TRACE(c.m_Name);
        std::ofstream("bad.png", std::ios::binary) << c.m_Contents;
        EXPECT_EQ(nullptr, Import::ImportPNG("bad.png", true));
        EXPECT_EQ(openFiles, CountOpenFiles());
    }
    Logger::Exit();
    // libpng's own complaints go to standard error; the engine adds nothing for them.
    EXPECT_EQ("", LogAfterBanner());
}

TEST(ImportPNG, LogsTheRowCopyAndWhyAFileGaveNoImage)
{
    VellacoreTest::TempDir dir;
    Logger::Init();
    WritePNG("gradient.png", Gradient());
    WritePNG("wide.png", { PNG_COLOR_TYPE_GRAY, 1, 32768, 1, std::vector<U8>(4096, 0x55), {}, {} });
    Ptr<Image> image = Import::ImportPNG("gradient.png", false);
    EXPECT_EQ(nullptr, Import::ImportPNG("missing/none.png", false));
    EXPECT_EQ(nullptr, Import::ImportPNG("wide.png", false));
    Logger::Exit();

    ASSERT_NE(nullptr, image.Get());
    EXPECT_EQ(1, HeaderOf(image)->m_RefCount);
    char address[16];
    std::snprintf(address, sizeof address, "%x",
        static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(image->GetDataPtr())));
    // The row table's address is libpng's own: only its form is checked.
    std::string const log = LogAfterBanner();
    std::string const head = std::string("[D] png_get_rows, rowbytes=192 image addr=0x") + address + " rowptr=0x";
    std::string const tail = "\n[E] Import::ImportPNG: failed to open file: missing/none.png\n"
                             "[E] Import::ImportPNG: could not allocate data for Image.\n";
    ASSERT_EQ(0u, log.find(head)) << log;
    std::string::size_type const hexEnd = log.find_first_not_of("0123456789abcdef", head.size());
    EXPECT_GT(hexEnd, head.size()) << log;
    EXPECT_EQ(tail, log.substr(hexEnd)) << log;
}
