#ifndef VELLACORE_SCENE_INTERFACEGROUP_H
#define VELLACORE_SCENE_INTERFACEGROUP_H

#include "Vellacore/Math/Matrix4T.h"
#include "Vellacore/Math/Vector2T.h"
#include "Vellacore/Scene/Group.h"

namespace Vellacore {

// A subtree drawn as a flat 2D overlay, in pixels of the given resolution, with a projection of
// its own in place of the camera's.
class InterfaceGroup : public Group {
public:
    static InterfaceGroup* Create();
    ~InterfaceGroup() override;

    // x is the overlay width, y its height; the projection is rebuilt from them.
    void SetResolution(Vector2T<Fixed> const& resolution);
    Vector2T<Fixed> GetResolution() const;
    Matrix4T<Fixed> const& GetProjection() const;

protected:
    InterfaceGroup();

private:
    Vector2T<Fixed> m_Resolution;
    Matrix4T<Fixed> m_Projection;
};

} // namespace Vellacore

#endif
