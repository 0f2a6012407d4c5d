#include "Vellacore/Scene/Light.h"

#include "Vellacore/Core/Logger.h"
#include "Vellacore/Memory/Memory.h"

namespace Vellacore {

Light* Light::Create()
{
    return new (TypeInfoT<Light>::S_TypeInfo_1) Light();
}

Light::Light() : m_Color(0, 0, 0), m_Type(Ambient) {}

// Lights may outlive the logger when a game releases its scene after Logger::Exit().
Light::~Light()
{
    if (Logger* log = Logger::Instance())
        log->p("[D] ").p("~Light").pLF();
}

void Light::SetType(LightType type)
{
    m_Type = type;
}

Light::LightType Light::GetType() const
{
    return m_Type;
}

void Light::SetColor(Vector3T<float> const& color)
{
    m_Color = color;
}

Vector3T<float> Light::GetColor() const
{
    return m_Color;
}

} // namespace Vellacore
