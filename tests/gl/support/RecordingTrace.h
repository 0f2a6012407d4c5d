#ifndef VELLACORE_TESTS_GL_RECORDINGTRACE_H
#define VELLACORE_TESTS_GL_RECORDINGTRACE_H

#include "Vellacore/Core/Logger.h"
#include "recording/RecordingGL.h"
#include "support/TempDir.h"

#include <dlfcn.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace VellacoreTest {

// Puts a recording stand-in into the working directory as the driver the engine opens, and steers
// and reads its trace. Construct it after the test's TempDir. It opens the same path the engine
// does, so both share one library image and one trace; its handle is closed on destruction, so
// that a later test in another directory loads a fresh image instead of this one.
class RecordingTrace {
public:
    explicit RecordingTrace(char const* library = VELLACORE_RECORDING_GL) : m_Handle(Open(library), dlclose) {}

    void Reset()
    {
        m_Reset();
        m_Taken = 0;
    }
    // The whole trace, and the lines since the last Take or Reset.
    std::vector<std::string> Lines() const { return Since(0); }
    std::vector<std::string> Take()
    {
        std::vector<std::string> lines = Since(m_Taken);
        m_Taken += static_cast<int>(lines.size());
        return lines;
    }
    void SetInteger(unsigned pname, int value) { m_SetInteger(pname, value); }
    void FailCall(char const* name) { m_FailCall(name); }
    void SetError(unsigned glError, int eglError) { m_SetError(glError, eglError); }
    // An entry point of the library, null when it has none of that name.
    void* Symbol(char const* name) const { return dlsym(m_Handle.get(), name); }

private:
    std::vector<std::string> Since(int mark) const
    {
        std::vector<std::string> lines;
        for (int i = mark; i < m_GetCount(); ++i)
            lines.emplace_back(m_GetLine(i));
        return lines;
    }
    static void* Open(char const* library)
    {
        // A fresh file rather than an overwrite: an image still mapped must not change under it.
        std::filesystem::remove("libopengles_lite.so");
        std::filesystem::copy_file(library, "libopengles_lite.so");
        void* handle = dlopen("./libopengles_lite.so", RTLD_NOW);
        if (!handle)
            throw std::runtime_error(std::string("RecordingTrace: ") + dlerror());
        return handle;
    }
    template <class F>
    F Find(F const*, char const* name) const
    {
        void* symbol = Symbol(name);
        if (!symbol)
            throw std::runtime_error(std::string("RecordingTrace: no ") + name);
        return reinterpret_cast<F>(symbol);
    }

    std::unique_ptr<void, int (*)(void*)> m_Handle;
    int m_Taken = 0;
    decltype(&RecordingGL_Reset) m_Reset = Find(&m_Reset, "RecordingGL_Reset");
    decltype(&RecordingGL_GetCount) m_GetCount = Find(&m_GetCount, "RecordingGL_GetCount");
    decltype(&RecordingGL_GetLine) m_GetLine = Find(&m_GetLine, "RecordingGL_GetLine");
    decltype(&RecordingGL_SetInteger) m_SetInteger = Find(&m_SetInteger, "RecordingGL_SetInteger");
    decltype(&RecordingGL_FailCall) m_FailCall = Find(&m_FailCall, "RecordingGL_FailCall");
    decltype(&RecordingGL_SetError) m_SetError = Find(&m_SetError, "RecordingGL_SetError");
};

// The engine's log in the working directory, open for as long as the object lives.
class LogSession {
public:
    LogSession() { Vellacore::Logger::Init(); }
    ~LogSession() { Vellacore::Logger::Exit(); }
    LogSession(LogSession const&) = delete;
    LogSession& operator=(LogSession const&) = delete;

    // The lines written since the last call, without the banner.
    std::vector<std::string> Take()
    {
        Vellacore::Logger::Instance()->Flush();
        std::istringstream in(ReadFile("Xapp.log"));
        std::vector<std::string> fresh;
        std::size_t read = 0;
        for (std::string line; std::getline(in, line);)
            if (++read > m_Seen)
                fresh.push_back(line);
        m_Seen = std::max(m_Seen, read);
        return fresh;
    }

private:
    std::size_t m_Seen = 1;
};

} // namespace VellacoreTest

#endif
