#include "Vellacore/Core/App.h"

#include "Vellacore/Audio/AudioPlayer.h"
#include "Vellacore/Core/Logger.h"
#include "Vellacore/Input/Input.h"
#include "Vellacore/Math/Matrix4T.h"
#include "Vellacore/Render/DrawTree.h"
#include "Vellacore/Render/Render.h"
#include "Vellacore/Scene/Camera.h"
#include "Vellacore/Scene/Light.h"
#include "Vellacore/Scene/Transform.h"
#include "Vellacore/System/Random.h"
#include "Vellacore/System/System.h"

namespace Vellacore {

namespace {

void Log(char const* level, char const* text)
{
    if (Logger* log = Logger::Instance())
        log->p(level).p(text).pLF();
}

// Makes the platform's device into field and starts it; what was made stays in the field for Exit
// even when it did not start.
template <class Device>
bool StartDevice(Ptr<Device>& field, char const* failure)
{
    field = Device::Create();
    if (field && field->Init())
        return true;
    Log("[E] ", failure);
    return false;
}

// The new node in its field, under parent unless that is null.
template <class T>
T* AddNode(Ptr<T>& field, Group* parent)
{
    field = T::Create();
    if (parent)
        field->SetParent(parent);
    return field;
}

} // namespace

// The tables are shared by the whole engine; the App builds them because it is the first thing a
// game makes after System::Init() and the last it exits.
App::App()
    : m_ButtonState(0), m_PrevButtonState(0), m_StartTicks(System::GetSystemTimerTicks()), m_PrevTime(0), m_CurrentTime(0),
      m_FrameTime(0)
{
    Fixed::InitLookupTables();
    Random::Seed(System::GetSystemTimerTicks());
}

App::~App() = default;

bool App::Init(int, char**)
{
    Log("[D] ", "App::Init");
    if (!InitDevices())
        return false;
    Log("[D] ", "App::Init: Creating scenetree.");
    m_AudioPlayer->SetVolume(20);
    BuildSceneTree();
    Log("[D] ", "App::Init: setup DrawTree");
    m_DrawTree = DrawTree::Create();
    m_DrawTree->SetRenderer(m_Renderer);
    m_DrawTree->SetSceneRoot(m_SceneRoot);
    m_DrawTree->SetCamera(m_Camera);
    // The clock starts when the game can draw, so the first frame does not count the set-up.
    m_StartTicks = System::GetSystemTimerTicks();
    m_PrevTime = 0;
    m_CurrentTime = 0;
    m_FrameTime = 0;
    return true;
}

bool App::InitDevices()
{
    return StartDevice(m_Renderer, "App::Init: Render's Init failed.") && StartDevice(m_Input, "App::Init: Input's Init failed.")
        && StartDevice(m_AudioPlayer, "App::Init: AudioPlayer's Init failed.");
}

void App::BuildSceneTree()
{
    AddNode(m_SceneRoot, nullptr)->SetName("SceneRoot");
    AddNode(m_SceneTransform, m_SceneRoot)->SetName("SceneTransform");
    AddNode(m_CameraTransform, m_SceneRoot)->SetName("CameraTransform");
    AddNode(m_CameraFixTransform, m_CameraTransform)->SetName("CameraFixTransform");
    AddNode(m_Camera, m_CameraFixTransform)->SetName("Camera");
    AddNode(m_LightTransform, m_SceneRoot)->SetName("LightTransform");
    AddNode(m_Light, m_LightTransform);
    m_Light->SetColor(Vector3T<float>(1.0f, 1.0f, 1.0f));
    m_Light->SetType(Light::Directional);
    m_Light->SetName("Light");
    // Four units back from the origin, looking at it.
    m_CameraTransform->SetTranslation(Vector3T<Fixed>(0, 0, 4.0));
}

// The subtraction is unsigned, so one wrap of the timer between start and now is harmless.
void App::ProcessFrame()
{
    m_PrevTime = m_CurrentTime;
    U32 const elapsed = System::GetSystemTimerTicks() - m_StartTicks;
    m_CurrentTime = Fixed(static_cast<float>(static_cast<double>(elapsed) * System::TicksToSeconds));
    m_FrameTime = m_CurrentTime - m_PrevTime;
}

void App::ProcessInput()
{
    if (!m_Input)
        return;
    m_PrevButtonState = m_ButtonState;
    m_ButtonState = m_Input->GetButtonState();
}

// Strafing turns with the yaw only, so it stays level; moving forward and back follows the full
// view direction, pitch included. Turning the camera takes effect from the next frame's move.
void App::ProcessCamera()
{
    Fixed const move = m_FrameTime * Fixed(10.0);
    Fixed const turn = m_FrameTime * Fixed(90.0);
    Matrix4T<Fixed> yaw;
    yaw.MakeRotationY(m_CameraTransform->GetRotation().y);
    Vector3T<Fixed> t = m_CameraTransform->GetTranslation();
    Vector3T<Fixed> r = m_CameraTransform->GetRotation();
    m_CameraTransform->SetRotationOrder(Transform::ZXY);
    U32 const b = m_ButtonState;
    if (b & StrafeLeft)
        t += Matrix4T<Fixed>::Transform(Vector3T<Fixed>::Left, yaw) * move;
    if (b & StrafeRight)
        t += Matrix4T<Fixed>::Transform(Vector3T<Fixed>::Right, yaw) * move;
    if (b & YawMinus)
        r.y -= turn;
    if (b & YawPlus)
        r.y += turn;
    if (b & PitchMinus)
        r.x -= turn;
    if (b & PitchPlus)
        r.x += turn;
    // The local matrix is rebuilt every frame (the rotation order above dirties it), so it is
    // asked for only when a move needs it.
    if (b & (MoveForward | MoveBackward)) {
        Matrix4T<Fixed> view;
        m_CameraTransform->GetLocalMatrix(view);
        if (b & MoveForward)
            t += Matrix4T<Fixed>::Rotate(Vector3T<Fixed>::Forward, view) * move;
        if (b & MoveBackward)
            t += Matrix4T<Fixed>::Rotate(Vector3T<Fixed>::Backward, view) * move;
    }
    m_CameraTransform->SetTranslation(t);
    m_CameraTransform->SetRotation(r);

    Vector3T<Fixed> light = m_LightTransform->GetRotation();
    if (b & LightYawMinus)
        light.y -= turn;
    if (b & LightYawPlus)
        light.y += turn;
    m_LightTransform->SetRotation(light);
}

void App::ProcessAnimations() {}

void App::ProcessDraw()
{
    m_DrawTree->Draw();
    m_Renderer->SwapBuffers();
}

bool App::RequestExit()
{
    return false;
}

// Also the way out of a failed Init, so each step checks what exists. The other fields are
// released with the App itself.
void App::Exit()
{
    if (m_SceneRoot) {
        m_SceneRoot->SetParent(nullptr);
        m_SceneRoot = nullptr;
    }
    if (m_AudioPlayer)
        m_AudioPlayer->Exit();
    if (m_Renderer)
        m_Renderer->Exit();
    m_DrawTree = nullptr;
    if (m_Input)
        m_Input->Exit();
    Fixed::ExitLookupTables();
}

} // namespace Vellacore
