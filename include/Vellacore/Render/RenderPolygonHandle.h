#ifndef VELLACORE_RENDER_RENDERPOLYGONHANDLE_H
#define VELLACORE_RENDER_RENDERPOLYGONHANDLE_H

namespace Vellacore {

// The renderer's buffers for one polygon data object. Like TextureHandle it is no Object but a
// typed-allocated block with a counted header: the data object and the renderer's handle list
// each hold a Ptr, and the last one to let go destroys it.
class RenderPolygonHandle {
public:
    virtual ~RenderPolygonHandle() = 0;
    virtual void Unload() = 0;
};

} // namespace Vellacore

#endif
