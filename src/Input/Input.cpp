#include "Vellacore/Input/Input.h"

namespace Vellacore {

Input::~Input() = default;

bool Input::SupportsCursor() const
{
    return false;
}

bool Input::GetCursorPos(int&, int&)
{
    return false;
}

} // namespace Vellacore
