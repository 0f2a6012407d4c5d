#ifndef VELLACORE_RENDER_TEXTURE2D_H
#define VELLACORE_RENDER_TEXTURE2D_H

#include "Vellacore/Image/Image.h"
#include "Vellacore/Memory/Ptr.h"
#include "Vellacore/Render/Texture.h"

namespace Vellacore {

// A texture made from an image, which the renderer uploads at the texture's first use.
class Texture2D : public Texture {
public:
    static Texture2D* Create();
    ~Texture2D() override;

    void SetImage(Image* image);
    Image* GetImage() const;
    // The image's size, 0 without an image.
    short GetImageWidth() const;
    short GetImageHeight() const;

protected:
    Texture2D();

private:
    Ptr<Image> m_Image;
};

} // namespace Vellacore

#endif
