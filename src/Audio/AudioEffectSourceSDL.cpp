#include "Vellacore/Audio/AudioEffectSourceSDL.h"

#include "Vellacore/Memory/Memory.h"

#include <SDL_mixer.h>

namespace Vellacore {

AudioEffectSourceSDL* AudioEffectSourceSDL::Create(Mix_Chunk* chunk, AudioPlayerSDL* player, int channel)
{
    return new (TypeInfoT<AudioEffectSourceSDL>::S_TypeInfo_1) AudioEffectSourceSDL(chunk, player, channel);
}

AudioEffectSourceSDL::AudioEffectSourceSDL(Mix_Chunk* chunk, AudioPlayerSDL* player, int channel)
    : m_Chunk(chunk), m_Player(player), m_Channel(channel)
{
}

AudioEffectSourceSDL::~AudioEffectSourceSDL()
{
    Mix_FreeChunk(m_Chunk);
}

void AudioEffectSourceSDL::Start(int loops)
{
    // Halting first resets the channel's fade and finishes the old play-back before the new one.
    if (m_Channel >= 0 && Mix_Playing(m_Channel))
        Mix_HaltChannel(m_Channel);
    m_Channel = Mix_PlayChannelTimed(m_Channel, m_Chunk, loops, -1);
}

void AudioEffectSourceSDL::Stop()
{
    Mix_HaltChannel(m_Channel);
}

void AudioEffectSourceSDL::FadeIn(int ms, int loops)
{
    m_Channel = Mix_FadeInChannelTimed(m_Channel, m_Chunk, loops, ms, -1);
}

void AudioEffectSourceSDL::FadeOut(int ms)
{
    Mix_FadeOutChannel(m_Channel, ms);
}

bool AudioEffectSourceSDL::IsPlaying() const
{
    return Mix_Playing(m_Channel) != 0;
}

} // namespace Vellacore
