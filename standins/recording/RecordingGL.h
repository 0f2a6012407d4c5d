#ifndef VELLACORE_STANDINS_RECORDINGGL_H
#define VELLACORE_STANDINS_RECORDINGGL_H

// Control interface of the recording stand-in for the handheld's GL ES 1.1 / EGL driver.
//
// The library exports the 75 entry points the engine binds; each call draws nothing and appends one
// line to a trace. Tests reach these functions with dlsym on their own dlopen of the same
// "./libopengles_lite.so" the engine opens, so both see one trace.
//
// Line format: name(arg, arg, ...), a space only after the commas between arguments.
//   GLenum            its GL_/EGL_ name, or 0x%x when the recorder does not know it for that
//                     parameter: glEnable(GL_LIGHT0), glBlendFunc(GL_ONE, GL_ONE),
//                     glDrawElements(GL_TRIANGLES, 36, GL_UNSIGNED_SHORT, null), glDepthMask(GL_TRUE)
//   GLint holding an enum (glTexParameteri, glTexEnvi, glTexImage2D's internal format, glFogf/x's
//                     GL_FOG_MODE) the name when it is one, else decimal:
//                     glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, 1), glFogf(GL_FOG_MODE, GL_EXP)
//   bit masks         names joined with |, colour, depth, stencil: glClear(GL_COLOR_BUFFER_BIT|GL_DEPTH_BUFFER_BIT)
//   integers, GLfixed decimal; GLfloat with %g: glColor4f(1, 0.5, 0, 1)
//   pointers          "null"; below 4096 the value in decimal (an offset into a bound buffer);
//                     else "ptr"
//   known-length arrays {a,b,...}: 16 for glLoadMatrixx/glMultMatrixx, 4 or 1 by pname for
//                     glLight*v/glMaterial*v/glFog*v/glLightModel*v/glTexParameteriv, n for glDelete*
//   EGL handles       dpy, cfg, ctx, surf or null; attribute lists {EGL_RED_SIZE,5,...,EGL_NONE}
//   native display    as a number: eglGetDisplay(0)
// Calls whose purpose is an answer show it after "->": glGenTextures(1)->1 (several names joined
// with commas, the out pointer not shown), glGetIntegerv(GL_MAX_LIGHTS)->8, glGetError()->0x0,
// eglGetError()->0x3000. Other results are not shown: handles are fixed, booleans are EGL_TRUE unless
// forced to fail, glGetString answers "Recording", "Recording GL", "OpenGL ES-CM 1.1 Recording", "".

#define RECORDINGGL_API __attribute__((visibility("default")))

extern "C" {

// Empty trace, default answers, no forced failures, no pending errors, names handed out from 1 again.
RECORDINGGL_API void RecordingGL_Reset();
RECORDINGGL_API int RecordingGL_GetCount();
// One recorded call; null when index is out of range.
RECORDINGGL_API const char* RecordingGL_GetLine(int index);
// Answer of glGetIntegerv for pname (defaults GL_MAX_LIGHTS 8, GL_MAX_TEXTURE_UNITS 2,
// GL_MAX_TEXTURE_SIZE 1024; any other pname 0).
RECORDINGGL_API void RecordingGL_SetInteger(unsigned pname, int value);
// From now until the next reset, the named entry point fails: EGL calls returning a handle return
// EGL_NO_*, those returning EGLBoolean return EGL_FALSE, glGenTextures/glGenBuffers hand out 0.
RECORDINGGL_API void RecordingGL_FailCall(const char* name);
// What the next glGetError / eglGetError answer; each reads its value once, then no error again.
RECORDINGGL_API void RecordingGL_SetError(unsigned glError, int eglError);

}

#endif
