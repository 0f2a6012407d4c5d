#ifndef VELLACORE_EXAMPLES_SHAPES_H
#define VELLACORE_EXAMPLES_SHAPES_H

#include "Vellacore/Vellacore.h"

// The game's models and textures, made in code so that it needs no files beside it.
namespace FirstGameShapes {

typedef Vellacore::Vector3T<float> Colour;

// A ring around the y axis, with normals for lighting and texture coordinates that wrap the texture
// four times around the ring and twice around the tube.
Vellacore::PolygonGeometry* MakeTorus(float ringRadius, float tubeRadius, int ringSegments, int tubeSegments);
// A square of 2 * halfSize facing up at the given height, the texture repeated `tiles` times along
// each side.
Vellacore::PolygonGeometry* MakeFloor(float halfSize, float height, float tiles);
// 64 x 64 squares of two colours, `squares` along each side; null without memory for it.
Vellacore::Texture2D* MakeCheckerTexture(Colour const& a, Colour const& b, int squares);
// Lit, opaque, showing the texture (if any) under a white material.
Vellacore::Shader* MakeLitShader(Vellacore::Texture* texture);

} // namespace FirstGameShapes

#endif
