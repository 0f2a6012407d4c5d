// The recording stand-in itself: the trace format the renderer tests compare against, and the
// answers and failures they steer.
#include "support/RecordingTrace.h"
#include "support/TempDir.h"

#include <EGL/egl.h>
#include <GLES/gl.h>
#include <gtest/gtest.h>

#include <functional>
#include <iterator>
#include <set>
#include <string>
#include <vector>

using VellacoreTest::RecordingTrace;
using VellacoreTest::TempDir;

namespace {

// An entry point of the stand-in, typed as the Khronos headers declare it.
#define ENTRY(trace, name) reinterpret_cast<decltype(&name)>((trace).Symbol(#name))

// The names the engine binds, in its table order.
char const* const S_EntryPoints[] = {
    "eglGetError", "eglGetConfigs", "eglChooseConfig", "eglCreatePbufferSurface", "eglDestroySurface",
    "eglGetProcAddress", "eglGetDisplay", "eglInitialize", "eglTerminate", "eglCreateContext",
    "eglCreateWindowSurface", "eglMakeCurrent", "eglDestroyContext", "eglSwapBuffers", "eglGetConfigAttrib",
    "eglWaitGL", "glGetError", "glGetString", "glGetIntegerv", "glClearColorx", "glClearColor", "glClearDepthx",
    "glClearDepthf", "glClear", "glDepthMask", "glColor4x", "glColor4f", "glMatrixMode", "glLoadMatrixx",
    "glPushMatrix", "glMultMatrixx", "glPopMatrix", "glLoadIdentity", "glLightModelxv", "glLightModelfv",
    "glLightxv", "glLightfv", "glEnable", "glDisable", "glFlush", "glCullFace", "glDepthFunc", "glViewport",
    "glMaterialxv", "glMaterialfv", "glMaterialx", "glMaterialf", "glBlendFunc", "glAlphaFuncx", "glAlphaFunc",
    "glPixelStorei", "glTexParameteri", "glTexImage2D", "glGenTextures", "glDeleteTextures", "glTexParameteriv",
    "glActiveTexture", "glBindTexture", "glTexEnvi", "glClientActiveTexture", "glTexCoordPointer",
    "glColorPointer", "glNormalPointer", "glVertexPointer", "glDrawElements", "glEnableClientState",
    "glDisableClientState", "glFogf", "glFogfv", "glFogx", "glFogxv", "glGenBuffers", "glBufferData",
    "glBindBuffer", "glDeleteBuffers",
};

TEST(RecordingGL, ExportsEveryEntryPointAndTheVariantLacksOnlyGlFogx)
{
    static_assert(std::size(S_EntryPoints) == 75);
    struct Variant {
        char const* library;
        std::string missing;
    };
    // The second load also shows that closing the first really unloaded it.
    Variant const variants[] = {{VELLACORE_RECORDING_GL, ""}, {VELLACORE_RECORDING_NOFOGX_GL, "glFogx"}};
    for (Variant const& variant : variants) {
        TempDir dir;
        RecordingTrace trace(variant.library);
        for (char const* name : S_EntryPoints)
            EXPECT_EQ(trace.Symbol(name) == nullptr, name == variant.missing) << variant.library << ": " << name;
    }
}

TEST(RecordingGL, FormatsCallsByParameter)
{
    TempDir dir;
    RecordingTrace trace;
    static GLfloat const colour[] = {1, 0.5f, 0.25f, 1};
    static GLfixed const matrix[16] = {65536, 0, 0, 0, 0, 65536, 0, 0, 0, 0, 65536, 0, 1, -2, 3, 65536};
    static GLuint const buffers[] = {3, 4};
    static EGLint const attributes[] = {EGL_RED_SIZE, 5, EGL_DEPTH_SIZE, 16, EGL_NONE};
    EGLDisplay display = ENTRY(trace, eglGetDisplay)(EGL_DEFAULT_DISPLAY);
    EGLConfig config = nullptr;
    EGLint count = 0;
    struct Case {
        std::function<void()> call;
        char const* line;
    };
    Case const cases[] = {
        {[&] { ENTRY(trace, glEnable)(GL_LIGHT3); }, "glEnable(GL_LIGHT3)"},
        {[&] { ENTRY(trace, glDisable)(0x1234); }, "glDisable(0x1234)"},
        {[&] { ENTRY(trace, glClear)(GL_DEPTH_BUFFER_BIT | GL_COLOR_BUFFER_BIT); },
         "glClear(GL_COLOR_BUFFER_BIT|GL_DEPTH_BUFFER_BIT)"},
        {[&] { ENTRY(trace, glBlendFunc)(GL_ONE, GL_ONE_MINUS_SRC_ALPHA); },
         "glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA)"},
        {[&] { ENTRY(trace, glDepthMask)(GL_FALSE); }, "glDepthMask(GL_FALSE)"},
        {[&] { ENTRY(trace, glDrawElements)(GL_LINES, 6, GL_UNSIGNED_SHORT, reinterpret_cast<void*>(12)); },
         "glDrawElements(GL_LINES, 6, GL_UNSIGNED_SHORT, 12)"},
        {[&] { ENTRY(trace, glVertexPointer)(3, GL_FLOAT, 0, colour); }, "glVertexPointer(3, GL_FLOAT, 0, ptr)"},
        {[&] { ENTRY(trace, glNormalPointer)(GL_FLOAT, 0, nullptr); }, "glNormalPointer(GL_FLOAT, 0, null)"},
        {[&] { ENTRY(trace, glTexParameteri)(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR); },
         "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR)"},
        {[&] { ENTRY(trace, glTexParameteri)(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, 1); },
         "glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, 1)"},
        {[&] { ENTRY(trace, glTexImage2D)(GL_TEXTURE_2D, 0, GL_RGBA, 4, 2, 0, GL_RGBA, GL_UNSIGNED_BYTE, colour); },
         "glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 4, 2, 0, GL_RGBA, GL_UNSIGNED_BYTE, ptr)"},
        {[&] { ENTRY(trace, glFogf)(GL_FOG_MODE, GL_EXP); }, "glFogf(GL_FOG_MODE, GL_EXP)"},
        {[&] { ENTRY(trace, glFogf)(GL_FOG_DENSITY, 0.25f); }, "glFogf(GL_FOG_DENSITY, 0.25)"},
        {[&] { ENTRY(trace, glFogx)(GL_FOG_END, 65536); }, "glFogx(GL_FOG_END, 65536)"},
        {[&] { ENTRY(trace, glFogfv)(GL_FOG_COLOR, colour); }, "glFogfv(GL_FOG_COLOR, {1,0.5,0.25,1})"},
        {[&] { ENTRY(trace, glLightfv)(GL_LIGHT0, GL_DIFFUSE, colour); },
         "glLightfv(GL_LIGHT0, GL_DIFFUSE, {1,0.5,0.25,1})"},
        {[&] { ENTRY(trace, glMaterialxv)(GL_FRONT_AND_BACK, GL_SHININESS, matrix); },
         "glMaterialxv(GL_FRONT_AND_BACK, GL_SHININESS, {65536})"},
        {[&] { ENTRY(trace, glColor4f)(1, 0.8f, 0, 1); }, "glColor4f(1, 0.8, 0, 1)"},
        {[&] { ENTRY(trace, glLoadMatrixx)(matrix); },
         "glLoadMatrixx({65536,0,0,0,0,65536,0,0,0,0,65536,0,1,-2,3,65536})"},
        {[&] { ENTRY(trace, glBufferData)(GL_ELEMENT_ARRAY_BUFFER, 96, colour, GL_STATIC_DRAW); },
         "glBufferData(GL_ELEMENT_ARRAY_BUFFER, 96, ptr, GL_STATIC_DRAW)"},
        {[&] { ENTRY(trace, glDeleteBuffers)(2, buffers); }, "glDeleteBuffers(2, {3,4})"},
        {[&] { ENTRY(trace, glGetString)(GL_EXTENSIONS); }, "glGetString(GL_EXTENSIONS)"},
        {[&] { ENTRY(trace, eglChooseConfig)(display, attributes, &config, 1, &count); },
         "eglChooseConfig(dpy, {EGL_RED_SIZE,5,EGL_DEPTH_SIZE,16,EGL_NONE}, ptr, 1, ptr)"},
        {[&] { ENTRY(trace, eglMakeCurrent)(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT); },
         "eglMakeCurrent(dpy, null, null, null)"},
    };
    EXPECT_EQ(trace.Lines(), std::vector<std::string>{"eglGetDisplay(0)"});
    for (Case const& c : cases) {
        int mark = trace.Count();
        c.call();
        EXPECT_EQ(trace.Since(mark), std::vector<std::string>{c.line});
    }
}

TEST(RecordingGL, AnswersQueriesWithTheChosenValues)
{
    TempDir dir;
    RecordingTrace trace;
    auto integer = [&](GLenum pname) {
        GLint value = -1;
        ENTRY(trace, glGetIntegerv)(pname, &value);
        return value;
    };
    EXPECT_EQ(integer(GL_MAX_LIGHTS), 8);
    EXPECT_EQ(integer(GL_MAX_TEXTURE_UNITS), 2);
    EXPECT_EQ(integer(GL_MAX_TEXTURE_SIZE), 1024);
    EXPECT_EQ(integer(GL_MAX_VIEWPORT_DIMS), 0);
    trace.SetInteger(GL_MAX_LIGHTS, 3);
    EXPECT_EQ(integer(GL_MAX_LIGHTS), 3);
    trace.Reset();
    EXPECT_EQ(integer(GL_MAX_LIGHTS), 8);
    EXPECT_EQ(trace.Lines(), std::vector<std::string>{"glGetIntegerv(GL_MAX_LIGHTS)->8"});

    EXPECT_STREQ(reinterpret_cast<char const*>(ENTRY(trace, glGetString)(GL_VERSION)), "OpenGL ES-CM 1.1 Recording");

    EGLDisplay display = ENTRY(trace, eglGetDisplay)(EGL_DEFAULT_DISPLAY);
    EGLConfig config = nullptr;
    EGLint count = 0;
    ASSERT_TRUE(ENTRY(trace, eglChooseConfig)(display, nullptr, &config, 1, &count));
    EXPECT_EQ(count, 1);
    EGLint value = -1;
    EXPECT_TRUE(ENTRY(trace, eglGetConfigAttrib)(display, config, EGL_RED_SIZE, &value));
    EXPECT_EQ(value, 0);
    EGLContext context = ENTRY(trace, eglCreateContext)(display, config, EGL_NO_CONTEXT, nullptr);
    EGLSurface window = ENTRY(trace, eglCreateWindowSurface)(display, config, 0, nullptr);
    EGLSurface pbuffer = ENTRY(trace, eglCreatePbufferSurface)(display, config, nullptr);
    std::set<void*> const handles{display, config, context, window, pbuffer};
    EXPECT_EQ(handles.size(), 5u);
    EXPECT_EQ(handles.count(nullptr), 0u);
}

TEST(RecordingGL, ErrorsAreReadOnce)
{
    TempDir dir;
    RecordingTrace trace;
    trace.SetError(GL_INVALID_OPERATION, EGL_BAD_SURFACE);
    EXPECT_EQ(ENTRY(trace, glGetError)(), GLenum(GL_INVALID_OPERATION));
    EXPECT_EQ(ENTRY(trace, glGetError)(), GLenum(GL_NO_ERROR));
    EXPECT_EQ(ENTRY(trace, eglGetError)(), EGL_BAD_SURFACE);
    EXPECT_EQ(ENTRY(trace, eglGetError)(), EGL_SUCCESS);
    EXPECT_EQ(trace.Lines(), (std::vector<std::string>{"glGetError()->0x502", "glGetError()->0x0",
                                                       "eglGetError()->0x300d", "eglGetError()->0x3000"}));
}

TEST(RecordingGL, HandsOutNamesAndFailsChosenCallsUntilReset)
{
    TempDir dir;
    RecordingTrace trace;
    GLuint names[2] = {};
    ENTRY(trace, glGenTextures)(2, names);
    EXPECT_EQ(names[1], 2u);
    ENTRY(trace, glGenBuffers)(1, names);
    EXPECT_EQ(names[0], 1u) << "buffers are named apart from textures";

    trace.FailCall("glGenTextures");
    trace.FailCall("eglGetDisplay");
    trace.FailCall("eglInitialize");
    ENTRY(trace, glGenTextures)(1, names);
    EXPECT_EQ(names[0], 0u);
    EXPECT_EQ(ENTRY(trace, eglGetDisplay)(EGL_DEFAULT_DISPLAY), EGL_NO_DISPLAY);
    EXPECT_FALSE(ENTRY(trace, eglInitialize)(EGL_NO_DISPLAY, nullptr, nullptr));
    EXPECT_TRUE(ENTRY(trace, eglTerminate)(EGL_NO_DISPLAY)) << "only the named calls fail";
    EXPECT_EQ(trace.Lines(), (std::vector<std::string>{"glGenTextures(2)->1,2", "glGenBuffers(1)->1",
                                                       "glGenTextures(1)->0", "eglGetDisplay(0)",
                                                       "eglInitialize(null, null, null)", "eglTerminate(null)"}));

    trace.Reset();
    EXPECT_EQ(trace.Count(), 0);
    ENTRY(trace, glGenTextures)(1, names);
    EXPECT_EQ(names[0], 1u);
    EXPECT_NE(ENTRY(trace, eglGetDisplay)(EGL_DEFAULT_DISPLAY), EGL_NO_DISPLAY);
}

} // namespace
