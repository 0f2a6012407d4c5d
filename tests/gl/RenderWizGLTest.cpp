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
#include "support/RecordingTrace.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
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
        Lines fresh;
        std::size_t read = 0;
        for (std::string line; std::getline(in, line);)
            if (++read > m_Seen)
                fresh.push_back(line);
        m_Seen = std::max(m_Seen, read);
        return fresh;
    }

    std::size_t m_Seen = 1;
};

int CountStartingWith(Lines const& lines, std::string const& prefix)
{
    return static_cast<int>(std::count_if(
        lines.begin(), lines.end(), [&](std::string const& line) { return line.compare(0, prefix.size(), prefix) == 0; }));
}

Lines operator+(Lines a, Lines const& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
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

class RenderWizGLTest : public testing::Test {
protected:
    static void SetUpTestSuite() { Fixed::InitLookupTables(); }
    static void TearDownTestSuite() { Fixed::ExitLookupTables(); }
    ~RenderWizGLTest() override { m_Render->Exit(); }

    // Init with the limits the stand-in answers; the trace and the log start afresh after it.
    void Init(int maxLights = 8)
    {
        m_Trace.SetInteger(GL_MAX_LIGHTS, maxLights);
        ASSERT_TRUE(m_Render->Init());
        Calls();
        m_Log.Take();
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
    Ptr<RenderWizGL> m_Render = Ptr<Render>(Render::Create())->Cast<RenderWizGL>();
    int m_Mark = 0;
};

TEST_F(RenderWizGLTest, InitBringsUpEGLAndTheFixedState)
{
    ASSERT_NE(m_Render, nullptr) << "Render::Create makes the Wiz renderer";
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
            "glEnable(GL_DEPTH_TEST)", "glDepthFunc(GL_LEQUAL)", "glEnable(GL_NORMALIZE)", "glEnable(GL_COLOR_MATERIAL)",
            "glColor4f(1, 1, 1, 1)" }));
    Lines const log = m_Log.Take();
    EXPECT_EQ(CountStartingWith(log, "[D] Importing "), 75);
    EXPECT_EQ(log.back(), "[I] MaxTextureSize=1024");
}

// Each failing EGL step ends Init with its line, and Exit still releases what was made before it.
TEST_F(RenderWizGLTest, InitFailuresAreReportedAndExitReleasesWhatWasMade)
{
    struct Case {
        char const* failingCall;
        char const* error;             // null: the failure is silent
        char const* surfaceAndContext; // null: no display, nothing to tear down
    } const cases[] = {
        { "eglGetDisplay", "[E] eglGetDisplay returned NO_DISPLAY.", nullptr },
        { "eglChooseConfig", "[E] eglChooseConfig failed.", "null" },
        { "eglCreateContext", "[E] eglCreateContext failed.", "null" },
        { "eglCreateWindowSurface", nullptr, "ctx" },
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.failingCall);
        m_Trace.Reset();
        m_Mark = 0;
        m_Trace.FailCall(c.failingCall);
        EXPECT_FALSE(m_Render->Init());
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

// The handles outlive the renderer: dropped after Exit, they must not reach the unloaded driver.
TEST_F(RenderWizGLTest, ExitUnloadsEveryHandleItMadeThenEGLAndTheDriver)
{
    Init();
    Ptr<Texture2D> texture = MakeTexture(4, 4);
    using H = RenderPolygonHandleWizGL;
    Ptr<PolygonGeometry> geometry = MakeTriangle(H::StaticVertices | H::StaticIndices);
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
}

TEST_F(RenderWizGLTest, ClearDepthValueAndSwapErrors)
{
    Init();
    m_Render->Clear(7);
    EXPECT_EQ(Calls(), (Lines{ "glDepthMask(GL_TRUE)", "glClear(GL_COLOR_BUFFER_BIT|GL_DEPTH_BUFFER_BIT)" }));
    m_Render->Clear(4);
    EXPECT_EQ(Calls(), Lines{ "glDepthMask(GL_TRUE)" });
    EXPECT_EQ(m_Log.Take(), Lines(2, "[E] RenderWizGL::Clear: StencilBuffer not supported by WIZ."));

    m_Render->SetDepthClearValue(Fixed(-2.75));
    EXPECT_EQ(Calls(), Lines{ "glClearDepthx(-2)" }) << "the whole part, towards zero, as a raw value";

    m_Trace.SetError(GL_INVALID_OPERATION, EGL_BAD_SURFACE);
    m_Render->SwapBuffers();
    EXPECT_EQ(Calls(),
        (Lines{ "glFlush()", "eglWaitGL()", "eglSwapBuffers(dpy, surf)", "glGetError()->0x502", "eglGetError()->0x300d" }));
    EXPECT_EQ(m_Log.Take(), (Lines{ "[E] RenderWizGL: GL ERROR = 0x502", "[E] RenderWizGL: EGL ERROR = 0x300d" }));
}

TEST_F(RenderWizGLTest, SetLightsEnablesUpToTheDriversLimit)
{
    for (auto [maxLights, count] : { std::pair<int, short>{ 8, 10 }, { 4, 3 } }) {
        Init(maxLights);
        m_Render->SetLights(count);
        Lines expected;
        for (int i = 0; i < maxLights; ++i)
            expected.push_back((i < count ? "glEnable(GL_LIGHT" : "glDisable(GL_LIGHT") + std::to_string(i) + ")");
        EXPECT_EQ(Calls(), expected) << count << " of " << maxLights;
        EXPECT_EQ(m_Log.Take(),
            count > maxLights ? Lines{ "[W] RenderWizGL::SetLights: lights exceed max lights." } : Lines{});
        m_Render->Exit();
    }
}

TEST_F(RenderWizGLTest, SetFogSendsTheFogOnceAndSwitchesItOff)
{
    Init();
    Ptr<Fog> fog = Fog::Create();
    fog->m_Mode = Fog::Exp2;
    fog->m_Color = Vector4T<float>(0.5f, 0.5f, 1, 1);
    fog->m_Density = Fixed(0.25);
    fog->m_Start = Fixed(2);
    fog->m_End = Fixed(10.5);
    m_Render->SetFog(fog);
    m_Render->SetFog(fog);
    EXPECT_EQ(Calls(),
        (Lines{ "glFogf(GL_FOG_MODE, GL_EXP2)", "glFogfv(GL_FOG_COLOR, {0.5,0.5,1,1})", "glFogf(GL_FOG_DENSITY, 0.25)",
            "glFogf(GL_FOG_START, 2)", "glFogf(GL_FOG_END, 10.5)", "glEnable(GL_FOG)" }));
    m_Render->SetFog(nullptr);
    EXPECT_EQ(Calls(), Lines{ "glDisable(GL_FOG)" });
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
            "glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, {0,0,0,1})", "glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, {0,0,0,1})",
            "glMaterialx(GL_FRONT_AND_BACK, GL_SHININESS, 131072)",
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

// Uploaded once, with the engine's filters mapped to GL's and the unit state set every time.
TEST_F(RenderWizGLTest, SetTextureUploadsOnceThenSetsFiltersAndMatrixEveryTime)
{
    Init();
    Ptr<Texture2D> texture = MakeTexture(64, 32);
    m_Render->SetTexture(1, texture);
    Lines const first = Calls();
    EXPECT_EQ(first,
        (Lines{ "glActiveTexture(GL_TEXTURE1)", "glEnable(GL_TEXTURE_2D)", "glGenTextures(1)->1", "glBindTexture(GL_TEXTURE_2D, 1)",
            "glPixelStorei(GL_UNPACK_ALIGNMENT, 1)", "glPixelStorei(GL_PACK_ALIGNMENT, 1)",
            "glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, 1)",
            "glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 64, 32, 0, GL_RGBA, GL_UNSIGNED_BYTE, ptr)", "glBindTexture(GL_TEXTURE_2D, 1)",
            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR)",
            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR)",
            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT)",
            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT)", "glMatrixMode(GL_TEXTURE)", "glLoadIdentity()",
            "glMatrixMode(GL_MODELVIEW)" }));
    m_Render->SetTexture(1, texture);
    EXPECT_EQ(Calls(), Lines(first.begin(), first.begin() + 2) + Lines(first.begin() + 8, first.end()));

    struct Case {
        int mip, min, mag;
        char const *minFilter, *magFilter;
    } const cases[] = { { 0, 0, 0, "GL_NEAREST_MIPMAP_NEAREST", "GL_NEAREST" },
        { 0, 1, 1, "GL_NEAREST_MIPMAP_LINEAR", "GL_LINEAR" }, { 0, 2, 2, "GL_NEAREST", "GL_LINEAR" },
        { 0, 3, 0, "GL_LINEAR", "GL_NEAREST" }, { 1, 0, 1, "GL_LINEAR_MIPMAP_NEAREST", "GL_LINEAR" },
        { 2, 1, 1, "GL_LINEAR_MIPMAP_LINEAR", "GL_LINEAR" }, { 1, 2, 1, "GL_LINEAR", "GL_LINEAR" } };
    std::string const parameter = "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_";
    for (Case const& c : cases) {
        texture->SetMipFilter(static_cast<Texture::Filter>(c.mip));
        texture->SetMinFilter(static_cast<Texture::Filter>(c.min));
        texture->SetMagFilter(static_cast<Texture::Filter>(c.mag));
        m_Render->SetTexture(0, texture);
        Lines const calls = Calls();
        EXPECT_EQ(Lines(calls.begin() + 3, calls.begin() + 5),
            (Lines{ parameter + "MIN_FILTER, " + c.minFilter + ")", parameter + "MAG_FILTER, " + c.magFilter + ")" }))
            << c.mip << ", " << c.min << ", " << c.mag;
    }

    for (auto [format, name] : { std::pair{ Image::FormatLuminance, "GL_LUMINANCE" }, { Image::FormatRGB, "GL_RGB" },
             { Image::FormatLuminanceAlpha, "GL_LUMINANCE_ALPHA" } }) {
        Ptr<Texture2D> other = MakeTexture(8, 8, format);
        m_Render->SetTexture(0, other);
        EXPECT_EQ(Calls()[7],
            std::string("glTexImage2D(GL_TEXTURE_2D, 0, ") + name + ", 8, 8, 0, " + name + ", GL_UNSIGNED_BYTE, ptr)");
    }
}

// A texture the Wiz cannot take is not uploaded, but the unit is still switched on and its matrix
// loaded.
TEST_F(RenderWizGLTest, SetTextureRefusesWhatTheDriverCannotTake)
{
    Init(); // 1024 texels at most, two units
    struct Case {
        int unit;
        short width, height;
        char const* error;
    } const cases[] = {
        { 0, 100, 64, "[E] SetTexture Texture dimensions not power of 2." },
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
    }
}

// The static bits choose buffer objects, made at the first draw; a client array after a buffered one
// must not be read as an offset into that buffer.
TEST_F(RenderWizGLTest, DrawReadsStaticArraysFromBuffersAndTheRestFromClientMemory)
{
    Init();
    using H = RenderPolygonHandleWizGL;
    Ptr<PolygonGeometry> geometry = MakeTriangle(H::StaticVertices | H::StaticIndices | H::StaticColors);
    m_Render->Draw(geometry, Matrix4T<Fixed>::Identity);
    Lines const first = Calls();
    EXPECT_EQ(first,
        (Lines{ "glPushMatrix()", "glMultMatrixx({65536,0,0,0,0,65536,0,0,0,0,65536,0,0,0,0,65536})", "glGenBuffers(1)->1",
            "glBindBuffer(GL_ARRAY_BUFFER, 1)", "glBufferData(GL_ARRAY_BUFFER, 36, ptr, GL_STATIC_DRAW)",
            "glBindBuffer(GL_ARRAY_BUFFER, 0)", "glGenBuffers(1)->2", "glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 2)",
            "glBufferData(GL_ELEMENT_ARRAY_BUFFER, 6, ptr, GL_STATIC_DRAW)", "glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0)",
            "glGenBuffers(1)->3", "glBindBuffer(GL_ARRAY_BUFFER, 3)", "glBufferData(GL_ARRAY_BUFFER, 48, ptr, GL_STATIC_DRAW)",
            "glBindBuffer(GL_ARRAY_BUFFER, 0)", "glClientActiveTexture(GL_TEXTURE1)", "glDisableClientState(GL_TEXTURE_COORD_ARRAY)",
            "glClientActiveTexture(GL_TEXTURE0)", "glEnableClientState(GL_TEXTURE_COORD_ARRAY)",
            "glTexCoordPointer(2, GL_FLOAT, 8, ptr)", "glEnableClientState(GL_COLOR_ARRAY)", "glBindBuffer(GL_ARRAY_BUFFER, 3)",
            "glColorPointer(4, GL_FLOAT, 0, null)", "glEnableClientState(GL_NORMAL_ARRAY)", "glBindBuffer(GL_ARRAY_BUFFER, 0)",
            "glNormalPointer(GL_FLOAT, 0, ptr)", "glEnableClientState(GL_VERTEX_ARRAY)", "glBindBuffer(GL_ARRAY_BUFFER, 1)",
            "glVertexPointer(3, GL_FLOAT, 0, null)", "glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 2)",
            "glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_SHORT, null)", "glDisableClientState(GL_VERTEX_ARRAY)",
            "glDisableClientState(GL_COLOR_ARRAY)", "glDisableClientState(GL_NORMAL_ARRAY)", "glClientActiveTexture(GL_TEXTURE1)",
            "glDisableClientState(GL_TEXTURE_COORD_ARRAY)", "glClientActiveTexture(GL_TEXTURE0)",
            "glDisableClientState(GL_TEXTURE_COORD_ARRAY)", "glBindBuffer(GL_ARRAY_BUFFER, 0)",
            "glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0)", "glPopMatrix()" }));
    m_Render->Draw(geometry, Matrix4T<Fixed>::Identity);
    EXPECT_EQ(Calls(), Lines(first.begin(), first.begin() + 2) + Lines(first.begin() + 14, first.end())) << "no new buffers";
}

// A handle makes one pixel-buffer surface in its life, even across Unload.
TEST_F(RenderWizGLTest, RenderTargetHandleMakesOneSurfaceInItsLife)
{
    Init();
    Ptr<RenderTargetHandleWizGL> handle = RenderTargetHandleWizGL::Create();
    EGLDisplay display = GL->eglGetDisplay(EGL_DEFAULT_DISPLAY);
    handle->CreateSurface(display, 64, 32);
    handle->CreateSurface(display, 64, 32);
    handle->Unload();
    handle->CreateSurface(display, 64, 32);
    EXPECT_EQ(CountStartingWith(Calls(), "eglCreatePbufferSurface(dpy, cfg, {EGL_HEIGHT,32,EGL_WIDTH,64,EGL_NONE})"), 1);
}

TEST(RenderWizGLLoader, NoDriverFailsInitWithOneLineQuotingTheLoader)
{
    TempDir dir;
    LogSession log;
    Ptr<Render> render = Render::Create();
    EXPECT_FALSE(render->Init());
    Lines const lines = log.Take();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[1].rfind("[E] Failed to open libopengles_lite.so Error: \"", 0), 0u) << lines[1];
    EXPECT_NE(lines[1].find("libopengles_lite.so: cannot open shared object file"), std::string::npos) << lines[1];
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
    EXPECT_EQ(GL->glFogxv, nullptr) << "names after the missing one are not looked up";

    EXPECT_TRUE(GLAPI_Init()) << "the half-loaded table counts as loaded";
    EXPECT_EQ(log.Take(), Lines{});
    GLAPI_Exit();
    EXPECT_EQ(GL, nullptr);
    EXPECT_EQ(log.Take(), Lines{ "[I] GLAPI_Exit done." });
}

} // namespace
