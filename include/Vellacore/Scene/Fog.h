#ifndef VELLACORE_SCENE_FOG_H
#define VELLACORE_SCENE_FOG_H

#include "Vellacore/Math/Fixed.h"
#include "Vellacore/Math/Vector4T.h"
#include "Vellacore/Scene/Node.h"

namespace Vellacore {

// Fixed-function fog. Only the first fog the draw traversal meets is used. Plain data: the game
// and the scene importer write the fields directly.
class Fog : public Node {
public:
    enum FogMode : I32 { Linear = 0, Exp = 1, Exp2 = 2 };

    static Fog* Create();
    ~Fog() override;

    FogMode m_Mode;
    // Used by Exp and Exp2.
    Fixed m_Density;
    Vector4T<float> m_Color;
    // Used by Linear.
    Fixed m_Start;
    Fixed m_End;

protected:
    Fog();
};

} // namespace Vellacore

#endif
