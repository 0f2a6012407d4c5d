#include "Vellacore/Render/Material.h"

#include "Vellacore/Memory/Memory.h"

namespace Vellacore {

Material* Material::Create()
{
    return new (TypeInfoT<Material>::S_TypeInfo_1) Material();
}

Material::Material()
    : m_AmbientColor(0.2f, 0.2f, 0.2f, 1.0f),
      m_DiffuseColor(0.8f, 0.8f, 0.8f, 1.0f),
      m_SpecularColor(0.0f, 0.0f, 0.0f, 1.0f),
      m_EmissionColor(0.0f, 0.0f, 0.0f, 1.0f),
      m_Shininess(0)
{
}

Material::~Material() = default;

void Material::SetAmbientColor(Vector4T<float> const& color)
{
    m_AmbientColor = color;
}

Vector4T<float> Material::GetAmbientColor() const
{
    return m_AmbientColor;
}

void Material::SetDiffuseColor(Vector4T<float> const& color)
{
    m_DiffuseColor = color;
}

Vector4T<float> Material::GetDiffuseColor() const
{
    return m_DiffuseColor;
}

void Material::SetSpecularColor(Vector4T<float> const& color)
{
    m_SpecularColor = color;
}

Vector4T<float> Material::GetSpecularColor() const
{
    return m_SpecularColor;
}

void Material::SetEmissionColor(Vector4T<float> const& color)
{
    m_EmissionColor = color;
}

Vector4T<float> Material::GetEmissionColor() const
{
    return m_EmissionColor;
}

void Material::SetShininess(Fixed shininess)
{
    m_Shininess = shininess;
}

Fixed Material::GetShininess() const
{
    return m_Shininess;
}

} // namespace Vellacore
