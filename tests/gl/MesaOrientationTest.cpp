// The picture the Mesa stand-in saves must be the one a player of the handheld sees: the engine
// turns every projection a quarter turn to fit the portrait framebuffer, and the saved picture must
// undo exactly that turn, without mirroring. An arrow pointing up and to the right, at a slope of
// 1:2 so that every wrong turn or mirror sends it somewhere else, is drawn through the engine.
#ifdef VELLACORE_MESA_GL

#include "Vellacore/Geometry/PolygonGeometry.h"
#include "Vellacore/Render/Material.h"
#include "Vellacore/Render/Shader.h"
#include "support/MesaScene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <string>

using namespace Vellacore;
using namespace VellacoreTest;

namespace {

typedef Vector2T<float> V2;

// Arrow in the z = 0 plane: the shaft from the tail along the direction, then the head.
V2 const S_Direction(2.0f / std::sqrt(5.0f), 1.0f / std::sqrt(5.0f));
V2 const S_Across(-S_Direction.y, S_Direction.x);
V2 const S_Tail(0.4f, 0.2f);
float const S_ShaftLength = 1.4f;
float const S_ShaftHalfWidth = 0.15f;
float const S_HeadLength = 0.7f;
float const S_HeadHalfWidth = 0.5f;

V2 Along(V2 from, float along, float across)
{
    return V2(from.x + S_Direction.x * along + S_Across.x * across, from.y + S_Direction.y * along + S_Across.y * across);
}

PolygonGeometry* MakeArrow()
{
    V2 const base = Along(S_Tail, S_ShaftLength, 0);
    V2 const corners[] = {Along(S_Tail, 0, -S_ShaftHalfWidth), Along(base, 0, -S_ShaftHalfWidth), Along(base, 0, S_ShaftHalfWidth),
        Along(S_Tail, 0, S_ShaftHalfWidth), Along(base, 0, -S_HeadHalfWidth), Along(base, S_HeadLength, 0),
        Along(base, 0, S_HeadHalfWidth)};
    Array<Vector3T<float>> vertices;
    for (V2 corner : corners)
        vertices.push_back(Vector3T<float>(corner.x, corner.y, 0));
    PolygonGeometry* arrow = PolygonGeometry::Create();
    arrow->SetPrimiviteType(0);
    arrow->SetVertexArray(vertices);
    arrow->SetIndexArray({0, 1, 2, 0, 2, 3, 4, 5, 6});
    return arrow;
}

// Orange, so that a swap of red and blue shows too.
Shader* MakeFlatShader()
{
    Material* material = Material::Create();
    material->SetDiffuseColor(Vector4T<float>(1.0f, 0.5f, 0.0f, 1.0f));
    Shader* shader = Shader::Create();
    shader->SetMaterial(material);
    shader->SetLightingEnabled(false);
    shader->SetCullingEnabled(false);
    return shader;
}

// Where a point of the z = 0 plane lands in the landscape picture: the camera five units away with
// a 60-degree horizontal field of view shows 5 tan(30) units on either side of the centre.
struct Pixel {
    int x;
    int y;
};
Pixel ToPixel(V2 point)
{
    float const pixelsPerUnit = (MESAGL_FRAME_WIDTH / 2) / (5.0f * std::tan(3.14159265f / 6.0f));
    return Pixel{static_cast<int>(std::lround(MESAGL_FRAME_WIDTH / 2 + point.x * pixelsPerUnit)),
        static_cast<int>(std::lround(MESAGL_FRAME_HEIGHT / 2 - point.y * pixelsPerUnit))};
}

bool IsArrow(Picture const& picture, int x, int y)
{
    unsigned char const* rgba = picture.At(x, y);
    return rgba[0] > 200 && rgba[1] > 90 && rgba[1] < 170 && rgba[2] < 40;
}

bool IsArrow(Picture const& picture, V2 point)
{
    Pixel const pixel = ToPixel(point);
    return IsArrow(picture, pixel.x, pixel.y);
}

} // namespace

// The game is left as it is: the environment tells the stand-in where to save its frames.
TEST(MesaOrientationTest, SavedPictureShowsTheSceneAsThePlayerSeesIt)
{
    setenv("VELLACORE_FRAME_DIR", "frames", 1);
    MesaScene scene;
    unsetenv("VELLACORE_FRAME_DIR");
    ASSERT_TRUE(scene.IsReady());
    PolygonGeometry* arrow = MakeArrow();
    arrow->SetShader(MakeFlatShader());
    arrow->SetParent(scene.GetRoot());
    scene.DrawFrame();
    Picture const last = scene.DrawFrame();
    ASSERT_EQ(2, scene.GetStandIn().GetFrameCount());

    Picture saved;
    ASSERT_TRUE(ReadPicture("frames/frame-00001.png", saved));
    ASSERT_EQ(MESAGL_FRAME_WIDTH, saved.m_Width);
    ASSERT_EQ(MESAGL_FRAME_HEIGHT, saved.m_Height);
    EXPECT_EQ(last.m_Rgba, saved.m_Rgba);
    EXPECT_TRUE(std::filesystem::exists("frames/frame-00000.png"));

    // The arrow lies in the upper right quarter only; a turn or a mirror would move it out.
    int quarters[2][2] = {};
    for (int y = 0; y < saved.m_Height; ++y)
        for (int x = 0; x < saved.m_Width; ++x)
            quarters[y < saved.m_Height / 2][x >= saved.m_Width / 2] += IsArrow(saved, x, y);
    EXPECT_GT(quarters[1][1], 2000) << "upper right";
    EXPECT_EQ(0, quarters[1][0]) << "upper left";
    EXPECT_EQ(0, quarters[0][0]) << "lower left";
    EXPECT_EQ(0, quarters[0][1]) << "lower right";

    // Along the arrow at its slope, with the wide head at the far end.
    V2 const base = Along(S_Tail, S_ShaftLength, 0);
    V2 const middle = Along(S_Tail, S_ShaftLength / 2, 0);
    struct Probe {
        char const* where;
        V2 point;
        bool arrow;
    } const probes[] = {
        {"middle of the shaft", middle, true},
        {"the middle mirrored to slope 2:1", V2(middle.y, middle.x), false},
        {"inside the head", Along(base, S_HeadLength / 3, 0), true},
        {"beside the head", Along(base, 0.1f, 0.35f), true},
        {"as far beside the tail", Along(S_Tail, 0.1f, 0.35f), false},
        {"beyond the tip", Along(base, S_HeadLength + 0.1f, 0), false},
    };
    for (Probe const& probe : probes)
        EXPECT_EQ(probe.arrow, IsArrow(saved, probe.point)) << probe.where;
}

#endif
