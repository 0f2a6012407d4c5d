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
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <thread>
#include <tuple>
#include <utility>

using namespace Vellacore;
using VellacoreTest::ReadFile;
using ::testing::MatchesRegex;

namespace {

void PutLE(std::ostream& out, U32 value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        out.put(static_cast<char>((value >> (8 * i)) & 0xFF));
}

// One second of a 440 Hz tone, 16-bit mono at the player's rate, as a RIFF WAVE file: long enough
// that nothing finishes playing while a test looks at it.
void WriteToneWAV(char const* path)
{
    U32 const rate = 22050, bytes = rate * 2;
    std::ofstream out(path, std::ios::binary);
    out << "RIFF";
    PutLE(out, 36 + bytes, 4);
    out << "WAVEfmt ";
    // Format block size, PCM, mono, rate, bytes per second, bytes per frame, bits per sample.
    for (auto [value, size] : { std::pair<U32, int>{ 16, 4 }, { 1, 2 }, { 1, 2 }, { rate, 4 }, { bytes, 4 }, { 2, 2 }, { 16, 2 } })
        PutLE(out, value, size);
    out << "data";
    PutLE(out, bytes, 4);
    for (U32 i = 0; i < rate; ++i)
        PutLE(out, static_cast<U32>(static_cast<I32>(12000.0 * std::sin(2.0 * std::acos(-1.0) * 440.0 * i / rate))), 2);
}

// Whether the mixed stream the disk driver writes holds anything but silence, given up to 10 s:
// the audio thread is slow under valgrind and the emulator.
bool OutputTurnsAudible(std::filesystem::path const& output)
{
    auto const end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    do {
        if (ReadFile(output).find_first_not_of('\0') != std::string::npos)
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    } while (std::chrono::steady_clock::now() < end);
    return false;
}

// The mixer counts how often it has been opened.
int Openings()
{
    return Mix_QuerySpec(nullptr, nullptr, nullptr);
}

// Initialised for the test's length and exited however the test ends, so that the shared count
// is back at 0 for the next test in the same process.
struct OpenPlayer {
    OpenPlayer() : m_Player(AudioPlayer::Create()), m_Ok(m_Player->Init()) {}
    ~OpenPlayer() { m_Player->Exit(); }
    Ptr<AudioPlayer> m_Player;
    bool m_Ok;
};

// No sound card needed: SDL's disk driver mixes as usual and writes the stream to a file.
class Audio : public ::testing::Test {
protected:
    void SetUp() override
    {
        setenv("SDL_AUDIODRIVER", "disk", 1);
        setenv("SDL_DISKAUDIOFILE", Output().c_str(), 1);
        WriteToneWAV("tone.wav");
        Logger::Init();
    }
    void TearDown() override
    {
        Logger::Exit();
        // Tests after these get SDL's own choice of driver again, not a file in a removed folder.
        unsetenv("SDL_AUDIODRIVER");
        unsetenv("SDL_DISKAUDIOFILE");
    }

    std::filesystem::path Output() const { return m_Dir.Path() / "mixed.raw"; }
    // What was logged after the banner; the log is closed.
    static std::string Logged()
    {
        Logger::Exit();
        std::string const log = ReadFile("Xapp.log");
        return log.substr(log.find('\n') + 1);
    }

    VellacoreTest::TempDir m_Dir;
};

} // namespace

TEST_F(Audio, StartedEffectIsMixedIntoTheOutput)
{
    OpenPlayer open;
    ASSERT_TRUE(open.m_Ok);
    AudioSource* fx = open.m_Player->AddFX("tone.wav", -1);
    ASSERT_NE(nullptr, fx);
    EXPECT_FALSE(fx->IsPlaying());
    fx->Start(-1);
    EXPECT_TRUE(fx->IsPlaying());
    EXPECT_TRUE(OutputTurnsAudible(Output()));
    fx->Stop();
    EXPECT_FALSE(fx->IsPlaying());
}

// A restart reuses the channel of the last start or fade-in (ms first for effects), and ends the
// fade, or the channel would stay at the fade's low volume.
TEST_F(Audio, RestartStaysOnItsChannelAtFullVolume)
{
    struct Case {
        int added, playsOn;
    };
    for (Case c : { Case{ -1, 0 }, Case{ 3, 3 } }) {
        OpenPlayer open;
        ASSERT_TRUE(open.m_Ok);
        AudioSource* fx = open.m_Player->AddFX("tone.wav", c.added);
        ASSERT_NE(nullptr, fx);
        fx->Start(-1);
        fx->Start(-1);
        EXPECT_EQ(1, Mix_Playing(-1)) << c.added;
        fx->FadeIn(60000, -1);
        EXPECT_EQ(MIX_FADING_IN, Mix_FadingChannel(c.playsOn)) << c.added;
        fx->Start(-1);
        EXPECT_EQ(1, Mix_Playing(-1)) << c.added;
        EXPECT_EQ(1, Mix_Playing(c.playsOn)) << c.added;
        EXPECT_EQ(MIX_MAX_VOLUME, Mix_Volume(c.playsOn, -1)) << c.added;
        fx->FadeOut(60000);
        EXPECT_EQ(MIX_FADING_OUT, Mix_FadingChannel(c.playsOn)) << c.added;
    }
}

// Loops first for music: a fade-in over one play-back.
TEST_F(Audio, MusicFadesIn)
{
    OpenPlayer open;
    ASSERT_TRUE(open.m_Ok);
    AudioSource* music = open.m_Player->AddMusic("tone.wav");
    ASSERT_NE(nullptr, music);
    music->FadeIn(0, 60000);
    EXPECT_EQ(MIX_FADING_IN, Mix_FadingMusic());
    EXPECT_TRUE(music->IsPlaying());
    music->Stop();
    EXPECT_FALSE(music->IsPlaying());
}

TEST_F(Audio, VolumeReachesTheMixer)
{
    struct Case {
        int set, stored, mixer;
    };
    OpenPlayer open;
    ASSERT_TRUE(open.m_Ok);
    EXPECT_EQ(100, open.m_Player->GetVolume());
    for (Case c : { Case{ 150, 100, 128 }, Case{ -5, 0, 0 }, Case{ 50, 50, 64 }, Case{ 1, 1, 1 }, Case{ 99, 99, 126 } }) {
        open.m_Player->SetVolume(c.set);
        EXPECT_EQ(c.stored, open.m_Player->GetVolume()) << c.set;
        EXPECT_EQ(c.mixer, Mix_VolumeMusic(-1)) << c.set;
        EXPECT_EQ(c.mixer, Mix_Volume(-1, -1)) << c.set;
    }
}

TEST_F(Audio, PlayersShareOneOpening)
{
    Ptr<AudioPlayer> first = AudioPlayer::Create();
    Ptr<AudioPlayer> second = AudioPlayer::Create();
    EXPECT_TRUE(first->Init());
    EXPECT_TRUE(second->Init());
    int frequency = 0, channels = 0;
    Uint16 format = 0;
    EXPECT_EQ(1, Mix_QuerySpec(&frequency, &format, &channels));
    EXPECT_EQ(std::make_tuple(22050, AUDIO_S16LSB, 2), std::make_tuple(frequency, format, channels));
    first->Exit();
    EXPECT_EQ(1, Openings());
    second->Exit();
    EXPECT_EQ(0, Openings());
    EXPECT_EQ(0u, SDL_WasInit(SDL_INIT_AUDIO));
    // A closed mixer must not be touched, only the value kept.
    second->SetVolume(30);
    EXPECT_EQ(30, second->GetVolume());
}

TEST_F(Audio, FailedInitIsSharedAndRecoverable)
{
    setenv("SDL_AUDIODRIVER", "no-such-driver", 1);
    Ptr<AudioPlayer> first = AudioPlayer::Create();
    Ptr<AudioPlayer> second = AudioPlayer::Create();
    EXPECT_FALSE(first->Init());
    EXPECT_FALSE(second->Init());
    second->Exit();
    first->Exit();
    // One Exit too many must not unbalance the count.
    first->Exit();
    setenv("SDL_AUDIODRIVER", "disk", 1);
    EXPECT_TRUE(first->Init());
    first->Exit();
    EXPECT_EQ(0, Openings());
    EXPECT_THAT(Logged(), MatchesRegex("\\[E\\] Mix_OpenAudio failed: [^\n]+\n"));
}

TEST_F(Audio, MissingFilesAreLoggedInTwoLines)
{
    OpenPlayer open;
    ASSERT_TRUE(open.m_Ok);
    EXPECT_EQ(nullptr, open.m_Player->AddMusic("missing.ogg"));
    EXPECT_EQ(nullptr, open.m_Player->AddFX("missing.wav", 1));
    EXPECT_THAT(Logged(), MatchesRegex("\\[E\\] AudioPlayerSDL::AddMusic: failed to load missing\\.ogg\n"
                                       "\\[E\\] SDL ERROR: [^\n]+\n"
                                       "\\[E\\] AudioPlayerSDL::AddFX: failed to load missing\\.wav\n"
                                       "\\[E\\] SDL ERROR: [^\n]+\n"));
}
