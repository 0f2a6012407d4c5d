#include "Vellacore/Core/Logger.h"
#include "Vellacore/Image/Image.h"
#include "Vellacore/Image/ImportPNG.h"
#include "support/PNGFile.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>
#include <string>
#include <vector>

using namespace Vellacore;
using VellacoreTest::ReadFile;
using VellacoreTest::StoredPNG;
using VellacoreTest::WritePNG;

namespace {

std::string const Banner = "---- START  (BUILD: Apr 26 2010 / 18:27:56) ----\n";

// 1, 2, ..., count.
std::vector<U8> Sequence(int count)
{
    std::vector<U8> samples(count);
    std::iota(samples.begin(), samples.end(), U8(1));
    return samples;
}

// The samples as 16-bit big-endian values whose low bytes would show through rounding or a swapped order.
std::vector<U8> Wide(std::vector<U8> const& samples)
{
    std::vector<U8> wide;
    for (U8 sample : samples)
        wide.insert(wide.end(), { sample, static_cast<U8>(0xFF - sample) });
    return wide;
}

// Every colour type and bit depth, each 3 x 2 pixels so that sub-byte rows end in padding bits.
struct DecodeCase {
    char const* m_Name;
    StoredPNG m_Stored;
    Image::Format m_Format;
    std::vector<U8> m_Pixels; // top row first
};

std::vector<png_color> const Palette = { { 10, 20, 30 }, { 40, 50, 60 }, { 70, 80, 90 }, { 100, 110, 120 } };

std::vector<DecodeCase> const DecodeCases = {
    { "grey1", { PNG_COLOR_TYPE_GRAY, 1, 3, 2, { 0xA0, 0x60 } }, Image::FormatLuminance, { 255, 0, 255, 0, 255, 255 } },
    { "grey2", { PNG_COLOR_TYPE_GRAY, 2, 3, 2, { 0xD8, 0x30 } }, Image::FormatLuminance, { 255, 85, 170, 0, 255, 0 } },
    { "grey4", { PNG_COLOR_TYPE_GRAY, 4, 3, 2, { 0xF1, 0x80, 0x0A, 0x30 } }, Image::FormatLuminance,
        { 255, 17, 136, 0, 170, 51 } },
    { "grey8", { PNG_COLOR_TYPE_GRAY, 8, 3, 2, Sequence(6) }, Image::FormatLuminance, Sequence(6) },
    { "grey16", { PNG_COLOR_TYPE_GRAY, 16, 3, 2, Wide(Sequence(6)) }, Image::FormatLuminance, Sequence(6) },
    { "grey8 with key", { PNG_COLOR_TYPE_GRAY, 8, 3, 2, { 9, 2, 9, 4, 9, 6 }, {}, {}, 9 },
        Image::FormatLuminanceAlpha, { 9, 0, 2, 255, 9, 0, 4, 255, 9, 0, 6, 255 } },
    { "grey+alpha8", { PNG_COLOR_TYPE_GRAY_ALPHA, 8, 3, 2, Sequence(12) }, Image::FormatLuminanceAlpha, Sequence(12) },
    { "grey+alpha16", { PNG_COLOR_TYPE_GRAY_ALPHA, 16, 3, 2, Wide(Sequence(12)) }, Image::FormatLuminanceAlpha,
        Sequence(12) },
    { "rgb8", { PNG_COLOR_TYPE_RGB, 8, 3, 2, Sequence(18) }, Image::FormatRGB, Sequence(18) },
    { "rgb16", { PNG_COLOR_TYPE_RGB, 16, 3, 2, Wide(Sequence(18)) }, Image::FormatRGB, Sequence(18) },
    { "rgba8", { PNG_COLOR_TYPE_RGB_ALPHA, 8, 3, 2, Sequence(24) }, Image::FormatRGBA, Sequence(24) },
    { "rgba16", { PNG_COLOR_TYPE_RGB_ALPHA, 16, 3, 2, Wide(Sequence(24)) }, Image::FormatRGBA, Sequence(24) },
    { "palette2", { PNG_COLOR_TYPE_PALETTE, 2, 3, 2, { 0x18, 0xE4 }, Palette }, Image::FormatRGB,
        { 10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120, 70, 80, 90, 40, 50, 60 } },
    { "palette8 with tRNS", { PNG_COLOR_TYPE_PALETTE, 8, 3, 2, { 0, 1, 2, 3, 2, 1 }, Palette, { 0, 128 } },
        Image::FormatRGBA,
        { 10, 20, 30, 0, 40, 50, 60, 128, 70, 80, 90, 255, 100, 110, 120, 255, 70, 80, 90, 255, 40, 50, 60, 128 } },
};

std::size_t CountOpenFiles()
{
    std::filesystem::directory_iterator const files("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

// Lives on the stack, so that a child process that aborts leaves no block for the leak checkers.
class StackImage : public Image {
};

// A 64 x 64 RGB gradient: its image data spans enough bytes to cut the file in the middle of it.
StoredPNG Gradient()
{
    StoredPNG stored = { PNG_COLOR_TYPE_RGB, 8, 64, 64, std::vector<U8>(64 * 64 * 3) };
    for (std::size_t i = 0; i < stored.m_Rows.size(); ++i)
        stored.m_Rows[i] = static_cast<U8>(i * 7 + i / 191);
    return stored;
}

} // namespace

TEST(Image, AllocateSizesTheDataByFormatOrMakesNone)
{
    // Each case replaces the data of the one before; a block kept by mistake shows as a leak. No
    // format, or more bytes than one allocation can count, make no data.
    struct { Image::Format format; short width, height; int bytes; } const cases[] = {
        { Image::FormatLuminance, 5, 3, 15 }, { Image::FormatLuminanceAlpha, 5, 3, 30 }, { Image::FormatRGB, 5, 3, 45 },
        { Image::FormatRGBA, 5, 3, 60 }, { Image::FormatNone, 4, 2, 0 }, { static_cast<Image::Format>(5), 4, 2, 0 },
        { Image::FormatRGBA, 32767, 32767, 0 } };
    Ptr<Image> image = Image::Create();
    for (auto const& c : cases) {
        EXPECT_EQ(c.bytes > 0, image->Allocate(c.format, c.width, c.height)) << c.format;
        EXPECT_EQ(c.bytes, image->GetDataPtr() ? HeaderOf(image->GetDataPtr())->m_Count : 0) << c.format;
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
        // Flipped, the two rows swap.
        std::vector<U8> const& pixels = c.m_Pixels;
        std::vector<U8> flipped(pixels.size());
        std::rotate_copy(pixels.begin(), pixels.begin() + pixels.size() / 2, pixels.end(), flipped.begin());
        for (bool flip : { false, true }) {
            Ptr<Image> image = Import::ImportPNG("case.png", flip);
            ASSERT_NE(nullptr, image.Get());
            EXPECT_EQ(c.m_Format, image->GetFormat());
            EXPECT_EQ(3, image->GetWidth());
            EXPECT_EQ(2, image->GetHeight());
            EXPECT_EQ(flip ? flipped : pixels, std::vector<U8>(image->GetDataPtr(), image->GetDataPtr() + pixels.size()));
        }
    }
    Logger::Exit();
}

// libpng's own complaints about unreadable files go to standard error, so the log holds only the
// row copy, the missing file and the image too wide to make. No failure leaks or leaves a file open.
TEST(ImportPNG, FailuresLeakNothingAndLogOnlyTheEnginesOwnReasons)
{
    VellacoreTest::TempDir dir;
    Logger::Init();
    WritePNG("gradient.png", Gradient());
    WritePNG("wide.png", { PNG_COLOR_TYPE_GRAY, 1, 32768, 1, std::vector<U8>(4096, 0x55) });
    Ptr<Image> image = Import::ImportPNG("gradient.png", false);
    std::string const whole = ReadFile("gradient.png");
    struct { char const* name; std::string contents; } const cases[] = {
        { "cut in the image data", whole.substr(0, whole.size() / 2) }, { "cut in the header", whole.substr(0, 20) },
        { "not a PNG", "GIF89a, or anything else that is not a PNG" }, { "empty", "" } };
    std::size_t const openFiles = CountOpenFiles();
    for (auto const& c : cases) {
        std::ofstream("bad.png", std::ios::binary) << c.contents;
        EXPECT_EQ(nullptr, Import::ImportPNG("bad.png", true)) << c.name;
        EXPECT_EQ(openFiles, CountOpenFiles()) << c.name;
    }
    EXPECT_EQ(nullptr, Import::ImportPNG("missing/none.png", false));
    EXPECT_EQ(nullptr, Import::ImportPNG("wide.png", false));
    EXPECT_EQ(openFiles, CountOpenFiles());
    Logger::Exit();

    ASSERT_NE(nullptr, image.Get());
    EXPECT_EQ(1, HeaderOf(image)->m_RefCount);
    char address[16];
    std::snprintf(address, sizeof address, "%x",
        static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(image->GetDataPtr())));
    // The row table's address is libpng's own: only its form is checked.
    std::string const log = ReadFile("Xapp.log").substr(Banner.size());
    std::string const head = std::string("[D] png_get_rows, rowbytes=192 image addr=0x") + address + " rowptr=0x";
    ASSERT_EQ(0u, log.find(head)) << log;
    std::string::size_type const hexEnd = log.find_first_not_of("0123456789abcdef", head.size());
    EXPECT_GT(hexEnd, head.size()) << log;
    EXPECT_EQ("\n[E] Import::ImportPNG: failed to open file: missing/none.png\n"
              "[E] Import::ImportPNG: could not allocate data for Image.\n",
        log.substr(hexEnd))
        << log;
}
