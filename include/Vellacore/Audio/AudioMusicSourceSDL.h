#ifndef VELLACORE_AUDIO_AUDIOMUSICSOURCESDL_H
#define VELLACORE_AUDIO_AUDIOMUSICSOURCESDL_H

#include "Vellacore/Audio/AudioSource.h"
#include "Vellacore/Core/Types.h"

// SDL_mixer's handle, declared here so that the engine's headers need no SDL headers.
typedef struct _Mix_Music Mix_Music;

namespace Vellacore {

class AudioPlayerSDL;

// A piece of music. The mixer has one music stream, so Stop, FadeOut and IsPlaying act on
// whatever music is playing, not only on this one.
class AudioMusicSourceSDL : public AudioSource {
public:
    // Takes ownership of the handle.
    static AudioMusicSourceSDL* Create(Mix_Music* music, AudioPlayerSDL* player);
    ~AudioMusicSourceSDL() override;

    void Start(int loops) override;
    void Stop() override;
    void FadeIn(int loops, int ms) override;
    void FadeOut(int ms) override;
    bool IsPlaying() const override;

protected:
    AudioMusicSourceSDL(Mix_Music* music, AudioPlayerSDL* player);

private:
    Mix_Music* m_Music;
    // The player that loaded the music and holds it; not counted, the player outlives it.
    AudioPlayerSDL* m_Player;
    // Music has no mixer channel: always 0.
    I32 m_Channel;
};

} // namespace Vellacore

#endif
