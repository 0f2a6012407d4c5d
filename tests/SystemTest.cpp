// The stand-in memory device reaches past 2^31 bytes, also on the 32-bit target.
#define _FILE_OFFSET_BITS 64

#include "Vellacore/Core/Logger.h"
#include "Vellacore/System/Random.h"
#include "Vellacore/System/System.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <chrono>
#include <dlfcn.h>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

using namespace Vellacore;
using VellacoreTest::ReadFile;

namespace {

std::string const Banner = "---- START  (BUILD: Apr 26 2010 / 18:27:56) ----\n";

// A sparse file in place of /dev/mem, as large as the handheld's physical address space up to the
// end of the register block; registers are read and written at the handheld's addresses.
struct MemoryDevice {
    int m_FD = open("mem", O_RDWR | O_CREAT | O_TRUNC, 0600);
    MemoryDevice() { EXPECT_EQ(0, ftruncate(m_FD, off_t(0xC0020000))); }
    ~MemoryDevice() { close(m_FD); }
    U32 Read(U32 offset) const
    {
        U32 value = 0xDEADBEEF;
        EXPECT_EQ(4, pread(m_FD, &value, 4, off_t(0xC0000000) + offset));
        return value;
    }
    void Write(U32 offset, U32 value) { EXPECT_EQ(4, pwrite(m_FD, &value, 4, off_t(0xC0000000) + offset)); }
};

} // namespace

TEST(System, HostInitEmulatesTheBlockAndNeverNamesDevMem)
{
    ASSERT_TRUE(System::Init());
    Dl_info library;
    ASSERT_NE(0, dladdr(reinterpret_cast<void*>(&System::Init), &library));
    std::string const code = ReadFile(library.dli_fname);
    EXPECT_NE(std::string::npos, code.find("System::SetClockCPU:")) << library.dli_fname;
    EXPECT_EQ(std::string::npos, code.find("/dev/mem")) << library.dli_fname;
    // The timer counts microseconds.
    unsigned int first = System::GetSystemTimerTicks();
    std::this_thread::sleep_for(std::chrono::milliseconds(3));
    unsigned int elapsed = System::GetSystemTimerTicks() - first;
    EXPECT_TRUE(elapsed >= 3000u && elapsed < 10000000u) << elapsed;
    EXPECT_TRUE(System::Exit());
    EXPECT_EQ(nullptr, System::Data);
}

// PLL 0 takes a third of the megahertz in bits 8 to 17; 3072 no longer fits. Negative values are ignored.
// A file that does not open, or an offset off the page grid (no message), leaves nothing for Exit to
// touch; a second Init releases the block as Exit does, and starts the clock setting afresh.
TEST(System, HandheldMappingWritesTheRegistersAtTheirOffsets)
{
    VellacoreTest::TempDir dir;
    Logger::Init();
    MemoryDevice mem;
    for (auto [path, offset] : { std::pair("missing", 0xC0000000u), std::pair("mem", 0xC0000123u) }) {
        EXPECT_FALSE(System::InitDevice(path, offset)) << path;
        ASSERT_NE(nullptr, System::Data);
        EXPECT_EQ(-1, System::Data->m_MemFD) << path;
    }
    mem.Write(0x1980, 0x12345678);
    mem.Write(0xF07C, 0x1);
    ASSERT_TRUE(System::InitDevice("mem", 0xC0000000));
    EXPECT_EQ(2338u, mem.Read(0x19C4));
    EXPECT_EQ(12u, mem.Read(0x19C0));
    EXPECT_EQ(107u, mem.Read(0x1988));
    EXPECT_EQ(0x12345678u, System::GetSystemTimerTicks());
    EXPECT_EQ(75u, mem.Read(0x1988));

    System::SetClockCPU(-1);
    EXPECT_EQ(0u, mem.Read(0xF004));
    std::string expectedLog = Banner + "[E] System::Init: missing open failed.\n";
    for (auto [mhz, pll] : { std::pair(3071, 0x27FF00u), std::pair(3072, 0x240000u), std::pair(533, 0x24B100u) }) {
        System::SetClockCPU(mhz);
        EXPECT_EQ(pll, mem.Read(0xF004)) << mhz;
        EXPECT_EQ(mhz, System::GetClockCPU());
        expectedLog += "[I] System::SetClockCPU:" + std::to_string(mhz) + "\n";
    }
    EXPECT_EQ(0x8001u, mem.Read(0xF07C));

    EXPECT_TRUE(System::Init());
    EXPECT_EQ(0, System::GetClockCPU());
    for (U32 offset : { 0x19C0u, 0x1980u, 0x19C4u })
        EXPECT_EQ(0u, mem.Read(offset)) << std::hex << offset;
    EXPECT_EQ(35u, mem.Read(0x1988));
    EXPECT_TRUE(System::Exit());
    Logger::Exit();
    EXPECT_EQ(expectedLog, ReadFile("Xapp.log"));
}

// The reference generator's first outputs from init_genrand(5489): 3499211612, 581869302,
// 3890346734, 3586334585, 545404204.
TEST(Random, FollowsTheReferenceSequence)
{
    Random::Seed(5489);
    for (int expected : { 1749605806, 290934651, 1945173367, 1793167292, 272702102 })
        EXPECT_EQ(expected, Random::GetI32());
    Random::Seed(5489);
    for (int raw : { 53393, 8878, 59361, 54723, 8322 })
        EXPECT_EQ(raw, Random::GetFlt().GetRaw());
    Random::Seed(5489);
    EXPECT_EQ(135893, Random::GetFlt(Fixed(-2), Fixed(3)).GetRaw());
}
