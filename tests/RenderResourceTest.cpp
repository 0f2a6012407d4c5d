#include "Vellacore/Core/Logger.h"
#include "Vellacore/Geometry/PolygonGeometry.h"
#include "Vellacore/Render/Material.h"
#include "Vellacore/Render/RenderTarget.h"
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

using namespace Vellacore;

namespace {

using CountingTextureHandle = VellacoreTest::CountingHandleT<TextureHandle>;

I32 CountOf(void const* object) { return HeaderOf(object)->m_RefCount; }

// 2 x 2 grey, rows 10 20 / 30 40.
void WriteGreyPNG(std::string const& path)
{
    VellacoreTest::WritePNG(path, { PNG_COLOR_TYPE_GRAY, 8, 2, 2, { 10, 20, 30, 40 } });
}

} // namespace

// The second round sets every member to the object it already holds, whose only reference is the
// member's own: a setter that released the old value before counting the new one would destroy it.
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

    // A replaced handle is released, and the last one goes with the texture.
    texture->SetTextureHandle(CountingTextureHandle::Create());
    EXPECT_EQ(1, CountingTextureHandle::S_Alive);
    texture = nullptr;
    EXPECT_EQ(0, CountingTextureHandle::S_Alive);
}

TEST(RenderResource, ShaderIgnoresTextureSlotsOtherThanTheTwo)
{
    Ptr<Shader> shader = Shader::Create();
    Ptr<Texture2D> texture = Texture2D::Create();
    for (int slot : { -1, 2, 3 }) {
        shader->SetTexture(slot, texture);
        EXPECT_EQ(nullptr, shader->GetTexture(slot));
    }
    EXPECT_EQ(1, CountOf(texture));
    EXPECT_EQ(nullptr, shader->GetTexture(1));
}

TEST(RenderResource, RenderTargetAspectIsWidthOverHeight)
{
    Ptr<RenderTarget> target = RenderTarget::Create();
    target->SetWidth(320);
    target->SetHeight(240);
    EXPECT_EQ(87381, target->GetAspect().GetRaw());
}

TEST(ShaderFactory, ReflectionShaderWrapsBothImagesUnderAWhiteMaterial)
{
    VellacoreTest::TempDir dir;
    Logger::Init();
    WriteGreyPNG("base.png");
    VellacoreTest::WritePNG("map.png", { PNG_COLOR_TYPE_RGB, 8, 1, 1, { 1, 2, 3 } });
    Ptr<Shader> shader = CreateReflectionShader("base.png", "map.png", false, Shader::BlendAdditive);
    Logger::Exit();
    ASSERT_NE(nullptr, shader.Get());
    EXPECT_EQ(Shader::ShaderReflection, shader->GetShaderType());
    EXPECT_FALSE(shader->GetLightingEnabled());
    EXPECT_EQ(Shader::BlendAdditive, shader->GetBlendMode());
    ASSERT_NE(nullptr, shader->GetMaterial());
    EXPECT_EQ(Vector4T<float>(1.0f, 1.0f, 1.0f, 1.0f), shader->GetMaterial()->GetDiffuseColor());
    Texture2D* base = shader->GetTexture(0)->Cast<Texture2D>();
    Texture2D* map = shader->GetTexture(1)->Cast<Texture2D>();
    ASSERT_TRUE(base && map);
    EXPECT_EQ(30, base->GetImage()->GetDataPtr()[0]); // bottom row first, as GL addresses textures
    EXPECT_EQ(Image::FormatRGB, map->GetImage()->GetFormat());
}

TEST(ShaderFactory, MissingFilesGiveNoShader)
{
    VellacoreTest::TempDir dir;
    Logger::Init();
    WriteGreyPNG("base.png");
    // Whatever was loaded before the failure is released again; the leak checkers see it otherwise.
    EXPECT_EQ(nullptr, CreateTexturedShader("none.png", true, Shader::BlendOpaque));
    EXPECT_EQ(nullptr, CreateReflectionShader("base.png", "nomap.png", true, Shader::BlendOpaque));
    EXPECT_EQ(nullptr, CreateReflectionShader("nobase.png", "base.png", true, Shader::BlendOpaque));
    Logger::Exit();
    std::string const log = VellacoreTest::ReadFile("Xapp.log");
    std::string const missing = "[E] Import::ImportPNG: failed to open file: ";
    std::string const banner = "---- START  (BUILD: Apr 26 2010 / 18:27:56) ----\n";
    EXPECT_EQ(0u, log.find(banner + missing + "none.png\n" + missing + "nomap.png\n"));
    EXPECT_NE(std::string::npos, log.find(missing + "nobase.png\n"));
}
