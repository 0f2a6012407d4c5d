#include "Vellacore/Scene/Fog.h"

#include "Vellacore/Memory/Memory.h"

namespace Vellacore {

Fog* Fog::Create()
{
    return new (TypeInfoT<Fog>::S_TypeInfo_1) Fog();
}

Fog::Fog() : m_Mode(Linear), m_Density(0), m_Color(0, 0, 0, 0), m_Start(0), m_End(1) {}

Fog::~Fog() = default;

} // namespace Vellacore
