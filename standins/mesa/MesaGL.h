#ifndef VELLACORE_STANDINS_MESA_MESAGL_H
#define VELLACORE_STANDINS_MESA_MESAGL_H

// Control interface of the Mesa stand-in for the handheld's GL ES 1.1 / EGL driver library. Each
// eglSwapBuffers of the window surface is a frame, seen as the player of the handheld sees it:
// MESAGL_FRAME_WIDTH x MESAGL_FRAME_HEIGHT landscape, RGBA, top row first. Setting the environment
// variable VELLACORE_FRAME_DIR before the library is loaded saves every frame of an unchanged game,
// and the whole run as the animated run.gif, completed at eglTerminate.

#define MESAGL_FRAME_WIDTH 320
#define MESAGL_FRAME_HEIGHT 240

#ifdef __cplusplus
extern "C" {
#endif

// Saves each following frame as frame-00000.png, frame-00001.png... (numbered by GetFrameCount)
// into the directory, creating it if needed, and starts run.gif there. Null or "" stops saving.
__attribute__((visibility("default"))) void MesaGL_SetFrameDirectory(const char* directory);
// Frames swapped since the library was loaded.
__attribute__((visibility("default"))) int MesaGL_GetFrameCount(void);
// Copies the last frame (MESAGL_FRAME_WIDTH * MESAGL_FRAME_HEIGHT * 4 bytes); 0 before the first.
__attribute__((visibility("default"))) int MesaGL_CopyLastFrame(unsigned char* rgba);

#ifdef __cplusplus
}
#endif

#endif
