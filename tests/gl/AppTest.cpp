// The application frame on the recording stand-in, with the host's emulated button registers and
// SDL's dummy audio driver: the default scene, the fly camera, the clock, and Init's failures.
#include "Vellacore/Audio/AudioPlayer.h"
#include "Vellacore/Core/App.h"
#include "Vellacore/Core/Logger.h"
#include "Vellacore/Input/InputWiz.h"
#include "Vellacore/Render/DrawTree.h"
#include "Vellacore/Render/Render.h"
#include "Vellacore/Scene/Camera.h"
#include "Vellacore/Scene/Light.h"
#include "Vellacore/Scene/Transform.h"
#include "Vellacore/System/System.h"
#include "support/RecordingTrace.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

using namespace Vellacore;
using Lines = std::vector<std::string>;

namespace {

// The frame's state, open to the tests.
class TestApp : public App {
public:
    using App::m_AudioPlayer;
    using App::m_ButtonState;
    using App::m_Camera;
    using App::m_CameraFixTransform;
    using App::m_CameraTransform;
    using App::m_CurrentTime;
    using App::m_DrawTree;
    using App::m_FrameTime;
    using App::m_Input;
    using App::m_Light;
    using App::m_LightTransform;
    using App::m_PrevButtonState;
    using App::m_Renderer;
    using App::m_SceneRoot;
    using App::m_SceneTransform;
    using App::m_StartTicks;
};

// What a game sets up around its App, in a directory of its own, with the recording stand-in as
// driver unless told otherwise.
class AppTest : public testing::Test {
protected:
    explicit AppTest(bool driver = true, char const* audio = "dummy")
    {
        setenv("SDL_AUDIODRIVER", audio, 1);
        if (driver)
            m_Trace.emplace();
        Logger::Init();
        System::Init();
    }
    ~AppTest() override
    {
        System::Exit();
        Logger::Exit();
        unsetenv("SDL_AUDIODRIVER");
    }

    // Log lines since the last call, without the banner.
    Lines Logged()
    {
        Logger::Instance()->Flush();
        std::istringstream in(VellacoreTest::ReadFile("Xapp.log"));
        Lines fresh;
        std::size_t read = 0;
        for (std::string line; std::getline(in, line);)
            if (++read > m_Seen)
                fresh.push_back(line);
        m_Seen = std::max(m_Seen, read);
        return fresh;
    }

    VellacoreTest::TempDir m_Dir;
    std::optional<VellacoreTest::RecordingTrace> m_Trace;
    std::size_t m_Seen = 1;
};

typedef Vector3T<Fixed> V;

void ExpectNear(V const& expected, V const& actual, char const* what)
{
    EXPECT_NEAR(expected.x.ToFloat(), actual.x.ToFloat(), 0.01f) << what;
    EXPECT_NEAR(expected.y.ToFloat(), actual.y.ToFloat(), 0.01f) << what;
    EXPECT_NEAR(expected.z.ToFloat(), actual.z.ToFloat(), 0.01f) << what;
}

TEST_F(AppTest, InitBuildsTheDefaultSceneAndDrawsItThroughTheCamera)
{
    TestApp app;
    ASSERT_TRUE(app.Init(0, nullptr));
    struct {
        Node* node;
        char const* name;
        Group* parent;
    } const tree[] = {
        { app.m_SceneRoot, "SceneRoot", nullptr },
        { app.m_SceneTransform, "SceneTransform", app.m_SceneRoot },
        { app.m_CameraTransform, "CameraTransform", app.m_SceneRoot },
        { app.m_CameraFixTransform, "CameraFixTransform", app.m_CameraTransform },
        { app.m_Camera, "Camera", app.m_CameraFixTransform },
        { app.m_LightTransform, "LightTransform", app.m_SceneRoot },
        { app.m_Light, "Light", app.m_LightTransform },
    };
    for (auto const& node : tree) {
        ASSERT_NE(node.node, nullptr) << node.name;
        EXPECT_EQ(node.node->GetName(), node.name);
        EXPECT_EQ(node.node->GetParent(), node.parent) << node.name;
    }
    // Children in the order they were made.
    EXPECT_EQ(app.m_SceneRoot->GetChild(0), app.m_SceneTransform.Get());
    EXPECT_EQ(app.m_SceneRoot->GetChild(2), app.m_LightTransform.Get());
    EXPECT_EQ(app.m_CameraTransform->GetTranslation(), V(0, 0, 4));
    EXPECT_EQ(app.m_Light->GetColor(), Vector3T<float>(1, 1, 1));
    EXPECT_EQ(app.m_Light->GetType(), Light::Directional);
    EXPECT_EQ(app.m_AudioPlayer->GetVolume(), 20);
    EXPECT_EQ(app.m_DrawTree->GetRenderer(), app.m_Renderer.Get());
    EXPECT_EQ(app.m_DrawTree->GetSceneRoot(), app.m_SceneRoot.Get());
    EXPECT_EQ(app.m_DrawTree->GetCamera(), app.m_Camera.Get());
    Lines const log = Logged();
    Lines own;
    std::copy_if(log.begin(), log.end(), std::back_inserter(own), [](std::string const& line) { return line.find("App::") != std::string::npos; });
    EXPECT_EQ(own, (Lines{ "[D] App::Init", "[D] App::Init: Creating scenetree.", "[D] App::Init: setup DrawTree" }));

    // An empty scene is still cleared and presented.
    int const mark = m_Trace->Count();
    app.ProcessDraw();
    Lines const calls = m_Trace->Since(mark);
    auto const clear = std::find_if(calls.begin(), calls.end(), [](std::string const& call) { return call.rfind("glClear(", 0) == 0; });
    auto const swap = std::find(calls.begin(), calls.end(), "eglSwapBuffers(dpy, surf)");
    EXPECT_LT(clear, swap);
    EXPECT_NE(swap, calls.end());
    app.Exit();
}

// Half a second per frame: 5 units of movement, 45 degrees of turn. The camera starts yawed 90
// degrees to the left (looking down -x), pitched 30 degrees up and rolled 20 degrees: strafing
// follows the yaw alone, moving forward the full rotation in Z, X, Y order, and both use the
// rotation from before this frame's turn.
TEST_F(AppTest, FlyCameraMovesByEveryButtonBit)
{
    struct {
        U32 buttons;
        V translation;
        V rotation;
        Fixed lightYaw;
    } const cases[] = {
        { 0, V(1, 2, 3), V(30, 90, 20), 0 },
        { App::StrafeLeft, V(1, 2, 8), V(30, 90, 20), 0 },
        { App::StrafeRight, V(1, 2, -2), V(30, 90, 20), 0 },
        { App::StrafeLeft | App::StrafeRight, V(1, 2, 3), V(30, 90, 20), 0 },
        { App::MoveForward, V(1 - 4.330127, 2 + 2.5, 3), V(30, 90, 20), 0 },
        { App::MoveBackward, V(1 + 4.330127, 2 - 2.5, 3), V(30, 90, 20), 0 },
        { App::StrafeLeft | App::MoveForward | App::YawMinus, V(1 - 4.330127, 2 + 2.5, 8), V(30, 45, 20), 0 },
        { App::YawMinus, V(1, 2, 3), V(30, 45, 20), 0 },
        { App::YawPlus, V(1, 2, 3), V(30, 135, 20), 0 },
        { App::PitchMinus, V(1, 2, 3), V(-15, 90, 20), 0 },
        { App::PitchPlus, V(1, 2, 3), V(75, 90, 20), 0 },
        { App::LightYawMinus, V(1, 2, 3), V(30, 90, 20), -45 },
        { App::LightYawPlus, V(1, 2, 3), V(30, 90, 20), 45 },
    };
    TestApp app;
    ASSERT_TRUE(app.Init(0, nullptr));
    for (auto const& c : cases) {
        std::ostringstream bits;
        bits << "buttons 0x" << std::hex << c.buttons;
        app.m_CameraTransform->SetTranslation(V(1, 2, 3));
        app.m_CameraTransform->SetRotation(V(30, 90, 20));
        app.m_CameraTransform->SetRotationOrder(Transform::XYZ);
        app.m_LightTransform->SetRotation(V(0, 0, 0));
        InputWiz::SetButtonState(0);
        app.ProcessInput();
        InputWiz::SetButtonState(c.buttons);
        app.ProcessInput();
        EXPECT_EQ(app.m_PrevButtonState, 0u) << bits.str();
        app.m_FrameTime = 0.5;
        app.ProcessCamera();
        ExpectNear(c.translation, app.m_CameraTransform->GetTranslation(), bits.str().c_str());
        EXPECT_EQ(c.rotation, app.m_CameraTransform->GetRotation()) << bits.str();
        EXPECT_EQ(app.m_CameraTransform->GetRotationOrder(), Transform::ZXY) << bits.str();
        EXPECT_EQ(V(0, c.lightYaw, 0), app.m_LightTransform->GetRotation()) << bits.str();
    }
    app.Exit();
}

// Seconds count from the end of Init, and a timer that has wrapped since the start still counts on.
TEST_F(AppTest, FrameClockStartsAtTheEndOfInit)
{
    TestApp app;
    ASSERT_TRUE(app.Init(0, nullptr));
    U32 const initEnded = System::GetSystemTimerTicks();
    EXPECT_LE(initEnded - app.m_StartTicks, 1000u);
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

// Without a driver the renderer fails; Input and the audio player are never made, and Exit still
// shuts down what was.
class AppWithoutDriver : public AppTest {
protected:
    AppWithoutDriver() : AppTest(false) {}
};

TEST_F(AppWithoutDriver, InitFailsAtTheRendererAndExitReleasesIt)
{
    {
        TestApp app;
        EXPECT_FALSE(app.Init(0, nullptr));
        Lines const log = Logged();
        ASSERT_EQ(log.size(), 5u);
        EXPECT_EQ(log[0], "[D] App::Init");
        EXPECT_EQ(log[1], "[D] RenderWizGL::Init");
        EXPECT_EQ(log[2].rfind("[E] Failed to open libopengles_lite.so Error: \"", 0), 0u) << log[2];
        EXPECT_EQ(log[3], "[E] GLAPI_Init failed.");
        EXPECT_EQ(log[4], "[E] App::Init: Render's Init failed.");
        EXPECT_EQ(app.m_Input, nullptr);
        EXPECT_EQ(app.m_AudioPlayer, nullptr);
        app.Exit();
        EXPECT_EQ(Logged(), Lines{ "[D] RenderWizGL::Exit" });
    }
    EXPECT_EQ(Logged(), Lines{});
}

// InputWiz::Init cannot fail (a missing touchscreen only means no cursor), so the audio player is
// the other device whose failure Init reports.
class AppWithoutAudio : public AppTest {
protected:
    AppWithoutAudio() : AppTest(true, "no-such-driver") {}
};

TEST_F(AppWithoutAudio, InitFailsAtTheAudioPlayerAndExitShutsDownEveryDevice)
{
    {
        TestApp app;
        EXPECT_FALSE(app.Init(0, nullptr));
        Lines const log = Logged();
        ASSERT_GE(log.size(), 2u);
        EXPECT_EQ(log[log.size() - 2].rfind("[E] ", 0), 0u) << "SDL's reason: " << log[log.size() - 2];
        EXPECT_EQ(log.back(), "[E] App::Init: AudioPlayer's Init failed.");
        EXPECT_EQ(app.m_SceneRoot, nullptr);
        EXPECT_EQ(app.m_DrawTree, nullptr);
        app.Exit();
        EXPECT_EQ(Logged(), (Lines{ "[D] RenderWizGL::Exit", "[I] GLAPI_Exit done.", "[I] InputWiz::Exit" }));
    }
    EXPECT_EQ(Logged(), Lines{ "[I] ~InputWiz" });
}

} // namespace
