#ifndef VELLACORE_AUDIO_AUDIOSOURCE_H
#define VELLACORE_AUDIO_AUDIOSOURCE_H

#include "Vellacore/Core/Object.h"

namespace Vellacore {

// One sound loaded by an AudioPlayer. Loop counts follow the mixer: 0 plays once, n plays n + 1
// times, -1 loops until stopped.
class AudioSource : public Object {
public:
    ~AudioSource() override = 0;

    virtual void Start(int loops) = 0;
    virtual void Stop() = 0;
    // The order of the two arguments depends on the kind of source: music takes (loops, ms),
    // effects take (ms, loops).
    virtual void FadeIn(int, int) = 0;
    virtual void FadeOut(int ms) = 0;
    virtual bool IsPlaying() const = 0;
};

} // namespace Vellacore

#endif
