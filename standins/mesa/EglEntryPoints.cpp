#include "FrameSink.h"
#include "MesaLibrary.h"

#include <EGL/eglext.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>
#include <vector>

namespace {

// Window surfaces handed out, with their displays: only swaps of these are frames of the screen.
std::vector<std::pair<EGLDisplay, EGLSurface>> g_WindowSurfaces;

template <class Predicate>
void ForgetWindowSurfaces(Predicate matches)
{
    g_WindowSurfaces.erase(std::remove_if(g_WindowSurfaces.begin(), g_WindowSurfaces.end(), matches), g_WindowSurfaces.end());
}

bool IsWindowSurface(EGLSurface surface)
{
    return std::any_of(g_WindowSurfaces.begin(), g_WindowSurfaces.end(), [surface](auto const& entry) { return entry.second == surface; });
}

// The handheld's attribute list, as a request Mesa's surfaceless platform can meet.
std::vector<EGLint> MapConfigAttributes(EGLint const* attributes)
{
    std::vector<EGLint> mapped;
    for (EGLint const* attribute = attributes; attribute && attribute[0] != EGL_NONE; attribute += 2) {
        switch (attribute[0]) {
        // Limits of the surfaces that can be made, not properties to choose a config by.
        case EGL_MAX_PBUFFER_WIDTH:
        case EGL_MAX_PBUFFER_HEIGHT:
        case EGL_MAX_PBUFFER_PIXELS:
        // Replaced below.
        case EGL_SURFACE_TYPE:
        case EGL_RENDERABLE_TYPE:
            break;
        default:
            mapped.insert(mapped.end(), attribute, attribute + 2);
        }
    }
    // Every surface here is a pbuffer, the window included, and the engine draws with GL ES 1.x.
    EGLint const required[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_ES_BIT, EGL_NONE};
    mapped.insert(mapped.end(), std::begin(required), std::end(required));
    return mapped;
}

bool HasEightBitColour(EGLDisplay display, EGLConfig config)
{
    for (EGLint channel : {EGL_RED_SIZE, EGL_GREEN_SIZE, EGL_BLUE_SIZE}) {
        EGLint bits = 0;
        if (!Mesa().eglGetConfigAttrib(display, config, channel, &bits) || bits != 8)
            return false;
    }
    return true;
}

void CaptureFrame()
{
    std::vector<unsigned char> portrait(FrameSink::S_PortraitWidth * FrameSink::S_PortraitHeight * 4);
    Mesa().glReadPixels(0, 0, FrameSink::S_PortraitWidth, FrameSink::S_PortraitHeight, GL_RGBA, GL_UNSIGNED_BYTE, portrait.data());
    FrameSink::Instance().Accept(portrait.data());
}

} // namespace

// The handheld has one display; here it is Mesa's surfaceless platform, which needs neither a
// window system nor a GPU. The native display is ignored.
EGLDisplay eglGetDisplay(EGLNativeDisplayType)
{
    MesaFunctions const& mesa = Mesa();
    char const* extensions = mesa.eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    if (!extensions || !std::strstr(extensions, "EGL_MESA_platform_surfaceless")) {
        std::fprintf(stderr, "MesaGL: this Mesa has no surfaceless platform (EGL_MESA_platform_surfaceless)\n");
        return EGL_NO_DISPLAY;
    }
    return mesa.eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
}

EGLBoolean eglInitialize(EGLDisplay dpy, EGLint* major, EGLint* minor)
{
    EGLBoolean initialised = Mesa().eglInitialize(dpy, major, minor);
    if (initialised)
        KeepMesaDriversLoaded();
    return initialised;
}

// EGL's own order puts the deepest colour first (10 bits per channel on llvmpipe). Frames are read
// back with 8 bits per channel, so configs with exactly that come first; the rest keep EGL's order.
EGLBoolean eglChooseConfig(EGLDisplay dpy, EGLint const* attrib_list, EGLConfig* configs, EGLint config_size, EGLint* num_config)
{
    MesaFunctions const& mesa = Mesa();
    std::vector<EGLint> attributes = MapConfigAttributes(attrib_list);
    EGLint available = 0;
    if (!configs || !num_config || !mesa.eglChooseConfig(dpy, attributes.data(), nullptr, 0, &available))
        return mesa.eglChooseConfig(dpy, attributes.data(), configs, config_size, num_config);
    std::vector<EGLConfig> all(available);
    mesa.eglChooseConfig(dpy, attributes.data(), all.data(), available, &available);
    std::stable_partition(all.begin(), all.begin() + available, [dpy](EGLConfig config) { return HasEightBitColour(dpy, config); });
    *num_config = std::min(std::max(config_size, 0), available);
    std::copy_n(all.begin(), *num_config, configs);
    return EGL_TRUE;
}

// The handheld's driver knows only GL ES 1.x; Mesa must be told, since its default API is desktop
// GL for some platforms.
EGLContext eglCreateContext(EGLDisplay dpy, EGLConfig config, EGLContext share_context, EGLint const* attrib_list)
{
    static EGLint const glEs1[] = {EGL_CONTEXT_CLIENT_VERSION, 1, EGL_NONE};
    MesaFunctions const& mesa = Mesa();
    mesa.eglBindAPI(EGL_OPENGL_ES_API);
    return mesa.eglCreateContext(dpy, config, share_context, attrib_list && attrib_list[0] != EGL_NONE ? attrib_list : glEs1);
}

// The handheld's screen: an off-screen surface the size of its portrait framebuffer, whatever
// window the game passes.
EGLSurface eglCreateWindowSurface(EGLDisplay dpy, EGLConfig config, EGLNativeWindowType, EGLint const*)
{
    static EGLint const screen[] = {EGL_WIDTH, FrameSink::S_PortraitWidth, EGL_HEIGHT, FrameSink::S_PortraitHeight, EGL_NONE};
    EGLSurface surface = Mesa().eglCreatePbufferSurface(dpy, config, screen);
    if (surface != EGL_NO_SURFACE)
        g_WindowSurfaces.emplace_back(dpy, surface);
    return surface;
}

EGLBoolean eglDestroySurface(EGLDisplay dpy, EGLSurface surface)
{
    ForgetWindowSurfaces([surface](auto const& entry) { return entry.second == surface; });
    return Mesa().eglDestroySurface(dpy, surface);
}

EGLBoolean eglTerminate(EGLDisplay dpy)
{
    // The game is done with the screen: its animated picture is complete.
    FrameSink::Instance().EndRun();
    ForgetWindowSurfaces([dpy](auto const& entry) { return entry.first == dpy; });
    return Mesa().eglTerminate(dpy);
}

// A frame is only readable while its surface is the one being drawn to.
EGLBoolean eglSwapBuffers(EGLDisplay dpy, EGLSurface surface)
{
    MesaFunctions const& mesa = Mesa();
    if (IsWindowSurface(surface) && mesa.eglGetCurrentSurface(EGL_DRAW) == surface)
        CaptureFrame();
    return mesa.eglSwapBuffers(dpy, surface);
}

// A caller that looks up an entry point by name must get this library's, not Mesa's, or its
// frames would bypass the sink.
__eglMustCastToProperFunctionPointerType eglGetProcAddress(char const* procname)
{
    using Function = __eglMustCastToProperFunctionPointerType;
    struct Entry {
        char const* name;
        Function function;
    };
#define MESA_ENTRY(name) {#name, reinterpret_cast<Function>(&::name)},
#define MESA_FORWARD_ENTRY(ret, name, params, args) MESA_ENTRY(name)
    static Entry const own[] = {MESA_GL_FORWARDS(MESA_FORWARD_ENTRY) MESA_EGL_FORWARDS(MESA_FORWARD_ENTRY)
            MESA_EGL_WRAPPED(MESA_ENTRY) MESA_EGL_REPLACED(MESA_ENTRY)};
#undef MESA_FORWARD_ENTRY
#undef MESA_ENTRY
    for (Entry const& entry : own)
        if (procname && std::strcmp(entry.name, procname) == 0)
            return entry.function;
    return Mesa().eglGetProcAddress(procname);
}
