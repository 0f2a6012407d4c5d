#include "Vellacore/Audio/AudioPlayer.h"

#include "Vellacore/Audio/AudioPlayerSDL.h"

namespace Vellacore {

AudioPlayer* AudioPlayer::Create()
{
    return AudioPlayerSDL::Create();
}

// CD quality halved: the handheld's CPU mixes in software, and 4096 frames keep it from starving.
AudioPlayer::AudioPlayer() : m_Frequency(22050), m_Channels(2), m_ChunkSize(4096) {}

AudioPlayer::~AudioPlayer() = default;

} // namespace Vellacore
