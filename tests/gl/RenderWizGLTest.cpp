// The Wiz renderer, its GL loader and its handles on the recording stand-in: the calls made, and the failures' log lines.
#include "Vellacore/Geometry/PolygonGeometry.h"
#include "Vellacore/Render/Material.h"
#include "Vellacore/Render/Shader.h"
#include "Vellacore/Render/Texture2D.h"
#include "Vellacore/Render/Wiz/GLAPI.h"
#include "Vellacore/Render/Wiz/RenderTargetHandleWizGL.h"
#include "Vellacore/Render/Wiz/RenderWizGL.h"
#include "support/RecordingTrace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

using namespace Vellacore;
using namespace VellacoreTest;
using Lines = std::vector<std::string>;

namespace {

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
        m_Trace.Take();
        m_Log.Take();
    }

    TempDir m_Dir;
    LogSession m_Log;
    RecordingTrace m_Trace;
    Ptr<RenderWizGL> m_Render = Ptr<Render>(Render::Create())->Cast<RenderWizGL>();
};

// The whole table is imported first; each failing EGL step then ends Init with its line, and Exit
// still releases what was made before it.
TEST_F(RenderWizGLTest, InitFailuresAreReportedAndExitReleasesWhatWasMade)
{
    // The failing call, its error line (null: silent) and the context Exit destroys (null: no teardown).
    for (auto [failingCall, error, context] :
        { std::tuple<char const*, char const*, char const*>{ "eglGetDisplay", "[E] eglGetDisplay returned NO_DISPLAY.", nullptr },
            { "eglChooseConfig", "[E] eglChooseConfig failed.", "null" },
            { "eglCreateContext", "[E] eglCreateContext failed.", "null" }, { "eglCreateWindowSurface", nullptr, "ctx" } }) {
        SCOPED_TRACE(failingCall);
        m_Trace.Reset();
        m_Trace.FailCall(failingCall);
        EXPECT_FALSE(m_Render->Init());
        Lines const log = m_Log.Take();
        EXPECT_EQ(log.back(), error ? error : "[D] Importing glDeleteBuffers");
        EXPECT_EQ(CountStartingWith(log, "[E] "), error ? 1 : 0);
        EXPECT_EQ(CountStartingWith(log, "[D] Importing "), 75);
        EXPECT_EQ(m_Trace.Take().back().rfind(std::string(failingCall) + "(", 0), 0u) << "Init stops at the failing call";

        m_Render->Exit();
        EXPECT_EQ(GL, nullptr);
        EXPECT_EQ(m_Log.Take(), (Lines{ "[D] RenderWizGL::Exit", "[I] GLAPI_Exit done." }));
        Lines teardown;
        if (context)
            teardown = { "eglMakeCurrent(dpy, null, null, null)", "eglDestroySurface(dpy, null)",
                std::string("eglDestroyContext(dpy, ") + context + ")", "eglTerminate(dpy)" };
        EXPECT_EQ(m_Trace.Take(), teardown);
    }
}

// The handles outlive the renderer: dropped after Exit, they must not reach the unloaded driver.
TEST_F(RenderWizGLTest, ExitUnloadsEveryHandleItMadeThenEGLAndTheDriver)
{
    Init();
    Ptr<Texture2D> texture = MakeTexture(4, 4);
    Ptr<PolygonGeometry> geometry = MakeTriangle(RenderPolygonHandleWizGL::StaticVertices | RenderPolygonHandleWizGL::StaticIndices);
    m_Render->SetTexture(0, texture);
    m_Render->Draw(geometry);
    m_Trace.Take();
    m_Log.Take();

    m_Render->Exit();
    EXPECT_EQ(m_Trace.Take(),
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
    EXPECT_EQ(m_Trace.Take(), (Lines{ "glDepthMask(GL_TRUE)", "glClear(GL_COLOR_BUFFER_BIT|GL_DEPTH_BUFFER_BIT)" }));
    m_Render->Clear(4);
    EXPECT_EQ(m_Trace.Take(), Lines{ "glDepthMask(GL_TRUE)" }) << "a stencil-only clear clears nothing";
    EXPECT_EQ(m_Log.Take(), Lines(2, "[E] RenderWizGL::Clear: StencilBuffer not supported by WIZ."));

    m_Render->SetDepthClearValue(Fixed(-2.75));
    EXPECT_EQ(m_Trace.Take(), Lines{ "glClearDepthx(-2)" }) << "the whole part, towards zero, as a raw value";

    m_Trace.SetError(GL_INVALID_OPERATION, EGL_BAD_SURFACE);
    m_Render->SwapBuffers();
    EXPECT_EQ(m_Trace.Take(),
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
        EXPECT_EQ(m_Trace.Take(), expected) << count << " of " << maxLights;
        EXPECT_EQ(m_Log.Take(), count > maxLights ? Lines{ "[W] RenderWizGL::SetLights: lights exceed max lights." } : Lines{});
        m_Render->Exit();
    }
}

TEST_F(RenderWizGLTest, SetShaderAppliesMaterialTexturesSwitchesAndColourOnlyWhenChanged)
{
    Init();
    // The cache starts out as a null shader with this colour: such a first call does nothing.
    m_Render->SetShader(nullptr, Vector4T<float>(-1, -1, -1, -1));
    EXPECT_EQ(m_Trace.Take(), Lines{});
    EXPECT_EQ(m_Log.Take(), Lines{});

    Ptr<Shader> shader = Shader::Create();
    Ptr<Material> material = Material::Create();
    material->SetDiffuseColor(Vector4T<float>(0.5f, 1, 0.25f, 1));
    shader->SetMaterial(material);
    shader->SetLightingEnabled(false);
    Vector4T<float> const colorMul(1, 0.5f, 1, 0.5f);
    m_Render->SetShader(shader, colorMul);
    Lines const first = m_Trace.Take();
    EXPECT_EQ(std::count(first.begin(), first.end(), "glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, {0.5,0.5,0.25,0.5})"), 1);
    EXPECT_EQ(first.back(), "glColor4f(0.5, 0.5, 0.25, 0.5)") << "the diffuse colour times the colour given";

    m_Render->SetShader(shader, colorMul);
    EXPECT_EQ(m_Trace.Take(), Lines{}) << "same shader, same colour";
    shader->SetLightingEnabled(true);
    m_Render->SetShader(shader, colorMul);
    EXPECT_EQ(m_Trace.Take(), Lines{}) << "a changed shader is not looked at again";

    m_Render->SetShader(nullptr, colorMul);
    EXPECT_EQ(m_Trace.Take(), Lines{ "glColor4f(1, 1, 1, 1)" });
    EXPECT_EQ(m_Log.Take(), Lines{ "[W] RenderWizGL::SetShader: NULL-Shader results in undefined draw behaviour." });
}

// Uploaded once, with the engine's filters mapped to GL's and the unit state set every time.
TEST_F(RenderWizGLTest, SetTextureUploadsOnceThenSetsFiltersAndMatrixEveryTime)
{
    Init();
    Ptr<Texture2D> texture = MakeTexture(64, 32);
    m_Render->SetTexture(1, texture);
    Lines again = m_Trace.Take();
    std::string const parameter = "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_";
    EXPECT_EQ(again,
        (Lines{ "glActiveTexture(GL_TEXTURE1)", "glEnable(GL_TEXTURE_2D)", "glGenTextures(1)->1", "glBindTexture(GL_TEXTURE_2D, 1)",
            "glPixelStorei(GL_UNPACK_ALIGNMENT, 1)", "glPixelStorei(GL_PACK_ALIGNMENT, 1)",
            "glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, 1)",
            "glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 64, 32, 0, GL_RGBA, GL_UNSIGNED_BYTE, ptr)", "glBindTexture(GL_TEXTURE_2D, 1)",
            parameter + "MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR)", parameter + "MAG_FILTER, GL_LINEAR)",
            parameter + "WRAP_S, GL_REPEAT)", parameter + "WRAP_T, GL_REPEAT)", "glMatrixMode(GL_TEXTURE)", "glLoadIdentity()",
            "glMatrixMode(GL_MODELVIEW)" }));
    m_Render->SetTexture(1, texture);
    again.erase(again.begin() + 2, again.begin() + 8);
    EXPECT_EQ(m_Trace.Take(), again);

    for (auto [mip, min, mag, minFilter, magFilter] : { std::tuple{ 0, 0, 0, "GL_NEAREST_MIPMAP_NEAREST", "GL_NEAREST" },
             { 0, 1, 1, "GL_NEAREST_MIPMAP_LINEAR", "GL_LINEAR" }, { 0, 2, 2, "GL_NEAREST", "GL_LINEAR" },
             { 0, 3, 0, "GL_LINEAR", "GL_NEAREST" }, { 1, 0, 1, "GL_LINEAR_MIPMAP_NEAREST", "GL_LINEAR" },
             { 2, 1, 1, "GL_LINEAR_MIPMAP_LINEAR", "GL_LINEAR" }, { 1, 2, 1, "GL_LINEAR", "GL_LINEAR" } }) {
        texture->SetMipFilter(static_cast<Texture::Filter>(mip));
        texture->SetMinFilter(static_cast<Texture::Filter>(min));
        texture->SetMagFilter(static_cast<Texture::Filter>(mag));
        m_Render->SetTexture(0, texture);
        Lines const calls = m_Trace.Take();
        EXPECT_EQ(Lines(calls.begin() + 3, calls.begin() + 5),
            (Lines{ parameter + "MIN_FILTER, " + minFilter + ")", parameter + "MAG_FILTER, " + magFilter + ")" }))
            << mip << ", " << min << ", " << mag;
    }

    for (auto [format, name] : { std::pair{ Image::FormatLuminance, "GL_LUMINANCE" }, { Image::FormatRGB, "GL_RGB" },
             { Image::FormatLuminanceAlpha, "GL_LUMINANCE_ALPHA" } }) {
        m_Render->SetTexture(0, Ptr<Texture2D>(MakeTexture(8, 8, format)));
        EXPECT_EQ(m_Trace.Take()[7],
            std::string("glTexImage2D(GL_TEXTURE_2D, 0, ") + name + ", 8, 8, 0, " + name + ", GL_UNSIGNED_BYTE, ptr)");
    }
}

// A texture the Wiz cannot take is not uploaded, but the unit is still switched on and its matrix loaded.
TEST_F(RenderWizGLTest, SetTextureRefusesWhatTheDriverCannotTake)
{
    Init(); // 1024 texels at most, two units
    for (auto [unit, width, height, error] :
        { std::tuple<int, short, short, char const*>{ 0, 100, 64, "[E] SetTexture Texture dimensions not power of 2." },
            { 1, 2048, 64, "[E] SetTexture Texture size exceeding limits." },
            { 2, 64, 64, "[E] SetTexture Pass #2 exceeding GL_MAX_TEXTURE_UNITS" } }) {
        m_Render->SetTexture(unit, Ptr<Texture2D>(MakeTexture(width, height)));
        Lines const unitState{ "glActiveTexture(GL_TEXTURE" + std::to_string(unit) + ")", "glEnable(GL_TEXTURE_2D)",
            "glMatrixMode(GL_TEXTURE)", "glLoadIdentity()", "glMatrixMode(GL_MODELVIEW)" };
        EXPECT_EQ(m_Trace.Take(), unit < 2 ? unitState : Lines{}) << width << " x " << height;
        EXPECT_EQ(m_Log.Take(), Lines{ error });
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
    Lines again = m_Trace.Take();
    EXPECT_EQ(again,
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
    again.erase(again.begin() + 2, again.begin() + 14);
    EXPECT_EQ(m_Trace.Take(), again) << "no new buffers";
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
    EXPECT_EQ(CountStartingWith(m_Trace.Take(), "eglCreatePbufferSurface(dpy, cfg, {EGL_HEIGHT,32,EGL_WIDTH,64,EGL_NONE})"), 1);
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
