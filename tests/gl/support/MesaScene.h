#ifndef VELLACORE_TESTS_GL_MESASCENE_H
#define VELLACORE_TESTS_GL_MESASCENE_H

#include "Vellacore/Core/Logger.h"
#include "Vellacore/Geometry/PolygonGeometry.h"
#include "Vellacore/Render/DrawTree.h"
#include "Vellacore/Render/Material.h"
#include "Vellacore/Render/Render.h"
#include "Vellacore/Render/Shader.h"
#include "Vellacore/Scene/Camera.h"
#include "Vellacore/Scene/Transform.h"
#include "support/MesaStandIn.h"
#include "support/TempDir.h"

namespace VellacoreTest {

typedef Vellacore::Vector4T<float> Colour;

// A shader of one diffuse colour, with a texture on unit 0 or none.
inline Vellacore::Shader* MakeShader(Colour diffuse, Vellacore::Texture* texture, bool lighting,
    Vellacore::Shader::BlendMode blend = Vellacore::Shader::BlendOpaque, int layer = Vellacore::Shader::S_DefaultLayer)
{
    Vellacore::Material* material = Vellacore::Material::Create();
    material->SetDiffuseColor(diffuse);
    Vellacore::Shader* shader = Vellacore::Shader::Create();
    shader->SetMaterial(material);
    shader->SetTexture(0, texture);
    shader->SetLightingEnabled(lighting);
    shader->SetBlendMode(blend);
    shader->SetLayer(layer);
    return shader;
}

inline void Add(Vellacore::Group* parent, Vellacore::PolygonGeometry* geometry, Vellacore::Shader* shader)
{
    geometry->SetShader(shader);
    geometry->SetParent(parent);
}

// The engine drawing on the Mesa stand-in: the renderer Render::Create makes, a scene root, and a camera at
// (0, 0, 5) looking down -z with a 60-degree field of view across the landscape screen (0.5 to 50 units deep).
class MesaScene {
public:
    MesaScene()
    {
        Vellacore::Transform* placing = Vellacore::Transform::Create();
        placing->SetTranslation(Vellacore::Vector3T<Vellacore::Fixed>(0, 0, 5));
        placing->SetParent(m_Root);
        m_Camera->SetFOV(60);
        m_Camera->SetClipping(Vellacore::Vector2T<Vellacore::Fixed>(0.5, 50));
        m_Camera->SetParent(placing);
        m_Tree->SetRenderer(m_Render);
        m_Tree->SetSceneRoot(m_Root);
        m_Tree->SetCamera(m_Camera);
    }
    ~MesaScene() { m_Render->Exit(); }

    bool IsReady() const { return m_Ready; }
    Vellacore::Render& GetRender() { return *m_Render; }
    Vellacore::Transform* GetRoot() { return m_Root; }
    MesaStandIn& GetStandIn() { return m_StandIn; }

    Picture DrawFrame()
    {
        m_Tree->Draw();
        m_Render->SwapBuffers();
        return m_StandIn.LastFrame();
    }

private:
    // What a game's App sets up before the renderer, in a directory of its own: the log and the angle tables.
    struct Engine : TempDir {
        Engine() { Vellacore::Logger::Init(); Vellacore::Fixed::InitLookupTables(); }
        ~Engine() { Vellacore::Fixed::ExitLookupTables(); Vellacore::Logger::Exit(); }
    } m_Engine;
    MesaStandIn m_StandIn;
    Vellacore::Ptr<Vellacore::Render> m_Render = Vellacore::Render::Create();
    bool m_Ready = m_Render->Init();
    Vellacore::Ptr<Vellacore::Transform> m_Root = Vellacore::Transform::Create();
    Vellacore::Ptr<Vellacore::Camera> m_Camera = Vellacore::Camera::Create();
    Vellacore::Ptr<Vellacore::DrawTree> m_Tree = Vellacore::DrawTree::Create();
};

} // namespace VellacoreTest

#endif
