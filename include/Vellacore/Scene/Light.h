#ifndef VELLACORE_SCENE_LIGHT_H
#define VELLACORE_SCENE_LIGHT_H

#include "Vellacore/Math/Vector3T.h"
#include "Vellacore/Scene/Node.h"

namespace Vellacore {

// A coloured light, placed by its nearest Transform ancestor.
class Light : public Node {
public:
    enum LightType : I32 {
        // Adds its colour to the scene's ambient light; takes no light slot.
        Ambient = 0,
        // Shines along the third axis of the transform's world matrix.
        Directional = 1,
        // Shines from the translation of the transform's world matrix.
        Point = 2
    };

    static Light* Create();
    ~Light() override;

    void SetType(LightType type);
    LightType GetType() const;
    void SetColor(Vector3T<float> const& color);
    Vector3T<float> GetColor() const;

protected:
    Light();

private:
    Vector3T<float> m_Color;
    LightType m_Type;
};

} // namespace Vellacore

#endif
