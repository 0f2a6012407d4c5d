// The block sits at 0xC0000000 of the memory device: past 2^31, so a 32-bit target needs a 64-bit
// file offset to map it.
#define _FILE_OFFSET_BITS 64

#include "Vellacore/System/System.h"

#include "Vellacore/Core/Logger.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace Vellacore {

namespace {

System::Device S_Device = { -1, nullptr, nullptr, 0, 0 };
void (*S_Respond)(U32 offset, U32 value) = nullptr;

// Timer control values: run, stop.
constexpr U32 TimerStart = 107;
constexpr U32 TimerStop = 35;

void Write(U32 offset, U32 value)
{
    S_Device.m_Registers32[offset / 4] = value;
    if (S_Respond)
        S_Respond(offset, value);
}

U32 Read(U32 offset)
{
    return S_Device.m_Registers32[offset / 4];
}

} // namespace

double System::TicksToSeconds = 0.0;
double System::TicksToMilliSeconds = 0.0;
System::Device* System::Data = nullptr;

bool System::InitDevice(char const* path, U32 offset)
{
    Prepare();
    int fd = open(path, O_RDWR);
    if (fd < 0) {
        if (Logger* log = Logger::Instance())
            log->p("[E] ").p("System::Init: ").p(path).p(" open failed.").pLF();
        return false;
    }
    return Map(fd, offset, nullptr);
}

// A second Init releases the first block instead of leaking it.
void System::Prepare()
{
    Exit();
    TicksToSeconds = 1e-6f;
    TicksToMilliSeconds = 1e-3f;
    Data = &S_Device;
}

bool System::Map(int fd, U32 offset, Respond respond)
{
    void* block = mmap(nullptr, RegisterBlockSize, PROT_READ | PROT_WRITE, MAP_SHARED, fd, off_t(offset));
    if (block == MAP_FAILED) {
        // Keeping the descriptor would make Exit write into a block that is not there.
        close(fd);
        return false;
    }
    S_Device = { fd, static_cast<U32 volatile*>(block), static_cast<U16 volatile*>(block), -1, 0 };
    S_Respond = respond;
    Write(TimerClockGenerator, 2338);
    Write(TimerClockEnable, 12);
    Write(TimerControl, TimerStart);
    return true;
}

// The block is unmapped too: a game that runs Init and Exit again must not pile up mappings.
bool System::Exit()
{
    if (S_Device.m_MemFD >= 0) {
        Write(TimerClockEnable, 12);
        Write(TimerControl, TimerStop);
        Write(TimerCount, 0);
        Write(TimerClockEnable, 0);
        Write(TimerClockGenerator, 0);
        munmap(const_cast<U32*>(S_Device.m_Registers32), RegisterBlockSize);
        close(S_Device.m_MemFD);
        S_Device.m_MemFD = -1;
        S_Device.m_Registers32 = nullptr;
        S_Device.m_Registers16 = nullptr;
        S_Respond = nullptr;
    }
    Data = nullptr;
    return true;
}

unsigned int System::GetSystemTimerTicks()
{
    Write(TimerControl, TimerLatch);
    return Read(TimerCount);
}

// PLL 0 keeps its upper fields; bits 8 to 17 take mhz / 3, so values above 3071 MHz are cut.
void System::SetClockCPU(int mhz)
{
    if (mhz < 0)
        return;
    if (Logger* log = Logger::Instance())
        log->p("[I] ").p("System::SetClockCPU:").p(mhz).pLF();
    Write(PLL0, 0x240000u | ((static_cast<U32>(mhz) * 9u / 27u) << 8 & 0x3FF00u));
    Write(PLLChange, Read(PLLChange) | 0x8000u);
    S_Device.m_ClockCPU = mhz;
}

int System::GetClockCPU()
{
    return S_Device.m_ClockCPU;
}

} // namespace Vellacore
