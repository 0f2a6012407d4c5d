#ifndef VELLACORE_SRC_RENDER_WIZ_WIZLOG_H
#define VELLACORE_SRC_RENDER_WIZ_WIZLOG_H

#include "Vellacore/Core/Logger.h"

namespace Vellacore {

// A value the log shows as "0x%x" (GL and EGL names and codes).
struct Hex {
    unsigned int m_Value;
};

inline void WizLogPart(Logger& log, Hex hex)
{
    log.px(hex.m_Value);
}

template <class T>
void WizLogPart(Logger& log, T const& part)
{
    log.p(part);
}

// One line of the back end's log: the level tag, then the parts in order. The back end runs in
// tools and tests that may not have opened the log, so a missing logger swallows the line.
template <class... Parts>
void WizLog(char const* level, Parts const&... parts)
{
    if (Logger* log = Logger::Instance()) {
        log->p(level);
        (WizLogPart(*log, parts), ...);
        log->pLF();
    }
}

} // namespace Vellacore

#endif
