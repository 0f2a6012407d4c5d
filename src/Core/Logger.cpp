#include "Vellacore/Core/Logger.h"

#include <cstring>
#include <ctime>

namespace Vellacore {

namespace {
Logger* S_Instance = nullptr;
char const S_Banner[] = "---- START  (BUILD: Apr 26 2010 / 18:27:56) ----\n";
} // namespace

void Logger::Init()
{
    if (!S_Instance)
        S_Instance = new Logger("Xapp.log");
}

void Logger::Exit()
{
    delete S_Instance;
    S_Instance = nullptr;
}

Logger* Logger::Instance()
{
    return S_Instance;
}

Logger::Logger(char const* name)
    : m_File(std::strcmp(name, ">console") == 0 ? stderr : std::fopen(name, "wt"))
{
    p(S_Banner);
}

// The logger owns whatever stream it writes to, standard error included.
Logger::~Logger()
{
    if (m_File)
        std::fclose(m_File);
}

Logger& Logger::p(char const* s)
{
    if (m_File)
        std::fputs(s, m_File);
    return *this;
}

Logger& Logger::p(std::string const& s)
{
    if (m_File)
        std::fwrite(s.data(), 1, s.size(), m_File);
    return *this;
}

Logger& Logger::p(int v)
{
    if (m_File)
        std::fprintf(m_File, "%d", v);
    return *this;
}

Logger& Logger::p(unsigned int v)
{
    if (m_File)
        std::fprintf(m_File, "%u", v);
    return *this;
}

Logger& Logger::p(float v)
{
    if (m_File)
        std::fprintf(m_File, "%f", static_cast<double>(v));
    return *this;
}

Logger& Logger::px(unsigned int v)
{
    if (m_File)
        std::fprintf(m_File, "0x%x", v);
    return *this;
}

Logger& Logger::pLF()
{
    return p("\n");
}

Logger& Logger::pTime()
{
    std::time_t now = std::time(nullptr);
    return p(std::asctime(std::localtime(&now)));
}

void Logger::Flush()
{
    if (m_File)
        std::fflush(m_File);
}

} // namespace Vellacore
