// The application frame on the recording stand-in, emulated buttons and SDL's dummy audio: scene, camera, clock, failures.
#include "Vellacore/Core/App.h"
#include "Vellacore/Input/InputWiz.h"
#include "Vellacore/Render/DrawTree.h"
#include "Vellacore/Scene/Camera.h"
#include "Vellacore/Scene/Light.h"
#include "Vellacore/Scene/Transform.h"
#include "Vellacore/System/System.h"
#include "support/RecordingTrace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <thread>

using namespace Vellacore;
using Lines = std::vector<std::string>;
typedef Vector3T<Fixed> V;

namespace {

// The frame's state, open to the tests.
struct TestApp : App {
    using App::m_Camera, App::m_CameraFixTransform, App::m_CameraTransform, App::m_CurrentTime;
    using App::m_DrawTree, App::m_FrameTime, App::m_Input, App::m_Light, App::m_LightTransform, App::m_Renderer;
    using App::m_SceneRoot, App::m_SceneTransform, App::m_StartTicks;
};

// What a game sets up around its App, in a directory of its own, with the recording stand-in as driver unless told otherwise.
class AppTest : public testing::Test {
protected:
    explicit AppTest(bool driver = true, char const* audio = "dummy")
    {
        setenv("SDL_AUDIODRIVER", audio, 1);
        if (driver)
            m_Trace.emplace();
        System::Init();
    }
    ~AppTest() override
    {
        System::Exit();
        unsetenv("SDL_AUDIODRIVER");
    }

    VellacoreTest::TempDir m_Dir;
    std::optional<VellacoreTest::RecordingTrace> m_Trace;
    VellacoreTest::LogSession m_Log;
};

TEST_F(AppTest, InitBuildsTheDefaultSceneAndStartsTheClock)
{
    TestApp app;
    ASSERT_TRUE(app.Init(0, nullptr));
    EXPECT_LE(System::GetSystemTimerTicks() - app.m_StartTicks, 1000u) << "the clock starts at the end of Init";
    struct { Node* node; char const* name; Group* parent; } const tree[] = {
        { app.m_SceneRoot, "SceneRoot", nullptr }, { app.m_SceneTransform, "SceneTransform", app.m_SceneRoot },
        { app.m_CameraTransform, "CameraTransform", app.m_SceneRoot }, { app.m_Camera, "Camera", app.m_CameraFixTransform },
        { app.m_CameraFixTransform, "CameraFixTransform", app.m_CameraTransform },
        { app.m_LightTransform, "LightTransform", app.m_SceneRoot }, { app.m_Light, "Light", app.m_LightTransform },
    };
    for (auto const& node : tree) {
        ASSERT_NE(node.node, nullptr) << node.name;
        EXPECT_EQ(node.node->GetName(), node.name);
        EXPECT_EQ(node.node->GetParent(), node.parent) << node.name;
    }
    EXPECT_EQ(app.m_SceneRoot->GetChild(0), app.m_SceneTransform.Get()) << "children in the order they were made";
    EXPECT_EQ(app.m_SceneRoot->GetChild(2), app.m_LightTransform.Get());
    EXPECT_EQ(app.m_DrawTree->GetRenderer(), app.m_Renderer.Get());
    EXPECT_EQ(app.m_DrawTree->GetSceneRoot(), app.m_SceneRoot.Get());
    EXPECT_EQ(app.m_DrawTree->GetCamera(), app.m_Camera.Get());

    m_Trace->Take();
    app.ProcessDraw();
    Lines const calls = m_Trace->Take();
    auto const clear = std::find_if(calls.begin(), calls.end(), [](auto const& call) { return call.rfind("glClear(", 0) == 0; });
    auto const swap = std::find(calls.begin(), calls.end(), "eglSwapBuffers(dpy, surf)");
    EXPECT_NE(swap, calls.end());
    EXPECT_LT(clear, swap) << "an empty scene is still cleared, then presented";

    // Seconds count from the end of Init, and a timer that has wrapped since the start still counts on.
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    U32 const before = System::GetSystemTimerTicks() - app.m_StartTicks;
    app.ProcessFrame();
    U32 const after = System::GetSystemTimerTicks() - app.m_StartTicks;
    EXPECT_GE(app.m_FrameTime.ToFloat(), before * 1e-6f - 1e-4f);
    EXPECT_LE(app.m_FrameTime.ToFloat(), after * 1e-6f + 1e-4f);
    EXPECT_EQ(app.m_FrameTime, app.m_CurrentTime);

    Fixed const first = app.m_CurrentTime;
    app.m_StartTicks -= 0x80000000u;
    app.ProcessFrame();
    EXPECT_NEAR(app.m_CurrentTime.ToFloat(), 2147.48f + first.ToFloat(), 0.1f);
    EXPECT_EQ(app.m_FrameTime, app.m_CurrentTime - first);
    app.Exit();
}

// Half a second per frame: 5 units of movement, 45 degrees of turn. The camera starts yawed 90 degrees
// to the left (looking down -x), pitched 30 up and rolled 20: strafing follows the yaw alone, moving
// forward the full rotation in Z, X, Y order, and both use the rotation from before this frame's turn.
TEST_F(AppTest, FlyCameraMovesByEveryButtonBit)
{
    struct { U32 buttons; V translation; V rotation; Fixed lightYaw; } const cases[] = {
        { App::StrafeLeft, V(1, 2, 8), V(30, 90, 20), 0 }, { App::StrafeRight, V(1, 2, -2), V(30, 90, 20), 0 },
        { App::StrafeLeft | App::StrafeRight, V(1, 2, 3), V(30, 90, 20), 0 },
        { App::MoveForward, V(1 - 4.330127, 2 + 2.5, 3), V(30, 90, 20), 0 },
        { App::MoveBackward, V(1 + 4.330127, 2 - 2.5, 3), V(30, 90, 20), 0 },
        { App::StrafeLeft | App::MoveForward | App::YawMinus, V(1 - 4.330127, 2 + 2.5, 8), V(30, 45, 20), 0 },
        { App::YawMinus, V(1, 2, 3), V(30, 45, 20), 0 }, { App::YawPlus, V(1, 2, 3), V(30, 135, 20), 0 },
        { App::PitchMinus, V(1, 2, 3), V(-15, 90, 20), 0 }, { App::PitchPlus, V(1, 2, 3), V(75, 90, 20), 0 },
        { App::LightYawMinus, V(1, 2, 3), V(30, 90, 20), -45 }, { App::LightYawPlus, V(1, 2, 3), V(30, 90, 20), 45 },
    };
    TestApp app;
    ASSERT_TRUE(app.Init(0, nullptr));
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << "buttons 0x" << std::hex << c.buttons);
        app.m_CameraTransform->SetTranslation(V(1, 2, 3));
        app.m_CameraTransform->SetRotation(V(30, 90, 20));
        app.m_CameraTransform->SetRotationOrder(Transform::XYZ);
        app.m_LightTransform->SetRotation(V(0, 0, 0));
        InputWiz::SetButtonState(c.buttons);
        app.ProcessInput();
        app.m_FrameTime = 0.5;
        app.ProcessCamera();
        for (Fixed V::*axis : { &V::x, &V::y, &V::z })
            EXPECT_NEAR((app.m_CameraTransform->GetTranslation().*axis).ToFloat(), (c.translation.*axis).ToFloat(), 0.01f);
        EXPECT_EQ(app.m_CameraTransform->GetRotation(), c.rotation);
        EXPECT_EQ(app.m_CameraTransform->GetRotationOrder(), Transform::ZXY);
        EXPECT_EQ(app.m_LightTransform->GetRotation(), V(0, c.lightYaw, 0));
    }
    app.Exit();
}

// Without a driver the renderer fails; the devices after it are never made, and Exit still shuts
// down what was.
struct AppWithoutDriver : AppTest { AppWithoutDriver() : AppTest(false) {} };

TEST_F(AppWithoutDriver, InitFailsAtTheRendererAndExitReleasesIt)
{
    {
        TestApp app;
        EXPECT_FALSE(app.Init(0, nullptr));
        Lines const log = m_Log.Take();
        ASSERT_EQ(log.size(), 5u);
        EXPECT_EQ(log[2].rfind("[E] Failed to open libopengles_lite.so Error: \"", 0), 0u) << log[2];
        EXPECT_EQ(Lines(log.begin() + 3, log.end()), (Lines{ "[E] GLAPI_Init failed.", "[E] App::Init: Render's Init failed." }));
        EXPECT_EQ(app.m_Input, nullptr);
        app.Exit();
        EXPECT_EQ(m_Log.Take(), Lines{ "[D] RenderWizGL::Exit" });
    }
    EXPECT_EQ(m_Log.Take(), Lines{});
}

// InputWiz::Init cannot fail (a missing touchscreen only means no cursor), so the audio player is
// the other device whose failure Init reports.
struct AppWithoutAudio : AppTest { AppWithoutAudio() : AppTest(true, "no-such-driver") {} };

TEST_F(AppWithoutAudio, InitFailsAtTheAudioPlayerAndExitShutsDownEveryDevice)
{
    {
        TestApp app;
        EXPECT_FALSE(app.Init(0, nullptr));
        Lines const log = m_Log.Take();
        ASSERT_GE(log.size(), 2u);
        EXPECT_EQ(log[log.size() - 2].rfind("[E] ", 0), 0u) << "SDL's reason: " << log[log.size() - 2];
        EXPECT_EQ(log.back(), "[E] App::Init: AudioPlayer's Init failed.");
        EXPECT_EQ(app.m_SceneRoot, nullptr);
        app.Exit();
        EXPECT_EQ(m_Log.Take(), (Lines{ "[D] RenderWizGL::Exit", "[I] GLAPI_Exit done.", "[I] InputWiz::Exit" }));
    }
    EXPECT_EQ(m_Log.Take(), Lines{ "[I] ~InputWiz" });
}

} // namespace
