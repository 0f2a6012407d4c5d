#ifndef VELLACORE_TESTS_GL_GOLDENIMAGE_H
#define VELLACORE_TESTS_GL_GOLDENIMAGE_H

#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace VellacoreTest {

// An RGBA picture, top row first.
struct Picture {
    int m_Width = 0, m_Height = 0;
    std::vector<unsigned char> m_Rgba;

    unsigned char const* At(int x, int y) const { return &m_Rgba[(static_cast<std::size_t>(y) * m_Width + x) * 4]; }
};

inline bool ReadPicture(std::string const& path, Picture& picture)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, path.c_str()))
        return false;
    image.format = PNG_FORMAT_RGBA;
    picture = { static_cast<int>(image.width), static_cast<int>(image.height), std::vector<unsigned char>(PNG_IMAGE_SIZE(image)) };
    return png_image_finish_read(&image, nullptr, picture.m_Rgba.data(), 0, nullptr) != 0;
}

inline bool WritePicture(std::string const& path, Picture const& picture)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.m_Width);
    image.height = static_cast<png_uint_32>(picture.m_Height);
    image.format = PNG_FORMAT_RGBA;
    return png_image_write_to_file(&image, path.c_str(), 0, picture.m_Rgba.data(), 0, nullptr) != 0;
}

// llvmpipe draws the same picture on one machine; another CPU or Mesa build may round a few edge channels otherwise.
int const S_GoldenChannelTolerance = 4;
int const S_GoldenDifferingPixels = 16;

// Pixels of a and b differing beyond the tolerance in any channel: red in the difference, grey within it, else black.
inline int CountDifferingPixels(Picture const& a, Picture const& b, Picture& difference)
{
    difference = a;
    int differing = 0;
    for (std::size_t i = 0; i < a.m_Rgba.size(); i += 4) {
        int largest = 0;
        for (std::size_t c = i; c < i + 4; ++c)
            largest = std::max(largest, std::abs(a.m_Rgba[c] - b.m_Rgba[c]));
        bool const differs = largest > S_GoldenChannelTolerance;
        differing += differs;
        difference.m_Rgba[i] = differs ? 255 : largest > 0 ? 96 : 0;
        difference.m_Rgba[i + 1] = difference.m_Rgba[i + 2] = differs ? 0 : difference.m_Rgba[i];
        difference.m_Rgba[i + 3] = 255;
    }
    return differing;
}

// Compares with the reference <name>.png (VELLACORE_GOLDEN_UPDATE=1 makes the picture the reference instead);
// on a mismatch writes the actual picture and a difference picture where a person can look at them.
inline testing::AssertionResult MatchesGolden(Picture const& actual, std::string const& name)
{
    std::string const reference = (std::filesystem::path(VELLACORE_GOLDEN_DIR) / (name + ".png")).string();
    if (char const* update = std::getenv("VELLACORE_GOLDEN_UPDATE"); update && std::string(update) == "1")
        return WritePicture(reference, actual) ? testing::AssertionSuccess()
                                               : testing::AssertionFailure() << "cannot write " << reference;
    Picture expected, difference;
    if (!ReadPicture(reference, expected))
        return testing::AssertionFailure() << "no reference " << reference << " (VELLACORE_GOLDEN_UPDATE=1 makes it)";
    bool const sameSize = expected.m_Width == actual.m_Width && expected.m_Height == actual.m_Height;
    int const differing = sameSize ? CountDifferingPixels(actual, expected, difference) : -1;
    if (sameSize && differing <= S_GoldenDifferingPixels)
        return testing::AssertionSuccess();
    std::filesystem::path const out(VELLACORE_GOLDEN_OUT_DIR);
    std::filesystem::create_directories(out);
    WritePicture((out / (name + "-actual.png")).string(), actual);
    if (sameSize)
        WritePicture((out / (name + "-difference.png")).string(), difference);
    return testing::AssertionFailure() << name << ": " << (sameSize ? std::to_string(differing) + " pixels differ" : "size differs")
                                       << " from " << reference << "; " << name << "-actual.png and -difference.png in " << out;
}

} // namespace VellacoreTest

#endif
