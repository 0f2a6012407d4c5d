#include "FrameSink.h"

#include <png.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

// Constructed when the library is loaded, which is when the environment is read.
FrameSink FrameSink::S_Instance;

FrameSink& FrameSink::Instance()
{
    return S_Instance;
}

FrameSink::FrameSink() : m_Count(0), m_Animation(S_Width, S_Height)
{
    SetDirectory(std::getenv("VELLACORE_FRAME_DIR"));
}

void FrameSink::SetDirectory(char const* directory)
{
    m_Directory = directory ? directory : "";
    std::error_code error;
    if (!m_Directory.empty() && !std::filesystem::create_directories(m_Directory, error) && error)
        std::fprintf(stderr, "MesaGL: cannot create frame directory %s: %s\n", m_Directory.c_str(), error.message().c_str());
    m_Animation.SetPath(m_Directory.empty() ? "" : (std::filesystem::path(m_Directory) / "run.gif").string());
}

void FrameSink::EndRun()
{
    m_Animation.Finish();
}

// The engine turns every projection a quarter turn counter-clockwise, so the scene's right runs
// up the portrait framebuffer (towards higher GL rows) and the scene's up runs towards its left
// edge (column 0). Landscape pixel (x, y), counted from the top left, therefore comes from GL row
// x and column y: with glReadPixels' bottom-up rows the turn is a plain transpose.
void FrameSink::Accept(unsigned char const* portrait)
{
    m_Landscape.resize(S_Width * S_Height * 4);
    for (int y = 0; y < S_Height; ++y)
        for (int x = 0; x < S_Width; ++x) {
            unsigned char* to = &m_Landscape[(y * S_Width + x) * 4];
            std::memcpy(to, portrait + (x * S_PortraitWidth + y) * 4, 3);
            // The panel has no alpha; a config with an alpha channel must not make pixels see-through.
            to[3] = 255;
        }
    if (!m_Directory.empty())
        Save();
    m_Animation.Add(m_Landscape.data());
    ++m_Count;
}

int FrameSink::GetCount() const
{
    return m_Count;
}

bool FrameSink::CopyLast(unsigned char* landscape) const
{
    if (m_Landscape.empty())
        return false;
    std::memcpy(landscape, m_Landscape.data(), m_Landscape.size());
    return true;
}

void FrameSink::Save() const
{
    char name[32];
    std::snprintf(name, sizeof name, "frame-%05d.png", m_Count);
    std::string path = (std::filesystem::path(m_Directory) / name).string();
    png_image image;
    std::memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    image.width = S_Width;
    image.height = S_Height;
    image.format = PNG_FORMAT_RGBA;
    if (!png_image_write_to_file(&image, path.c_str(), 0, m_Landscape.data(), 0, nullptr))
        std::fprintf(stderr, "MesaGL: frame not saved to %s: %s\n", path.c_str(), image.message);
}
