#ifndef VELLACORE_RENDER_SHADERFACTORY_H
#define VELLACORE_RENDER_SHADERFACTORY_H

#include "Vellacore/Render/Shader.h"

#include <string>

namespace Vellacore {

// A shader showing the PNG at path in texture slot 0, under a white material. Images are stored
// bottom row first, the way GL texture coordinates address them. Null if the file cannot be
// loaded (the importer logs why); nothing else is made then.
Shader* CreateTexturedShader(std::string path, bool lighting, Shader::BlendMode blend);

// The textured shader of path, with the PNG at reflectionPath as reflection map in slot 1. Null if
// either file cannot be loaded.
Shader* CreateReflectionShader(std::string path, std::string reflectionPath, bool lighting, Shader::BlendMode blend);

} // namespace Vellacore

#endif
