// The picture the Mesa stand-in saves must be the one a player of the handheld sees: the engine
// turns every projection a quarter turn to fit the portrait framebuffer, and the saved picture must
// undo exactly that turn, without mirroring. An arrow pointing up and to the right, at a slope of
// 1:2 so that every wrong turn or mirror sends it somewhere else, is drawn through the engine.
#ifdef VELLACORE_MESA_GL

#include "support/MesaScene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>

using namespace Vellacore;
using namespace VellacoreTest;

namespace {

typedef Vector2T<float> V2;

V2 const S_Direction(2.0f / std::sqrt(5.0f), 1.0f / std::sqrt(5.0f));
V2 const S_Tail(0.4f, 0.2f);
float const S_ShaftLength = 1.4f;
float const S_HeadLength = 0.7f;

// The point along the arrow's direction from another, and across it to the left.
V2 Along(V2 from, float along, float across)
{
    return V2(from.x + S_Direction.x * along - S_Direction.y * across, from.y + S_Direction.y * along + S_Direction.x * across);
}

// Orange, so that a swap of red and blue shows too.
bool IsArrow(Picture const& picture, int x, int y)
{
    unsigned char const* rgba = picture.At(x, y);
    return rgba[0] > 200 && rgba[1] > 90 && rgba[1] < 170 && rgba[2] < 40;
}

// A point of the z = 0 plane: the camera five units away with a 60-degree horizontal field of view
// shows 5 tan(30) units on either side of the centre.
bool IsArrow(Picture const& picture, V2 point)
{
    float const pixelsPerUnit = (MESAGL_FRAME_WIDTH / 2) / (5.0f * std::tan(3.14159265f / 6.0f));
    return IsArrow(picture, static_cast<int>(std::lround(MESAGL_FRAME_WIDTH / 2 + point.x * pixelsPerUnit)),
        static_cast<int>(std::lround(MESAGL_FRAME_HEIGHT / 2 - point.y * pixelsPerUnit)));
}

} // namespace

// The game is left as it is: the environment tells the stand-in where to save its frames.
TEST(MesaOrientationTest, SavedPictureShowsTheSceneAsThePlayerSeesIt)
{
    setenv("VELLACORE_FRAME_DIR", "frames", 1);
    MesaScene scene;
    unsetenv("VELLACORE_FRAME_DIR");
    ASSERT_TRUE(scene.IsReady());
    V2 const base = Along(S_Tail, S_ShaftLength, 0);
    Array<Vector3T<float>> vertices; // the shaft, then the head
    for (V2 corner : {Along(S_Tail, 0, -0.15f), Along(base, 0, -0.15f), Along(base, 0, 0.15f), Along(S_Tail, 0, 0.15f),
             Along(base, 0, -0.5f), Along(base, S_HeadLength, 0), Along(base, 0, 0.5f)})
        vertices.push_back(Vector3T<float>(corner.x, corner.y, 0));
    PolygonGeometry* arrow = PolygonGeometry::Create();
    arrow->SetVertexArray(vertices);
    arrow->SetIndexArray({0, 1, 2, 0, 2, 3, 4, 5, 6});
    Shader* shader = MakeShader(Colour(1.0f, 0.5f, 0.0f, 1.0f), nullptr, false);
    shader->SetCullingEnabled(false);
    Add(scene.GetRoot(), arrow, shader);
    scene.DrawFrame();
    Picture const last = scene.DrawFrame();
    ASSERT_EQ(2, scene.GetStandIn().GetFrameCount());

    Picture saved;
    ASSERT_TRUE(ReadPicture("frames/frame-00001.png", saved));
    ASSERT_EQ(MESAGL_FRAME_WIDTH, saved.m_Width);
    EXPECT_EQ(last.m_Rgba, saved.m_Rgba);
    EXPECT_TRUE(std::filesystem::exists("frames/frame-00000.png"));

    // The arrow lies in the upper right quarter only; a turn or a mirror would move it out.
    int quarters[2][2] = {};
    for (int y = 0; y < saved.m_Height; ++y)
        for (int x = 0; x < saved.m_Width; ++x)
            quarters[y < saved.m_Height / 2][x >= saved.m_Width / 2] += IsArrow(saved, x, y);
    EXPECT_GT(quarters[1][1], 2000) << "upper right";
    EXPECT_EQ(0, quarters[1][0] + quarters[0][0] + quarters[0][1]) << "upper left, lower left, lower right";

    // Along the arrow at its slope, with the wide head at the far end.
    V2 const middle = Along(S_Tail, S_ShaftLength / 2, 0);
    EXPECT_TRUE(IsArrow(saved, middle)) << "middle of the shaft";
    EXPECT_FALSE(IsArrow(saved, V2(middle.y, middle.x))) << "the middle mirrored to slope 2:1";
    EXPECT_TRUE(IsArrow(saved, Along(base, 0.1f, 0.35f))) << "beside the head";
    EXPECT_FALSE(IsArrow(saved, Along(S_Tail, 0.1f, 0.35f))) << "as far beside the tail";
}

#endif
