#ifndef VELLACORE_AUDIO_AUDIOEFFECTSOURCESDL_H
#define VELLACORE_AUDIO_AUDIOEFFECTSOURCESDL_H

#include "Vellacore/Audio/AudioSource.h"
#include "Vellacore/Core/Types.h"

// SDL_mixer's handle, declared here so that the engine's headers need no SDL headers.
struct Mix_Chunk;

namespace Vellacore {

class AudioPlayerSDL;

// A sound effect on one mixer channel. The channel is the one it was added with until the first
// start, then the one the mixer chose (-1 after a failed start). While it is -1, Stop, FadeOut and
// IsPlaying address every channel.
class AudioEffectSourceSDL : public AudioSource {
public:
    // Takes ownership of the chunk.
    static AudioEffectSourceSDL* Create(Mix_Chunk* chunk, AudioPlayerSDL* player, int channel);
    ~AudioEffectSourceSDL() override;

    // A start on a channel that is still playing cuts that play-back short.
    void Start(int loops) override;
    void Stop() override;
    void FadeIn(int ms, int loops) override;
    void FadeOut(int ms) override;
    bool IsPlaying() const override;

protected:
    AudioEffectSourceSDL(Mix_Chunk* chunk, AudioPlayerSDL* player, int channel);

private:
    Mix_Chunk* m_Chunk;
    // The player that loaded the effect and holds it; not counted, the player outlives it.
    AudioPlayerSDL* m_Player;
    I32 m_Channel;
};

} // namespace Vellacore

#endif
