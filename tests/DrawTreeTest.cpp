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

typedef std::vector<std::string> Texts;
std::string const S_NoCamera = "[E] DrawTree::Draw: No Cameras within SceneTree.\n";

template <class T>
T* AddNew(Group* parent, char const* name)
{
    T* node = T::Create();
    node->SetName(name);
    node->SetParent(parent);
    return node;
}

void AddDrawable(Group* parent, char const* name, Shader* shader) { AddNew<PolygonGeometry>(parent, name)->SetShader(shader); }

Ptr<Shader> NamedShader(char const* name, int layer = Shader::S_DefaultLayer)
{
    Ptr<Shader> shader = Shader::Create();
    shader->SetName(name);
    shader->SetLayer(layer);
    return shader;
}

bool Same(RecordingRender::Matrix const& a, RecordingRender::Matrix const& b) { return std::equal(a.m, a.m + 16, b.m); }

// Moves a node when the walk reaches it: the only way a collected camera can end up where the walk did not go.
class NodeMover : public Transform {
public:
    static NodeMover* Create(Node* node, Group* to) { return new (TypeInfoT<NodeMover>::S_TypeInfo_1) NodeMover(node, to); }
    NodeMover(Node* node, Group* to) : m_Node(node), m_Destination(to) {}
    void ComputeLocalMatrix() override { Transform::ComputeLocalMatrix(); m_Node->SetParent(m_Destination); }
    Node* m_Node;
    Group* m_Destination;
};

class DrawTreeTest : public testing::Test {
protected:
    static void SetUpTestSuite() { Fixed::InitLookupTables(); }
    static void TearDownTestSuite() { Fixed::ExitLookupTables(); }

    DrawTreeTest()
    {
        Logger::Init();
        m_Tree->SetRenderer(m_Render);
        m_Tree->SetSceneRoot(m_Root);
        m_Tree->SetCamera(m_Camera);
    }
    ~DrawTreeTest() override { Logger::Exit(); }

    void BuildScene()
    {
        m_CameraTransform->SetTranslation({0, 0, 5});
        struct { Group* parent; char const* name; Light::LightType type; float red, rest; } const lights[] = {
            {m_Root, "A1", Light::Ambient, 0.2f, 0.2f}, {m_CameraTransform, "L1", Light::Directional, 1, 1},
            {m_Root, "A2", Light::Ambient, 0.1f, 0}, {m_Root, "L2", Light::Point, 1, 1}};
        for (auto const& l : lights) {
            Light* light = AddNew<Light>(l.parent, l.name);
            light->SetType(l.type);
            light->SetColor({l.red, l.rest, l.rest});
        }
        AddNew<Fog>(AddNew<Group>(m_Root, "FogGroup"), "F1"); // pre-order meets it before F2
        AddNew<Fog>(m_Root, "F2");
        AddDrawable(m_Root, "D9", m_S9);
        AddDrawable(m_Root, "DNone", nullptr);
        for (char const* name : {"DA", "DB", "DA", "DB"})
            AddDrawable(m_Root, name, name[1] == 'A' ? m_SA : m_SB);
        // Overlays keep tree order, nested ones included; the turn above them must not reach them.
        Transform* turned = AddNew<Transform>(m_Root, "Turned");
        turned->SetRotation({0, 0, 90});
        m_Overlay = AddNew<InterfaceGroup>(turned, "Overlay");
        AddDrawable(m_Overlay, "O1", m_SA);
        AddDrawable(m_Overlay, "O2", m_SB);
        AddDrawable(AddNew<InterfaceGroup>(m_Overlay, "Nested"), "O3", m_SA);
        Transform* moved = AddNew<Transform>(m_Overlay, "Moved");
        moved->SetTranslation({10, 20, 0});
        AddDrawable(moved, "O4", nullptr);
    }

    Texts DrawOnce()
    {
        m_Render->m_Texts.clear();
        m_Render->m_Matrices.clear();
        m_Tree->Draw();
        return m_Render->m_Texts;
    }

    std::string LogLines() // everything after the banner; closes the log, which the engine never flushes
    {
        Logger::Exit();
        std::string const log = VellacoreTest::ReadFile("Xapp.log");
        return log.substr(log.find('\n') + 1);
    }

    // A camera that cannot be prepared: only the overlay is drawn, the pass counts, and the log holds these lines.
    void ExpectCameraSkipped(std::string const& log)
    {
        AddDrawable(m_Root, "D1", nullptr);
        AddDrawable(AddNew<InterfaceGroup>(m_Root, "Overlay"), "O1", nullptr);
        EXPECT_EQ((Texts{"SetProjectionMatrix()", "SetViewMatrix()", "SetShader(null)", "Draw(O1)"}), DrawOnce());
        m_Tree->Draw();
        EXPECT_EQ(1, m_Root->m_WorldFrame) << "the walk stamps the root with the pass counter";
        EXPECT_EQ(log, LogLines());
    }

    VellacoreTest::TempDir m_Dir;
    Ptr<RecordingRender> m_Render = RecordingRender::Create();
    Ptr<DrawTree> m_Tree = DrawTree::Create();
    Ptr<Transform> m_Root = Transform::Create();
    Transform* m_CameraTransform = AddNew<Transform>(m_Root, "CameraTransform");
    Camera* m_Camera = AddNew<Camera>(m_CameraTransform, "Camera");
    Ptr<Shader> m_SA = NamedShader("SA"), m_SB = NamedShader("SB"), m_S9 = NamedShader("S9", 9);
    InterfaceGroup* m_Overlay = nullptr;
};

} // namespace

// Ambient lights sum and take no slot; layers ascend, shaders descend by address in one; overlays keep tree order.
TEST_F(DrawTreeTest, CameraPassThenOverlaysCallTheRendererInOrder)
{
    BuildScene();
    std::string const hi = std::greater<Shader*>()(m_SA, m_SB) ? "A)" : "B)", lo = hi == "A)" ? "B)" : "A)";
    ASSERT_EQ((Texts{"SetTarget(null)", "Clear(3)", "SetProjectionMatrix()", "SetViewMatrix()", "SetAmbientLight(0.3,0.2,0.2)",
                  "SetLights(2)", "SetLight(0,L1)", "SetLight(1,L2)", "SetFog(F1)", "SetShader(S" + hi, "Draw(D" + hi,
                  "SetShader(S" + hi, "Draw(D" + hi, "SetShader(S" + lo, "Draw(D" + lo, "SetShader(S" + lo, "Draw(D" + lo,
                  "SetShader(null)", "Draw(DNone)", "SetShader(S9)", "Draw(D9)", "SetProjectionMatrix()", "SetViewMatrix()",
                  "SetShader(SA)", "Draw(O1)", "SetShader(SB)", "Draw(O2)", "SetShader(SA)", "Draw(O3)", "SetShader(null)",
                  "Draw(O4)"}),
        DrawOnce());
    // L1 placed by its transform, the scene's view undoing the camera's, O4 moved but not turned.
    std::vector<RecordingRender::Matrix> const& m = m_Render->m_Matrices;
    EXPECT_EQ((std::vector<Fixed>{5, -5, 1, 0, 10, 20}),
        (std::vector<Fixed>{m[6].m[14], m[3].m[14], m[30].m[0], m[30].m[1], m[30].m[12], m[30].m[13]}));
    EXPECT_TRUE(Same(m_Overlay->GetProjection(), m[21]) && Same(RecordingRender::Matrix::Identity, m[22]));
}

TEST_F(DrawTreeTest, WithoutFogTheFogIsSwitchedOff)
{
    EXPECT_EQ("SetFog(null)", DrawOnce().back());
}

TEST_F(DrawTreeTest, WithoutARootNothingHappens)
{
    m_Tree->SetSceneRoot(nullptr);
    EXPECT_TRUE(DrawOnce().empty());
    m_Tree->SetSceneRoot(m_Root);
    m_Tree->Draw();
    EXPECT_EQ(0, m_Root->m_WorldFrame) << "the pass without a root is not counted";
    EXPECT_EQ("[E] DrawTree::Draw: SceneRoot must NOT be 0.\n", LogLines());
}

TEST_F(DrawTreeTest, WithoutItsCameraInTheWalkNothingIsDrawn)
{
    AddDrawable(AddNew<InterfaceGroup>(m_Root, "Overlay"), "O1", nullptr);
    m_Tree->SetCamera(Camera::Create());
    EXPECT_TRUE(DrawOnce().empty());
    m_Tree->Draw();
    EXPECT_EQ(0, m_Root->m_WorldFrame) << "the pass is not counted";
    EXPECT_EQ(S_NoCamera + S_NoCamera, LogLines());
}

TEST_F(DrawTreeTest, UnsupportedCameraTypeSkipsTheCamera)
{
    m_Camera->SetType(static_cast<Camera::CameraType>(2));
    std::string const line = "[E] DrawTree::PrepareCurrentCamera: unsupported CameraType used.\n";
    ExpectCameraSkipped(line + line);
}

TEST_F(DrawTreeTest, CameraWithoutTransformSkipsTheCamera)
{
    NodeMover::Create(m_Camera, nullptr)->SetParent(m_Root);
    ExpectCameraSkipped("[E] DrawTree::PrepareCurrentCamera: m_CurrentCamera has no ParentTransform.\n" + S_NoCamera);
}

TEST_F(DrawTreeTest, CameraUnderAnUnreachedTransformSkipsTheCamera)
{
    Transform* hidden = AddNew<Transform>(m_Root, "Hidden");
    hidden->SetVisibility(0);
    hidden->m_WorldFrame = -1; // a stamp no pass has written
    NodeMover::Create(m_Camera, hidden)->SetParent(m_Root);
    ExpectCameraSkipped("[E] DrawTree::PrepareCurrentCamera: m_CurrentCamera was not updated.\n" + S_NoCamera);
}

TEST_F(DrawTreeTest, SteadySceneAllocatesNothingPerFrame)
{
    BuildScene();
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
