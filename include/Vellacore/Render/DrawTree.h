#ifndef VELLACORE_RENDER_DRAWTREE_H
#define VELLACORE_RENDER_DRAWTREE_H

#include "Vellacore/Core/Object.h"
#include "Vellacore/Core/Types.h"
#include "Vellacore/Math/Vector3T.h"
#include "Vellacore/Memory/Array.h"
#include "Vellacore/Memory/Ptr.h"
#include "Vellacore/Render/TraverseInfoT.h"

namespace Vellacore {

class Camera;
class Drawable;
class Fog;
class InterfaceGroup;
class Light;
class Node;
class Render;
class Transform;

// Draws one scene tree through a renderer, once per Draw(). The walk writes every visible
// transform's world matrix, collects the camera, lights, fog, overlays and drawables, then draws
// the scene through the camera layer by layer and each overlay on top with its own projection.
// The per-pass lists keep their storage, so a steady scene allocates nothing per frame.
class DrawTree : public Object {
public:
    static int const S_NumLayers = 32;

    static DrawTree* Create();
    ~DrawTree() override;

    // The renderer must be set before the first Draw(); it is not checked.
    virtual void SetRenderer(Render* renderer);
    virtual Render* GetRenderer() const;
    virtual void SetSceneRoot(Transform* root);
    virtual Transform* GetSceneRoot() const;
    // The one camera drawn through; other cameras in the tree are ignored.
    virtual void SetCamera(Camera* camera);
    virtual Camera* GetCamera() const;
    virtual void Draw();

protected:
    DrawTree();

private:
    // Overlay walks collect drawables only, and draw nested overlays inline.
    enum TraverseMode : int { SceneMode = 0, OverlayMode = 1 };

    void ClearAll();
    void ClearDrawables();
    void UpdateMatrices(Node* node, Matrix4T<Fixed> const* matrix, TraverseMode mode);
    void CollectSceneNode(Node* node, Matrix4T<Fixed> const* matrix);
    bool PrepareCurrentCamera();
    void PrepareRendererScene();
    void SetLighting();
    void SetFog();
    void PrepareRendererUI();
    void DrawNodes(bool sortByShader);

    Array<TraverseInfoT<Drawable>> m_Drawables[S_NumLayers];
    Array<TraverseInfoT<Drawable>*> m_DrawOrder;
    Array<TraverseInfoT<Light>> m_Lights;
    Array<TraverseInfoT<Camera>> m_Cameras;
    Array<TraverseInfoT<InterfaceGroup>> m_InterfaceGroups;
    Array<TraverseInfoT<Fog>> m_Fogs;
    Vector3T<float> m_Ambient;
    Ptr<Camera> m_CurrentCamera;
    Ptr<InterfaceGroup> m_CurrentInterfaceGroup;
    Ptr<Transform> m_SceneRoot;
    Ptr<Render> m_Renderer;
    Ptr<Camera> m_Camera;
    I32 m_Frame;
};

} // namespace Vellacore

#endif
