// Scenes drawn by the engine on the Mesa stand-in and compared with reference pictures in
// tests/gl/golden (VELLACORE_GOLDEN_UPDATE=1 rewrites them). Each scene shows one feature of the
// renderer plainly enough that the picture changes when that feature is off.
#ifdef VELLACORE_MESA_GL

#include "Vellacore/Geometry/PolygonGeometry.h"
#include "Vellacore/Image/Image.h"
#include "Vellacore/Render/Material.h"
#include "Vellacore/Render/Shader.h"
#include "Vellacore/Render/Texture2D.h"
#include "Vellacore/Scene/Fog.h"
#include "Vellacore/Scene/InterfaceGroup.h"
#include "Vellacore/Scene/Light.h"
#include "Vellacore/Scene/TextureTransform.h"
#include "support/GoldenImage.h"
#include "support/MesaScene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>

using namespace Vellacore;
using namespace VellacoreTest;

namespace {

typedef Vector3T<float> V3;
typedef Vector4T<float> Colour;
typedef Vector3T<Fixed> F3;

// A square side of a mesh: its centre and the half-extents along its two edges, whose cross
// product faces outwards (counter-clockwise seen from outside, the side culling keeps).
struct Side {
    V3 centre;
    V3 u;
    V3 v;
};

// Flat sides with their own normals and the whole texture on each, each cut into cells x cells
// squares: the fixed-function pipeline lights vertices only, so a point light close to a large
// side needs vertices near it to show.
PolygonGeometry* MakeSides(std::initializer_list<Side> sides, int cells = 1)
{
    Array<V3> vertices;
    Array<V3> normals;
    Array<Vector2T<float>> texCoords;
    Array<U16> indices;
    for (Side const& side : sides) {
        V3 const normal = side.u.Cross(side.v);
        float const length = std::sqrt(normal.x * normal.x + normal.y * normal.y + normal.z * normal.z);
        int const first = static_cast<int>(vertices.size());
        for (int j = 0; j <= cells; ++j)
            for (int i = 0; i <= cells; ++i) {
                float const s = static_cast<float>(i) / cells;
                float const t = static_cast<float>(j) / cells;
                vertices.push_back(side.centre + side.u * (2 * s - 1) + side.v * (2 * t - 1));
                normals.push_back(normal * (1.0f / length));
                texCoords.push_back(Vector2T<float>(s, t));
            }
        for (int j = 0; j < cells; ++j)
            for (int i = 0; i < cells; ++i) {
                int const a = first + j * (cells + 1) + i;
                for (int index : {a, a + 1, a + cells + 2, a, a + cells + 2, a + cells + 1})
                    indices.push_back(static_cast<U16>(index));
            }
    }
    PolygonGeometry* geometry = PolygonGeometry::Create();
    geometry->SetPrimiviteType(0);
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

// A rectangle facing the camera.
PolygonGeometry* MakeQuad(float halfWidth, float halfHeight, int cells = 1)
{
    return MakeSides({{V3(0, 0, 0), V3(halfWidth, 0, 0), V3(0, halfHeight, 0)}}, cells);
}

// size x size cells alternating between two colours; the first cell is red, so that a texture put
// on upside down or mirrored shows it.
Texture2D* MakeChecker(int size, Colour a, Colour b)
{
    Image* image = Image::Create();
    image->Allocate(Image::FormatRGBA, static_cast<short>(size), static_cast<short>(size));
    U8* pixel = image->GetDataPtr();
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            Colour const c = x == 0 && y == 0 ? Colour(1, 0, 0, 1) : (x + y) % 2 ? b : a;
            for (float channel : {c.x, c.y, c.z, c.w})
                *pixel++ = static_cast<U8>(std::lround(channel * 255));
        }
    Texture2D* texture = Texture2D::Create();
    texture->SetImage(image);
    // Crisp cells: no blending between texels or mip levels.
    texture->SetMinFilter(Texture::FilterNone);
    texture->SetMagFilter(Texture::FilterNearest);
    texture->SetMipFilter(Texture::FilterNearest);
    return texture;
}

Texture2D* MakeTileTexture()
{
    return MakeChecker(8, Colour(1, 1, 1, 1), Colour(0.2f, 0.5f, 0.8f, 1));
}

Shader* MakeShader(Colour diffuse, Texture* texture, bool lighting, Shader::BlendMode blend = Shader::BlendOpaque,
    int layer = Shader::S_DefaultLayer)
{
    Material* material = Material::Create();
    material->SetDiffuseColor(diffuse);
    Shader* shader = Shader::Create();
    shader->SetMaterial(material);
    shader->SetTexture(0, texture);
    shader->SetLightingEnabled(lighting);
    shader->SetBlendMode(blend);
    shader->SetLayer(layer);
    return shader;
}

Colour const S_White(1, 1, 1, 1);

class GoldenImageTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_Scene.IsReady());
        m_Scene.GetRender().SetColorClearValue(Colour(0.1f, 0.1f, 0.15f, 1));
    }

    Transform* Place(Group* parent, F3 translation, F3 rotation = F3(0, 0, 0))
    {
        Transform* transform = Transform::Create();
        transform->SetTranslation(translation);
        transform->SetRotation(rotation);
        transform->SetParent(parent);
        return transform;
    }

    void Add(Group* parent, PolygonGeometry* geometry, Shader* shader)
    {
        geometry->SetShader(shader);
        geometry->SetParent(parent);
    }

    void AddLight(Group* parent, Light::LightType type, V3 colour)
    {
        Light* light = Light::Create();
        light->SetType(type);
        light->SetColor(colour);
        light->SetParent(parent);
    }

    // A dim ambient light and a white directional light from the upper right front, which lights
    // each of the cube's three visible sides differently.
    void AddDaylight()
    {
        AddLight(m_Scene.GetRoot(), Light::Ambient, V3(0.2f, 0.2f, 0.2f));
        AddLight(Place(m_Scene.GetRoot(), F3(0, 0, 0), F3(-30, 20, 0)), Light::Directional, V3(0.9f, 0.9f, 0.9f));
    }

    // A textured cube turned to show its left, front and top sides.
    void AddTiledCube(F3 at, float halfSize, bool lighting)
    {
        Add(Place(m_Scene.GetRoot(), at, F3(25, 35, 0)), MakeCube(halfSize), MakeShader(S_White, MakeTileTexture(), lighting));
    }

    // Cubes going away to the right, one every three units.
    void AddCubeRow()
    {
        for (int i = 0; i < 4; ++i)
            AddTiledCube(F3(Fixed(-1.2) + Fixed(1.1) * i, Fixed(-0.3), Fixed(1) - Fixed(3) * i), 0.5f, false);
    }

    // Fog the colour of the sky: it starts 3 units from the camera (1 before the first cube) and
    // hides everything at 16.
    void AddFog(Fog::FogMode mode)
    {
        Fog* fog = Fog::Create();
        fog->m_Mode = mode;
        fog->m_Color = Colour(0.6f, 0.65f, 0.7f, 1);
        fog->m_Start = 3;
        fog->m_End = 16;
        fog->m_Density = Fixed(0.2);
        fog->SetParent(m_Scene.GetRoot());
        m_Scene.GetRender().SetColorClearValue(fog->m_Color);
    }

    // Overlapping squares in red, green and blue, each nearer than the one before, in a layer after
    // the default one.
    void AddPrimarySquares(Shader::BlendMode blend)
    {
        Colour const colours[] = {Colour(0.8f, 0, 0, 1), Colour(0, 0.8f, 0, 1), Colour(0, 0, 0.8f, 1)};
        F3 const places[] = {F3(Fixed(-0.5), Fixed(0.3), 0), F3(Fixed(0.5), Fixed(0.3), Fixed(0.1)), F3(0, Fixed(-0.5), Fixed(0.2))};
        for (int i = 0; i < 3; ++i)
            Add(Place(m_Scene.GetRoot(), places[i]), MakeQuad(0.8f, 0.8f), MakeShader(colours[i], nullptr, false, blend, 9));
    }

    void ExpectGolden(char const* name) { EXPECT_TRUE(MatchesGolden(m_Scene.DrawFrame(), name)); }

    MesaScene m_Scene;
};

} // namespace

TEST_F(GoldenImageTest, LitTexturedCube)
{
    AddDaylight();
    AddTiledCube(F3(0, 0, 0), 0.8f, true);
    ExpectGolden("lit-textured-cube");
}

// A point light close in front of a wall lights a round patch of it, brightest nearest the light.
TEST_F(GoldenImageTest, PointLight)
{
    AddLight(m_Scene.GetRoot(), Light::Ambient, V3(0.1f, 0.1f, 0.1f));
    AddLight(Place(m_Scene.GetRoot(), F3(Fixed(0.2), Fixed(0.5), Fixed(0.3))), Light::Point, V3(1, 0.9f, 0.6f));
    Add(Place(m_Scene.GetRoot(), F3(0, 0, -1)), MakeQuad(4, 3, 16), MakeShader(S_White, nullptr, true));
    Add(Place(m_Scene.GetRoot(), F3(Fixed(1.4), Fixed(-0.5), Fixed(0.3)), F3(25, 35, 0)), MakeCube(0.5f), MakeShader(S_White, nullptr, true));
    ExpectGolden("point-light");
}

TEST_F(GoldenImageTest, LinearFog)
{
    AddFog(Fog::Linear);
    AddCubeRow();
    ExpectGolden("linear-fog");
}

TEST_F(GoldenImageTest, ExponentialFog)
{
    AddFog(Fog::Exp);
    AddCubeRow();
    ExpectGolden("exponential-fog");
}

// A half-transparent red pane in front of the cube, drawn in a later layer.
TEST_F(GoldenImageTest, AlphaBlend)
{
    AddTiledCube(F3(0, 0, 0), 0.8f, false);
    Add(Place(m_Scene.GetRoot(), F3(Fixed(0.4), Fixed(0.2), Fixed(1.5))), MakeQuad(1, 0.6f),
        MakeShader(Colour(1, 0.1f, 0.1f, 0.5f), nullptr, false, Shader::BlendAlpha, 9));
    ExpectGolden("alpha-blend");
}

// A pane whose texture is opaque in every other cell and clear in the rest: the clear cells are
// cut out and show the cube behind.
TEST_F(GoldenImageTest, AlphaTest)
{
    AddTiledCube(F3(0, 0, 0), 0.8f, false);
    Add(Place(m_Scene.GetRoot(), F3(0, 0, Fixed(1.5))), MakeQuad(1.2f, 1.2f),
        MakeShader(S_White, MakeChecker(4, Colour(1, 0.8f, 0.2f, 1), Colour(0.2f, 0.2f, 1, 0.2f)), false, Shader::BlendAlphaTest, 9));
    ExpectGolden("alpha-test");
}

// Red, green and blue squares add up where they overlap, to white in the middle.
TEST_F(GoldenImageTest, AdditiveBlend)
{
    AddPrimarySquares(Shader::BlendAdditive);
    ExpectGolden("additive-blend");
}

// The texture repeated three times across and turned by 30 degrees.
TEST_F(GoldenImageTest, TextureTransform)
{
    Texture2D* texture = MakeTileTexture();
    TextureTransform* transform = TextureTransform::Create();
    transform->SetScaling(F3(3, 3, 1));
    transform->SetRotation(F3(0, 0, 30));
    texture->SetTextureTransform(transform);
    Add(Place(m_Scene.GetRoot(), F3(0, 0, 0)), MakeQuad(1.5f, 1.5f), MakeShader(S_White, texture, false));
    ExpectGolden("texture-transform");
}

// A bar along the top left and a tile in the lower right corner of the screen, in screen pixels,
// over the lit cube.
TEST_F(GoldenImageTest, InterfaceOverlay)
{
    AddDaylight();
    AddTiledCube(F3(0, 0, 0), 0.8f, true);
    InterfaceGroup* overlay = InterfaceGroup::Create();
    overlay->SetParent(m_Scene.GetRoot());
    Add(Place(overlay, F3(-100, 100, 0)), MakeQuad(50, 8), MakeShader(Colour(0.2f, 0.9f, 0.3f, 1), nullptr, false));
    Add(Place(overlay, F3(130, -90, 0)), MakeQuad(20, 20), MakeShader(S_White, MakeTileTexture(), false));
    ExpectGolden("interface-overlay");
}

#endif
