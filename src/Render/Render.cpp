#include "Vellacore/Render/Render.h"

namespace Vellacore {

Render::~Render() = default;

} // namespace Vellacore
