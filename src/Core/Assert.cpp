#include "Vellacore/Core/Assert.h"

#include "Vellacore/Core/Logger.h"

#include <cstdlib>

namespace Vellacore {

void Assert(char const* expression, char const* file, int line)
{
    // Abort skips the C library's exit-time flush, so the line is flushed by hand to survive.
    if (Logger* log = Logger::Instance()) {
        log->p("[E] ").p(file).p("(").p(line).p(")").p(expression).pLF();
        log->Flush();
    }
    std::abort();
}

} // namespace Vellacore
