#ifndef VELLACORE_STANDINS_MESA_MESAFUNCTIONS_H
#define VELLACORE_STANDINS_MESA_MESAFUNCTIONS_H

// The engine's entry points as lists, so that one line per function gives the exported forwarder,
// the slot for Mesa's real function and the name that eglGetProcAddress answers for.
//
// Every entry point is declared with default visibility: the library is built with hidden
// visibility, and these (with the MesaGL_ control functions) are all it exports.
#pragma GCC visibility push(default)
#include <EGL/egl.h>
#include <GLES/gl.h>
#pragma GCC visibility pop

// Passed straight through to Mesa: X(return type, name, parameter list, argument list).
#define MESA_GL_FORWARDS(X) \
    X(GLenum, glGetError, (void), ()) \
    X(const GLubyte*, glGetString, (GLenum name), (name)) \
    X(void, glGetIntegerv, (GLenum pname, GLint* data), (pname, data)) \
    X(void, glClearColorx, (GLfixed red, GLfixed green, GLfixed blue, GLfixed alpha), (red, green, blue, alpha)) \
    X(void, glClearColor, (GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha), (red, green, blue, alpha)) \
    X(void, glClearDepthx, (GLfixed depth), (depth)) \
    X(void, glClearDepthf, (GLfloat d), (d)) \
    X(void, glClear, (GLbitfield mask), (mask)) \
    X(void, glDepthMask, (GLboolean flag), (flag)) \
    X(void, glColor4x, (GLfixed red, GLfixed green, GLfixed blue, GLfixed alpha), (red, green, blue, alpha)) \
    X(void, glColor4f, (GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha), (red, green, blue, alpha)) \
    X(void, glMatrixMode, (GLenum mode), (mode)) \
    X(void, glLoadMatrixx, (const GLfixed* m), (m)) \
    X(void, glPushMatrix, (void), ()) \
    X(void, glMultMatrixx, (const GLfixed* m), (m)) \
    X(void, glPopMatrix, (void), ()) \
    X(void, glLoadIdentity, (void), ()) \
    X(void, glLightModelxv, (GLenum pname, const GLfixed* param), (pname, param)) \
    X(void, glLightModelfv, (GLenum pname, const GLfloat* params), (pname, params)) \
    X(void, glLightxv, (GLenum light, GLenum pname, const GLfixed* params), (light, pname, params)) \
    X(void, glLightfv, (GLenum light, GLenum pname, const GLfloat* params), (light, pname, params)) \
    X(void, glEnable, (GLenum cap), (cap)) \
    X(void, glDisable, (GLenum cap), (cap)) \
    X(void, glFlush, (void), ()) \
    X(void, glCullFace, (GLenum mode), (mode)) \
    X(void, glDepthFunc, (GLenum func), (func)) \
    X(void, glViewport, (GLint x, GLint y, GLsizei width, GLsizei height), (x, y, width, height)) \
    X(void, glMaterialxv, (GLenum face, GLenum pname, const GLfixed* param), (face, pname, param)) \
    X(void, glMaterialfv, (GLenum face, GLenum pname, const GLfloat* params), (face, pname, params)) \
    X(void, glMaterialx, (GLenum face, GLenum pname, GLfixed param), (face, pname, param)) \
    X(void, glMaterialf, (GLenum face, GLenum pname, GLfloat param), (face, pname, param)) \
    X(void, glBlendFunc, (GLenum sfactor, GLenum dfactor), (sfactor, dfactor)) \
    X(void, glAlphaFuncx, (GLenum func, GLfixed ref), (func, ref)) \
    X(void, glAlphaFunc, (GLenum func, GLfloat ref), (func, ref)) \
    X(void, glPixelStorei, (GLenum pname, GLint param), (pname, param)) \
    X(void, glTexParameteri, (GLenum target, GLenum pname, GLint param), (target, pname, param)) \
    X(void, glTexImage2D, \
        (GLenum target, GLint level, GLint internalformat, GLsizei width, GLsizei height, GLint border, GLenum format, GLenum type, const void* pixels), \
        (target, level, internalformat, width, height, border, format, type, pixels)) \
    X(void, glGenTextures, (GLsizei n, GLuint* textures), (n, textures)) \
    X(void, glDeleteTextures, (GLsizei n, const GLuint* textures), (n, textures)) \
    X(void, glTexParameteriv, (GLenum target, GLenum pname, const GLint* params), (target, pname, params)) \
    X(void, glActiveTexture, (GLenum texture), (texture)) \
    X(void, glBindTexture, (GLenum target, GLuint texture), (target, texture)) \
    X(void, glTexEnvi, (GLenum target, GLenum pname, GLint param), (target, pname, param)) \
    X(void, glClientActiveTexture, (GLenum texture), (texture)) \
    X(void, glTexCoordPointer, (GLint size, GLenum type, GLsizei stride, const void* pointer), (size, type, stride, pointer)) \
    X(void, glColorPointer, (GLint size, GLenum type, GLsizei stride, const void* pointer), (size, type, stride, pointer)) \
    X(void, glNormalPointer, (GLenum type, GLsizei stride, const void* pointer), (type, stride, pointer)) \
    X(void, glVertexPointer, (GLint size, GLenum type, GLsizei stride, const void* pointer), (size, type, stride, pointer)) \
    X(void, glDrawElements, (GLenum mode, GLsizei count, GLenum type, const void* indices), (mode, count, type, indices)) \
    X(void, glEnableClientState, (GLenum array), (array)) \
    X(void, glDisableClientState, (GLenum array), (array)) \
    X(void, glFogf, (GLenum pname, GLfloat param), (pname, param)) \
    X(void, glFogfv, (GLenum pname, const GLfloat* params), (pname, params)) \
    X(void, glFogx, (GLenum pname, GLfixed param), (pname, param)) \
    X(void, glFogxv, (GLenum pname, const GLfixed* param), (pname, param)) \
    X(void, glGenBuffers, (GLsizei n, GLuint* buffers), (n, buffers)) \
    X(void, glBufferData, (GLenum target, GLsizeiptr size, const void* data, GLenum usage), (target, size, data, usage)) \
    X(void, glBindBuffer, (GLenum target, GLuint buffer), (target, buffer)) \
    X(void, glDeleteBuffers, (GLsizei n, const GLuint* buffers), (n, buffers))

#define MESA_EGL_FORWARDS(X) \
    X(EGLint, eglGetError, (void), ()) \
    X(EGLBoolean, eglGetConfigs, (EGLDisplay dpy, EGLConfig* configs, EGLint config_size, EGLint* num_config), \
        (dpy, configs, config_size, num_config)) \
    X(EGLSurface, eglCreatePbufferSurface, (EGLDisplay dpy, EGLConfig config, const EGLint* attrib_list), (dpy, config, attrib_list)) \
    X(EGLBoolean, eglMakeCurrent, (EGLDisplay dpy, EGLSurface draw, EGLSurface read, EGLContext ctx), (dpy, draw, read, ctx)) \
    X(EGLBoolean, eglDestroyContext, (EGLDisplay dpy, EGLContext ctx), (dpy, ctx)) \
    X(EGLBoolean, eglGetConfigAttrib, (EGLDisplay dpy, EGLConfig config, EGLint attribute, EGLint* value), \
        (dpy, config, attribute, value)) \
    X(EGLBoolean, eglWaitGL, (void), ())

// Entry points with behaviour of their own around Mesa's function of the same name.
#define MESA_EGL_WRAPPED(X) \
    X(eglInitialize) \
    X(eglChooseConfig) \
    X(eglCreateContext) \
    X(eglDestroySurface) \
    X(eglSwapBuffers) \
    X(eglTerminate) \
    X(eglGetProcAddress)

// Entry points standing in for the handheld's display and window, which Mesa has no equivalent of.
#define MESA_EGL_REPLACED(X) \
    X(eglGetDisplay) \
    X(eglCreateWindowSurface)

// Mesa functions the wrappers call that the engine never binds.
#define MESA_PRIVATE(X) \
    X(eglBindAPI) \
    X(eglQueryString) \
    X(eglGetCurrentSurface) \
    X(eglGetPlatformDisplay) \
    X(glReadPixels)

#endif
