// Scenes drawn by the engine on the Mesa stand-in and compared with reference pictures in tests/gl/golden
// (VELLACORE_GOLDEN_UPDATE=1 rewrites them); each shows one feature plainly enough to change when it is off.
#ifdef VELLACORE_MESA_GL

#include "Vellacore/Image/Image.h"
#include "Vellacore/Render/Texture2D.h"
#include "Vellacore/Scene/Fog.h"
#include "Vellacore/Scene/InterfaceGroup.h"
#include "Vellacore/Scene/Light.h"
#include "Vellacore/Scene/TextureTransform.h"
#include "support/GoldenImage.h"
#include "support/MesaScene.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace Vellacore;
using namespace VellacoreTest;

namespace {

typedef Vector3T<float> V3;
typedef Vector3T<Fixed> F3;

// Square sides (centre, half-extents along two edges whose cross product faces out), each flat, textured
// whole and cut into cells x cells squares: GL lights vertices only, so a point light needs them near it.
struct Side { V3 centre, u, v; };
PolygonGeometry* MakeSides(std::initializer_list<Side> sides, int cells = 1)
{
    Array<V3> vertices, normals;
    Array<Vector2T<float>> texCoords;
    Array<U16> indices;
    for (auto const& [centre, u, v] : sides) {
        V3 const cross = u.Cross(v);
        for (int j = 0; j <= cells; ++j)
            for (int i = 0; i <= cells; ++i) {
                float const s = static_cast<float>(i) / cells, t = static_cast<float>(j) / cells;
                vertices.push_back(centre + u * (2 * s - 1) + v * (2 * t - 1));
                normals.push_back(cross * (1.0f / std::sqrt(cross.Dot(cross))));
                texCoords.push_back(Vector2T<float>(s, t));
                int const a = static_cast<int>(vertices.size()) - 1;
                if (i < cells && j < cells)
                    for (int index : {a, a + 1, a + cells + 2, a, a + cells + 2, a + cells + 1})
                        indices.push_back(static_cast<U16>(index));
            }
    }
    PolygonGeometry* geometry = PolygonGeometry::Create();
    geometry->SetVertexArray(vertices);
    geometry->SetNormalArray(normals);
    geometry->SetTexCoordArray(0, texCoords);
    geometry->SetIndexArray(indices);
    return geometry;
}

PolygonGeometry* MakeCube(float h)
{
    V3 const x(h, 0, 0), y(0, h, 0), z(0, 0, h);
    return MakeSides({{z, x, y}, {-z, -x, y}, {x, -z, y}, {-x, z, y}, {y, x, -z}, {-y, x, z}});
}

// A rectangle facing the camera, of half-width w and half-height h.
PolygonGeometry* MakeQuad(float w, float h, int cells = 1) { return MakeSides({{V3(0, 0, 0), V3(w, 0, 0), V3(0, h, 0)}}, cells); }

// size x size crisp cells of two colours (white and blue by default); the first is red, to show a flipped texture.
Texture2D* MakeChecker(int size = 8, Colour a = Colour(1, 1, 1, 1), Colour b = Colour(0.2f, 0.5f, 0.8f, 1))
{
    Image* image = Image::Create();
    image->Allocate(Image::FormatRGBA, static_cast<short>(size), static_cast<short>(size));
    U8* pixel = image->GetDataPtr();
    for (int i = 0; i < size * size; ++i) {
        Colour const c = i == 0 ? Colour(1, 0, 0, 1) : (i % size + i / size) % 2 ? b : a;
        for (float channel : {c.x, c.y, c.z, c.w})
            *pixel++ = static_cast<U8>(std::lround(channel * 255));
    }
    Texture2D* texture = Texture2D::Create();
    texture->SetImage(image);
    texture->SetMinFilter(Texture::FilterNone);
    texture->SetMagFilter(Texture::FilterNearest);
    texture->SetMipFilter(Texture::FilterNearest);
    return texture;
}

Colour const S_White(1, 1, 1, 1);

template <class T> T* Child(Group* parent) { T* node = T::Create(); node->SetParent(parent); return node; }

Transform* Place(Group* parent, F3 translation, F3 rotation = F3(0, 0, 0))
{
    Transform* transform = Child<Transform>(parent);
    transform->SetTranslation(translation);
    transform->SetRotation(rotation);
    return transform;
}

void AddLight(Group* parent, Light::LightType type, V3 colour)
{
    Light* light = Child<Light>(parent);
    light->SetType(type);
    light->SetColor(colour);
}

// A textured cube turned to show its left, front and top sides.
void AddTiledCube(Group* root, F3 at, float halfSize, bool lighting)
{
    Add(Place(root, at, F3(25, 35, 0)), MakeCube(halfSize), MakeShader(S_White, MakeChecker(), lighting));
}

// The cube in dim ambient light and white light from the upper right front, different on each visible side.
void AddLitCube(Group* root)
{
    AddLight(root, Light::Ambient, V3(0.2f, 0.2f, 0.2f));
    AddLight(Place(root, F3(0, 0, 0), F3(-30, 20, 0)), Light::Directional, V3(0.9f, 0.9f, 0.9f));
    AddTiledCube(root, F3(0, 0, 0), 0.8f, true);
}

// Sky-coloured fog from 3 units (1 before the first cube) to 16, over cubes going away to the right.
void AddFoggyCubeRow(Group* root, Render& render, Fog::FogMode mode)
{
    Fog* fog = Child<Fog>(root);
    fog->m_Mode = mode;
    fog->m_Color = Colour(0.6f, 0.65f, 0.7f, 1);
    fog->m_Start = 3;
    fog->m_End = 16;
    fog->m_Density = Fixed(0.2);
    render.SetColorClearValue(fog->m_Color);
    for (int i = 0; i < 4; ++i)
        AddTiledCube(root, F3(Fixed(-1.2) + Fixed(1.1) * i, Fixed(-0.3), Fixed(1) - Fixed(3) * i), 0.5f, false);
}

struct Scene { char const* name; void (*build)(Group* root, Render& render); };
void PrintTo(Scene const& scene, std::ostream* out) { *out << scene.name; }

Scene const S_Scenes[] = {
    {"lit-textured-cube", [](Group* root, Render&) { AddLitCube(root); }},
    // A point light close in front of a wall lights a round patch of it, brightest nearest the light.
    {"point-light", [](Group* root, Render&) {
         AddLight(root, Light::Ambient, V3(0.1f, 0.1f, 0.1f));
         AddLight(Place(root, F3(0.2, 0.5, 0.3)), Light::Point, V3(1, 0.9f, 0.6f));
         Add(Place(root, F3(0, 0, -1)), MakeQuad(4, 3, 16), MakeShader(S_White, nullptr, true));
         Add(Place(root, F3(1.4, -0.5, 0.3), F3(25, 35, 0)), MakeCube(0.5f), MakeShader(S_White, nullptr, true));
     }},
    {"linear-fog", [](Group* root, Render& render) { AddFoggyCubeRow(root, render, Fog::Linear); }},
    {"exponential-fog", [](Group* root, Render& render) { AddFoggyCubeRow(root, render, Fog::Exp); }},
    // A half-transparent red pane in front of the cube.
    {"alpha-blend", [](Group* root, Render&) {
         AddTiledCube(root, F3(0, 0, 0), 0.8f, false);
         Shader* red = MakeShader(Colour(1, 0.1f, 0.1f, 0.5f), nullptr, false, Shader::BlendAlpha, 9);
         Add(Place(root, F3(0.4, 0.2, 1.5)), MakeQuad(1, 0.6f), red);
     }},
    // A pane opaque in every other cell and clear in the rest: the clear cells show the cube behind.
    {"alpha-test", [](Group* root, Render&) {
         AddTiledCube(root, F3(0, 0, 0), 0.8f, false);
         Texture2D* checker = MakeChecker(4, Colour(1, 0.8f, 0.2f, 1), Colour(0.2f, 0.2f, 1, 0.2f));
         Add(Place(root, F3(0, 0, 1.5)), MakeQuad(1.2f, 1.2f), MakeShader(S_White, checker, false, Shader::BlendAlphaTest, 9));
     }},
    // Red, green and blue squares, each nearer than the one before, add up to white in the middle.
    {"additive-blend", [](Group* root, Render&) {
         Colour const colours[] = {Colour(0.8f, 0, 0, 1), Colour(0, 0.8f, 0, 1), Colour(0, 0, 0.8f, 1)};
         F3 const places[] = {F3(-0.5, 0.3, 0), F3(0.5, 0.3, 0.1), F3(0, -0.5, 0.2)};
         for (int i = 0; i < 3; ++i)
             Add(Place(root, places[i]), MakeQuad(0.8f, 0.8f), MakeShader(colours[i], nullptr, false, Shader::BlendAdditive, 9));
     }},
    // The texture repeated three times across and turned by 30 degrees.
    {"texture-transform", [](Group* root, Render&) {
         Texture2D* texture = MakeChecker();
         TextureTransform* transform = TextureTransform::Create();
         transform->SetScaling(F3(3, 3, 1));
         transform->SetRotation(F3(0, 0, 30));
         texture->SetTextureTransform(transform);
         Add(Place(root, F3(0, 0, 0)), MakeQuad(1.5f, 1.5f), MakeShader(S_White, texture, false));
     }},
    // A bar along the top left and a tile in the lower right corner, in screen pixels, over the lit cube.
    {"interface-overlay", [](Group* root, Render&) {
         AddLitCube(root);
         InterfaceGroup* overlay = Child<InterfaceGroup>(root);
         Add(Place(overlay, F3(-100, 100, 0)), MakeQuad(50, 8), MakeShader(Colour(0.2f, 0.9f, 0.3f, 1), nullptr, false));
         Add(Place(overlay, F3(130, -90, 0)), MakeQuad(20, 20), MakeShader(S_White, MakeChecker(), false));
     }},
};

class GoldenImageTest : public testing::TestWithParam<Scene> {};

TEST_P(GoldenImageTest, MatchesItsReference)
{
    MesaScene scene;
    ASSERT_TRUE(scene.IsReady());
    scene.GetRender().SetColorClearValue(Colour(0.1f, 0.1f, 0.15f, 1));
    GetParam().build(scene.GetRoot(), scene.GetRender());
    EXPECT_TRUE(MatchesGolden(scene.DrawFrame(), GetParam().name));
}

INSTANTIATE_TEST_SUITE_P(Scenes, GoldenImageTest, testing::ValuesIn(S_Scenes),
    [](testing::TestParamInfo<Scene> const& info) {
        std::string name = info.param.name;
        std::replace(name.begin(), name.end(), '-', '_');
        return name;
    });

} // namespace

#endif
