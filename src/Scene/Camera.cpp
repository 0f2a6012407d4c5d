#include "Vellacore/Scene/Camera.h"

namespace Vellacore {

Camera* Camera::Create()
{
    return new (TypeInfoT<Camera>::S_TypeInfo_1) Camera();
}

Camera::Camera()
    : m_ViewMatrix(Matrix4T<Fixed>::Identity), m_ProjectionMatrix(Matrix4T<Fixed>::Identity), m_Fov(60),
      m_Clipping(1, 1000), m_Type(Perspective)
{
}

Camera::~Camera() = default;

void Camera::SetFOV(Fixed fov)
{
    m_Fov = fov;
}

Fixed Camera::GetFOV() const
{
    return m_Fov;
}

void Camera::SetType(CameraType type)
{
    m_Type = type;
}

Camera::CameraType Camera::GetType() const
{
    return m_Type;
}

void Camera::SetClipping(Vector2T<Fixed> const& clipping)
{
    m_Clipping = clipping;
}

Vector2T<Fixed> Camera::GetClipping() const
{
    return m_Clipping;
}

void Camera::SetRenderTarget(RenderTarget* target)
{
    m_RenderTarget = target;
}

RenderTarget* Camera::GetRenderTarget() const
{
    return m_RenderTarget;
}

} // namespace Vellacore
