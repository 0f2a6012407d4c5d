#include "Vellacore/Audio/AudioPlayer.h"
#include "Vellacore/Audio/AudioSource.h"
#include "Vellacore/Core/Logger.h"
#include "Vellacore/Memory/Ptr.h"
#include "support/TempDir.h"

#include <SDL.h>
#include <SDL_mixer.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <thread>
#include <utility>

using namespace Vellacore;
using VellacoreTest::ReadFile;
using ::testing::MatchesRegex;

namespace {

std::string LE(U32 value, int bytes)
{
    std::string out;
    for (int i = 0; i < bytes; ++i)
        out += static_cast<char>(value >> (8 * i));
    return out;
}

// One second at a steady level (0x1010) as a RIFF WAVE file: PCM, mono, 16-bit, at the player's 22050 Hz.
void WriteToneWAV(char const* path)
{
    std::ofstream out(path, std::ios::binary);
    out << "RIFF" << LE(36 + 44100, 4) << "WAVEfmt " << LE(16, 4) << LE(1, 2) << LE(1, 2) << LE(22050, 4)
        << LE(44100, 4) << LE(2, 2) << LE(16, 2) << "data" << LE(44100, 4) << std::string(44100, '\x10');
}

// No sound card: SDL's disk driver writes the mixed stream to a file. TearDown rebalances the shared count.
class Audio : public ::testing::Test {
protected:
    void SetUp() override
    {
        setenv("SDL_AUDIODRIVER", "disk", 1);
        setenv("SDL_DISKAUDIOFILE", (m_Dir.Path() / "mixed.raw").c_str(), 1);
        WriteToneWAV("tone.wav");
        Logger::Init();
    }
    void TearDown() override
    {
        m_Player->Exit();
        Logger::Exit();
        unsetenv("SDL_AUDIODRIVER");
        unsetenv("SDL_DISKAUDIOFILE");
    }

    VellacoreTest::TempDir m_Dir;
    Ptr<AudioPlayer> m_Player = AudioPlayer::Create();
};

} // namespace

// A restart reuses the channel given, or the one the last start or fade-in found, and ends the fade,
// or the channel would stay at the fade's low volume. Fades take ms first for effects, loops first for
// music. The output gets up to 10 s: the audio thread is slow under valgrind and the emulator.
TEST_F(Audio, RestartedEffectIsMixedAtFullVolume)
{
    ASSERT_TRUE(m_Player->Init());
    for (auto [added, playsOn] : { std::pair(3, 3), std::pair(-1, 0) }) {
        AudioSource* fx = m_Player->AddFX("tone.wav", added);
        ASSERT_NE(nullptr, fx);
        fx->FadeIn(60000, -1);
        EXPECT_EQ(MIX_FADING_IN, Mix_FadingChannel(playsOn)) << added;
        fx->Start(-1);
        fx->Start(-1);
        EXPECT_EQ(1, Mix_Playing(-1)) << added;
        EXPECT_EQ(MIX_MAX_VOLUME, Mix_Volume(playsOn, -1)) << added;
        EXPECT_TRUE(fx->IsPlaying()) << added;
        auto const end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (ReadFile(m_Dir.Path() / "mixed.raw").find_first_not_of('\0') == std::string::npos) {
            ASSERT_LT(std::chrono::steady_clock::now(), end) << "the output stayed silent";
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        fx->Stop();
        EXPECT_FALSE(fx->IsPlaying()) << added;
    }
    AudioSource* music = m_Player->AddMusic("tone.wav");
    ASSERT_NE(nullptr, music);
    music->FadeIn(0, 60000);
    EXPECT_EQ(MIX_FADING_IN, Mix_FadingMusic());
}

TEST_F(Audio, VolumeReachesTheMixer)
{
    ASSERT_TRUE(m_Player->Init());
    struct { int set, stored, mixer; } const cases[] = {
        { 150, 100, 128 }, { -5, 0, 0 }, { 50, 50, 64 }, { 99, 99, 126 } };
    for (auto const& c : cases) {
        m_Player->SetVolume(c.set);
        EXPECT_EQ(c.stored, m_Player->GetVolume()) << c.set;
        EXPECT_EQ(c.mixer, Mix_VolumeMusic(-1)) << c.set;
        EXPECT_EQ(c.mixer, Mix_Volume(-1, -1)) << c.set;
    }
}

// A failed opening is shared too; one Exit too many must not unbalance the count; a closed mixer is
// not touched, only the volume kept.
TEST_F(Audio, PlayersShareOneOpening)
{
    Ptr<AudioPlayer> second = AudioPlayer::Create();
    setenv("SDL_AUDIODRIVER", "no-such-driver", 1);
    EXPECT_FALSE(m_Player->Init());
    EXPECT_FALSE(second->Init());
    second->Exit();
    m_Player->Exit();
    m_Player->Exit();
    setenv("SDL_AUDIODRIVER", "disk", 1);
    EXPECT_TRUE(m_Player->Init());
    EXPECT_TRUE(second->Init());
    m_Player->Exit();
    EXPECT_EQ(1, Mix_QuerySpec(nullptr, nullptr, nullptr));
    second->Exit();
    EXPECT_EQ(0, Mix_QuerySpec(nullptr, nullptr, nullptr));
    EXPECT_EQ(0u, SDL_WasInit(SDL_INIT_AUDIO));
    second->SetVolume(30);
    EXPECT_EQ(30, second->GetVolume());
    Logger::Exit();
    EXPECT_THAT(ReadFile("Xapp.log"), MatchesRegex("[^\n]+\n\\[E\\] Mix_OpenAudio failed: [^\n]+\n"));
}

TEST_F(Audio, MissingFilesAreLoggedInTwoLines)
{
    ASSERT_TRUE(m_Player->Init());
    EXPECT_EQ(nullptr, m_Player->AddMusic("missing.ogg"));
    EXPECT_EQ(nullptr, m_Player->AddFX("missing.wav", 1));
    Logger::Exit();
    EXPECT_THAT(ReadFile("Xapp.log"), MatchesRegex("[^\n]+\n" // the banner
                                                   "\\[E\\] AudioPlayerSDL::AddMusic: failed to load missing\\.ogg\n"
                                                   "\\[E\\] SDL ERROR: [^\n]+\n"
                                                   "\\[E\\] AudioPlayerSDL::AddFX: failed to load missing\\.wav\n"
                                                   "\\[E\\] SDL ERROR: [^\n]+\n"));
}
