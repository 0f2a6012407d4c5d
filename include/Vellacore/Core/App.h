#ifndef VELLACORE_CORE_APP_H
#define VELLACORE_CORE_APP_H

#include "Vellacore/Core/Object.h"
#include "Vellacore/Core/Types.h"
#include "Vellacore/Math/Fixed.h"
#include "Vellacore/Memory/Ptr.h"

namespace Vellacore {

class AudioPlayer;
class Camera;
class DrawTree;
class Input;
class Light;
class Render;
class Transform;

// The frame a game derives from. It owns the devices, a default scene with a camera and a light,
// and the clock. The game calls Logger::Init() and System::Init() first, constructs its App, calls
// Init once, then every frame ProcessFrame and whichever of the other Process calls it needs until
// RequestExit says so, then Exit, even after a failed Init.
class App : public Object {
public:
    // Button bits the built-in fly camera reacts to; which physical button sets which bit is the
    // input device's business.
    enum FlyButton : U32 {
        LightYawPlus = 0x40,
        LightYawMinus = 0x80,
        StrafeLeft = 0x10000,
        StrafeRight = 0x20000,
        MoveForward = 0x40000,
        MoveBackward = 0x80000,
        YawMinus = 0x100000,
        YawPlus = 0x200000,
        PitchMinus = 0x400000,
        PitchPlus = 0x800000
    };

    // Needs System::Init(): starts the clock from the timer and seeds Random with it.
    App();
    ~App() override;

    // The arguments are the game's; the frame reads none of them. False when a device failed.
    virtual bool Init(int argc, char** argv);
    virtual void Exit();
    // Advances the clock only.
    virtual void ProcessFrame();
    virtual void ProcessInput();
    virtual void ProcessCamera();
    // The game's hook for its animations; the frame has none.
    virtual void ProcessAnimations();
    virtual void ProcessDraw();
    // Whether the main loop should stop; the frame never asks to.
    virtual bool RequestExit();

protected:
    Ptr<Render> m_Renderer;
    Ptr<Input> m_Input;
    U32 m_ButtonState;
    U32 m_PrevButtonState;
    Ptr<AudioPlayer> m_AudioPlayer;
    Ptr<DrawTree> m_DrawTree;
    Ptr<Transform> m_SceneRoot;
    // Where the game hangs its content.
    Ptr<Transform> m_SceneTransform;
    Ptr<Transform> m_CameraTransform;
    Ptr<Transform> m_CameraFixTransform;
    Ptr<Camera> m_Camera;
    Ptr<Transform> m_LightTransform;
    Ptr<Light> m_Light;
    // Timer value at construction, taken again when Init succeeds.
    U32 m_StartTicks;
    // Seconds since m_StartTicks, of the previous and of this frame, and their difference.
    Fixed m_PrevTime;
    Fixed m_CurrentTime;
    Fixed m_FrameTime;

private:
    bool InitDevices();
    void BuildSceneTree();
};

} // namespace Vellacore

#endif
