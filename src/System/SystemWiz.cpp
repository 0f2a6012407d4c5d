// Built only for the handheld (VELLACORE_PLATFORM=wiz): the one place the library names the
// physical-memory device.
#include "Vellacore/System/System.h"

namespace Vellacore {

bool System::Init()
{
    return InitDevice("/dev/mem", RegisterBlockAddress);
}

} // namespace Vellacore
