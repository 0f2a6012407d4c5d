#ifndef VELLACORE_RENDER_DRAWABLE_H
#define VELLACORE_RENDER_DRAWABLE_H

#include "Vellacore/Math/Vector4T.h"
#include "Vellacore/Memory/Ptr.h"
#include "Vellacore/Scene/Node.h"

namespace Vellacore {

class Shader;

// A scene node the renderer can draw, with the look it is drawn with.
class Drawable : public Node {
public:
    ~Drawable() override;

    // Called by the renderer just before every draw, for subclasses that rebuild their arrays.
    virtual void UpdateDrawable() = 0;

    // Null puts the drawable in the default draw layer with no surface state of its own.
    void SetShader(Shader* shader);
    Shader* GetShader() const;
    // Red, green, blue and alpha factors applied together with the shader.
    void SetColorMul(Vector4T<float> colorMul);
    Vector4T<float> GetColorMul() const;

protected:
    Drawable();

private:
    Ptr<Shader> m_Shader;
    Vector4T<float> m_ColorMul;
};

} // namespace Vellacore

#endif
