#ifndef VELLACORE_AUDIO_AUDIOPLAYERSDL_H
#define VELLACORE_AUDIO_AUDIOPLAYERSDL_H

#include "Vellacore/Audio/AudioEffectSourceSDL.h"
#include "Vellacore/Audio/AudioMusicSourceSDL.h"
#include "Vellacore/Audio/AudioPlayer.h"
#include "Vellacore/Memory/Array.h"
#include "Vellacore/Memory/Ptr.h"

namespace Vellacore {

// The player on SDL and SDL_mixer. SDL's audio is one per process, so all players share it: the
// first Init opens it, the last Exit closes it, and the players in between get the first one's
// result.
class AudioPlayerSDL : public AudioPlayer {
public:
    static AudioPlayerSDL* Create();
    ~AudioPlayerSDL() override;

    bool Init() override;
    void Exit() override;
    AudioSource* AddMusic(std::string file) override;
    AudioSource* AddFX(std::string file, int channel) override;
    // Applied to the music and every channel while the audio is open; kept either way.
    void SetVolume(int volume) override;
    int GetVolume() const override;

protected:
    AudioPlayerSDL();

private:
    Array<Ptr<AudioMusicSourceSDL>> m_Music;
    Array<Ptr<AudioEffectSourceSDL>> m_Effects;
    I32 m_Volume;
};

} // namespace Vellacore

#endif
