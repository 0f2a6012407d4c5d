#include "Vellacore/Render/Wiz/GLEXT.h"

namespace Vellacore {

void GLEXT::InitExtensions() {}

} // namespace Vellacore
