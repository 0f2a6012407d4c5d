#include "Vellacore/Render/ShaderFactory.h"

#include "Vellacore/Image/ImportPNG.h"
#include "Vellacore/Render/Material.h"
#include "Vellacore/Render/Texture2D.h"

#include <utility>

namespace Vellacore {

namespace {

Texture2D* LoadTexture(std::string path)
{
    Image* image = Import::ImportPNG(std::move(path), true);
    if (!image)
        return nullptr;
    Texture2D* texture = Texture2D::Create();
    texture->SetImage(image);
    return texture;
}

} // namespace

Shader* CreateTexturedShader(std::string path, bool lighting, Shader::BlendMode blend)
{
    Texture2D* texture = LoadTexture(std::move(path));
    if (!texture)
        return nullptr;
    Material* material = Material::Create();
    material->SetDiffuseColor(Vector4T<float>(1.0f, 1.0f, 1.0f, 1.0f));

    Shader* shader = Shader::Create();
    shader->SetTexture(0, texture);
    shader->SetMaterial(material);
    shader->SetLightingEnabled(lighting);
    shader->SetBlendMode(blend);
    return shader;
}

Shader* CreateReflectionShader(std::string path, std::string reflectionPath, bool lighting, Shader::BlendMode blend)
{
    // Held here until the shader takes it, so that a failing first texture does not leak it.
    Ptr<Texture2D> reflection = LoadTexture(std::move(reflectionPath));
    if (!reflection)
        return nullptr;
    Shader* shader = CreateTexturedShader(std::move(path), lighting, blend);
    if (!shader)
        return nullptr;
    shader->SetTexture(1, reflection);
    shader->SetShaderType(Shader::ShaderReflection);
    return shader;
}

} // namespace Vellacore
