#include "MesaLibrary.h"

// Everything the stand-in does not watch goes to Mesa unchanged.
#define MESA_FORWARD(ret, name, params, args) \
    ret name params { return Mesa().name args; }
MESA_GL_FORWARDS(MESA_FORWARD)
MESA_EGL_FORWARDS(MESA_FORWARD)
