#ifndef VELLACORE_TESTS_GL_MESASTANDIN_H
#define VELLACORE_TESTS_GL_MESASTANDIN_H

#include "mesa/MesaGL.h"
#include "support/GoldenImage.h"

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>

namespace VellacoreTest {

// Puts the Mesa stand-in where the engine looks first, the working directory (a TempDir made
// before this), and opens the same file for the frame sink's control functions. The stand-in is
// unloaded when both the engine and this have closed it.
class MesaStandIn {
public:
    MesaStandIn()
    {
        std::filesystem::copy_file(VELLACORE_MESA_GL, "libopengles_lite.so");
        m_Library = dlopen("./libopengles_lite.so", RTLD_LAZY);
        m_GetFrameCount = Find<decltype(&MesaGL_GetFrameCount)>("MesaGL_GetFrameCount");
        m_CopyLastFrame = Find<decltype(&MesaGL_CopyLastFrame)>("MesaGL_CopyLastFrame");
    }
    ~MesaStandIn() { dlclose(m_Library); }
    MesaStandIn(MesaStandIn const&) = delete;
    MesaStandIn& operator=(MesaStandIn const&) = delete;

    int GetFrameCount() { return m_GetFrameCount(); }
    // Empty before the first frame.
    Picture LastFrame()
    {
        Picture frame{MESAGL_FRAME_WIDTH, MESAGL_FRAME_HEIGHT, std::vector<unsigned char>(MESAGL_FRAME_WIDTH * MESAGL_FRAME_HEIGHT * 4)};
        if (!m_CopyLastFrame(frame.m_Rgba.data()))
            return Picture();
        return frame;
    }

private:
    // Without the stand-in nothing in these tests can run.
    template <class Function>
    Function Find(char const* name)
    {
        void* function = m_Library ? dlsym(m_Library, name) : nullptr;
        if (!function) {
            ADD_FAILURE() << "Mesa stand-in unusable: " << dlerror();
            std::abort();
        }
        return reinterpret_cast<Function>(function);
    }

    void* m_Library;
    decltype(&MesaGL_GetFrameCount) m_GetFrameCount;
    decltype(&MesaGL_CopyLastFrame) m_CopyLastFrame;
};

} // namespace VellacoreTest

#endif
