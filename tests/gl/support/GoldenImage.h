#ifndef VELLACORE_TESTS_GL_GOLDENIMAGE_H
#define VELLACORE_TESTS_GL_GOLDENIMAGE_H

#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

namespace VellacoreTest {

// An RGBA picture, top row first.
struct Picture {
    int m_Width = 0;
    int m_Height = 0;
    std::vector<unsigned char> m_Rgba;

    unsigned char const* At(int x, int y) const { return &m_Rgba[(static_cast<std::size_t>(y) * m_Width + x) * 4]; }
    unsigned char* At(int x, int y) { return &m_Rgba[(static_cast<std::size_t>(y) * m_Width + x) * 4]; }
};

inline bool ReadPicture(std::string const& path, Picture& picture)
{
    png_image image;
    std::memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, path.c_str()))
        return false;
    image.format = PNG_FORMAT_RGBA;
    picture.m_Width = static_cast<int>(image.width);
    picture.m_Height = static_cast<int>(image.height);
    picture.m_Rgba.resize(PNG_IMAGE_SIZE(image));
    return png_image_finish_read(&image, nullptr, picture.m_Rgba.data(), 0, nullptr) != 0;
}

inline bool WritePicture(std::string const& path, Picture const& picture)
{
    png_image image;
    std::memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.m_Width);
    image.height = static_cast<png_uint_32>(picture.m_Height);
    image.format = PNG_FORMAT_RGBA;
    return png_image_write_to_file(&image, path.c_str(), 0, picture.m_Rgba.data(), 0, nullptr) != 0;
}

// llvmpipe draws the same picture every time on one machine, but another CPU or Mesa build may
// round a few channels differently along edges.
int const S_GoldenChannelTolerance = 4;
int const S_GoldenDifferingPixels = 16;

// Pixels of a and b (of the same size) that differ by more than the tolerance in any channel.
inline int CountDifferingPixels(Picture const& a, Picture const& b)
{
    int differing = 0;
    for (std::size_t i = 0; i < a.m_Rgba.size(); i += 4)
        for (std::size_t c = i; c < i + 4; ++c)
            if (std::abs(a.m_Rgba[c] - b.m_Rgba[c]) > S_GoldenChannelTolerance) {
                ++differing;
                break;
            }
    return differing;
}

// Black where the pictures agree, grey where they differ within the tolerance, red beyond it.
inline Picture DifferencePicture(Picture const& a, Picture const& b)
{
    Picture difference = a;
    for (std::size_t i = 0; i < a.m_Rgba.size(); i += 4) {
        int largest = 0;
        for (std::size_t c = i; c < i + 4; ++c)
            largest = std::max(largest, std::abs(a.m_Rgba[c] - b.m_Rgba[c]));
        unsigned char const red = largest > S_GoldenChannelTolerance ? 255 : largest > 0 ? 96 : 0;
        unsigned char const rest = largest > S_GoldenChannelTolerance ? 0 : red;
        unsigned char const pixel[4] = {red, rest, rest, 255};
        std::memcpy(&difference.m_Rgba[i], pixel, 4);
    }
    return difference;
}

// Compares with the reference <name>.png in the repository. With VELLACORE_GOLDEN_UPDATE=1 in the
// environment the picture becomes the reference instead. On a mismatch the actual picture and a
// difference picture are written where a person can look at them.
inline testing::AssertionResult MatchesGolden(Picture const& actual, std::string const& name)
{
    std::filesystem::path const reference = std::filesystem::path(VELLACORE_GOLDEN_DIR) / (name + ".png");
    char const* update = std::getenv("VELLACORE_GOLDEN_UPDATE");
    if (update && std::string(update) == "1") {
        std::filesystem::create_directories(reference.parent_path());
        if (!WritePicture(reference.string(), actual))
            return testing::AssertionFailure() << "cannot write " << reference;
        return testing::AssertionSuccess() << "wrote " << reference;
    }
    Picture expected;
    if (!ReadPicture(reference.string(), expected))
        return testing::AssertionFailure() << "no reference " << reference << " (VELLACORE_GOLDEN_UPDATE=1 makes it)";
    bool const sameSize = expected.m_Width == actual.m_Width && expected.m_Height == actual.m_Height;
    int const differing = sameSize ? CountDifferingPixels(actual, expected) : actual.m_Width * actual.m_Height;
    if (differing <= S_GoldenDifferingPixels)
        return testing::AssertionSuccess();
    std::filesystem::path const out(VELLACORE_GOLDEN_OUT_DIR);
    std::filesystem::create_directories(out);
    std::string const actualPath = (out / (name + "-actual.png")).string();
    std::string const differencePath = (out / (name + "-difference.png")).string();
    WritePicture(actualPath, actual);
    if (sameSize)
        WritePicture(differencePath, DifferencePicture(actual, expected));
    testing::AssertionResult failure = testing::AssertionFailure();
    if (sameSize)
        failure << name << ": " << differing << " pixels differ from " << reference << "\n  difference: " << differencePath;
    else
        failure << name << ": size differs from " << reference;
    return failure << "\n  actual:     " << actualPath;
}

} // namespace VellacoreTest

#endif
