#include "Vellacore/Audio/AudioPlayerSDL.h"

#include "Vellacore/Core/Logger.h"
#include "Vellacore/Memory/Memory.h"

#include <SDL.h>
#include <SDL_mixer.h>

#include <algorithm>

namespace Vellacore {

namespace {

// SDL's audio belongs to the process: how many players have called Init without Exit, and whether
// the one Init that opened it succeeded.
int S_InitCount = 0;
bool S_InitResult = false;

bool AudioIsOpen()
{
    return S_InitCount > 0 && S_InitResult;
}

// Silent without a logger, like the rest of the engine's error lines.
void LogError(char const* text, char const* detail)
{
    if (Logger* log = Logger::Instance())
        log->p("[E] ").p(text).p(detail).pLF();
}

void LogLoadError(char const* text, std::string const& file)
{
    LogError(text, file.c_str());
    LogError("SDL ERROR: ", SDL_GetError());
}

} // namespace

AudioPlayerSDL* AudioPlayerSDL::Create()
{
    return new (TypeInfoT<AudioPlayerSDL>::S_TypeInfo_1) AudioPlayerSDL();
}

AudioPlayerSDL::AudioPlayerSDL() : m_Volume(100) {}

AudioPlayerSDL::~AudioPlayerSDL() = default;

bool AudioPlayerSDL::Init()
{
    if (++S_InitCount > 1)
        return S_InitResult;
    S_InitResult = false;
    if (SDL_Init(SDL_INIT_AUDIO) != 0)
        LogError("SDL_Init failed: ", SDL_GetError());
    else if (Mix_OpenAudio(m_Frequency, AUDIO_S16LSB, m_Channels, m_ChunkSize) != 0)
        LogError("Mix_OpenAudio failed: ", SDL_GetError());
    else
        S_InitResult = true;
    return S_InitResult;
}

// An Exit without its Init keeps the count at 0, so that the next Init still opens the audio.
void AudioPlayerSDL::Exit()
{
    if (S_InitCount == 0 || --S_InitCount > 0)
        return;
    Mix_CloseAudio();
    SDL_Quit();
}

AudioSource* AudioPlayerSDL::AddMusic(std::string file)
{
    Mix_Music* music = Mix_LoadMUS(file.c_str());
    if (!music) {
        LogLoadError("AudioPlayerSDL::AddMusic: failed to load ", file);
        return nullptr;
    }
    m_Music.push_back(AudioMusicSourceSDL::Create(music, this));
    return m_Music.back();
}

AudioSource* AudioPlayerSDL::AddFX(std::string file, int channel)
{
    // The loader closes the stream, and takes a null one for a file that does not open.
    Mix_Chunk* chunk = Mix_LoadWAV_RW(SDL_RWFromFile(file.c_str(), "rb"), 1);
    if (!chunk) {
        LogLoadError("AudioPlayerSDL::AddFX: failed to load ", file);
        return nullptr;
    }
    m_Effects.push_back(AudioEffectSourceSDL::Create(chunk, this, channel));
    return m_Effects.back();
}

// The mixer's channel table exists only while the audio is open; touching it otherwise crashes
// SDL_mixer, so a closed mixer only gets the value remembered.
void AudioPlayerSDL::SetVolume(int volume)
{
    m_Volume = std::clamp(volume, 0, 100);
    if (!AudioIsOpen())
        return;
    int const mixerVolume = m_Volume * MIX_MAX_VOLUME / 100;
    Mix_VolumeMusic(mixerVolume);
    Mix_Volume(-1, mixerVolume);
}

int AudioPlayerSDL::GetVolume() const
{
    return m_Volume;
}

} // namespace Vellacore
