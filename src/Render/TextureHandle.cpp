#include "Vellacore/Render/TextureHandle.h"

namespace Vellacore {

TextureHandle::~TextureHandle() = default;

} // namespace Vellacore
