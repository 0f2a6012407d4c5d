// Built for every machine but the handheld (VELLACORE_PLATFORM=host). The register block is
// ordinary shared memory with the handheld's layout, so the code above it runs unchanged: the
// timer counts microseconds of the monotonic clock, and the buttons read released until a
// program presses them through the GPIO input registers.
#include "Vellacore/System/System.h"

#include "Vellacore/Core/Logger.h"

#include <sys/mman.h>
#include <time.h>
#include <unistd.h>

namespace Vellacore {

namespace {

// The hardware latches its count when told to; here the clock is read at that moment.
void LatchTimer(U32 offset, U32 value)
{
    if (offset != System::TimerControl || value != System::TimerLatch)
        return;
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    U64 micro = static_cast<U64>(now.tv_sec) * 1000000u + static_cast<U64>(now.tv_nsec) / 1000u;
    System::Data->m_Registers32[System::TimerCount / 4] = static_cast<U32>(micro);
}

} // namespace

bool System::Init()
{
    Prepare();
    int fd = memfd_create("vellacore-registers", MFD_CLOEXEC);
    if (fd >= 0 && ftruncate(fd, RegisterBlockSize) == 0) {
        if (!Map(fd, 0, &LatchTimer))
            return false;
        Data->m_Registers16[GPIOInputLow / 2] = 0xFFFF;
        Data->m_Registers16[GPIOInputHigh / 2] = 0xFFFF;
        return true;
    }
    if (fd >= 0)
        close(fd);
    if (Logger* log = Logger::Instance())
        log->p("[E] ").p("System::Init: register emulation failed.").pLF();
    return false;
}

} // namespace Vellacore
