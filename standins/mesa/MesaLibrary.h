#ifndef VELLACORE_STANDINS_MESA_MESALIBRARY_H
#define VELLACORE_STANDINS_MESA_MESALIBRARY_H

#include "MesaFunctions.h"

// Mesa's own EGL and GL ES 1.x functions. This library exports functions with the very names it
// calls, so none of them may be called by name from here: that would be this library again.
struct MesaFunctions {
#define MESA_SLOT(ret, name, params, args) decltype(&::name) name;
    MESA_GL_FORWARDS(MESA_SLOT)
    MESA_EGL_FORWARDS(MESA_SLOT)
#undef MESA_SLOT
#define MESA_SLOT(name) decltype(&::name) name;
    MESA_EGL_WRAPPED(MESA_SLOT)
    MESA_PRIVATE(MESA_SLOT)
#undef MESA_SLOT
};

// The table, filled on first use. Without Mesa, or with a function missing, there is nothing a
// stand-in could draw with: that ends the program with a message.
MesaFunctions const& Mesa();

// Keeps the drivers Mesa has loaded so far mapped for the rest of the program. Mesa unloads its
// driver when the last display is terminated; the memory the driver still holds through its own
// globals would then look leaked, and a program that starts the renderer again would reload the
// whole driver each time.
void KeepMesaDriversLoaded();

#endif
