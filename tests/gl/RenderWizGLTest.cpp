// The Wiz renderer, its GL loader and its handles on the recording stand-in: the calls each
// operation makes, in order, and the log lines of its failures.
#include "Vellacore/Core/Logger.h"
#include "Vellacore/Geometry/PolygonGeometry.h"
#include "Vellacore/Render/Material.h"
#include "Vellacore/Render/Shader.h"
#include "Vellacore/Render/Texture2D.h"
#include "Vellacore/Render/Wiz/GLAPI.h"
#include "Vellacore/Render/Wiz/RenderTargetHandleWizGL.h"
#include "Vellacore/Render/Wiz/RenderWizGL.h"
#include "Vellacore/Scene/Fog.h"
#include "Vellacore/Scene/Light.h"
#include "Vellacore/Scene/TextureTransform.h"
#include "support/RecordingTrace.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

using namespace Vellacore;
using VellacoreTest::RecordingTrace;
using VellacoreTest::TempDir;
using Lines = std::vector<std::string>;

namespace {

struct LogSession {
    LogSession() { Logger::Init(); }
    ~LogSession() { Logger::Exit(); }

    // Lines written since the last call, without the banner.
    Lines Take()
    {
        Logger::Instance()->Flush();
        std::istringstream in(VellacoreTest::ReadFile("Xapp.log"));
        Lines lines;
        for (std::string line; std::getline(in, line);)
            lines.push_back(line);
        Lines fresh(lines.begin() + std::min(m_Seen, lines.size()), lines.end());
        m_Seen = lines.size();
        return fresh;
    }

    std::size_t m_Seen = 1;
};

int CountStartingWith(Lines const& lines, std::string const& prefix)
{
    return static_cast<int>(std::count_if(
        lines.begin(), lines.end(), [&](std::string const& line) { return line.compare(0, prefix.size(), prefix) == 0; }));
}

Texture2D* MakeTexture(short width, short height, Image::Format format = Image::FormatRGBA)
{
    Image* image = Image::Create();
    image->Allocate(format, width, height);
    Texture2D* texture = Texture2D::Create();
    texture->SetImage(image);
    return texture;
}

// One triangle with normals, colours and texture coordinates of set 0.
PolygonGeometry* MakeTriangle(unsigned staticBits)
{
    PolygonGeometry* geometry = PolygonGeometry::Create();
    geometry->SetIndexArray({ 0, 1, 2 });
    geometry->SetVertexArray({ { 0, 0, 0 }, { 1, 0, 0 }, { 0, 1, 0 } });
    geometry->SetNormalArray({ { 0, 0, 1 }, { 0, 0, 1 }, { 0, 0, 1 } });
    geometry->SetColorArray({ { 1, 0, 0, 1 }, { 0, 1, 0, 1 }, { 0, 0, 1, 1 } });
    geometry->SetTexCoordArray(0, { { 0, 0 }, { 1, 0 }, { 0, 1 } });
    geometry->SetStatic(staticBits);
    return geometry;
}

std::string const S_Identity = "{65536,0,0,0,0,65536,0,0,0,0,65536,0,0,0,0,65536}";

Lines Join(std::initializer_list<Lines> parts)
{
    Lines all;
    for (Lines const& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

// What CreateBufferData issues for one array.
Lines BufferUpload(int name, std::string const& target, int bytes)
{
    std::string const bind = "glBindBuffer(" + target + ", ";
    return { "glGenBuffers(1)->" + std::to_string(name), bind + std::to_string(name) + ")",
        "glBufferData(" + target + ", " + std::to_string(bytes) + ", ptr, GL_STATIC_DRAW)", bind + "0)" };
}

class RenderWizGLTest : public testing::Test {
protected:
    static void SetUpTestSuite() { Fixed::InitLookupTables(); }
    static void TearDownTestSuite() { Fixed::ExitLookupTables(); }

    RenderWizGLTest()
    {
        Ptr<Render> render = Render::Create();
        m_Render = render->Cast<RenderWizGL>();
    }
    ~RenderWizGLTest() override { m_Render->Exit(); }

    // Init with the limits the stand-in answers; the trace and the log start afresh after it.
    void Init(int maxLights = 8)
    {
        m_Trace.SetInteger(GL_MAX_LIGHTS, maxLights);
        ASSERT_TRUE(m_Render->Init());
        Calls();
        m_Log.Take();
    }

    // An empty trace; names are handed out from 1 again.
    void ResetTrace()
    {
        m_Trace.Reset();
        m_Mark = 0;
    }

    // Calls made since the last call.
    Lines Calls()
    {
        Lines lines = m_Trace.Since(m_Mark);
        m_Mark = m_Trace.Count();
        return lines;
    }

    TempDir m_Dir;
    LogSession m_Log;
    RecordingTrace m_Trace;
    Ptr<RenderWizGL> m_Render;
    int m_Mark = 0;
};

TEST_F(RenderWizGLTest, InitBringsUpEGLAndTheFixedStateAndLogsTheDriver)
{
    ASSERT_NE(m_Render, nullptr) << "Render::Create makes the Wiz renderer";
    EXPECT_FALSE(m_Render->IsRenderable());
    ASSERT_TRUE(m_Render->Init());
    EXPECT_TRUE(m_Render->IsRenderable());
    EXPECT_EQ(Calls(),
        (Lines{ "eglGetDisplay(0)", "eglInitialize(dpy, null, null)",
            "eglChooseConfig(dpy, {EGL_RED_SIZE,5,EGL_GREEN_SIZE,6,EGL_BLUE_SIZE,5,EGL_ALPHA_SIZE,0,EGL_DEPTH_SIZE,16,"
            "EGL_MAX_PBUFFER_HEIGHT,1024,EGL_MAX_PBUFFER_WIDTH,1024,EGL_NONE}, ptr, 1, ptr)",
            "eglCreateContext(dpy, cfg, null, null)", "eglCreateWindowSurface(dpy, cfg, ptr, null)",
            "eglMakeCurrent(dpy, surf, surf, ctx)", "glGetString(GL_VENDOR)", "glGetString(GL_RENDERER)",
            "glGetString(GL_VERSION)", "glGetString(GL_EXTENSIONS)", "glGetIntegerv(GL_MAX_TEXTURE_UNITS)->2",
            "glGetIntegerv(GL_MAX_TEXTURE_SIZE)->1024", "glGetIntegerv(GL_MAX_LIGHTS)->8", "glCullFace(GL_BACK)",
            "glEnable(GL_DEPTH_TEST)", "glDepthFunc(GL_LEQUAL)", "glEnable(GL_NORMALIZE)",
            "glEnable(GL_COLOR_MATERIAL)", "glColor4f(1, 1, 1, 1)" }));

    Lines log = m_Log.Take();
    ASSERT_EQ(log.size(), 1u + 75u + 7u);
    EXPECT_EQ(log.front(), "[D] RenderWizGL::Init");
    EXPECT_EQ(CountStartingWith(log, "[D] Importing "), 75);
    EXPECT_EQ(log[1], "[D] Importing eglGetError");
    EXPECT_EQ(log[75], "[D] Importing glDeleteBuffers");
    EXPECT_EQ(Lines(log.begin() + 76, log.end()),
        (Lines{ "[I] OpenGL Vendor:     Recording", "[I] OpenGL Renderer:   Recording GL",
            "[I] OpenGL Version:    OpenGL ES-CM 1.1 Recording", "[I] OpenGL Extensions: ", "[I] MaxTextureUnits=2",
            "[I] MaxLights=8", "[I] MaxTextureSize=1024" }));
}

// Each failing EGL step ends Init with its line, and Exit still releases what was made before it.
TEST_F(RenderWizGLTest, InitFailuresAreReportedAndExitReleasesWhatWasMade)
{
    struct Case {
        char const* failingCall;
        char const* error; // null: the failure is silent
        char const* surfaceAndContext; // null: no display, nothing to tear down
    };
    Case const cases[] = {
        { "eglGetDisplay", "[E] eglGetDisplay returned NO_DISPLAY.", nullptr },
        { "eglChooseConfig", "[E] eglChooseConfig failed.", "null" },
        { "eglCreateContext", "[E] eglCreateContext failed.", "null" },
        { "eglCreateWindowSurface", nullptr, "ctx" },
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.failingCall);
        ResetTrace();
        m_Trace.FailCall(c.failingCall);
        EXPECT_FALSE(m_Render->Init());
        EXPECT_FALSE(m_Render->IsRenderable());
        Lines const log = m_Log.Take();
        EXPECT_EQ(log.back(), c.error ? c.error : "[D] Importing glDeleteBuffers");
        EXPECT_EQ(CountStartingWith(log, "[E] "), c.error ? 1 : 0);
        EXPECT_EQ(Calls().back().rfind(std::string(c.failingCall) + "(", 0), 0u) << "Init stops at the failing call";

        m_Render->Exit();
        EXPECT_EQ(GL, nullptr);
        EXPECT_EQ(m_Log.Take(), (Lines{ "[D] RenderWizGL::Exit", "[I] GLAPI_Exit done." }));
        Lines teardown;
        if (c.surfaceAndContext)
            teardown = { "eglMakeCurrent(dpy, null, null, null)", "eglDestroySurface(dpy, null)",
                std::string("eglDestroyContext(dpy, ") + c.surfaceAndContext + ")", "eglTerminate(dpy)" };
        EXPECT_EQ(Calls(), teardown);
    }
}

TEST_F(RenderWizGLTest, ExitUnloadsEveryHandleItMadeThenEGLAndTheDriver)
{
    Init();
    Ptr<Texture2D> texture = MakeTexture(4, 4);
    Ptr<PolygonGeometry> geometry = MakeTriangle(RenderPolygonHandleWizGL::StaticVertices | RenderPolygonHandleWizGL::StaticIndices);
    m_Render->SetTexture(0, texture);
    m_Render->Draw(geometry);
    Calls();
    m_Log.Take();

    m_Render->Exit();
    EXPECT_EQ(Calls(),
        (Lines{ "glDeleteTextures(1, {1})", "glDeleteBuffers(1, {1})", "glDeleteBuffers(1, {2})",
            "eglMakeCurrent(dpy, null, null, null)", "eglDestroySurface(dpy, surf)", "eglDestroyContext(dpy, ctx)",
            "eglTerminate(dpy)" }));
    EXPECT_EQ(m_Log.Take(),
        (Lines{ "[D] RenderWizGL::Exit", "[D] TextureHandleWizGL::Unload: Delete Texture #0x1",
            "[D] RenderPolygonHandleWizGL::Unload: Delete BufferID #0x1",
            "[D] RenderPolygonHandleWizGL::Unload: Delete BufferID #0x2", "[I] GLAPI_Exit done." }));
    EXPECT_EQ(GL, nullptr);
    EXPECT_FALSE(m_Render->IsRenderable());
    auto* handle = dynamic_cast<TextureHandleWizGL*>(texture->GetTextureHandle());
    ASSERT_NE(handle, nullptr) << "the texture keeps its handle, emptied";
    EXPECT_EQ(handle->GetTexID(), 0u);
    EXPECT_EQ(handle->GetRenderer(), nullptr);
    // Dropping the geometry now unloads its handle again, which must not reach the unloaded driver.
    geometry = nullptr;
}

TEST_F(RenderWizGLTest, SimpleStateCalls)
{
    Init();
    Matrix4T<Fixed> translation;
    translation.MakeTranslation(Vector3T<Fixed>(1, 2, 3));
    struct Case {
        char const* what;
        std::function<void()> call;
        Lines calls;
    };
    Case const cases[] = {
        { "depth 1.0 reaches GL as its whole part, raw", [&] { m_Render->SetDepthClearValue(Fixed(1)); },
            { "glClearDepthx(1)" } },
        { "whole part towards zero", [&] { m_Render->SetDepthClearValue(Fixed(-2.75)); }, { "glClearDepthx(-2)" } },
        { "colour clear", [&] { m_Render->SetColorClearValue(Vector4T<float>(0.25f, 0.5f, 0.75f, 1)); },
            { "glClearColor(0.25, 0.5, 0.75, 1)" } },
        { "ambient", [&] { m_Render->SetAmbientLight(Vector3T<float>(0.25f, 0.5f, 0.75f)); },
            { "glLightModelfv(GL_LIGHT_MODEL_AMBIENT, {0.25,0.5,0.75,1})" } },
        { "view", [&] { m_Render->SetViewMatrix(translation); },
            { "glLoadMatrixx({65536,0,0,0,0,65536,0,0,0,0,65536,0,65536,131072,196608,65536})" } },
        // The screen turn is applied first, so the projection's translation stays unturned.
        { "projection", [&] { m_Render->SetProjectionMatrix(translation); },
            { "glMatrixMode(GL_PROJECTION)",
                "glLoadMatrixx({0,65536,0,0,-65536,0,0,0,0,0,65536,0,65536,131072,196608,65536})",
                "glMatrixMode(GL_MODELVIEW)" } },
        { "any target draws to the screen", [&] { m_Render->SetTarget(nullptr); },
            { "eglMakeCurrent(dpy, surf, surf, ctx)", "glViewport(0, 0, 240, 320)" } },
        { "present", [&] { m_Render->SwapBuffers(); },
            { "glFlush()", "eglWaitGL()", "eglSwapBuffers(dpy, surf)", "glGetError()->0x0", "eglGetError()->0x3000" } },
        { "stencil refused, colour and depth cleared", [&] { m_Render->Clear(7); },
            { "glDepthMask(GL_TRUE)", "glClear(GL_COLOR_BUFFER_BIT|GL_DEPTH_BUFFER_BIT)" } },
        { "stencil alone clears nothing", [&] { m_Render->Clear(4); }, { "glDepthMask(GL_TRUE)" } },
        { "depth", [&] { m_Render->Clear(1); }, { "glDepthMask(GL_TRUE)", "glClear(GL_DEPTH_BUFFER_BIT)" } },
        { "colour", [&] { m_Render->Clear(2); }, { "glDepthMask(GL_TRUE)", "glClear(GL_COLOR_BUFFER_BIT)" } },
    };
    for (Case const& c : cases) {
        c.call();
        EXPECT_EQ(Calls(), c.calls) << c.what;
    }
    EXPECT_EQ(m_Log.Take(), Lines(2, "[E] RenderWizGL::Clear: StencilBuffer not supported by WIZ."));
    EXPECT_EQ(m_Render->GetAspect(), Fixed(0.75));

    m_Trace.SetError(GL_INVALID_OPERATION, EGL_BAD_SURFACE);
    m_Render->SwapBuffers();
    EXPECT_EQ(m_Log.Take(), (Lines{ "[E] RenderWizGL: GL ERROR = 0x502", "[E] RenderWizGL: EGL ERROR = 0x300d" }));
}

TEST_F(RenderWizGLTest, SetLightsEnablesUpToTheDriversLimit)
{
    struct Case {
        int maxLights;
        short count;
        int enabled;
        bool warned;
    };
    for (Case const c : { Case{ 8, 10, 8, true }, Case{ 4, 10, 4, true }, Case{ 8, 3, 3, false } }) {
        SCOPED_TRACE(testing::Message() << c.count << " of " << c.maxLights);
        Init(c.maxLights);
        m_Render->SetLights(c.count);
        Lines expected;
        for (int i = 0; i < c.maxLights; ++i)
            expected.push_back((i < c.enabled ? "glEnable(GL_LIGHT" : "glDisable(GL_LIGHT") + std::to_string(i) + ")");
        EXPECT_EQ(Calls(), expected);
        EXPECT_EQ(m_Log.Take(), c.warned ? Lines{ "[W] RenderWizGL::SetLights: lights exceed max lights." } : Lines{});
        m_Render->Exit();
    }
}

TEST_F(RenderWizGLTest, SetLightPlacesDirectionalAndPointLights)
{
    Init();
    Matrix4T<Fixed> placing = Matrix4T<Fixed>::Identity;
    placing.m[8] = Fixed(0.5);
    placing.m[12] = Fixed(3);
    placing.m[13] = Fixed(-4);
    Ptr<Light> light = Light::Create();
    light->SetColor(Vector3T<float>(0.5f, 0.25f, 1));
    struct Case {
        Light::LightType type;
        short slot;
        char const* position; // null: nothing sent
        char const* error;
    };
    Case const cases[] = {
        { Light::Directional, 1, "glLightxv(GL_LIGHT1, GL_POSITION, {32768,0,65536,0})", nullptr },
        { Light::Point, 7, "glLightxv(GL_LIGHT7, GL_POSITION, {196608,-262144,0,65536})", nullptr },
        { Light::Ambient, 0, nullptr, "[E] LightType #0 unhandled" },
        { Light::Point, 8, nullptr, "[E] RenderWizGL::SetLight: light exceeds limits." },
    };
    for (Case const& c : cases) {
        light->SetType(c.type);
        m_Render->SetLight(c.slot, light, placing);
        std::string const id = "GL_LIGHT" + std::to_string(c.slot);
        Lines expected;
        if (c.position)
            expected = { c.position, "glLightfv(" + id + ", GL_DIFFUSE, {0.5,0.25,1,1})",
                "glLightfv(" + id + ", GL_AMBIENT, {0,0,0,1})", "glLightfv(" + id + ", GL_SPECULAR, {0,0,0,1})" };
        EXPECT_EQ(Calls(), expected);
        EXPECT_EQ(m_Log.Take(), c.error ? Lines{ c.error } : Lines{});
    }
}

TEST_F(RenderWizGLTest, SetFogSendsTheFogOnceAndSwitchesItOff)
{
    Init();
    Ptr<Fog> fog = Fog::Create();
    fog->m_Color = Vector4T<float>(0.5f, 0.5f, 1, 1);
    fog->m_Density = Fixed(0.25);
    fog->m_Start = Fixed(2);
    fog->m_End = Fixed(10.5);
    struct Case {
        int mode;
        char const* modeCall; // null: the mode is left as it is
    };
    for (Case const c : { Case{ 0, "glFogf(GL_FOG_MODE, GL_LINEAR)" }, Case{ 1, "glFogf(GL_FOG_MODE, GL_EXP)" },
             Case{ 2, "glFogf(GL_FOG_MODE, GL_EXP2)" }, Case{ 3, nullptr } }) {
        fog->m_Mode = static_cast<Fog::FogMode>(c.mode);
        m_Render->SetFog(fog);
        EXPECT_EQ(Calls(),
            Join({ c.modeCall ? Lines{ c.modeCall } : Lines{},
                { "glFogfv(GL_FOG_COLOR, {0.5,0.5,1,1})", "glFogf(GL_FOG_DENSITY, 0.25)", "glFogf(GL_FOG_START, 2)",
                    "glFogf(GL_FOG_END, 10.5)", "glEnable(GL_FOG)" } }))
            << "mode " << c.mode;
        m_Render->SetFog(fog);
        EXPECT_EQ(Calls(), Lines{}) << "the same fog again";
        m_Render->SetFog(nullptr);
        EXPECT_EQ(Calls(), Lines{ "glDisable(GL_FOG)" });
    }
}

TEST_F(RenderWizGLTest, SetShaderAppliesMaterialTexturesSwitchesAndColourOnlyWhenChanged)
{
    Init();
    // The cache starts out as a null shader with this colour: such a first call does nothing.
    m_Render->SetShader(nullptr, Vector4T<float>(-1, -1, -1, -1));
    EXPECT_EQ(Calls(), Lines{});
    EXPECT_EQ(m_Log.Take(), Lines{});

    Ptr<Shader> shader = Shader::Create();
    Ptr<Material> material = Material::Create();
    material->SetDiffuseColor(Vector4T<float>(0.5f, 1, 0.25f, 1));
    material->SetShininess(Fixed(2));
    shader->SetMaterial(material);
    shader->SetLightingEnabled(false);
    shader->SetBlendMode(Shader::BlendAlpha);
    Vector4T<float> const colorMul(1, 0.5f, 1, 0.5f);
    m_Render->SetShader(shader, colorMul);
    EXPECT_EQ(Calls(),
        (Lines{ "glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT, {0.2,0.2,0.2,1})",
            "glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, {0.5,0.5,0.25,0.5})",
            "glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, {0,0,0,1})",
            "glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, {0,0,0,1})", "glMaterialx(GL_FRONT_AND_BACK, GL_SHININESS, 131072)",
            "glActiveTexture(GL_TEXTURE1)", "glDisable(GL_TEXTURE_2D)", "glBindTexture(GL_TEXTURE_2D, 0)",
            "glActiveTexture(GL_TEXTURE0)", "glDisable(GL_TEXTURE_2D)", "glBindTexture(GL_TEXTURE_2D, 0)",
            "glDisable(GL_LIGHTING)", "glEnable(GL_CULL_FACE)", "glDepthMask(GL_FALSE)", "glEnable(GL_BLEND)",
            "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)", "glDisable(GL_ALPHA_TEST)", "glColor4f(0.5, 0.5, 0.25, 0.5)" }));

    m_Render->SetShader(shader, colorMul);
    EXPECT_EQ(Calls(), Lines{}) << "same shader, same colour";
    shader->SetLightingEnabled(true);
    m_Render->SetShader(shader, colorMul);
    EXPECT_EQ(Calls(), Lines{}) << "a changed shader is not looked at again";

    m_Render->SetShader(nullptr, colorMul);
    EXPECT_EQ(Calls(), Lines{ "glColor4f(1, 1, 1, 1)" });
    EXPECT_EQ(m_Log.Take(), Lines{ "[W] RenderWizGL::SetShader: NULL-Shader results in undefined draw behaviour." });
}

TEST_F(RenderWizGLTest, SetShaderBlendModesAndTheGreyOfNoMaterial)
{
    Init();
    struct Case {
        int mode;
        Lines calls;
    };
    Case const cases[] = {
        { 0, { "glDepthMask(GL_TRUE)", "glDisable(GL_BLEND)", "glDisable(GL_ALPHA_TEST)" } },
        { 1, { "glDepthMask(GL_FALSE)", "glEnable(GL_BLEND)", "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)",
                 "glDisable(GL_ALPHA_TEST)" } },
        { 2, { "glDepthMask(GL_TRUE)", "glDisable(GL_BLEND)", "glEnable(GL_ALPHA_TEST)", "glAlphaFunc(GL_GREATER, 0.5)" } },
        { 3, { "glBlendFunc(GL_ONE, GL_ONE)", "glEnable(GL_BLEND)", "glDisable(GL_ALPHA_TEST)", "glDepthMask(GL_FALSE)" } },
        { 4, { "glDepthMask(GL_FALSE)", "glDisable(GL_BLEND)", "glDisable(GL_ALPHA_TEST)" } },
        { 9, {} },
    };
    // All kept alive: a new shader at a freed one's address would look like the cached one.
    std::vector<Ptr<Shader>> shaders;
    for (Case const& c : cases) {
        Shader* shader = shaders.emplace_back(Shader::Create());
        shader->SetBlendMode(static_cast<Shader::BlendMode>(c.mode));
        shader->SetCullingEnabled(false);
        // The multiplier only modulates a material's diffuse colour.
        m_Render->SetShader(shader, Vector4T<float>(0.5f, 0.5f, 0.5f, 0.5f));
        Lines const before{ "glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT, {0.8,0.8,0.8,1})",
            "glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, {0.8,0.8,0.8,1})",
            "glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, {0,0,0,1})", "glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, {0,0,0,1})",
            "glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 0)", "glActiveTexture(GL_TEXTURE1)", "glDisable(GL_TEXTURE_2D)",
            "glBindTexture(GL_TEXTURE_2D, 0)", "glActiveTexture(GL_TEXTURE0)", "glDisable(GL_TEXTURE_2D)",
            "glBindTexture(GL_TEXTURE_2D, 0)", "glEnable(GL_LIGHTING)", "glDisable(GL_CULL_FACE)" };
        EXPECT_EQ(Calls(), Join({ before, c.calls, { "glColor4f(0.8, 0.8, 0.8, 1)" } })) << "blend mode " << c.mode;
    }
}

TEST_F(RenderWizGLTest, SetTextureUploadsOnceThenSetsFiltersAndMatrixEveryTime)
{
    Init();
    Ptr<Texture2D> texture = MakeTexture(64, 32);
    Lines const everyTime{ "glBindTexture(GL_TEXTURE_2D, 1)",
        "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR)",
        "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR)",
        "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT)",
        "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT)", "glMatrixMode(GL_TEXTURE)", "glLoadIdentity()",
        "glMatrixMode(GL_MODELVIEW)" };
    m_Render->SetTexture(1, texture);
    Lines const unit{ "glActiveTexture(GL_TEXTURE1)", "glEnable(GL_TEXTURE_2D)" };
    EXPECT_EQ(Calls(),
        Join({ unit,
            { "glGenTextures(1)->1", "glBindTexture(GL_TEXTURE_2D, 1)", "glPixelStorei(GL_UNPACK_ALIGNMENT, 1)",
                "glPixelStorei(GL_PACK_ALIGNMENT, 1)", "glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, 1)",
                "glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 64, 32, 0, GL_RGBA, GL_UNSIGNED_BYTE, ptr)" },
            everyTime }));
    EXPECT_EQ(m_Log.Take(), (Lines{ "[D] Generating Texture.", "[D] TexID=0x1", "[D] Texture: Format=0x1908 W=64 H=32" }));

    m_Render->SetTexture(1, texture);
    EXPECT_EQ(Calls(), Join({ unit, everyTime }));

    Ptr<TextureTransform> scroll = TextureTransform::Create();
    scroll->SetTranslation(Vector3T<Fixed>(0.5, 0.25, 0));
    texture->SetTextureTransform(scroll);
    m_Render->SetTexture(1, texture);
    EXPECT_EQ(Calls()[8], "glLoadMatrixx({65536,0,0,0,0,65536,0,0,0,0,65536,0,32768,16384,0,65536})");

    for (auto [format, name] : { std::pair{ Image::FormatLuminance, "GL_LUMINANCE" }, { Image::FormatRGB, "GL_RGB" },
             { Image::FormatLuminanceAlpha, "GL_LUMINANCE_ALPHA" } }) {
        Ptr<Texture2D> other = MakeTexture(8, 8, format);
        m_Render->SetTexture(0, other);
        EXPECT_EQ(Calls()[7], std::string("glTexImage2D(GL_TEXTURE_2D, 0, ") + name + ", 8, 8, 0, " + name
                      + ", GL_UNSIGNED_BYTE, ptr)");
    }
}

TEST_F(RenderWizGLTest, SetTextureMapsTheEngineFiltersToGL)
{
    Init();
    struct Case {
        int mip, min, mag;
        char const* minFilter;
        char const* magFilter;
    };
    Case const cases[] = { { 0, 0, 0, "GL_NEAREST_MIPMAP_NEAREST", "GL_NEAREST" },
        { 0, 1, 1, "GL_NEAREST_MIPMAP_LINEAR", "GL_LINEAR" }, { 0, 2, 2, "GL_NEAREST", "GL_LINEAR" },
        { 0, 3, 0, "GL_LINEAR", "GL_NEAREST" }, { 1, 0, 1, "GL_LINEAR_MIPMAP_NEAREST", "GL_LINEAR" },
        { 2, 1, 1, "GL_LINEAR_MIPMAP_LINEAR", "GL_LINEAR" }, { 1, 2, 1, "GL_LINEAR", "GL_LINEAR" } };
    Ptr<Texture2D> texture = MakeTexture(16, 16);
    for (Case const& c : cases) {
        texture->SetMipFilter(static_cast<Texture::Filter>(c.mip));
        texture->SetMinFilter(static_cast<Texture::Filter>(c.min));
        texture->SetMagFilter(static_cast<Texture::Filter>(c.mag));
        m_Render->SetTexture(0, texture);
        Lines const calls = Calls();
        std::string const parameter = "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_";
        EXPECT_EQ(calls.at(calls.size() - 7), parameter + "MIN_FILTER, " + c.minFilter + ")") << c.mip << ", " << c.min;
        EXPECT_EQ(calls.at(calls.size() - 6), parameter + "MAG_FILTER, " + c.magFilter + ")") << c.mag;
    }
}

// A texture the Wiz cannot take is not uploaded, but the unit is still switched on and its
// matrix loaded.
TEST_F(RenderWizGLTest, SetTextureRefusesWhatTheDriverCannotTake)
{
    Init(); // 1024 texels at most, two units
    struct Case {
        int unit;
        short width, height;
        char const* error;
    };
    Case const cases[] = {
        { 0, 100, 64, "[E] SetTexture Texture dimensions not power of 2." },
        { 0, 64, 48, "[E] SetTexture Texture dimensions not power of 2." },
        { 1, 2048, 64, "[E] SetTexture Texture size exceeding limits." },
        { 2, 64, 64, "[E] SetTexture Pass #2 exceeding GL_MAX_TEXTURE_UNITS" },
    };
    for (Case const& c : cases) {
        Ptr<Texture2D> texture = MakeTexture(c.width, c.height);
        m_Render->SetTexture(c.unit, texture);
        Lines const unitState{ "glActiveTexture(GL_TEXTURE" + std::to_string(c.unit) + ")", "glEnable(GL_TEXTURE_2D)",
            "glMatrixMode(GL_TEXTURE)", "glLoadIdentity()", "glMatrixMode(GL_MODELVIEW)" };
        EXPECT_EQ(Calls(), c.unit < 2 ? unitState : Lines{}) << c.width << " x " << c.height;
        EXPECT_EQ(m_Log.Take(), Lines{ c.error });
        EXPECT_EQ(texture->GetTextureHandle(), nullptr);
    }
}

TEST_F(RenderWizGLTest, DrawReadsStaticArraysFromBuffersAndTheRestFromClientMemory)
{
    Init();
    using H = RenderPolygonHandleWizGL;
    Lines const texCoords{ "glClientActiveTexture(GL_TEXTURE1)", "glDisableClientState(GL_TEXTURE_COORD_ARRAY)",
        "glClientActiveTexture(GL_TEXTURE0)", "glEnableClientState(GL_TEXTURE_COORD_ARRAY)" };
    Lines const disable{ "glDisableClientState(GL_VERTEX_ARRAY)", "glDisableClientState(GL_COLOR_ARRAY)",
        "glDisableClientState(GL_NORMAL_ARRAY)", "glClientActiveTexture(GL_TEXTURE1)",
        "glDisableClientState(GL_TEXTURE_COORD_ARRAY)", "glClientActiveTexture(GL_TEXTURE0)",
        "glDisableClientState(GL_TEXTURE_COORD_ARRAY)", "glBindBuffer(GL_ARRAY_BUFFER, 0)",
        "glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0)", "glPopMatrix()" };
    struct Case {
        unsigned staticBits;
        Lines buffers; // made at the first draw
        Lines arrays;  // from the texture coordinates on
    };
    Case const cases[] = {
        { 0, {},
            { "glTexCoordPointer(2, GL_FLOAT, 8, ptr)", "glEnableClientState(GL_COLOR_ARRAY)", "glColorPointer(4, GL_FLOAT, 0, ptr)",
                "glEnableClientState(GL_NORMAL_ARRAY)", "glNormalPointer(GL_FLOAT, 0, ptr)",
                "glEnableClientState(GL_VERTEX_ARRAY)", "glVertexPointer(3, GL_FLOAT, 0, ptr)",
                "glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_SHORT, ptr)" } },
        // Texture coordinates of set 1 are empty and get no buffer.
        { 63,
            Join({ BufferUpload(1, "GL_ARRAY_BUFFER", 36), BufferUpload(2, "GL_ELEMENT_ARRAY_BUFFER", 6),
                BufferUpload(3, "GL_ARRAY_BUFFER", 36), BufferUpload(4, "GL_ARRAY_BUFFER", 48),
                BufferUpload(5, "GL_ARRAY_BUFFER", 24) }),
            { "glBindBuffer(GL_ARRAY_BUFFER, 5)", "glTexCoordPointer(2, GL_FLOAT, 8, null)", "glEnableClientState(GL_COLOR_ARRAY)",
                "glBindBuffer(GL_ARRAY_BUFFER, 4)", "glColorPointer(4, GL_FLOAT, 0, null)", "glEnableClientState(GL_NORMAL_ARRAY)",
                "glBindBuffer(GL_ARRAY_BUFFER, 3)", "glNormalPointer(GL_FLOAT, 0, null)", "glEnableClientState(GL_VERTEX_ARRAY)",
                "glBindBuffer(GL_ARRAY_BUFFER, 1)", "glVertexPointer(3, GL_FLOAT, 0, null)",
                "glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 2)", "glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_SHORT, null)" } },
        // A client array after a buffered one must not be read as an offset into that buffer.
        { H::StaticColors, BufferUpload(1, "GL_ARRAY_BUFFER", 48),
            { "glTexCoordPointer(2, GL_FLOAT, 8, ptr)", "glEnableClientState(GL_COLOR_ARRAY)", "glBindBuffer(GL_ARRAY_BUFFER, 1)",
                "glColorPointer(4, GL_FLOAT, 0, null)", "glEnableClientState(GL_NORMAL_ARRAY)",
                "glBindBuffer(GL_ARRAY_BUFFER, 0)", "glNormalPointer(GL_FLOAT, 0, ptr)", "glEnableClientState(GL_VERTEX_ARRAY)",
                "glVertexPointer(3, GL_FLOAT, 0, ptr)", "glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_SHORT, ptr)" } },
    };
    for (Case const& c : cases) {
        ResetTrace();
        Ptr<PolygonGeometry> geometry = MakeTriangle(c.staticBits);
        for (bool first : { true, false }) {
            m_Render->Draw(geometry, Matrix4T<Fixed>::Identity);
            Lines const start{ "glPushMatrix()", "glMultMatrixx(" + S_Identity + ")" };
            EXPECT_EQ(Calls(), Join({ start, first ? c.buffers : Lines{}, texCoords, c.arrays, disable }))
                << "static bits " << c.staticBits << (first ? ", first draw" : ", second draw");
        }
    }
}

// Other primitive types switch the arrays on and off but draw nothing; no primitives, no calls.
TEST_F(RenderWizGLTest, DrawDrawsTrianglesAndLinesOnly)
{
    Init();
    for (auto [type, draw] : { std::pair{ 0, "glDrawElements(GL_TRIANGLES, 6, GL_UNSIGNED_SHORT, ptr)" },
             { 1, "glDrawElements(GL_LINES, 6, GL_UNSIGNED_SHORT, ptr)" }, { 7, "" } }) {
        Ptr<PolygonGeometry> geometry = PolygonGeometry::Create();
        geometry->SetPrimiviteType(type == 1); // the primitive count follows the type set before the indices
        geometry->SetVertexArray({ { 0, 0, 0 }, { 1, 0, 0 }, { 0, 1, 0 }, { 1, 1, 0 } });
        geometry->SetIndexArray({ 0, 1, 2, 1, 3, 2 });
        geometry->SetPrimiviteType(type);
        m_Render->Draw(geometry);
        Lines const calls = Calls();
        EXPECT_EQ(CountStartingWith(calls, "glDisableClientState(GL_VERTEX_ARRAY)"), 1);
        Lines drawn;
        std::copy_if(calls.begin(), calls.end(), std::back_inserter(drawn),
            [](std::string const& call) { return call.rfind("glDrawElements", 0) == 0; });
        EXPECT_EQ(drawn, *draw ? Lines{ draw } : Lines{}) << "type " << type;
    }
    Ptr<PolygonGeometry> empty = PolygonGeometry::Create();
    m_Render->Draw(empty);
    EXPECT_EQ(Calls(), Lines{});
}

TEST_F(RenderWizGLTest, RenderTargetHandleMakesOneSurfaceInItsLife)
{
    Init();
    EGLDisplay display = GL->eglGetDisplay(EGL_DEFAULT_DISPLAY);
    Ptr<RenderTargetHandleWizGL> handle = RenderTargetHandleWizGL::Create();
    handle->CreateSurface(display, 64, 32);
    handle->CreateSurface(display, 64, 32);
    Lines const calls = Calls();
    EXPECT_EQ(calls[1], "eglChooseConfig(dpy, {EGL_SURFACE_TYPE,1,EGL_NONE}, ptr, 1, ptr)");
    EXPECT_EQ(CountStartingWith(calls, "eglGetConfigAttrib(dpy, cfg, "), 19);
    EXPECT_EQ(Lines(calls.end() - 2, calls.end()),
        (Lines{ "eglCreatePbufferSurface(dpy, cfg, {EGL_HEIGHT,32,EGL_WIDTH,64,EGL_NONE})", "glGenTextures(1)->1" }));
    Lines const log = m_Log.Take();
    EXPECT_EQ(log[1], "[D] Wiz.EGL_BUFFER_SIZE: 0");
    EXPECT_EQ(CountStartingWith(log, "[D] Wiz.EGL_"), 19);
    EXPECT_EQ(log.back(), "[D] TexID=0x1");

    handle->Unload();
    handle->CreateSurface(display, 64, 32);
    EXPECT_EQ(Calls(), (Lines{ "eglDestroySurface(dpy, surf)", "glDeleteTextures(1, {1})" }));

    Ptr<RenderTargetHandleWizGL> failing = RenderTargetHandleWizGL::Create();
    m_Trace.FailCall("eglCreatePbufferSurface");
    failing->CreateSurface(display, 64, 32);
    EXPECT_EQ(m_Log.Take().back(), "[E] RenderWizGL::CreateSurface: failed. eglError=0x3000  glError=0x0");
}

TEST(RenderWizGLLoader, NoDriverFailsInitWithOneLineQuotingTheLoader)
{
    TempDir dir;
    LogSession log;
    Ptr<Render> render = Render::Create();
    EXPECT_FALSE(render->Init());
    Lines const lines = log.Take();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], "[D] RenderWizGL::Init");
    EXPECT_EQ(lines[1].rfind("[E] Failed to open libopengles_lite.so Error: \"", 0), 0u) << lines[1];
    EXPECT_NE(lines[1].find("libopengles_lite.so: cannot open shared object file"), std::string::npos) << lines[1];
    EXPECT_EQ(lines[1].back(), '"');
    EXPECT_EQ(lines[2], "[E] GLAPI_Init failed.");
    EXPECT_EQ(GL, nullptr);
    render->Exit();
    EXPECT_EQ(log.Take(), Lines{ "[D] RenderWizGL::Exit" });
}

TEST(RenderWizGLLoader, DriverWithoutGlFogxStopsThereAndStaysHalfLoaded)
{
    TempDir dir;
    LogSession log;
    RecordingTrace trace(VELLACORE_RECORDING_NOFOGX_GL);
    EXPECT_FALSE(GLAPI_Init());
    Lines const lines = log.Take();
    ASSERT_EQ(lines.size(), 71u);
    EXPECT_EQ(CountStartingWith(lines, "[D] Importing "), 70);
    EXPECT_EQ(lines[69], "[D] Importing glFogx");
    EXPECT_EQ(lines[70], "[E] Function glFogx not found.");
    ASSERT_NE(GL, nullptr);
    EXPECT_NE(GL->glFogfv, nullptr);
    EXPECT_EQ(GL->glFogxv, nullptr) << "names after the missing one are not looked up";

    EXPECT_TRUE(GLAPI_Init()) << "the half-loaded table counts as loaded";
    EXPECT_EQ(log.Take(), Lines{});
    GLAPI_Exit();
    EXPECT_EQ(GL, nullptr);
    EXPECT_EQ(log.Take(), Lines{ "[I] GLAPI_Exit done." });
}

TEST(RenderWizGLLoader, ExitAndShutdownWithNothingLoaded)
{
    TempDir dir;
    LogSession log;
    ShutdownGL();
    EXPECT_EQ(log.Take(), Lines{});
    GLAPI_Exit();
    EXPECT_EQ(log.Take(), Lines{ "[I] GLAPI_Exit done." });
}

// The fixed-point pipeline's result: v truncated to 16.16, each product rounded down on its own.
TEST(RenderWizGLVertexTransform, MatchesADoubleReferenceWithinTheRoundingOfThreeProducts)
{
    Fixed::InitLookupTables();
    Matrix4T<Fixed> turned, scaled;
    turned.MakeRotationY(Fixed(30));
    turned.m[12] = Fixed(-7.25);
    turned.m[14] = Fixed(100);
    scaled.MakeScaling(Vector3T<Fixed>(Fixed(2.5), Fixed(-0.75), Fixed(3)));
    for (Matrix4T<Fixed> const& m : { Matrix4T<Fixed>::Identity, turned, scaled }) {
        for (Vector3T<float> const& v : { Vector3T<float>(1, 2, 3), Vector3T<float>(-1.00001f, 0.5f, -250.3f),
                 Vector3T<float>(12.345f, -6.789f, 0.001f) }) {
            double const in[3] = { std::trunc(v.x * 65536.0), std::trunc(v.y * 65536.0), std::trunc(v.z * 65536.0) };
            Vector3T<float> const out = VertexTransform(v, m);
            float const got[3] = { out.x, out.y, out.z };
            for (int i = 0; i < 3; ++i) {
                double expected = m.m[12 + i].GetRaw() / 65536.0;
                for (int k = 0; k < 3; ++k)
                    expected += m.m[4 * k + i].GetRaw() * in[k] / 65536.0 / 65536.0;
                EXPECT_NEAR(got[i], expected, 3.0 / 65536 + std::fabs(expected) * 1e-7) << "component " << i;
            }
        }
    }
    Fixed::ExitLookupTables();
}

} // namespace
