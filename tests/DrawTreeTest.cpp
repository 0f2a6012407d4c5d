#include "Vellacore/Core/Logger.h"
#include "Vellacore/Geometry/PolygonGeometry.h"
#include "Vellacore/Render/DrawTree.h"
#include "Vellacore/Scene/Camera.h"
#include "Vellacore/Scene/InterfaceGroup.h"
#include "Vellacore/Scene/Transform.h"
#include "support/AllocationCounter.h"
#include "support/RecordingRender.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

using namespace Vellacore;
using VellacoreTest::RecordingRender;

namespace {

typedef Matrix4T<Fixed> M4;
typedef std::vector<std::string> Texts;

template <class T>
T* AddNew(Group* parent, char const* name)
{
    T* node = T::Create();
    node->SetName(name);
    node->SetParent(parent);
    return node;
}

void AddDrawable(Group* parent, char const* name, Shader* shader)
{
    AddNew<PolygonGeometry>(parent, name)->SetShader(shader);
}

void AddLight(Group* parent, char const* name, Light::LightType type, Vector3T<float> const& color)
{
    Light* light = AddNew<Light>(parent, name);
    light->SetType(type);
    light->SetColor(color);
}

Ptr<Shader> NamedShader(char const* name, int layer = Shader::S_DefaultLayer)
{
    Ptr<Shader> shader = Shader::Create();
    shader->SetName(name);
    shader->SetLayer(layer);
    return shader;
}

// Moves a node when the walk reaches this transform: the only way a camera the walk collected can
// end up where the walk did not go.
class NodeMover : public Transform {
public:
    static NodeMover* Create() { return new (TypeInfoT<NodeMover>::S_TypeInfo_1) NodeMover(); }
    void ComputeLocalMatrix() override
    {
        Transform::ComputeLocalMatrix();
        if (m_Node)
            m_Node->SetParent(m_Destination);
    }
    Node* m_Node = nullptr;
    Group* m_Destination = nullptr;
};

// A root whose first child CameraTransform holds the Camera, drawn through a recording renderer.
class DrawTreeTest : public testing::Test {
protected:
    static void SetUpTestSuite() { Fixed::InitLookupTables(); }
    static void TearDownTestSuite() { Fixed::ExitLookupTables(); }

    DrawTreeTest() : m_Render(RecordingRender::Create()), m_Tree(DrawTree::Create()), m_Root(Transform::Create())
    {
        Logger::Init();
        m_CameraTransform = AddNew<Transform>(m_Root, "CameraTransform");
        m_Camera = AddNew<Camera>(m_CameraTransform, "Camera");
        m_Tree->SetRenderer(m_Render);
        m_Tree->SetSceneRoot(m_Root);
        m_Tree->SetCamera(m_Camera);
    }
    ~DrawTreeTest() override { Logger::Exit(); }

    Texts DrawOnce()
    {
        m_Render->m_Texts.clear();
        m_Render->m_Matrices.clear();
        m_Tree->Draw();
        return m_Render->m_Texts;
    }

    // Everything after the banner. Closes the log, which the engine never flushes.
    std::string LogLines()
    {
        Logger::Exit();
        std::string const log = VellacoreTest::ReadFile("Xapp.log");
        return log.substr(log.find('\n') + 1);
    }

    // The walk stamps the root with the pass counter, so the stamp of the pass after a draw shows
    // whether that draw moved the counter.
    void ExpectCountedPass(bool counted)
    {
        I32 const stamp = m_Root->m_WorldFrame;
        m_Tree->Draw();
        EXPECT_EQ(stamp + (counted ? 1 : 0), m_Root->m_WorldFrame);
    }

    // A camera that cannot be prepared: only the overlay reaches the renderer, the pass counts, and
    // the log holds these lines.
    void ExpectCameraSkipped(std::string const& log)
    {
        AddDrawable(m_Root, "D1", nullptr);
        AddDrawable(AddNew<InterfaceGroup>(m_Root, "Overlay"), "O1", nullptr);
        EXPECT_EQ((Texts{"SetProjectionMatrix()", "SetViewMatrix()", "SetShader(null)", "Draw(O1)"}), DrawOnce());
        ExpectCountedPass(true);
        EXPECT_EQ(log, LogLines());
    }

    VellacoreTest::TempDir m_Dir;
    Ptr<RecordingRender> m_Render;
    Ptr<DrawTree> m_Tree;
    Ptr<Transform> m_Root;
    Transform* m_CameraTransform;
    Camera* m_Camera;
};

} // namespace

// Ambient lights are summed into one colour and never take a slot.
TEST_F(DrawTreeTest, CameraPassCallsTheRendererInOrder)
{
    m_CameraTransform->SetTranslation({0, 0, 5});
    Ptr<Shader> shader = NamedShader("S1");
    AddLight(m_Root, "A1", Light::Ambient, {0.2f, 0.2f, 0.2f});
    Transform* lightTransform = AddNew<Transform>(m_Root, "LightTransform");
    lightTransform->SetTranslation({0, 3, 0});
    AddLight(lightTransform, "L1", Light::Directional, {1, 1, 1});
    AddLight(m_Root, "A2", Light::Ambient, {0.1f, 0, 0});
    AddLight(m_Root, "L2", Light::Point, {1, 1, 1});
    AddNew<Fog>(m_Root, "F1");
    AddDrawable(m_Root, "D1", shader);

    EXPECT_EQ((Texts{"SetTarget(null)", "Clear(3)", "SetProjectionMatrix()", "SetViewMatrix()", "SetAmbientLight(0.3,0.2,0.2)",
                  "SetLights(2)", "SetLight(0,L1)", "SetLight(1,L2)", "SetFog(F1)", "SetShader(S1)", "Draw(D1)"}),
        DrawOnce());
    // Lights are placed by their transform; the view undoes the camera's.
    EXPECT_EQ(Fixed(3), m_Render->MatrixOf("SetLight(0,L1)").m[13]);
    EXPECT_EQ(Fixed(-5), m_Render->MatrixOf("SetViewMatrix()").m[14]);
}

TEST_F(DrawTreeTest, LayersDrawInAscendingOrderAndShaderlessDrawablesInEight)
{
    Ptr<Shader> nine = NamedShader("S9", 9), seven = NamedShader("S7", 7), two = NamedShader("S2", 2);
    AddDrawable(m_Root, "D9", nine);
    AddDrawable(m_Root, "DNone", nullptr);
    AddDrawable(m_Root, "D7", seven);
    AddDrawable(m_Root, "D2", two);
    Texts const calls = DrawOnce();
    EXPECT_EQ((Texts{"SetShader(S2)", "Draw(D2)", "SetShader(S7)", "Draw(D7)", "SetShader(null)", "Draw(DNone)",
                  "SetShader(S9)", "Draw(D9)"}),
        Texts(calls.end() - 8, calls.end()));
}

// Within a layer, descending by shader address.
TEST_F(DrawTreeTest, DrawablesSharingAShaderDrawTogether)
{
    Ptr<Shader> a = NamedShader("SA"), b = NamedShader("SB");
    for (char const* name : {"D1", "D2", "D3", "D4"})
        AddDrawable(m_Root, name, name[1] % 2 ? a : b);
    Texts shaders;
    for (std::string const& call : DrawOnce())
        if (call.rfind("SetShader", 0) == 0)
            shaders.push_back(call);
    std::string const high = std::greater<Shader*>()(a, b) ? "SetShader(SA)" : "SetShader(SB)";
    std::string const low = high == "SetShader(SA)" ? "SetShader(SB)" : "SetShader(SA)";
    EXPECT_EQ((Texts{high, high, low, low}), shaders);
}

TEST_F(DrawTreeTest, OnlyTheFirstFogCountsAndNoFogSwitchesItOff)
{
    Group* group = AddNew<Group>(m_Root, "Group");
    AddNew<Fog>(group, "F1");
    Fog* second = AddNew<Fog>(m_Root, "F2");
    EXPECT_EQ("SetFog(F1)", DrawOnce().back());
    group->SetVisibility(0);
    second->SetVisibility(0);
    EXPECT_EQ("SetFog(null)", DrawOnce().back());
}

// Overlays are flat and keep tree order; a turn above them does not reach them.
TEST_F(DrawTreeTest, OverlaysDrawAfterTheSceneWithTheirOwnProjection)
{
    Ptr<Shader> a = NamedShader("SA"), b = NamedShader("SB");
    Transform* turned = AddNew<Transform>(m_Root, "Turned");
    turned->SetRotation({0, 0, 90});
    InterfaceGroup* overlay = AddNew<InterfaceGroup>(turned, "Overlay");
    overlay->SetResolution({640, 480});
    AddDrawable(overlay, "O1", a);
    AddDrawable(overlay, "O2", b);
    AddDrawable(AddNew<InterfaceGroup>(overlay, "Nested"), "O3", a);
    Transform* moved = AddNew<Transform>(overlay, "Moved");
    moved->SetTranslation({10, 20, 0});
    AddDrawable(moved, "O4", nullptr);
    AddDrawable(m_Root, "D1", a);

    EXPECT_EQ((Texts{"SetTarget(null)", "Clear(3)", "SetProjectionMatrix()", "SetViewMatrix()", "SetAmbientLight(0,0,0)",
                  "SetLights(0)", "SetFog(null)", "SetShader(SA)", "Draw(D1)", "SetProjectionMatrix()", "SetViewMatrix()",
                  "SetShader(SA)", "Draw(O1)", "SetShader(SB)", "Draw(O2)", "SetShader(SA)", "Draw(O3)", "SetShader(null)",
                  "Draw(O4)"}),
        DrawOnce());
    M4 const projection = overlay->GetProjection(), view = m_Render->MatrixOf("SetViewMatrix()");
    EXPECT_TRUE(std::equal(projection.m, projection.m + 16, m_Render->MatrixOf("SetProjectionMatrix()").m));
    EXPECT_TRUE(std::equal(view.m, view.m + 16, M4::Identity.m));
    M4 const o4 = m_Render->MatrixOf("Draw(O4)");
    EXPECT_EQ((std::vector<Fixed>{1, 0, 10, 20}), (std::vector<Fixed>{o4.m[0], o4.m[1], o4.m[12], o4.m[13]}));
}

TEST_F(DrawTreeTest, WithoutARootNothingHappens)
{
    m_Tree->Draw();
    m_Tree->SetSceneRoot(nullptr);
    EXPECT_TRUE(DrawOnce().empty());
    m_Tree->SetSceneRoot(m_Root);
    m_Tree->Draw();
    EXPECT_EQ(1, m_Root->m_WorldFrame) << "the pass without a root is not counted";
    EXPECT_EQ("[E] DrawTree::Draw: SceneRoot must NOT be 0.\n", LogLines());
}

// A camera outside the walk (or hidden) is never collected: nothing is drawn, not even the overlay.
TEST_F(DrawTreeTest, WithoutItsCameraInTheWalkNothingIsDrawn)
{
    AddDrawable(AddNew<InterfaceGroup>(m_Root, "Overlay"), "O1", nullptr);
    Ptr<Camera> elsewhere = Camera::Create();
    m_Tree->SetCamera(elsewhere);
    EXPECT_TRUE(DrawOnce().empty());
    ExpectCountedPass(false);
    std::string const line = "[E] DrawTree::Draw: No Cameras within SceneTree.\n";
    EXPECT_EQ(line + line, LogLines());
}

TEST_F(DrawTreeTest, UnsupportedCameraTypeSkipsTheCamera)
{
    m_Camera->SetType(static_cast<Camera::CameraType>(2));
    std::string const line = "[E] DrawTree::PrepareCurrentCamera: unsupported CameraType used.\n";
    ExpectCameraSkipped(line + line);
}

TEST_F(DrawTreeTest, CameraWithoutTransformSkipsTheCamera)
{
    Ptr<Group> detached = Group::Create();
    NodeMover* mover = AddNew<NodeMover>(m_Root, "Mover");
    mover->m_Node = m_Camera;
    mover->m_Destination = detached;
    ExpectCameraSkipped("[E] DrawTree::PrepareCurrentCamera: m_CurrentCamera has no ParentTransform.\n"
                        "[E] DrawTree::Draw: No Cameras within SceneTree.\n");
}

TEST_F(DrawTreeTest, CameraUnderAnUnreachedTransformSkipsTheCamera)
{
    Transform* hidden = AddNew<Transform>(m_Root, "Hidden");
    hidden->SetVisibility(0);
    NodeMover* mover = AddNew<NodeMover>(m_Root, "Mover");
    m_Tree->Draw(); // pass 0 would match the unreached transform's initial stamp
    mover->m_Node = m_Camera;
    mover->m_Destination = hidden;
    ExpectCameraSkipped("[E] DrawTree::PrepareCurrentCamera: m_CurrentCamera was not updated.\n"
                        "[E] DrawTree::Draw: No Cameras within SceneTree.\n");
}

TEST_F(DrawTreeTest, SteadySceneAllocatesNothingPerFrame)
{
    Ptr<Shader> a = NamedShader("SA", 3), b = NamedShader("SB", 12);
    for (int i = 0; i < 20; ++i)
        AddDrawable(AddNew<Transform>(m_Root, "T"), "D", i % 3 ? a : b);
    AddLight(m_Root, "A", Light::Ambient, {0.1f, 0.1f, 0.1f});
    AddLight(m_Root, "L", Light::Directional, {1, 1, 1});
    AddNew<Fog>(m_Root, "F");
    InterfaceGroup* overlay = AddNew<InterfaceGroup>(m_Root, "Overlay");
    for (int i = 0; i < 5; ++i)
        AddDrawable(overlay, "O", i % 2 ? a : nullptr);
    m_Render->m_Recording = false;

    unsigned long const start = VellacoreTest::AllocationCount();
    m_Tree->Draw();
    unsigned long const warmedUp = VellacoreTest::AllocationCount();
    if (warmedUp == start)
        GTEST_SKIP() << "allocations are not counted here (a memory checker replaced operator new)";
    for (int frame = 0; frame < 10; ++frame)
        m_Tree->Draw();
    EXPECT_EQ(warmedUp, VellacoreTest::AllocationCount());
}
