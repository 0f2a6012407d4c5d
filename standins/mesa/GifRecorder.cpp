#include "GifRecorder.h"

#include <fcntl.h>
#include <gif_lib.h>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

// Netscape's application extension, which every viewer reads as "loop for ever".
unsigned char const S_LoopName[] = "NETSCAPE2.0";
unsigned char const S_LoopForever[] = {1, 0, 0};
// For a file of one frame, which no later frame times.
int const S_DefaultDelay = 10;

} // namespace

GifRecorder::GifRecorder(int width, int height)
    : m_Width(width), m_Height(height), m_File(nullptr), m_Written(0), m_LastDelay(S_DefaultDelay)
{
}

GifRecorder::~GifRecorder()
{
    Finish();
}

void GifRecorder::SetPath(std::string path)
{
    Finish();
    m_Path = std::move(path);
}

void GifRecorder::Add(unsigned char const* rgba)
{
    Clock::time_point const now = Clock::now();
    if (!m_File && !Open())
        return;
    if (m_Held.empty())
        m_Start = now;
    else
        Write(DelayUntil(now));
    // A failed write closed the file.
    if (m_File)
        m_Held.assign(rgba, rgba + m_Width * m_Height * 4);
}

void GifRecorder::Finish()
{
    if (!m_File)
        return;
    if (!m_Held.empty())
        Write(m_LastDelay);
    if (!m_File)
        return;
    // Closing frees the handle whether or not it succeeds.
    GifFileType* file = m_File;
    m_File = nullptr;
    int error = 0;
    if (EGifCloseFile(file, &error) == GIF_ERROR)
        Fail("cannot finish", error);
}

bool GifRecorder::Open()
{
    if (m_Path.empty())
        return false;
    // Readable by others, like the PNG frames beside it (giflib's own open makes it private).
    int const fd = open(m_Path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    int error = E_GIF_ERR_OPEN_FAILED;
    m_File = fd < 0 ? nullptr : EGifOpenFileHandle(fd, &error);
    if (!m_File) {
        Fail("cannot create", error);
        return false;
    }
    EGifSetGifVersion(m_File, true);
    bool const written = EGifPutScreenDesc(m_File, m_Width, m_Height, 8, 0, nullptr) != GIF_ERROR
        && EGifPutExtensionLeader(m_File, APPLICATION_EXT_FUNC_CODE) != GIF_ERROR
        && EGifPutExtensionBlock(m_File, sizeof S_LoopName - 1, S_LoopName) != GIF_ERROR
        && EGifPutExtensionBlock(m_File, sizeof S_LoopForever, S_LoopForever) != GIF_ERROR
        && EGifPutExtensionTrailer(m_File) != GIF_ERROR;
    if (!written)
        Fail("cannot write", m_File->Error);
    m_Written = 0;
    return written;
}

// Each frame gets its own 256-colour table, chosen for it by median cut.
void GifRecorder::Write(int delay)
{
    unsigned const count = static_cast<unsigned>(m_Width * m_Height);
    std::vector<GifByteType> planes(count * 3);
    for (unsigned i = 0; i < count; ++i)
        for (unsigned channel = 0; channel < 3; ++channel)
            planes[channel * count + i] = m_Held[i * 4 + channel];
    std::vector<GifByteType> indices(count);
    GifColorType colours[256] = {};
    int size = 256;
    GraphicsControlBlock const control = {DISPOSE_DO_NOT, false, delay, NO_TRANSPARENT_COLOR};
    GifByteType extension[4];
    ColorMapObject* map = GifQuantizeBuffer(m_Width, m_Height, &size, &planes[0], &planes[count], &planes[count * 2], indices.data(), colours) != GIF_ERROR
        ? GifMakeMapObject(256, colours)
        : nullptr;
    bool const written = map
        && EGifPutExtension(m_File, GRAPHICS_EXT_FUNC_CODE, static_cast<int>(EGifGCBToExtension(&control, extension)), extension) != GIF_ERROR
        && EGifPutImageDesc(m_File, 0, 0, m_Width, m_Height, false, map) != GIF_ERROR
        && EGifPutLine(m_File, indices.data(), static_cast<int>(count)) != GIF_ERROR;
    GifFreeMapObject(map);
    m_Held.clear();
    if (!written) {
        Fail("cannot write", m_File->Error);
        return;
    }
    m_Written += delay;
    m_LastDelay = delay;
}

// Gives up on the file: the message once, then nothing more until the next SetPath.
void GifRecorder::Fail(char const* what, int error)
{
    char const* reason = GifErrorString(error);
    std::fprintf(stderr, "MesaGL: %s %s: %s\n", what, m_Path.c_str(), reason ? reason : "unknown error");
    if (m_File)
        EGifCloseFile(m_File, &error);
    m_File = nullptr;
    m_Held.clear();
    m_Path.clear();
}

int GifRecorder::DelayUntil(Clock::time_point now)
{
    auto const elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(now - m_Start).count() / 10;
    return std::max(2, static_cast<int>(elapsed) - m_Written);
}
