#ifndef VELLACORE_RENDER_TEXTUREHANDLE_H
#define VELLACORE_RENDER_TEXTUREHANDLE_H

namespace Vellacore {

// The renderer's side of a texture (for GL, the texture name). Not an Object, but allocated like
// one: the renderer makes its handles with the typed allocator and keeps a counted reference to
// each in its own list, so that it can unload them all before the device goes away. The texture
// holds the other reference. A handle is therefore destroyed by releasing the last Ptr, through
// the type record it was allocated with; plain delete would free the wrong address.
class TextureHandle {
public:
    virtual ~TextureHandle() = 0;
    // Gives the hardware resource back; the handle stays usable as an empty one.
    virtual void Unload() = 0;
};

} // namespace Vellacore

#endif
