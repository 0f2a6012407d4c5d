#include "Vellacore/Scene/Transform.h"

namespace Vellacore {

Transform* Transform::Create()
{
    return new (TypeInfoT<Transform>::S_TypeInfo_1) Transform();
}

// Dirty from the start, so the first use computes the matrix from the defaults.
Transform::Transform()
    : m_WorldMatrix(Matrix4T<Fixed>::Identity), m_WorldFrame(0), m_Translation(Vector3T<Fixed>::Zero),
      m_Rotation(Vector3T<Fixed>::Zero), m_Scaling(1, 1, 1), m_Orientation(Vector3T<Fixed>::Zero),
      m_LocalMatrix(Matrix4T<Fixed>::Identity), m_RotationOrder(XYZ), m_DirtyFlags(AllDirty)
{
}

Transform::~Transform() = default;

void Transform::SetTranslation(Vector3T<Fixed> const& translation)
{
    m_Translation = translation;
    m_DirtyFlags |= TranslationDirty;
}

void Transform::SetRotation(Vector3T<Fixed> const& degrees)
{
    m_Rotation = degrees;
    m_DirtyFlags |= RotationDirty;
}

void Transform::SetScaling(Vector3T<Fixed> const& scaling)
{
    m_Scaling = scaling;
    m_DirtyFlags |= ScalingDirty;
}

void Transform::SetOrientation(Vector3T<Fixed> const& degrees)
{
    m_Orientation = degrees;
    m_DirtyFlags |= OrientationDirty;
}

void Transform::SetRotationOrder(RotationOrder order)
{
    m_RotationOrder = order;
    m_DirtyFlags |= RotationDirty;
}

Vector3T<Fixed> Transform::GetTranslation() const
{
    return m_Translation;
}

Vector3T<Fixed> Transform::GetRotation() const
{
    return m_Rotation;
}

Vector3T<Fixed> Transform::GetScaling() const
{
    return m_Scaling;
}

Vector3T<Fixed> Transform::GetOrientation() const
{
    return m_Orientation;
}

Transform::RotationOrder Transform::GetRotationOrder() const
{
    return m_RotationOrder;
}

void Transform::ComputeLocalMatrix()
{
    if (!ConsumeDirtyFlags())
        return;
    m_LocalMatrix = ScalingMatrix(m_Scaling) * RotationMatrix(m_Rotation, m_RotationOrder);
    // A zero orientation turns by the exact identity, whose product changes no bit.
    if (m_Orientation != Vector3T<Fixed>::Zero)
        m_LocalMatrix.Mul(RotationMatrix(m_Orientation, XYZ));
    AppendTranslation(m_LocalMatrix, m_Translation);
}

void Transform::GetLocalMatrix(Matrix4T<Fixed>& out)
{
    ComputeLocalMatrix();
    out = m_LocalMatrix;
}

bool Transform::ConsumeDirtyFlags()
{
    bool const dirty = m_DirtyFlags != 0;
    m_DirtyFlags = 0;
    return dirty;
}

Matrix4T<Fixed> Transform::RotationMatrix(Vector3T<Fixed> const& degrees, RotationOrder order)
{
    enum Axis { X, Y, Z };
    // Axes in the order they act on a point, one row per RotationOrder value.
    static Axis const S_Sequence[][3] = { { X, Y, Z }, { X, Z, Y }, { Y, Z, X }, { Y, X, Z }, { Z, X, Y }, { Z, Y, X } };
    Axis const* sequence = S_Sequence[order >= XYZ && order <= ZYX ? order : XYZ];

    Matrix4T<Fixed> axis[3];
    axis[X].MakeRotationX(degrees.x);
    axis[Y].MakeRotationY(degrees.y);
    axis[Z].MakeRotationZ(degrees.z);
    return (axis[sequence[0]] * axis[sequence[1]]) * axis[sequence[2]];
}

Matrix4T<Fixed> Transform::TranslationMatrix(Vector3T<Fixed> const& translation)
{
    Matrix4T<Fixed> matrix;
    matrix.MakeTranslation(translation);
    return matrix;
}

// What matrix * TranslationMatrix(translation) gives, bit for bit, when the last row of matrix is
// 0 0 0 1: every other product term is an exact 1 or 0, so only the translation column changes.
void Transform::AppendTranslation(Matrix4T<Fixed>& matrix, Vector3T<Fixed> const& translation)
{
    matrix.m[12] += translation.x;
    matrix.m[13] += translation.y;
    matrix.m[14] += translation.z;
}

Matrix4T<Fixed> Transform::ScalingMatrix(Vector3T<Fixed> const& scaling)
{
    Matrix4T<Fixed> matrix;
    matrix.MakeScaling(scaling);
    return matrix;
}

} // namespace Vellacore
