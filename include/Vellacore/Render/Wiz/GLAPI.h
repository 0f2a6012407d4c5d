#ifndef VELLACORE_RENDER_WIZ_GLAPI_H
#define VELLACORE_RENDER_WIZ_GLAPI_H

// Types and constants only: the engine links no GL or EGL library, it binds the driver at run time.
#include <EGL/egl.h>
#include <GLES/gl.h>

namespace Vellacore {

// Every entry point the Wiz back end binds, in table order: 16 EGL, then 59 GL. All are required,
// also the fixed- or floating-point twins the renderer does not call, so that a driver is accepted
// or refused as a whole. The one list of names: the table's slots, the names looked up and the
// names in the loader's messages all come from it.
#define VELLACORE_GLAPI_ENTRY_POINTS(X)                                                                 \
    X(eglGetError) X(eglGetConfigs) X(eglChooseConfig) X(eglCreatePbufferSurface) X(eglDestroySurface) \
    X(eglGetProcAddress) X(eglGetDisplay) X(eglInitialize) X(eglTerminate) X(eglCreateContext)         \
    X(eglCreateWindowSurface) X(eglMakeCurrent) X(eglDestroyContext) X(eglSwapBuffers)                 \
    X(eglGetConfigAttrib) X(eglWaitGL)                                                                 \
    X(glGetError) X(glGetString) X(glGetIntegerv) X(glClearColorx) X(glClearColor) X(glClearDepthx)    \
    X(glClearDepthf) X(glClear) X(glDepthMask) X(glColor4x) X(glColor4f) X(glMatrixMode)              \
    X(glLoadMatrixx) X(glPushMatrix) X(glMultMatrixx) X(glPopMatrix) X(glLoadIdentity)                 \
    X(glLightModelxv) X(glLightModelfv) X(glLightxv) X(glLightfv) X(glEnable) X(glDisable) X(glFlush)  \
    X(glCullFace) X(glDepthFunc) X(glViewport) X(glMaterialxv) X(glMaterialfv) X(glMaterialx)          \
    X(glMaterialf) X(glBlendFunc) X(glAlphaFuncx) X(glAlphaFunc) X(glPixelStorei) X(glTexParameteri)   \
    X(glTexImage2D) X(glGenTextures) X(glDeleteTextures) X(glTexParameteriv) X(glActiveTexture)        \
    X(glBindTexture) X(glTexEnvi) X(glClientActiveTexture) X(glTexCoordPointer) X(glColorPointer)      \
    X(glNormalPointer) X(glVertexPointer) X(glDrawElements) X(glEnableClientState)                     \
    X(glDisableClientState) X(glFogf) X(glFogfv) X(glFogx) X(glFogxv) X(glGenBuffers) X(glBufferData)  \
    X(glBindBuffer) X(glDeleteBuffers)

// One function pointer per entry point, each with the signature the EGL and GL ES headers declare.
struct GLAPITable {
#define VELLACORE_GLAPI_SLOT(name) decltype(&::name) name;
    VELLACORE_GLAPI_ENTRY_POINTS(VELLACORE_GLAPI_SLOT)
#undef VELLACORE_GLAPI_SLOT
};

// The loaded table, null while no driver is loaded.
extern GLAPITable* GL;

// Opens "./libopengles_lite.so", else "/lib/libopengles_lite.so", and binds every entry point.
// True when the table is loaded or already was. A missing entry point leaves the table and the
// library as far as they got: a second call then answers true, and only GLAPI_Exit clears them.
bool GLAPI_Init();
// Frees the table and closes the library.
void GLAPI_Exit();
// The renderer's display, window surface and context, which ShutdownGL tears down.
void GLAPI_SetEGLObjects(EGLDisplay display, EGLSurface surface, EGLContext context);
// Releases the EGL objects, then GLAPI_Exit. Nothing at all while no driver is loaded.
void ShutdownGL();

} // namespace Vellacore

#endif
