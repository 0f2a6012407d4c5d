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

// A sparse file in place of /dev/mem, as large as the handheld's physical address space up to the
// end of the register block; registers are read and written at the handheld's addresses.
class MemoryDevice {
public:
    explicit MemoryDevice(char const* path) : m_FD(open(path, O_RDWR | O_CREAT | O_TRUNC, 0600))
    {
        EXPECT_EQ(0, ftruncate(m_FD, off_t(0xC0020000)));
    }
    ~MemoryDevice() { close(m_FD); }
    U32 Read(U32 offset) const
    {
        U32 value = 0xDEADBEEF;
        EXPECT_EQ(4, pread(m_FD, &value, 4, Address(offset)));
        return value;
    }
    void Write(U32 offset, U32 value) { EXPECT_EQ(4, pwrite(m_FD, &value, 4, Address(offset))); }

private:
    static off_t Address(U32 offset) { return off_t(0xC0000000) + offset; }
    int m_FD;
};

// The log's lines after the banner; closes the log.
std::string LogLines()
{
    Logger::Exit();
    std::string log = ReadFile("Xapp.log");
    return log.substr(log.find('\n') + 1);
}

} // namespace

TEST(System, HostInitEmulatesTheBlockAndNeverNamesDevMem)
{
    ASSERT_TRUE(System::Init());
    EXPECT_EQ(9.999999974752427e-07, System::TicksToSeconds);
    EXPECT_EQ(0.0010000000474974513, System::TicksToMilliSeconds);
    for (auto const& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code ignored;
        EXPECT_NE("/dev/mem", std::filesystem::read_symlink(entry.path(), ignored).string());
    }
    Dl_info library;
    ASSERT_NE(0, dladdr(reinterpret_cast<void*>(&System::Init), &library));
    std::string const code = ReadFile(library.dli_fname);
    EXPECT_NE(std::string::npos, code.find("System::SetClockCPU:")) << library.dli_fname;
    EXPECT_EQ(std::string::npos, code.find("/dev/mem")) << library.dli_fname;

    EXPECT_EQ(0xFFFFu, System::Data->m_Registers16[0xA058 / 2]);
    EXPECT_EQ(0xFFFFu, System::Data->m_Registers16[0xA098 / 2]);
    unsigned int first = System::GetSystemTimerTicks();
    std::this_thread::sleep_for(std::chrono::milliseconds(3));
    unsigned int elapsed = System::GetSystemTimerTicks() - first;
    EXPECT_GE(elapsed, 3000u);
    EXPECT_LT(elapsed, 10000000u);
    EXPECT_TRUE(System::Exit());
    EXPECT_EQ(nullptr, System::Data);
}

TEST(System, HandheldMappingWritesTheRegistersAtTheirOffsets)
{
    VellacoreTest::TempDir dir;
    Logger::Init();
    MemoryDevice mem("mem");
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
    EXPECT_EQ(0, System::GetClockCPU());
    // PLL 0 takes a third of the megahertz in bits 8 to 17; 3072 no longer fits.
    std::string expectedLog;
    for (auto [mhz, pll] : { std::pair(3071, 0x27FF00u), std::pair(3072, 0x240000u), std::pair(533, 0x24B100u) }) {
        System::SetClockCPU(mhz);
        EXPECT_EQ(pll, mem.Read(0xF004)) << mhz;
        EXPECT_EQ(mhz, System::GetClockCPU());
        expectedLog += "[I] System::SetClockCPU:" + std::to_string(mhz) + "\n";
    }
    EXPECT_EQ(0x8001u, mem.Read(0xF07C));

    EXPECT_TRUE(System::Exit());
    EXPECT_EQ(nullptr, System::Data);
    EXPECT_EQ(0u, mem.Read(0x19C0));
    EXPECT_EQ(35u, mem.Read(0x1988));
    EXPECT_EQ(0u, mem.Read(0x1980));
    EXPECT_EQ(0u, mem.Read(0x19C4));
    EXPECT_EQ(expectedLog, LogLines());
}

// Including a second Init, which starts the clock setting afresh.
TEST(System, FailedInitsLeaveItUsable)
{
    VellacoreTest::TempDir dir;
    Logger::Init();
    EXPECT_FALSE(System::InitDevice("missing", 0xC0000000));
    ASSERT_NE(nullptr, System::Data);
    EXPECT_EQ(-1, System::Data->m_MemFD);
    EXPECT_TRUE(System::Exit());
    EXPECT_EQ(nullptr, System::Data);

    // An offset off the page grid cannot be mapped: no message, and nothing for Exit to touch.
    MemoryDevice mem("mem");
    EXPECT_FALSE(System::InitDevice("mem", 0xC0000123));
    EXPECT_EQ(-1, System::Data->m_MemFD);

    EXPECT_TRUE(System::Init());
    System::SetClockCPU(200);
    EXPECT_TRUE(System::Init());
    EXPECT_EQ(0, System::GetClockCPU());
    EXPECT_TRUE(System::Exit());
    EXPECT_EQ("[E] System::Init: missing open failed.\n[I] System::SetClockCPU:200\n", LogLines());
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

TEST(Random, RangesKeepTheirEnds)
{
    Random::Seed(1);
    EXPECT_EQ(Fixed(1), Random::GetFlt(Fixed(1), Fixed(1)));
    for (int i = 0; i < 1000; ++i) {
        Fixed reversed = Random::GetFlt(Fixed(3), Fixed(-2));
        EXPECT_TRUE(reversed >= Fixed(-2) && reversed <= Fixed(3)) << reversed.GetRaw();
        Fixed unit = Random::GetFlt();
        EXPECT_TRUE(unit >= Fixed(0) && unit <= Fixed(1)) << unit.GetRaw();
    }
}
