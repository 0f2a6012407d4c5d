#ifndef VELLACORE_SCENE_TRANSFORM_H
#define VELLACORE_SCENE_TRANSFORM_H

#include "Vellacore/Math/Matrix4T.h"
#include "Vellacore/Math/Vector3T.h"
#include "Vellacore/Scene/Group.h"

namespace Vellacore {

// A group that places its subtree: scaling, then rotation (in a chosen axis order), then a second
// rotation always in X, Y, Z order (orientation), then translation. The local matrix is rebuilt
// lazily, only after a setter ran.
class Transform : public Group {
public:
    // Order in which the three axis rotations are applied to a point.
    enum RotationOrder : I32 { XYZ = 0, XZY = 1, YZX = 2, YXZ = 3, ZXY = 4, ZYX = 5 };

    static Transform* Create();
    ~Transform() override;

    // Every setter marks the transform dirty, even when the value does not change.
    void SetTranslation(Vector3T<Fixed> const& translation);
    void SetRotation(Vector3T<Fixed> const& degrees);
    void SetScaling(Vector3T<Fixed> const& scaling);
    void SetOrientation(Vector3T<Fixed> const& degrees);
    // Values outside XYZ..ZYX rotate in XYZ order.
    void SetRotationOrder(RotationOrder order);
    Vector3T<Fixed> GetTranslation() const;
    Vector3T<Fixed> GetRotation() const;
    Vector3T<Fixed> GetScaling() const;
    Vector3T<Fixed> GetOrientation() const;
    RotationOrder GetRotationOrder() const;

    // Rebuilds the local matrix if anything changed since the last call.
    virtual void ComputeLocalMatrix();
    void GetLocalMatrix(Matrix4T<Fixed>& out);

    // Owned by the draw traversal, which writes both when it reaches the transform: the local
    // matrix times the world matrix of the nearest transform above, and the pass number that
    // computed it. A matrix whose frame is not the running pass is stale (the transform was not
    // reached, e.g. because it or an ancestor is invisible).
    Matrix4T<Fixed> m_WorldMatrix;
    I32 m_WorldFrame;

protected:
    // Any set bit makes the next ComputeLocalMatrix rebuild everything; the bits only record
    // which setter ran.
    enum DirtyFlag : U16 {
        TranslationDirty = 0x01,
        RotationDirty = 0x02,
        ScalingDirty = 0x04,
        OrientationDirty = 0x08,
        LookAtDirty = 0x10,
        UpDirty = 0x20,
        OffsetDirty = 0x40,
        AllDirty = 0xFFFF
    };

    Transform();

    // Clears the flags; true if any was set.
    bool ConsumeDirtyFlags();

    static Matrix4T<Fixed> RotationMatrix(Vector3T<Fixed> const& degrees, RotationOrder order);
    static Matrix4T<Fixed> TranslationMatrix(Vector3T<Fixed> const& translation);
    static Matrix4T<Fixed> ScalingMatrix(Vector3T<Fixed> const& scaling);
    // Multiplies an affine matrix by a translation on the right, without the full product.
    static void AppendTranslation(Matrix4T<Fixed>& matrix, Vector3T<Fixed> const& translation);

    Vector3T<Fixed> m_Translation;
    Vector3T<Fixed> m_Rotation;
    Vector3T<Fixed> m_Scaling;
    Vector3T<Fixed> m_Orientation;
    Matrix4T<Fixed> m_LocalMatrix;
    RotationOrder m_RotationOrder;
    U16 m_DirtyFlags;
};

} // namespace Vellacore

#endif
