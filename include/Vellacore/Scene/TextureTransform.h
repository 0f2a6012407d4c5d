#ifndef VELLACORE_SCENE_TEXTURETRANSFORM_H
#define VELLACORE_SCENE_TEXTURETRANSFORM_H

#include "Vellacore/Scene/Transform.h"

namespace Vellacore {

// A matrix for texture coordinates: scaling and rotation turn the texture about its centre
// (0.5, 0.5), then the translation scrolls it. The orientation is not used.
class TextureTransform : public Transform {
public:
    static TextureTransform* Create();
    ~TextureTransform() override;

    void ComputeLocalMatrix() override;

protected:
    TextureTransform();
};

} // namespace Vellacore

#endif
