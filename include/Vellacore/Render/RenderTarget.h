#ifndef VELLACORE_RENDER_RENDERTARGET_H
#define VELLACORE_RENDER_RENDERTARGET_H

#include "Vellacore/Core/Types.h"
#include "Vellacore/Math/Fixed.h"
#include "Vellacore/Render/Texture.h"

namespace Vellacore {

// A texture that a camera draws into, of a size in pixels.
class RenderTarget : public Texture {
public:
    static RenderTarget* Create();
    ~RenderTarget() override;

    virtual void SetWidth(int width);
    virtual int GetWidth() const;
    virtual void SetHeight(int height);
    virtual int GetHeight() const;
    // Width divided by height; a height of 0 gives the largest Fixed (raw 0x7FFFFFFF).
    virtual Fixed GetAspect() const;

protected:
    RenderTarget();

private:
    I32 m_Width;
    I32 m_Height;
};

} // namespace Vellacore

#endif
