#ifndef VELLACORE_SCENE_LOOKTRANSFORM_H
#define VELLACORE_SCENE_LOOKTRANSFORM_H

#include "Vellacore/Scene/Transform.h"

namespace Vellacore {

// A transform that aims its subtree from the translation (the eye) at a target point, as cameras
// and lights are placed. Scaling and rotation act before the aim, the offset after it, in the
// parent's space; the orientation is not used.
class LookTransform : public Transform {
public:
    static LookTransform* Create();
    ~LookTransform() override;

    void SetLookAt(Vector3T<Fixed> const& target);
    void SetUp(Vector3T<Fixed> const& up);
    void SetOffset(Vector3T<Fixed> const& offset);
    Vector3T<Fixed> GetLookAt() const;
    Vector3T<Fixed> GetUp() const;
    Vector3T<Fixed> GetOffset() const;

    // While the eye sits on the target no aim exists and the previous matrix is kept.
    void ComputeLocalMatrix() override;

protected:
    LookTransform();

private:
    Vector3T<Fixed> m_LookAt;
    Vector3T<Fixed> m_Up;
    Vector3T<Fixed> m_Offset;
};

} // namespace Vellacore

#endif
