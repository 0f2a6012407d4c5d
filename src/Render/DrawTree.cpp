#include "Vellacore/Render/DrawTree.h"

#include "Vellacore/Core/Assert.h"
#include "Vellacore/Core/Logger.h"
#include "Vellacore/Render/Drawable.h"
#include "Vellacore/Render/Render.h"
#include "Vellacore/Render/RenderTarget.h"
#include "Vellacore/Render/Shader.h"
#include "Vellacore/Scene/Camera.h"
#include "Vellacore/Scene/Fog.h"
#include "Vellacore/Scene/InterfaceGroup.h"
#include "Vellacore/Scene/Light.h"
#include "Vellacore/Scene/Transform.h"

#include <algorithm>
#include <functional>

namespace Vellacore {

namespace {

// Silent without a logger: tools and benchmarks draw without one.
void LogError(char const* text)
{
    if (Logger* log = Logger::Instance())
        log->p("[E] ").p(text).pLF();
}

// Every walk starts from this one: records may point at it for the whole pass.
Matrix4T<Fixed> const* RootMatrix()
{
    return &Matrix4T<Fixed>::Identity;
}

int LayerOf(Drawable const* drawable)
{
    Shader const* shader = drawable->GetShader();
    int const layer = shader ? shader->GetLayer() : Shader::S_DefaultLayer;
    // Outside the 32 lists there is nowhere to put the drawable.
    if (layer < 0 || layer >= DrawTree::S_NumLayers)
        Assert("layer>=0 && layer<32", "Render/DrawTree", __LINE__);
    return layer;
}

// Drawables that share a shader end up next to each other, so the renderer changes state once per
// run. std::greater gives raw pointers a total order even across unrelated objects.
bool ShaderAddressDescending(TraverseInfoT<Drawable> const* a, TraverseInfoT<Drawable> const* b)
{
    return std::greater<Shader const*>()(a->m_Object->GetShader(), b->m_Object->GetShader());
}

} // namespace

DrawTree* DrawTree::Create()
{
    return new (TypeInfoT<DrawTree>::S_TypeInfo_1) DrawTree();
}

DrawTree::DrawTree() : m_Ambient(0.0f, 0.0f, 0.0f), m_Frame(0) {}

DrawTree::~DrawTree() = default;

void DrawTree::SetRenderer(Render* renderer)
{
    m_Renderer = renderer;
}

Render* DrawTree::GetRenderer() const
{
    return m_Renderer;
}

void DrawTree::SetSceneRoot(Transform* root)
{
    m_SceneRoot = root;
}

Transform* DrawTree::GetSceneRoot() const
{
    return m_SceneRoot;
}

void DrawTree::SetCamera(Camera* camera)
{
    m_Camera = camera;
}

Camera* DrawTree::GetCamera() const
{
    return m_Camera;
}

void DrawTree::Draw()
{
    if (!m_SceneRoot) {
        LogError("DrawTree::Draw: SceneRoot must NOT be 0.");
        return;
    }
    ClearAll();
    UpdateMatrices(m_SceneRoot, RootMatrix(), SceneMode);
    if (m_Cameras.empty()) {
        LogError("DrawTree::Draw: No Cameras within SceneTree.");
        return;
    }
    // Render-target cameras first: their images must exist before a screen camera draws them.
    std::partition(m_Cameras.begin(), m_Cameras.end(),
        [](TraverseInfoT<Camera> const& info) { return info.m_Object->GetRenderTarget() != nullptr; });
    for (TraverseInfoT<Camera> const& info : m_Cameras) {
        m_CurrentCamera = info.m_Object;
        if (!PrepareCurrentCamera())
            continue;
        PrepareRendererScene();
        SetLighting();
        SetFog();
        DrawNodes(true);
    }
    // Overlays go over the last camera's image, on its target, unsorted so that tree order is
    // painting order.
    for (TraverseInfoT<InterfaceGroup> const& info : m_InterfaceGroups) {
        m_CurrentInterfaceGroup = info.m_Object;
        ClearDrawables();
        UpdateMatrices(info.m_Object, RootMatrix(), OverlayMode);
        PrepareRendererUI();
        DrawNodes(false);
    }
    m_Frame = WrapI32(static_cast<U32>(m_Frame) + 1u);
}

void DrawTree::ClearAll()
{
    ClearDrawables();
    m_Lights.clear();
    m_Cameras.clear();
    m_InterfaceGroups.clear();
    m_Fogs.clear();
    m_Ambient = Vector3T<float>(0.0f, 0.0f, 0.0f);
    m_CurrentCamera = nullptr;
    m_CurrentInterfaceGroup = nullptr;
}

// clear() keeps each list's storage for the next pass.
void DrawTree::ClearDrawables()
{
    for (Array<TraverseInfoT<Drawable>>& layer : m_Drawables)
        layer.clear();
}

void DrawTree::UpdateMatrices(Node* node, Matrix4T<Fixed> const* matrix, TraverseMode mode)
{
    if (node->GetVisibility() == 0)
        return;
    if (Group* group = node->Cast<Group>()) {
        if (Transform* transform = group->Cast<Transform>()) {
            transform->GetLocalMatrix(transform->m_WorldMatrix);
            transform->m_WorldMatrix.Mul(*matrix);
            transform->m_WorldFrame = m_Frame;
            matrix = &transform->m_WorldMatrix;
        }
        // In the scene an overlay is only noted; it is walked later from the identity, flat.
        if (mode == SceneMode) {
            if (InterfaceGroup* overlay = group->Cast<InterfaceGroup>()) {
                m_InterfaceGroups.push_back({overlay, matrix});
                return;
            }
        }
        int const count = group->GetNumChildren();
        for (int i = 0; i < count; ++i)
            UpdateMatrices(group->GetChild(i), matrix, mode);
    } else if (Drawable* drawable = node->Cast<Drawable>()) {
        m_Drawables[LayerOf(drawable)].push_back({drawable, matrix});
    } else if (mode == SceneMode) {
        CollectSceneNode(node, matrix);
    }
}

void DrawTree::CollectSceneNode(Node* node, Matrix4T<Fixed> const* matrix)
{
    if (Fog* fog = node->Cast<Fog>()) {
        m_Fogs.push_back({fog, matrix});
    } else if (Light* light = node->Cast<Light>()) {
        if (light->GetType() == Light::Ambient)
            m_Ambient += light->GetColor();
        else
            m_Lights.push_back({light, matrix});
    } else if (m_Camera && node == m_Camera.Get()) {
        m_Cameras.push_back({m_Camera, matrix});
    }
}

bool DrawTree::PrepareCurrentCamera()
{
    Camera& camera = *m_CurrentCamera;
    Transform* transform = camera.GetParentTransform();
    if (!transform) {
        LogError("DrawTree::PrepareCurrentCamera: m_CurrentCamera has no ParentTransform.");
        return false;
    }
    // A transform the walk did not reach carries the matrix of an older pass.
    if (transform->m_WorldFrame != m_Frame) {
        LogError("DrawTree::PrepareCurrentCamera: m_CurrentCamera was not updated.");
        return false;
    }
    camera.m_ViewMatrix = transform->m_WorldMatrix;
    camera.m_ViewMatrix.InvertAffine();

    RenderTarget const* target = camera.GetRenderTarget();
    Fixed const aspect = target ? target->GetAspect() : m_Renderer->GetAspect();
    Fixed const n = camera.GetClipping().x;
    Fixed const f = camera.GetClipping().y;
    switch (camera.GetType()) {
    case Camera::Perspective: {
        // The field of view is vertical; the horizontal extent follows the aspect ratio.
        Fixed const t = Fixed::Tan(camera.GetFOV() * Fixed(0.5f));
        camera.m_ProjectionMatrix.MakeFrustumPerspective((n * -t) * aspect, (n * t) * aspect, n * -t, n * t, n, f);
        return true;
    }
    case Camera::Orthographic:
        // The near distance doubles as the half-height of the view volume.
        camera.m_ProjectionMatrix.MakeFrustumOrthographic(-n * aspect, n * aspect, -n, n, n, f);
        return true;
    default:
        LogError("DrawTree::PrepareCurrentCamera: unsupported CameraType used.");
        return false;
    }
}

void DrawTree::PrepareRendererScene()
{
    m_Renderer->SetTarget(m_CurrentCamera->GetRenderTarget());
    m_Renderer->Clear(Render::ClearDepth | Render::ClearColor);
    m_Renderer->SetProjectionMatrix(m_CurrentCamera->m_ProjectionMatrix);
    m_Renderer->SetViewMatrix(m_CurrentCamera->m_ViewMatrix);
}

void DrawTree::SetLighting()
{
    m_Renderer->SetAmbientLight(m_Ambient);
    short const count = static_cast<short>(m_Lights.size());
    m_Renderer->SetLights(count);
    for (short slot = 0; slot < count; ++slot)
        m_Renderer->SetLight(slot, m_Lights[slot].m_Object, *m_Lights[slot].m_Matrix);
}

// Only the first fog met in the tree counts.
void DrawTree::SetFog()
{
    m_Renderer->SetFog(m_Fogs.empty() ? nullptr : m_Fogs.front().m_Object);
}

// Target, clear, lighting and fog stay as the last camera left them.
void DrawTree::PrepareRendererUI()
{
    m_Renderer->SetProjectionMatrix(m_CurrentInterfaceGroup->GetProjection());
    m_Renderer->SetViewMatrix(Matrix4T<Fixed>::Identity);
}

void DrawTree::DrawNodes(bool sortByShader)
{
    for (Array<TraverseInfoT<Drawable>>& layer : m_Drawables) {
        if (layer.empty())
            continue;
        m_DrawOrder.clear();
        for (TraverseInfoT<Drawable>& info : layer)
            m_DrawOrder.push_back(&info);
        if (sortByShader && m_DrawOrder.size() > 1)
            std::sort(m_DrawOrder.begin(), m_DrawOrder.end(), ShaderAddressDescending);
        for (TraverseInfoT<Drawable> const* info : m_DrawOrder) {
            Drawable* drawable = info->m_Object;
            m_Renderer->SetShader(drawable->GetShader(), drawable->GetColorMul());
            m_Renderer->Draw(drawable, *info->m_Matrix);
        }
    }
}

} // namespace Vellacore
