#ifndef VELLACORE_RENDER_MATERIAL_H
#define VELLACORE_RENDER_MATERIAL_H

#include "Vellacore/Core/Object.h"
#include "Vellacore/Math/Fixed.h"
#include "Vellacore/Math/Vector4T.h"

namespace Vellacore {

// Fixed-function lighting colours (RGBA) of a surface. A new material is dull grey with no
// highlight and no glow.
class Material : public Object {
public:
    static Material* Create();
    ~Material() override;

    void SetAmbientColor(Vector4T<float> const& color);
    Vector4T<float> GetAmbientColor() const;
    void SetDiffuseColor(Vector4T<float> const& color);
    Vector4T<float> GetDiffuseColor() const;
    void SetSpecularColor(Vector4T<float> const& color);
    Vector4T<float> GetSpecularColor() const;
    void SetEmissionColor(Vector4T<float> const& color);
    Vector4T<float> GetEmissionColor() const;
    void SetShininess(Fixed shininess);
    Fixed GetShininess() const;

protected:
    Material();

private:
    Vector4T<float> m_AmbientColor;
    Vector4T<float> m_DiffuseColor;
    Vector4T<float> m_SpecularColor;
    Vector4T<float> m_EmissionColor;
    Fixed m_Shininess;
};

} // namespace Vellacore

#endif
