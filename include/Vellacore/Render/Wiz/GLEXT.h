#ifndef VELLACORE_RENDER_WIZ_GLEXT_H
#define VELLACORE_RENDER_WIZ_GLEXT_H

namespace Vellacore {

// The place for GL extension entry points. The Wiz driver offers none the engine uses, so the
// hook binds nothing.
class GLEXT {
public:
    static void InitExtensions();
};

} // namespace Vellacore

#endif
