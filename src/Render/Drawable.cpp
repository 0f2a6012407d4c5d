#include "Vellacore/Render/Drawable.h"

namespace Vellacore {

Drawable::Drawable() : m_ColorMul(1.0f, 1.0f, 1.0f, 1.0f) {}

Drawable::~Drawable() = default;

// Pure only to keep Drawable abstract; subclasses without derived arrays have nothing to update.
void Drawable::UpdateDrawable() {}

void Drawable::SetShader(Shader* shader)
{
    m_Shader = shader;
}

Shader* Drawable::GetShader() const
{
    return m_Shader;
}

void Drawable::SetColorMul(Vector4T<float> colorMul)
{
    m_ColorMul = colorMul;
}

Vector4T<float> Drawable::GetColorMul() const
{
    return m_ColorMul;
}

} // namespace Vellacore
