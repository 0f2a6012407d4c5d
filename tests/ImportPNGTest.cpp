#include "Vellacore/Core/Logger.h"
#include "Vellacore/Image/Image.h"
#include "Vellacore/Image/ImportPNG.h"
#include "support/PNGFile.h"
#include "support/TempDir.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

using namespace Vellacore;
using VellacoreTest::ReadFile;
using VellacoreTest::StoredPNG;
using VellacoreTest::WritePNG;
using ::testing::MatchesRegex;

namespace {

std::string const Banner = "---- START  (BUILD: Apr 26 2010 / 18:27:56) ----\n";

// 1, 2, ..., count; wide, as 16-bit big-endian values whose low bytes would show through rounding or
// a swapped order.
std::vector<U8> Sequence(int count, bool wide = false)
{
    std::vector<U8> samples;
    for (int i = 1; i <= count; ++i) {
        samples.push_back(static_cast<U8>(i));
        if (wide)
            samples.push_back(static_cast<U8>(0xFF - i));
    }
    return samples;
}

auto const L = Image::FormatLuminance, LA = Image::FormatLuminanceAlpha, RGB = Image::FormatRGB, RGBA = Image::FormatRGBA;
int const Grey = PNG_COLOR_TYPE_GRAY, Palette = PNG_COLOR_TYPE_PALETTE;
std::vector<png_color> const Colours = { { 10, 20, 30 }, { 40, 50, 60 }, { 70, 80, 90 }, { 100, 110, 120 } };

// Every colour type and bit depth (16 bits are cut the same way for every type), each 3 x 2 pixels
// so that sub-byte rows end in padding bits; the pixels top row first.
struct { char const* m_Name; StoredPNG m_Stored; Image::Format m_Format; std::vector<U8> m_Pixels; } const DecodeCases[] = {
    { "grey1", { Grey, 1, 3, 2, { 0xA0, 0x60 } }, L, { 255, 0, 255, 0, 255, 255 } },
    { "grey2", { Grey, 2, 3, 2, { 0xD8, 0x30 } }, L, { 255, 85, 170, 0, 255, 0 } },
    { "grey4", { Grey, 4, 3, 2, { 0xF1, 0x80, 0x0A, 0x30 } }, L, { 255, 17, 136, 0, 170, 51 } },
    { "grey8", { Grey, 8, 3, 2, Sequence(6) }, L, Sequence(6) },
    { "grey16", { Grey, 16, 3, 2, Sequence(6, true) }, L, Sequence(6) },
    { "grey+alpha8", { PNG_COLOR_TYPE_GRAY_ALPHA, 8, 3, 2, Sequence(12) }, LA, Sequence(12) },
    { "rgb8", { PNG_COLOR_TYPE_RGB, 8, 3, 2, Sequence(18) }, RGB, Sequence(18) },
    { "rgba8", { PNG_COLOR_TYPE_RGB_ALPHA, 8, 3, 2, Sequence(24) }, RGBA, Sequence(24) },
    { "rgba16", { PNG_COLOR_TYPE_RGB_ALPHA, 16, 3, 2, Sequence(24, true) }, RGBA, Sequence(24) },
    { "palette2", { Palette, 2, 3, 2, { 0x18, 0xE4 }, Colours }, RGB,
        { 10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120, 70, 80, 90, 40, 50, 60 } },
    { "palette8 with tRNS", { Palette, 8, 3, 2, { 0, 1, 2, 3, 2, 1 }, Colours, { 0, 128 } }, RGBA,
        { 10, 20, 30, 0, 40, 50, 60, 128, 70, 80, 90, 255, 100, 110, 120, 255, 70, 80, 90, 255, 40, 50, 60, 128 } },
};

// Lives on the stack, so that a child process that aborts leaves no block for the leak checkers.
class StackImage : public Image {};

} // namespace

// Each case replaces the data before (a block kept shows as a leak); no format, or too many bytes, make none.
TEST(Image, AllocateSizesTheDataByFormatOrMakesNone)
{
    struct { Image::Format format; short width, height; int bytes; } const cases[] = { { L, 5, 3, 15 }, { LA, 5, 3, 30 },
        { RGB, 5, 3, 45 }, { RGBA, 5, 3, 60 }, { Image::FormatNone, 4, 2, 0 }, { static_cast<Image::Format>(5), 4, 2, 0 },
        { RGBA, 32767, 32767, 0 } };
    Ptr<Image> image = Image::Create();
    for (auto const& c : cases) {
        EXPECT_EQ(c.bytes > 0, image->Allocate(c.format, c.width, c.height)) << c.format;
        EXPECT_EQ(c.bytes, image->GetDataPtr() ? HeaderOf(image->GetDataPtr())->m_Count : 0) << c.format;
    }
}

// A zero width or a negative height alone must trip it.
TEST(Image, EmptySizeAbortsWithLoggedAssertion)
{
    for (auto [width, height] : { std::pair<short, short>(0, 1), std::pair<short, short>(1, -1) }) {
        VellacoreTest::TempDir dir;
        EXPECT_DEATH({ Logger::Init(); StackImage().Allocate(Image::FormatRGB, width, height); }, "");
        EXPECT_EQ(Banner + "[E] Image/Image(56)w>0 && h>0\n", ReadFile("Xapp.log"));
    }
}

TEST(ImportPNG, DecodesEveryColourTypeToEightBitChannels)
{
    VellacoreTest::TempDir dir;
    Logger::Init();
    for (auto const& c : DecodeCases) {
        SCOPED_TRACE(c.m_Name);
        WritePNG("case.png", c.m_Stored);
        for (bool flip : { false, true }) {
            std::vector<U8> expected = c.m_Pixels;
            if (flip)
                std::rotate(expected.begin(), expected.begin() + expected.size() / 2, expected.end());
            Ptr<Image> image = Import::ImportPNG("case.png", flip);
            ASSERT_NE(nullptr, image.Get());
            EXPECT_EQ(std::tuple(c.m_Format, 3, 2), std::tuple(image->GetFormat(), image->GetWidth(), image->GetHeight()));
            EXPECT_EQ(expected, std::vector<U8>(image->GetDataPtr(), image->GetDataPtr() + expected.size()));
        }
    }
    Logger::Exit();
}

// libpng's own complaints about unreadable files go to standard error, so the log holds only the row
// copy, the missing file and the image too wide to make. No failure leaks or leaves a file open.
TEST(ImportPNG, FailuresLeakNothingAndLogOnlyTheEnginesOwnReasons)
{
    VellacoreTest::TempDir dir;
    Logger::Init();
    WritePNG("flat.png", { PNG_COLOR_TYPE_RGB, 8, 64, 64, std::vector<U8>(64 * 64 * 3, 0x40) });
    WritePNG("wide.png", { Grey, 1, 32768, 1, std::vector<U8>(4096, 0x55) });
    Ptr<Image> image = Import::ImportPNG("flat.png", false);
    ASSERT_NE(nullptr, image.Get());
    std::string const whole = ReadFile("flat.png");
    auto openFiles = [] { return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}); };
    auto const before = openFiles();
    // Cut a few bytes into the image data, cut in the header, and not a PNG.
    for (std::string const& bad : { whole.substr(0, whole.find("IDAT") + 8), whole.substr(0, 20), std::string("GIF89a, not a PNG") }) {
        std::ofstream("bad.png", std::ios::binary) << bad;
        EXPECT_EQ(nullptr, Import::ImportPNG("bad.png", true)) << bad.size();
    }
    EXPECT_EQ(nullptr, Import::ImportPNG("missing/none.png", false));
    EXPECT_EQ(nullptr, Import::ImportPNG("wide.png", false));
    EXPECT_EQ(before, openFiles());
    Logger::Exit();
    EXPECT_EQ(1, HeaderOf(image)->m_RefCount);
    std::ostringstream address;
    address << std::hex << static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(image->GetDataPtr()));
    // The row table's address is libpng's own: only its form is checked.
    EXPECT_THAT(ReadFile("Xapp.log").substr(Banner.size()),
        MatchesRegex(std::string("\\[D\\] png_get_rows, rowbytes=192 image addr=0x") + address.str() + " rowptr=0x[0-9a-f]+\n"
                     "\\[E\\] Import::ImportPNG: failed to open file: missing/none\\.png\n"
                     "\\[E\\] Import::ImportPNG: could not allocate data for Image\\.\n"));
}
