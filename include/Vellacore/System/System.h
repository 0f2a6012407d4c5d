#ifndef VELLACORE_SYSTEM_SYSTEM_H
#define VELLACORE_SYSTEM_SYSTEM_H

#include "Vellacore/Core/Types.h"

namespace Vellacore {

// The handheld's free-running microsecond timer and CPU clock, reached through the 128 KiB
// register block of its system-on-chip. Which block Init() uses is chosen when the library is
// built (VELLACORE_PLATFORM): the handheld maps physical memory from /dev/mem; a host build gets
// an emulation with the same layout, because mapping physical memory on a PC would write into
// whatever hardware sits at that address. Call Init() before anything reads the time and Exit()
// last; nothing checks that Init() succeeded.
class System {
public:
    // The device record Data points at.
    struct Device {
        I32 m_MemFD; // the register block's descriptor, -1 when closed
        U32 volatile* m_Registers32;
        U16 volatile* m_Registers16; // the same block, for the 16-bit registers
        I32 m_Reserved; // set to -1 by Init; nothing reads it
        I32 m_ClockCPU; // MHz, the last value given to SetClockCPU
    };

    static constexpr U32 RegisterBlockSize = 0x20000;
    static constexpr U32 RegisterBlockAddress = 0xC0000000;
    // Byte offsets within the block. The GPIO inputs are 16-bit and active low; on the host
    // they read "nothing pressed" until a program writes them (InputWiz::SetButtonState).
    enum Register : U32 {
        TimerCount = 0x1980,
        TimerControl = 0x1988,
        TimerClockEnable = 0x19C0,
        TimerClockGenerator = 0x19C4,
        GPIOInputLow = 0xA058,
        GPIOInputHigh = 0xA098,
        PLL0 = 0xF004,
        PLLChange = 0xF07C
    };
    // Written to TimerControl before each read: the count is latched into TimerCount.
    static constexpr U32 TimerLatch = 75;

    // The float values of 1e-6 and 1e-3 widened to double; set by Init().
    static double TicksToSeconds;
    static double TicksToMilliSeconds;
    // Null before Init() and after Exit().
    static Device* Data;

    static bool Init();
    // Maps the block from a memory device at `offset`, as the handheld's Init() does with
    // /dev/mem at RegisterBlockAddress. Host builds never do; tests point it at a file.
    static bool InitDevice(char const* path, U32 offset);
    // Stops the timer and releases the block. Always true.
    static bool Exit();

    // Microseconds, wrapping at 2^32.
    static unsigned int GetSystemTimerTicks();
    // Negative values are ignored.
    static void SetClockCPU(int mhz);
    // The last value given to SetClockCPU since Init(), not read back from the hardware.
    static int GetClockCPU();

private:
    // What the hardware does by itself after a register write, for blocks that are not hardware.
    typedef void (*Respond)(U32 offset, U32 value);

    static void Prepare();
    // Maps the block from the open descriptor (closed again on failure) and starts the timer.
    static bool Map(int fd, U32 offset, Respond respond);
};

} // namespace Vellacore

#endif
