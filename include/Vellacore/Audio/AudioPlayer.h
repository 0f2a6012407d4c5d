#ifndef VELLACORE_AUDIO_AUDIOPLAYER_H
#define VELLACORE_AUDIO_AUDIOPLAYER_H

#include "Vellacore/Core/Object.h"
#include "Vellacore/Core/Types.h"

#include <string>

namespace Vellacore {

class AudioSource;

// Plays music and sound effects. The player owns every source it loads; callers keep the raw
// pointers they get back and must not use them once the player is gone.
class AudioPlayer : public Object {
public:
    // Makes the platform's player; the owner calls Init before use and Exit at the end.
    static AudioPlayer* Create();
    ~AudioPlayer() override = 0;

    virtual bool Init() = 0;
    virtual void Exit() = 0;
    // Null when the file cannot be loaded.
    virtual AudioSource* AddMusic(std::string file) = 0;
    // The effect plays on the given mixer channel, or on any free one for -1.
    virtual AudioSource* AddFX(std::string file, int channel) = 0;
    // 0 (silent) to 100 (full); values outside are clamped.
    virtual void SetVolume(int volume) = 0;
    virtual int GetVolume() const = 0;

protected:
    AudioPlayer();

    // Output format: samples per second, 1 (mono) or 2 (stereo), sample frames per mixing buffer.
    I16 m_Frequency;
    I16 m_Channels;
    I32 m_ChunkSize;
};

} // namespace Vellacore

#endif
