#ifndef VELLACORE_CORE_LOGGER_H
#define VELLACORE_CORE_LOGGER_H

#include <cstdio>
#include <string>

namespace Vellacore {

// The engine's one plain-text log. Lines are built by chaining output calls and end with pLF():
//   Logger::Instance()->p("[E] ").p("DrawTree::Draw: SceneRoot must NOT be 0.").pLF();
// Every output call is a no-op when the file could not be opened.
class Logger {
public:
    // Opens "Xapp.log" in the working directory; a second call keeps the first logger.
    static void Init();
    static void Exit();
    // Null before Init() and after Exit().
    static Logger* Instance();

    // ">console" writes to standard error; any other name is a file, truncated.
    explicit Logger(char const* name);
    ~Logger();
    Logger(Logger const&) = delete;
    Logger& operator=(Logger const&) = delete;

    Logger& p(char const* s);
    Logger& p(std::string const& s);
    Logger& p(int v);
    Logger& p(unsigned int v);
    Logger& p(float v);
    Logger& px(unsigned int v);
    Logger& pLF();
    Logger& pTime();

    // Only Assert flushes: the process is about to abort and the last line must reach the file.
    void Flush();

private:
    std::FILE* m_File;
};

} // namespace Vellacore

#endif
