#include "Vellacore/Scene/LookTransform.h"

namespace Vellacore {

LookTransform* LookTransform::Create()
{
    return new (TypeInfoT<LookTransform>::S_TypeInfo_1) LookTransform();
}

LookTransform::LookTransform()
    : m_LookAt(Vector3T<Fixed>::Zero), m_Up(Vector3T<Fixed>::Up), m_Offset(Vector3T<Fixed>::Zero)
{
}

LookTransform::~LookTransform() = default;

void LookTransform::SetLookAt(Vector3T<Fixed> const& target)
{
    m_LookAt = target;
    m_DirtyFlags |= LookAtDirty;
}

void LookTransform::SetUp(Vector3T<Fixed> const& up)
{
    m_Up = up;
    m_DirtyFlags |= UpDirty;
}

void LookTransform::SetOffset(Vector3T<Fixed> const& offset)
{
    m_Offset = offset;
    m_DirtyFlags |= OffsetDirty;
}

Vector3T<Fixed> LookTransform::GetLookAt() const
{
    return m_LookAt;
}

Vector3T<Fixed> LookTransform::GetUp() const
{
    return m_Up;
}

Vector3T<Fixed> LookTransform::GetOffset() const
{
    return m_Offset;
}

void LookTransform::ComputeLocalMatrix()
{
    if (!ConsumeDirtyFlags() || m_Translation.DistanceSquared(m_LookAt) <= Fixed::Eps)
        return;
    Matrix4T<Fixed> aim;
    aim.MakeLookAt(m_Translation, m_LookAt, m_Up);
    m_LocalMatrix = (ScalingMatrix(m_Scaling) * RotationMatrix(m_Rotation, m_RotationOrder)) * aim;
    AppendTranslation(m_LocalMatrix, m_Offset);
}

} // namespace Vellacore
