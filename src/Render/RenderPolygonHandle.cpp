#include "Vellacore/Render/RenderPolygonHandle.h"

namespace Vellacore {

RenderPolygonHandle::~RenderPolygonHandle() = default;

} // namespace Vellacore
