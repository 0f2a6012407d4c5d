#include "MesaLibrary.h"

#include <dlfcn.h>
#include <link.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

// Mesa's libraries, opened by their sonames so the lookups search them and nothing else.
class MesaLibrary {
public:
    MesaLibrary() : m_Egl(Open("libEGL.so.1")), m_Gles(Open("libGLESv1_CM.so.1"))
    {
#define MESA_RESOLVE(name) m_Functions.name = reinterpret_cast<decltype(m_Functions.name)>(Resolve(#name));
#define MESA_RESOLVE_FORWARD(ret, name, params, args) MESA_RESOLVE(name)
        MESA_GL_FORWARDS(MESA_RESOLVE_FORWARD)
        MESA_EGL_FORWARDS(MESA_RESOLVE_FORWARD)
        MESA_EGL_WRAPPED(MESA_RESOLVE)
        MESA_PRIVATE(MESA_RESOLVE)
#undef MESA_RESOLVE_FORWARD
#undef MESA_RESOLVE
    }
    ~MesaLibrary()
    {
        dlclose(m_Gles);
        dlclose(m_Egl);
    }
    MesaLibrary(MesaLibrary const&) = delete;
    MesaLibrary& operator=(MesaLibrary const&) = delete;

    MesaFunctions m_Functions;

private:
    [[noreturn]] static void Fail(char const* what, char const* detail)
    {
        std::fprintf(stderr, "MesaGL: %s %s\n", what, detail);
        std::abort();
    }

    // Local, so Mesa's names never enter the global scope where a game's lookups could meet them.
    // Never unmapped: llvmpipe keeps threads and thread-local state that outlive a dlclose, and this
    // stand-in is loaded and unloaded many times by one test program.
    static void* Open(char const* soname)
    {
        void* handle = dlopen(soname, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
        if (!handle)
            Fail("cannot open Mesa:", dlerror());
        return handle;
    }

    void* Resolve(char const* name) const
    {
        void* function = dlsym(std::strncmp(name, "egl", 3) == 0 ? m_Egl : m_Gles, name);
        if (!function)
            Fail("Mesa lacks", name);
        // A lookup that lands back in this library would make the forwarder call itself forever.
        Dl_info found;
        Dl_info self;
        if (dladdr(function, &found) && dladdr(reinterpret_cast<void*>(&Mesa), &self) && found.dli_fbase == self.dli_fbase)
            Fail("lookup resolved to the stand-in itself:", name);
        return function;
    }

    void* m_Egl;
    void* m_Gles;
};

} // namespace

MesaFunctions const& Mesa()
{
    static MesaLibrary const library;
    return library.m_Functions;
}

void KeepMesaDriversLoaded()
{
    // Gathered first: the loader must not be re-entered from inside its own iteration.
    std::vector<std::string> drivers;
    dl_iterate_phdr(
        [](dl_phdr_info* info, std::size_t, void* found) {
            if (std::strstr(info->dlpi_name, "_dri.so"))
                static_cast<std::vector<std::string>*>(found)->push_back(info->dlpi_name);
            return 0;
        },
        &drivers);
    for (std::string const& driver : drivers)
        if (void* handle = dlopen(driver.c_str(), RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE))
            dlclose(handle);
}
