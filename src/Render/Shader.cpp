#include "Vellacore/Render/Shader.h"

namespace Vellacore {

Shader* Shader::Create()
{
    return new (TypeInfoT<Shader>::S_TypeInfo_1) Shader();
}

Shader::Shader()
    : m_LightingEnabled(true),
      m_BlendMode(BlendOpaque),
      m_Layer(S_DefaultLayer),
      m_CullingEnabled(true),
      m_ShaderType(ShaderPlain)
{
}

Shader::~Shader() = default;

bool Shader::IsSlot(int slot)
{
    return slot >= 0 && slot < S_NumTextures;
}

void Shader::SetMaterial(Material* material)
{
    m_Material = material;
}

Material* Shader::GetMaterial() const
{
    return m_Material;
}

void Shader::SetTexture(int slot, Texture* texture)
{
    if (IsSlot(slot))
        m_Textures[slot] = texture;
}

Texture* Shader::GetTexture(int slot) const
{
    return IsSlot(slot) ? m_Textures[slot].Get() : nullptr;
}

void Shader::SetLightingEnabled(bool enabled)
{
    m_LightingEnabled = enabled;
}

bool Shader::GetLightingEnabled() const
{
    return m_LightingEnabled;
}

void Shader::SetCullingEnabled(bool enabled)
{
    m_CullingEnabled = enabled;
}

bool Shader::GetCullingEnabled() const
{
    return m_CullingEnabled;
}

void Shader::SetBlendMode(BlendMode mode)
{
    m_BlendMode = mode;
}

Shader::BlendMode Shader::GetBlendMode() const
{
    return m_BlendMode;
}

void Shader::SetLayer(int layer)
{
    m_Layer = layer;
}

int Shader::GetLayer() const
{
    return m_Layer;
}

void Shader::SetShaderType(ShaderType type)
{
    m_ShaderType = type;
}

Shader::ShaderType Shader::GetShaderType() const
{
    return m_ShaderType;
}

} // namespace Vellacore
