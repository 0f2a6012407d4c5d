#include "Vellacore/Render/Wiz/RenderTargetHandleWizGL.h"

#include "Vellacore/Memory/Memory.h"
#include "WizLog.h"

namespace Vellacore {

namespace {

struct ConfigAttribute {
    EGLint m_Attribute;
    char const* m_Label;
};

#define VELLACORE_CONFIG_ATTRIBUTE(name) { name, "Wiz." #name ": " }
ConfigAttribute const S_ConfigAttributes[] = {
    VELLACORE_CONFIG_ATTRIBUTE(EGL_BUFFER_SIZE),
    VELLACORE_CONFIG_ATTRIBUTE(EGL_RED_SIZE),
    VELLACORE_CONFIG_ATTRIBUTE(EGL_GREEN_SIZE),
    VELLACORE_CONFIG_ATTRIBUTE(EGL_BLUE_SIZE),
    VELLACORE_CONFIG_ATTRIBUTE(EGL_ALPHA_SIZE),
    VELLACORE_CONFIG_ATTRIBUTE(EGL_STENCIL_SIZE),
    VELLACORE_CONFIG_ATTRIBUTE(EGL_BIND_TO_TEXTURE_RGB),
    VELLACORE_CONFIG_ATTRIBUTE(EGL_BIND_TO_TEXTURE_RGBA),
    VELLACORE_CONFIG_ATTRIBUTE(EGL_MAX_PBUFFER_HEIGHT),
    VELLACORE_CONFIG_ATTRIBUTE(EGL_MAX_PBUFFER_WIDTH),
    VELLACORE_CONFIG_ATTRIBUTE(EGL_MAX_PBUFFER_PIXELS),
    VELLACORE_CONFIG_ATTRIBUTE(EGL_SAMPLES),
    VELLACORE_CONFIG_ATTRIBUTE(EGL_SAMPLE_BUFFERS),
    VELLACORE_CONFIG_ATTRIBUTE(EGL_MIN_SWAP_INTERVAL),
    VELLACORE_CONFIG_ATTRIBUTE(EGL_MAX_SWAP_INTERVAL),
    VELLACORE_CONFIG_ATTRIBUTE(EGL_RENDERABLE_TYPE),
    VELLACORE_CONFIG_ATTRIBUTE(EGL_NATIVE_VISUAL_TYPE),
    VELLACORE_CONFIG_ATTRIBUTE(EGL_NATIVE_VISUAL_ID),
    VELLACORE_CONFIG_ATTRIBUTE(EGL_NATIVE_RENDERABLE),
};
#undef VELLACORE_CONFIG_ATTRIBUTE

// "<what> eglError=0x.. glError=0x..", with the EGL error read first.
void LogSurfaceError(char const* what)
{
    unsigned int const eglError = static_cast<unsigned int>(GL->eglGetError());
    unsigned int const glError = GL->glGetError();
    WizLog("[E] ", what, " eglError=", Hex{ eglError }, "  glError=", Hex{ glError });
}

} // namespace

RenderTargetHandleWizGL* RenderTargetHandleWizGL::Create()
{
    return new (TypeInfoT<RenderTargetHandleWizGL>::S_TypeInfo_1) RenderTargetHandleWizGL();
}

RenderTargetHandleWizGL::RenderTargetHandleWizGL()
    : TextureHandleWizGL(nullptr), m_Surface(EGL_NO_SURFACE), m_Display(EGL_NO_DISPLAY), m_Config(nullptr)
{
}

RenderTargetHandleWizGL::~RenderTargetHandleWizGL() = default;

void RenderTargetHandleWizGL::Unload()
{
    if (m_Surface != EGL_NO_SURFACE) {
        GL->eglDestroySurface(m_Display, m_Surface);
        m_Surface = EGL_NO_SURFACE;
        m_Display = EGL_NO_DISPLAY;
    }
    TextureHandleWizGL::Unload();
}

void RenderTargetHandleWizGL::CreateSurface(EGLDisplay display, int width, int height)
{
    if (m_Config)
        return;
    m_Display = display;
    EGLint const configAttributes[] = { EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_NONE };
    EGLint count = 0;
    if (!GL->eglChooseConfig(display, configAttributes, &m_Config, 1, &count)) {
        LogSurfaceError("RenderWizGL::CreateSurface: eglChooseConfig failed.");
        return;
    }
    LogConfig();
    EGLint const surfaceAttributes[] = { EGL_HEIGHT, height, EGL_WIDTH, width, EGL_NONE };
    m_Surface = GL->eglCreatePbufferSurface(display, m_Config, surfaceAttributes);
    if (m_Surface == EGL_NO_SURFACE) {
        LogSurfaceError("RenderWizGL::CreateSurface: failed.");
        return;
    }
    WizLog("[D] ", "RenderWizGL: CreatePBuffer succeeded.");
    GenTexture();
}

void RenderTargetHandleWizGL::LogConfig() const
{
    WizLog("[D] ", "Surface Config");
    for (ConfigAttribute const& attribute : S_ConfigAttributes) {
        EGLint value = 0;
        if (GL->eglGetConfigAttrib(m_Display, m_Config, attribute.m_Attribute, &value))
            WizLog("[D] ", attribute.m_Label, static_cast<int>(value));
    }
}

} // namespace Vellacore
