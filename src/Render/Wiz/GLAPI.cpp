#include "Vellacore/Render/Wiz/GLAPI.h"

#include "Vellacore/Memory/Memory.h"
#include "WizLog.h"

#include <dlfcn.h>

namespace Vellacore {

GLAPITable* GL = nullptr;

namespace {

// The driver's file name; also what the open failure names.
char const S_LibraryName[] = "libopengles_lite.so";
// The game's own folder first, then where the handheld's firmware keeps the driver.
char const* const S_LibraryPaths[] = { "./libopengles_lite.so", "/lib/libopengles_lite.so" };

void* S_Library = nullptr;
EGLDisplay S_Display = EGL_NO_DISPLAY;
EGLSurface S_WindowSurface = EGL_NO_SURFACE;
EGLContext S_Context = EGL_NO_CONTEXT;

void* OpenLibrary()
{
    for (char const* path : S_LibraryPaths) {
        if (void* library = dlopen(path, RTLD_LAZY))
            return library;
    }
    char const* error = dlerror();
    WizLog("[E] ", "Failed to open ", S_LibraryName, " Error: \"", error ? error : "", "\"");
    return nullptr;
}

template <class Function>
bool Import(char const* name, Function& slot)
{
    WizLog("[D] ", "Importing ", name);
    // POSIX guarantees that a symbol's address converts to a function pointer.
    slot = reinterpret_cast<Function>(dlsym(S_Library, name));
    if (!slot)
        WizLog("[E] ", "Function ", name, " not found.");
    return slot != nullptr;
}

// In table order, stopping at the first name the library lacks.
bool ImportAll(GLAPITable& table)
{
#define VELLACORE_GLAPI_IMPORT(name) Import(#name, table.name) &&
    return VELLACORE_GLAPI_ENTRY_POINTS(VELLACORE_GLAPI_IMPORT) true;
#undef VELLACORE_GLAPI_IMPORT
}

} // namespace

bool GLAPI_Init()
{
    if (GL)
        return true;
    S_Library = OpenLibrary();
    if (!S_Library)
        return false;
    // The engine's typed allocator; value-initialisation zero-fills, so slots never reached stay null.
    GL = new (TypeInfoT<GLAPITable>::S_TypeInfo_1) GLAPITable();
    return ImportAll(*GL);
}

void GLAPI_Exit()
{
    if (GL) {
        Destruct1(GL);
        GL = nullptr;
    }
    if (S_Library) {
        dlclose(S_Library);
        S_Library = nullptr;
    }
    WizLog("[I] ", "GLAPI_Exit done.");
}

void GLAPI_SetEGLObjects(EGLDisplay display, EGLSurface surface, EGLContext context)
{
    S_Display = display;
    S_WindowSurface = surface;
    S_Context = context;
}

void ShutdownGL()
{
    if (!GL)
        return;
    // Without a display nothing was made; the calls are skipped because a table that stopped
    // half-way may lack them.
    if (S_Display != EGL_NO_DISPLAY) {
        GL->eglMakeCurrent(S_Display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        GL->eglDestroySurface(S_Display, S_WindowSurface);
        GL->eglDestroyContext(S_Display, S_Context);
        GL->eglTerminate(S_Display);
    }
    GLAPI_SetEGLObjects(EGL_NO_DISPLAY, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    GLAPI_Exit();
}

} // namespace Vellacore
