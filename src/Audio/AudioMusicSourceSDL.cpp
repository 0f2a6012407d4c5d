#include "Vellacore/Audio/AudioMusicSourceSDL.h"

#include "Vellacore/Memory/Memory.h"

#include <SDL_mixer.h>

namespace Vellacore {

AudioMusicSourceSDL* AudioMusicSourceSDL::Create(Mix_Music* music, AudioPlayerSDL* player)
{
    return new (TypeInfoT<AudioMusicSourceSDL>::S_TypeInfo_1) AudioMusicSourceSDL(music, player);
}

AudioMusicSourceSDL::AudioMusicSourceSDL(Mix_Music* music, AudioPlayerSDL* player)
    : m_Music(music), m_Player(player), m_Channel(0)
{
}

AudioMusicSourceSDL::~AudioMusicSourceSDL()
{
    Mix_FreeMusic(m_Music);
}

void AudioMusicSourceSDL::Start(int loops)
{
    Mix_PlayMusic(m_Music, loops);
}

void AudioMusicSourceSDL::Stop()
{
    Mix_HaltMusic();
}

void AudioMusicSourceSDL::FadeIn(int loops, int ms)
{
    Mix_FadeInMusic(m_Music, loops, ms);
}

void AudioMusicSourceSDL::FadeOut(int ms)
{
    Mix_FadeOutMusic(ms);
}

bool AudioMusicSourceSDL::IsPlaying() const
{
    return Mix_PlayingMusic() != 0;
}

} // namespace Vellacore
