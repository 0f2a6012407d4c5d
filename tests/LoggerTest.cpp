#include "Vellacore/Core/Assert.h"
#include "Vellacore/Core/Logger.h"
#include "Vellacore/Core/Path.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

using namespace Vellacore;
using VellacoreTest::ReadFile;

namespace {
std::string const Banner = "---- START  (BUILD: Apr 26 2010 / 18:27:56) ----\n";
}

TEST(Logger, InitOpensOneLogWithOneBanner)
{
    VellacoreTest::TempDir dir;
    EXPECT_EQ(nullptr, Logger::Instance());
    Logger::Init();
    Logger* first = Logger::Instance();
    Logger::Init();
    EXPECT_EQ(first, Logger::Instance());
    Logger::Instance()->p("[W] ").p(std::string("A::B: x=")).p(-7).p(" ").p(3u).p(" ").px(0xBEEFu).p(" ").p(0.5f).pLF();
    Logger::Exit();
    EXPECT_EQ(nullptr, Logger::Instance());
    EXPECT_EQ(Banner + "[W] A::B: x=-7 3 0xbeef 0.500000\n", ReadFile("Xapp.log"));
}

TEST(Logger, TimeLineEndsWithItsOwnLineFeed)
{
    VellacoreTest::TempDir dir;
    Logger("time.log").pTime();
    std::string line = ReadFile("time.log").substr(Banner.size());
    EXPECT_EQ(25u, line.size());
    EXPECT_EQ('\n', line.back());
}

TEST(Logger, UnopenableFileMakesEveryCallHarmless)
{
    Logger log("/nonexistent-directory/Xapp.log");
    log.p("[E] ").p(1).px(2u).p(3.0f).pTime().pLF();
    log.Flush();
}

TEST(Logger, ConsoleWritesToStandardErrorAndOwnsIt)
{
    VellacoreTest::TempDir dir;
    EXPECT_EXIT(
        {
            Logger* log = new Logger(">console");
            log->p("[I] console line").pLF();
            delete log;
            std::_Exit(std::fputs("after close", stderr) == EOF ? 0 : 1);
        },
        testing::ExitedWithCode(0), "---- START  \\(BUILD: Apr 26 2010 / 18:27:56\\) ----\n\\[I\\] console line\n$");
    EXPECT_TRUE(std::filesystem::is_empty(dir.Path()));
}

TEST(Assert, LogsTheLineAndAborts)
{
    VellacoreTest::TempDir dir;
    EXPECT_DEATH({ Logger::Init(); Assert("w>0 && h>0", "Image/Image", 12); }, "");
    EXPECT_EQ(Banner + "[E] Image/Image(12)w>0 && h>0\n", ReadFile("Xapp.log"));
}

TEST(Path, SlashWinsOverBackslash)
{
    // Path, file name, folder and stem.
    struct { char const *path, *name, *folder, *stem; } const cases[] = {
        { "dir/", "", "dir/", "" },
        { "file.png", "file.png", "file.png", "file" },
        { "a\\b/c", "c", "a\\b/", "c" },
        { "a\\b", "b", "a\\", "b" },
        { "a/b.c.d", "b.c.d", "a/", "b.c" },
        { "a.b/c", "c", "a.b/", "c" },
        { "", "", "", "" },
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.path);
        EXPECT_EQ(c.name, ExtractFilename(c.path));
        EXPECT_EQ(c.folder, ExtractFilepath(c.path));
        EXPECT_EQ(c.stem, ExtractFilenameExt(c.path));
    }
}
