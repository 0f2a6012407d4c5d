#include "Vellacore/Scene/InterfaceGroup.h"

namespace Vellacore {

InterfaceGroup* InterfaceGroup::Create()
{
    return new (TypeInfoT<InterfaceGroup>::S_TypeInfo_1) InterfaceGroup();
}

// The Wiz screen in landscape.
InterfaceGroup::InterfaceGroup()
{
    SetResolution(Vector2T<Fixed>(320, 240));
}

InterfaceGroup::~InterfaceGroup() = default;

void InterfaceGroup::SetResolution(Vector2T<Fixed> const& resolution)
{
    m_Resolution = resolution;
    m_Projection.MakeIdentity();
    // The panel is rotated against the framebuffer, so the horizontal scale comes from the height
    // and the vertical one from the width. The offsets move the overlay by an eighth of a pixel.
    // A zero extent divides into raw 0x7FFFFFFF.
    m_Projection.m[0] = Fixed(2) / resolution.y;
    m_Projection.m[5] = Fixed(2) / resolution.x;
    m_Projection.m[12] = Fixed(0.25) / resolution.y;
    m_Projection.m[13] = Fixed(0.25) / resolution.x;
}

Vector2T<Fixed> InterfaceGroup::GetResolution() const
{
    return m_Resolution;
}

Matrix4T<Fixed> const& InterfaceGroup::GetProjection() const
{
    return m_Projection;
}

} // namespace Vellacore
