#include "FirstGame.h"

#include "Shapes.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

using namespace Vellacore;
using namespace FirstGameShapes;

namespace {

// The buttons of the flight a player might fly, by frame (30 a second).
struct ScriptStep {
    int m_First;
    int m_Last;
    U32 m_Buttons;
};

ScriptStep const S_Flight[] = {
    { 20, 25, App::PitchMinus }, // look down a little
    { 26, 34, App::MoveBackward }, // back away, and up with the view
    { 35, 94, App::StrafeRight | App::YawPlus }, // circle half way round the ring
    { 95, 109, App::LightYawPlus }, // swing the light round
    { 110, 117, App::MoveForward }, // close in
    { 118, 132, App::MoveBackward }, // and out again, further
    { 133, 162, App::StrafeLeft | App::YawMinus }, // circle a quarter turn back
};

bool const S_PlaysFlight = VELLACORE_EXAMPLE_SCRIPTED_BUTTONS != 0;

U32 FlightButtons(int frame)
{
    U32 buttons = 0;
    for (ScriptStep const& step : S_Flight)
        if (frame >= step.m_First && frame <= step.m_Last)
            buttons |= step.m_Buttons;
    return buttons;
}

} // namespace

FirstGame::FirstGame() : m_Spin(0), m_Frame(0), m_FrameCount(180) {}

bool FirstGame::Init(int argc, char** argv)
{
    if (!ReadArguments(argc, argv) || !App::Init(argc, argv))
        return false;
    BuildScene();
    return true;
}

bool FirstGame::ReadArguments(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        char* end = nullptr;
        long const frames = std::strcmp(argv[i], "--frames") == 0 && i + 1 < argc ? std::strtol(argv[++i], &end, 10) : 0;
        if (frames < 1 || frames > 1000000 || *end != '\0') {
            std::fprintf(stderr, "usage: %s [--frames N]   (N from 1 to 1000000, default 180)\n", argv[0]);
            return false;
        }
        m_FrameCount = static_cast<int>(frames);
    }
    return true;
}

// The App's light comes from the upper right behind the camera; a dim ambient light keeps the
// far side of the ring from going black.
void FirstGame::BuildScene()
{
    m_Renderer->SetColorClearValue(Vector4T<float>(0.08f, 0.1f, 0.18f, 1.0f));
    m_LightTransform->SetRotation(Vector3T<Fixed>(-40, 35, 0));
    Light* ambient = Light::Create();
    ambient->SetType(Light::Ambient);
    ambient->SetColor(Colour(0.3f, 0.3f, 0.3f));
    ambient->SetParent(m_SceneTransform);

    m_Ring = Transform::Create();
    m_Ring->SetName("Ring");
    m_Ring->SetParent(m_SceneTransform);
    PolygonGeometry* torus = MakeTorus(1.0f, 0.4f, 32, 16);
    torus->SetShader(MakeLitShader(MakeCheckerTexture(Colour(0.95f, 0.55f, 0.1f), Colour(1.0f, 0.95f, 0.8f), 8)));
    torus->SetParent(m_Ring);

    PolygonGeometry* floor = MakeFloor(8.0f, -1.6f, 8.0f);
    floor->SetShader(MakeLitShader(MakeCheckerTexture(Colour(0.3f, 0.45f, 0.35f), Colour(0.2f, 0.3f, 0.25f), 2)));
    floor->SetParent(m_SceneTransform);
}

void FirstGame::ProcessInput()
{
    if (S_PlaysFlight)
        InputWiz::SetButtonState(FlightButtons(m_Frame));
    App::ProcessInput();
}

// A tumble at 60 degrees a second about x and twice that about y, starting tilted towards the
// camera so that the ring is not seen edge on.
void FirstGame::ProcessAnimations()
{
    m_Spin += m_FrameTime * Fixed(60);
    if (m_Spin >= Fixed(360))
        m_Spin -= Fixed(360);
    m_Ring->SetRotation(Vector3T<Fixed>(m_Spin + Fixed(60), m_Spin * Fixed(2), Fixed(0)));
}

void FirstGame::ProcessDraw()
{
    App::ProcessDraw();
    ++m_Frame;
}

bool FirstGame::RequestExit()
{
    return m_Frame >= m_FrameCount;
}
