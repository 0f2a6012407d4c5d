#ifndef VELLACORE_VELLACORE_H
#define VELLACORE_VELLACORE_H

// The whole public interface of the engine.

#include "Vellacore/Core/Types.h"
#include "Vellacore/Core/Assert.h"
#include "Vellacore/Core/Logger.h"
#include "Vellacore/Core/Object.h"
#include "Vellacore/Core/Path.h"
#include "Vellacore/Core/App.h"

#include "Vellacore/Memory/Array.h"
#include "Vellacore/Memory/Memory.h"
#include "Vellacore/Memory/Ptr.h"
#include "Vellacore/Memory/TypeInfo.h"

#include "Vellacore/Math/Fixed.h"

#include "Vellacore/Scene/Node.h"
#include "Vellacore/Scene/DNode.h"
#include "Vellacore/Scene/Group.h"
#include "Vellacore/Scene/InterfaceGroup.h"
#include "Vellacore/Scene/Container.h"
#include "Vellacore/Scene/SearchTree.h"
#include "Vellacore/Scene/Transform.h"
#include "Vellacore/Scene/LookTransform.h"
#include "Vellacore/Scene/TextureTransform.h"
#include "Vellacore/Scene/Camera.h"
#include "Vellacore/Scene/Light.h"
#include "Vellacore/Scene/Fog.h"

#include "Vellacore/Render/Render.h"
#include "Vellacore/Render/TextureHandle.h"
#include "Vellacore/Render/RenderPolygonHandle.h"
#include "Vellacore/Render/Drawable.h"
#include "Vellacore/Render/Material.h"
#include "Vellacore/Render/Shader.h"
#include "Vellacore/Render/Texture.h"
#include "Vellacore/Render/Texture2D.h"
#include "Vellacore/Render/FontTexture2D.h"
#include "Vellacore/Render/RenderTarget.h"
#include "Vellacore/Render/ShaderFactory.h"
#include "Vellacore/Render/TraverseInfoT.h"
#include "Vellacore/Render/DrawTree.h"

#include "Vellacore/Geometry/PolygonGeometryData.h"
#include "Vellacore/Geometry/PolygonGeometry.h"

#include "Vellacore/Image/Image.h"
#include "Vellacore/Image/ImportPNG.h"

#include "Vellacore/Import/Glyph.h"

#include "Vellacore/Audio/AudioPlayer.h"
#include "Vellacore/Audio/AudioSource.h"
#include "Vellacore/Audio/AudioPlayerSDL.h"
#include "Vellacore/Audio/AudioMusicSourceSDL.h"
#include "Vellacore/Audio/AudioEffectSourceSDL.h"

#include "Vellacore/System/System.h"
#include "Vellacore/System/Random.h"

#include "Vellacore/Input/Input.h"
#include "Vellacore/Input/InputWiz.h"

#endif
