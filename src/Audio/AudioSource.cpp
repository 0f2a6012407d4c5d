#include "Vellacore/Audio/AudioSource.h"

namespace Vellacore {

AudioSource::~AudioSource() = default;

} // namespace Vellacore
