#include "Vellacore/Core/Logger.h"
#include "Vellacore/Geometry/PolygonGeometry.h"
#include "Vellacore/Render/Material.h"
#include "Vellacore/Render/Shader.h"
#include "Vellacore/Render/ShaderFactory.h"
#include "Vellacore/Render/Texture2D.h"
#include "Vellacore/Render/TextureHandle.h"
#include "Vellacore/Scene/TextureTransform.h"
#include "support/CountingHandle.h"
#include "support/PNGFile.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <tuple>

using namespace Vellacore;

namespace {

using CountingTextureHandle = VellacoreTest::CountingHandleT<TextureHandle>;

I32 CountOf(void const* object) { return HeaderOf(object)->m_RefCount; }

} // namespace

// Set again to what it holds, a member's only reference must survive: count the new value before releasing the old.
TEST(RenderResource, MembersHoldOneReferenceThatSurvivesBeingSetAgain)
{
    Ptr<PolygonGeometry> geometry = PolygonGeometry::Create();
    Ptr<Shader> shader = Shader::Create();
    Ptr<Texture2D> texture = Texture2D::Create();
    for (bool again : { false, true }) {
        geometry->SetShader(again ? geometry->GetShader() : Shader::Create());
        shader->SetMaterial(again ? shader->GetMaterial() : Material::Create());
        for (int slot : { 0, 1 })
            shader->SetTexture(slot, again ? shader->GetTexture(slot) : Texture2D::Create());
        texture->SetTextureTransform(again ? texture->GetTextureTransform() : TextureTransform::Create());
        texture->SetImage(again ? texture->GetImage() : Image::Create());
        texture->SetTextureHandle(again ? texture->GetTextureHandle() : CountingTextureHandle::Create());
    }
    for (void const* held : std::initializer_list<void const*>{ geometry->GetShader(), shader->GetMaterial(),
             shader->GetTexture(0), shader->GetTexture(1), texture->GetTextureTransform(), texture->GetImage(),
             texture->GetTextureHandle() })
        EXPECT_EQ(1, CountOf(held));
    // Slots other than the two take nothing.
    shader->SetTexture(-1, texture);
    shader->SetTexture(2, texture);
    EXPECT_EQ(1, CountOf(texture));

    // A replaced handle is released, and the last one goes with the texture.
    texture->SetTextureHandle(CountingTextureHandle::Create());
    EXPECT_EQ(1, CountingTextureHandle::S_Alive);
    texture = nullptr;
    EXPECT_EQ(0, CountingTextureHandle::S_Alive);
}

TEST(ShaderFactory, ReflectionShaderWrapsBothImagesUnderAWhiteMaterialOrIsNotMade)
{
    VellacoreTest::TempDir dir;
    Logger::Init();
    VellacoreTest::WritePNG("base.png", { PNG_COLOR_TYPE_GRAY, 8, 2, 2, { 10, 20, 30, 40 } });
    VellacoreTest::WritePNG("map.png", { PNG_COLOR_TYPE_RGB, 8, 1, 1, { 1, 2, 3 } });
    // Whatever was loaded before the failure is released again; the leak checkers see it otherwise.
    EXPECT_EQ(nullptr, CreateTexturedShader("none.png", true, Shader::BlendOpaque));
    EXPECT_EQ(nullptr, CreateReflectionShader("base.png", "nomap.png", true, Shader::BlendOpaque));
    EXPECT_EQ(nullptr, CreateReflectionShader("nobase.png", "base.png", true, Shader::BlendOpaque));
    Ptr<Shader> shader = CreateReflectionShader("base.png", "map.png", false, Shader::BlendAdditive);
    Logger::Exit();
    std::string const log = VellacoreTest::ReadFile("Xapp.log");
    std::string const missing = "[E] Import::ImportPNG: failed to open file: ";
    EXPECT_EQ(0u,
        log.find("---- START  (BUILD: Apr 26 2010 / 18:27:56) ----\n" + missing + "none.png\n" + missing + "nomap.png\n"));
    EXPECT_NE(std::string::npos, log.find(missing + "nobase.png\n"));

    ASSERT_TRUE(shader && shader->GetMaterial());
    EXPECT_EQ(std::tuple(Shader::ShaderReflection, false, Shader::BlendAdditive),
        std::tuple(shader->GetShaderType(), shader->GetLightingEnabled(), shader->GetBlendMode()));
    EXPECT_EQ(Vector4T<float>(1.0f, 1.0f, 1.0f, 1.0f), shader->GetMaterial()->GetDiffuseColor());
    Texture2D *base = shader->GetTexture(0)->Cast<Texture2D>(), *map = shader->GetTexture(1)->Cast<Texture2D>();
    ASSERT_TRUE(base && map);
    EXPECT_EQ(30, base->GetImage()->GetDataPtr()[0]); // bottom row first, as GL addresses textures
    EXPECT_EQ(Image::FormatRGB, map->GetImage()->GetFormat());
}
