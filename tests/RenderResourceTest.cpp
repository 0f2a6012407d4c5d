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

#include <string>

using namespace Vellacore;
using VellacoreTest::ReadFile;

namespace {

std::string const Banner = "---- START  (BUILD: Apr 26 2010 / 18:27:56) ----\n";

using CountingTextureHandle = VellacoreTest::CountingHandleT<TextureHandle>;

I32 CountOf(void const* object)
{
    return HeaderOf(object)->m_RefCount;
}

// The only reference to the object is the one the setter took, so a setter that released the old
// value before counting the new one would destroy it here.
template <class T, class Set, class Get>
void ExpectSurvivesBeingSetAgain(T* object, Set set, Get get)
{
    set(object);
    set(object);
    EXPECT_EQ(object, get());
    EXPECT_EQ(1, CountOf(object));
}

// 2 x 2 grey, rows 10 20 / 30 40.
void WriteGreyPNG(std::string const& path)
{
    VellacoreTest::WritePNG(path, { PNG_COLOR_TYPE_GRAY, 8, 2, 2, { 10, 20, 30, 40 }, {}, {} });
}

Texture2D* TextureIn(Shader const& shader, int slot)
{
    Texture* texture = shader.GetTexture(slot);
    return texture->Cast<Texture2D>();
}

} // namespace

TEST(RenderResource, CountedSettersKeepAnObjectSetAgain)
{
    Ptr<PolygonGeometry> geometry = PolygonGeometry::Create();
    Ptr<Shader> shader = Shader::Create();
    Ptr<Texture2D> texture = Texture2D::Create();

    ExpectSurvivesBeingSetAgain(
        Shader::Create(), [&](Shader* s) { geometry->SetShader(s); }, [&] { return geometry->GetShader(); });
    ExpectSurvivesBeingSetAgain(
        Material::Create(), [&](Material* m) { shader->SetMaterial(m); }, [&] { return shader->GetMaterial(); });
    for (int slot : { 0, 1 })
        ExpectSurvivesBeingSetAgain<Texture>(
            Texture2D::Create(), [&](Texture* t) { shader->SetTexture(slot, t); },
            [&] { return shader->GetTexture(slot); });
    ExpectSurvivesBeingSetAgain<Transform>(
        TextureTransform::Create(), [&](Transform* t) { texture->SetTextureTransform(t); },
        [&] { return texture->GetTextureTransform(); });
    ExpectSurvivesBeingSetAgain(
        Image::Create(), [&](Image* i) { texture->SetImage(i); }, [&] { return texture->GetImage(); });
    ExpectSurvivesBeingSetAgain<TextureHandle>(
        CountingTextureHandle::Create(), [&](TextureHandle* h) { texture->SetTextureHandle(h); },
        [&] { return texture->GetTextureHandle(); });
}

TEST(RenderResource, ShaderHasOnlyTwoTextureSlots)
{
    Ptr<Shader> shader = Shader::Create();
    Ptr<Texture2D> first = Texture2D::Create();
    Ptr<Texture2D> other = Texture2D::Create();
    shader->SetTexture(0, first);
    for (int slot : { -1, 2, 3 }) {
        shader->SetTexture(slot, other);
        EXPECT_EQ(nullptr, shader->GetTexture(slot));
    }
    EXPECT_EQ(1, CountOf(other));
    EXPECT_EQ(first.Get(), shader->GetTexture(0));
    EXPECT_EQ(nullptr, shader->GetTexture(1));
}

TEST(RenderResource, TextureReleasesItsHandle)
{
    {
        Ptr<Texture2D> texture = Texture2D::Create();
        texture->SetTextureHandle(CountingTextureHandle::Create());
        // The renderer's list holds the handle too; it outlives the texture then.
        Ptr<TextureHandle> rendererReference = texture->GetTextureHandle();
        texture->SetTextureHandle(CountingTextureHandle::Create());
        EXPECT_EQ(2, CountingTextureHandle::S_Alive);
        texture = nullptr;
        EXPECT_EQ(1, CountingTextureHandle::S_Alive);
    }
    EXPECT_EQ(0, CountingTextureHandle::S_Alive);
}

TEST(RenderResource, RenderTargetAspectIsWidthOverHeight)
{
    struct {
        int m_Width;
        int m_Height;
        I32 m_RawAspect;
    } const cases[] = {
        { 320, 240, 87381 }, // 4/3
        { 240, 320, 49152 }, // 3/4
        { 256, 256, 65536 },
        { 0, 240, 0 },
        { 320, 0, 0x7FFFFFFF },
        { 0, 0, 0x7FFFFFFF },
    };
    Ptr<RenderTarget> target = RenderTarget::Create();
    for (auto const& c : cases) {
        target->SetWidth(c.m_Width);
        target->SetHeight(c.m_Height);
        EXPECT_EQ(c.m_RawAspect, target->GetAspect().GetRaw()) << c.m_Width << " x " << c.m_Height;
    }
}

TEST(ShaderFactory, ShadersWrapTheImagesUnderAWhiteMaterial)
{
    VellacoreTest::TempDir dir;
    Logger::Init();
    WriteGreyPNG("base.png");
    VellacoreTest::WritePNG("map.png", { PNG_COLOR_TYPE_RGB, 8, 1, 1, { 1, 2, 3 }, {}, {} });
    Ptr<Shader> textured = CreateTexturedShader("base.png", true, Shader::BlendAlpha);
    Ptr<Shader> shader = CreateReflectionShader("base.png", "map.png", false, Shader::BlendAdditive);
    Logger::Exit();
    ASSERT_NE(nullptr, textured.Get());
    EXPECT_EQ(Shader::ShaderPlain, textured->GetShaderType());
    EXPECT_TRUE(textured->GetLightingEnabled());
    EXPECT_EQ(Shader::BlendAlpha, textured->GetBlendMode());
    EXPECT_EQ(nullptr, textured->GetTexture(1));

    ASSERT_NE(nullptr, shader.Get());
    EXPECT_EQ(Shader::ShaderReflection, shader->GetShaderType());
    EXPECT_FALSE(shader->GetLightingEnabled());
    EXPECT_EQ(Shader::BlendAdditive, shader->GetBlendMode());
    EXPECT_EQ(8, shader->GetLayer());
    EXPECT_TRUE(shader->GetCullingEnabled());
    Material* material = shader->GetMaterial();
    ASSERT_NE(nullptr, material);
    EXPECT_EQ(Vector4T<float>(1.0f, 1.0f, 1.0f, 1.0f), material->GetDiffuseColor());
    EXPECT_EQ(Vector4T<float>(0.2f, 0.2f, 0.2f, 1.0f), material->GetAmbientColor());

    Texture2D* texture = TextureIn(*shader, 0);
    ASSERT_NE(nullptr, texture);
    EXPECT_EQ(2, texture->GetImageWidth());
    // Bottom row first, as GL addresses textures.
    U8 const* pixels = texture->GetImage()->GetDataPtr();
    EXPECT_EQ(30, pixels[0]);
    EXPECT_EQ(10, pixels[2]);
    ASSERT_NE(nullptr, TextureIn(*shader, 1));
    EXPECT_EQ(Image::FormatRGB, TextureIn(*shader, 1)->GetImage()->GetFormat());
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
    std::string log = ReadFile("Xapp.log");
    std::string const missing = "[E] Import::ImportPNG: failed to open file: ";
    EXPECT_EQ(0u, log.find(Banner + missing + "none.png\n" + missing + "nomap.png\n"));
    EXPECT_NE(std::string::npos, log.find(missing + "nobase.png\n"));
}
