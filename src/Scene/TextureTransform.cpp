#include "Vellacore/Scene/TextureTransform.h"

namespace Vellacore {

TextureTransform* TextureTransform::Create()
{
    return new (TypeInfoT<TextureTransform>::S_TypeInfo_1) TextureTransform();
}

TextureTransform::TextureTransform() = default;

TextureTransform::~TextureTransform() = default;

void TextureTransform::ComputeLocalMatrix()
{
    if (!ConsumeDirtyFlags())
        return;
    // A product applies its left factor to a coordinate first: the centre is moved to the origin,
    // scaled and rotated there, scrolled, and moved back.
    Vector3T<Fixed> const centre(0.5, 0.5, 0);
    m_LocalMatrix = (TranslationMatrix(-centre) * ScalingMatrix(m_Scaling)) * RotationMatrix(m_Rotation, m_RotationOrder);
    AppendTranslation(m_LocalMatrix, m_Translation);
    AppendTranslation(m_LocalMatrix, centre);
}

} // namespace Vellacore
