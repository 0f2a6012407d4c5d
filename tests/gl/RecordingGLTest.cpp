// The recording stand-in itself: the names it exports, and a few of the lines and answers the
// renderer tests rely on.
#include "support/RecordingTrace.h"
#include "support/TempDir.h"

#include <GLES/gl.h>
#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <vector>

using VellacoreTest::RecordingTrace;
using VellacoreTest::TempDir;
using Lines = std::vector<std::string>;

namespace {

// An entry point of the stand-in, typed as the Khronos headers declare it.
#define ENTRY(trace, name) reinterpret_cast<decltype(&name)>((trace).Symbol(#name))

// The names the engine binds, in its table order.
char const* const S_EntryPoints[] = {
    "eglGetError", "eglGetConfigs", "eglChooseConfig", "eglCreatePbufferSurface", "eglDestroySurface",
    "eglGetProcAddress", "eglGetDisplay", "eglInitialize", "eglTerminate", "eglCreateContext", "eglCreateWindowSurface",
    "eglMakeCurrent", "eglDestroyContext", "eglSwapBuffers", "eglGetConfigAttrib", "eglWaitGL", "glGetError",
    "glGetString", "glGetIntegerv", "glClearColorx", "glClearColor", "glClearDepthx", "glClearDepthf", "glClear",
    "glDepthMask", "glColor4x", "glColor4f", "glMatrixMode", "glLoadMatrixx", "glPushMatrix", "glMultMatrixx",
    "glPopMatrix", "glLoadIdentity", "glLightModelxv", "glLightModelfv", "glLightxv", "glLightfv", "glEnable",
    "glDisable", "glFlush", "glCullFace", "glDepthFunc", "glViewport", "glMaterialxv", "glMaterialfv", "glMaterialx",
    "glMaterialf", "glBlendFunc", "glAlphaFuncx", "glAlphaFunc", "glPixelStorei", "glTexParameteri", "glTexImage2D",
    "glGenTextures", "glDeleteTextures", "glTexParameteriv", "glActiveTexture", "glBindTexture", "glTexEnvi",
    "glClientActiveTexture", "glTexCoordPointer", "glColorPointer", "glNormalPointer", "glVertexPointer",
    "glDrawElements", "glEnableClientState", "glDisableClientState", "glFogf", "glFogfv", "glFogx", "glFogxv",
    "glGenBuffers", "glBufferData", "glBindBuffer", "glDeleteBuffers"
};

TEST(RecordingGL, ExportsEveryEntryPointAndTheVariantLacksOnlyGlFogx)
{
    static_assert(std::size(S_EntryPoints) == 75);
    // The second load also shows that closing the first really unloaded it.
    for (auto [library, missing] : {std::pair<char const*, std::string>{VELLACORE_RECORDING_GL, ""},
             {VELLACORE_RECORDING_NOFOGX_GL, "glFogx"}}) {
        TempDir dir;
        RecordingTrace trace(library);
        for (char const* name : S_EntryPoints)
            EXPECT_EQ(trace.Symbol(name) == nullptr, name == missing) << library << ": " << name;
    }
}

TEST(RecordingGL, WritesCallsAndAnswersAsSteeredUntilReset)
{
    TempDir dir;
    RecordingTrace trace;
    static GLfixed const matrix[16] = {65536, 0, 0, 0, 0, 65536, 0, 0, 0, 0, 65536, 0, 1, -2, 3, 65536};
    ENTRY(trace, glClear)(GL_DEPTH_BUFFER_BIT | GL_COLOR_BUFFER_BIT);
    ENTRY(trace, glLoadMatrixx)(matrix);
    ENTRY(trace, glVertexPointer)(3, GL_FLOAT, 0, matrix);
    ENTRY(trace, glNormalPointer)(GL_FLOAT, 0, nullptr);
    EXPECT_EQ(trace.Lines(), (Lines{"glClear(GL_COLOR_BUFFER_BIT|GL_DEPTH_BUFFER_BIT)",
                                 "glLoadMatrixx({65536,0,0,0,0,65536,0,0,0,0,65536,0,1,-2,3,65536})",
                                 "glVertexPointer(3, GL_FLOAT, 0, ptr)", "glNormalPointer(GL_FLOAT, 0, null)"}));

    trace.SetInteger(GL_MAX_LIGHTS, 3);
    GLint lights = -1;
    ENTRY(trace, glGetIntegerv)(GL_MAX_LIGHTS, &lights);
    EXPECT_EQ(lights, 3);
    trace.Reset();
    ENTRY(trace, glGetIntegerv)(GL_MAX_LIGHTS, &lights);
    EXPECT_EQ(lights, 8) << "Reset restores the answers";
    EXPECT_EQ(trace.Lines(), Lines{"glGetIntegerv(GL_MAX_LIGHTS)->8"}) << "and empties the trace";
}

} // namespace
