#ifndef VELLACORE_SCENE_CAMERA_H
#define VELLACORE_SCENE_CAMERA_H

#include "Vellacore/Math/Matrix4T.h"
#include "Vellacore/Math/Vector2T.h"
#include "Vellacore/Memory/Ptr.h"
#include "Vellacore/Scene/Node.h"

namespace Vellacore {

// Ptr only needs the block header in front of the object, so the target's class stays incomplete.
class RenderTarget;

// Projection parameters of a view. The camera is placed by its nearest Transform ancestor; the
// draw traversal turns that transform and these parameters into the view and projection matrices.
class Camera : public Node {
public:
    enum CameraType : I32 { Perspective = 0, Orthographic = 1 };

    static Camera* Create();
    ~Camera() override;

    // Vertical field of view in degrees; the horizontal one follows the aspect ratio.
    void SetFOV(Fixed fov);
    Fixed GetFOV() const;
    void SetType(CameraType type);
    CameraType GetType() const;
    // x is the near distance, y the far one. An orthographic camera also takes its half-height
    // from the near distance.
    void SetClipping(Vector2T<Fixed> const& clipping);
    Vector2T<Fixed> GetClipping() const;
    // Null draws to the screen.
    void SetRenderTarget(RenderTarget* target);
    RenderTarget* GetRenderTarget() const;

    // Owned by the draw traversal, which writes both when it prepares the camera; they are valid
    // only after a successful preparation in the current pass. Identity until then.
    Matrix4T<Fixed> m_ViewMatrix;
    Matrix4T<Fixed> m_ProjectionMatrix;

protected:
    Camera();

private:
    Fixed m_Fov;
    Vector2T<Fixed> m_Clipping;
    CameraType m_Type;
    Ptr<RenderTarget> m_RenderTarget;
};

} // namespace Vellacore

#endif
