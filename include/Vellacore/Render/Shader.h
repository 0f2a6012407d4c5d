#ifndef VELLACORE_RENDER_SHADER_H
#define VELLACORE_RENDER_SHADER_H

#include "Vellacore/Core/Object.h"
#include "Vellacore/Core/Types.h"
#include "Vellacore/Memory/Ptr.h"

namespace Vellacore {

class Material;
class Texture;

// A drawable's look: up to two textures, an optional material, lighting and culling switches, how
// it blends with what is already drawn, and the layer that orders drawing.
class Shader : public Object {
public:
    // How the renderer combines the surface with the frame and the depth buffer.
    enum BlendMode : I32 {
        BlendOpaque = 0,
        BlendAlpha = 1,
        BlendAlphaTest = 2,
        BlendAdditive = 3,
        BlendNoDepthWrite = 4
    };
    // A reflection shader carries its reflection map in texture slot 1.
    enum ShaderType : I32 { ShaderPlain = 0, ShaderReflection = 1 };

    static int const S_NumTextures = 2;
    // Layers run from 0 to 31 and are drawn in that order.
    static int const S_DefaultLayer = 8;

    static Shader* Create();
    ~Shader() override;

    void SetMaterial(Material* material);
    Material* GetMaterial() const;
    // Slots outside 0 .. S_NumTextures - 1 hold nothing: setting one is ignored.
    void SetTexture(int slot, Texture* texture);
    Texture* GetTexture(int slot) const;
    void SetLightingEnabled(bool enabled);
    bool GetLightingEnabled() const;
    void SetCullingEnabled(bool enabled);
    bool GetCullingEnabled() const;
    void SetBlendMode(BlendMode mode);
    BlendMode GetBlendMode() const;
    void SetLayer(int layer);
    int GetLayer() const;
    void SetShaderType(ShaderType type);
    ShaderType GetShaderType() const;

protected:
    Shader();

private:
    static bool IsSlot(int slot);

    Ptr<Material> m_Material;
    Ptr<Texture> m_Textures[S_NumTextures];
    bool m_LightingEnabled;
    BlendMode m_BlendMode;
    I32 m_Layer;
    bool m_CullingEnabled;
    ShaderType m_ShaderType;
};

} // namespace Vellacore

#endif
