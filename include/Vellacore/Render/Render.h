#ifndef VELLACORE_RENDER_RENDER_H
#define VELLACORE_RENDER_RENDER_H

#include "Vellacore/Core/Object.h"
#include "Vellacore/Math/Fixed.h"
#include "Vellacore/Math/Matrix4T.h"
#include "Vellacore/Math/Vector3T.h"
#include "Vellacore/Math/Vector4T.h"

namespace Vellacore {

class Drawable;
class Fog;
class Light;
class RenderTarget;
class Shader;

// The only way the engine reaches the graphics hardware. Within one drawn camera the draw
// traversal calls SetTarget, Clear, SetProjectionMatrix, SetViewMatrix, SetAmbientLight,
// SetLights, SetLight for each slot, SetFog, then SetShader and Draw for each drawable; the
// application frame presents with SwapBuffers afterwards.
class Render : public Object {
public:
    // Bits of Clear's argument.
    enum ClearBuffer : int { ClearDepth = 1, ClearColor = 2, ClearStencil = 4 };

    // Makes the platform's renderer; the owner calls Init before use and Exit at the end.
    static Render* Create();
    ~Render() override = 0;

    virtual bool Init() = 0;
    virtual void Exit() = 0;
    virtual bool IsRenderable() const = 0;
    // Screen width divided by height.
    virtual Fixed GetAspect() const = 0;
    virtual void SetColorClearValue(Vector4T<float> const& color) = 0;
    virtual void SetDepthClearValue(Fixed depth) = 0;
    virtual void Clear(int buffers) = 0;
    virtual void SetViewMatrix(Matrix4T<Fixed> const& view) = 0;
    virtual void SetProjectionMatrix(Matrix4T<Fixed> const& projection) = 0;
    virtual void SetAmbientLight(Vector3T<float> const& color) = 0;
    // Number of light slots in use.
    virtual void SetLights(short count) = 0;
    // One light slot, with the matrix that places the light.
    virtual void SetLight(short slot, Light* light, Matrix4T<Fixed> const& placing) = 0;
    // Null switches fog off.
    virtual void SetFog(Fog* fog) = 0;
    // Surface state and colour multiplier for the draws that follow.
    virtual void SetShader(Shader* shader, Vector4T<float> const& colorMul) = 0;
    // Null draws to the screen.
    virtual void SetTarget(RenderTarget* target) = 0;
    // Brings the drawable's arrays up to date (UpdateDrawable), then draws it placed by the matrix.
    virtual void Draw(Drawable* drawable, Matrix4T<Fixed> const& placing) = 0;
    virtual void SwapBuffers() = 0;
};

} // namespace Vellacore

#endif
