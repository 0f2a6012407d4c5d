#include "Vellacore/Render/Wiz/RenderWizGL.h"

#include "Vellacore/Geometry/PolygonGeometry.h"
#include "Vellacore/Image/Image.h"
#include "Vellacore/Memory/Memory.h"
#include "Vellacore/Render/Material.h"
#include "Vellacore/Render/Shader.h"
#include "Vellacore/Render/Texture2D.h"
#include "Vellacore/Scene/Fog.h"
#include "Vellacore/Scene/Light.h"
#include "Vellacore/Scene/Transform.h"
#include "WizLog.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace Vellacore {

namespace {

using Handle = RenderPolygonHandleWizGL;

GLsizei const S_ScreenWidth = 240;
GLsizei const S_ScreenHeight = 320;
// What the driver takes as native window; the engine never looks inside.
std::size_t const S_WindowBlockSize = 16384;
// The framebuffer driver's rotation request, with two 32-bit words: the rotation and 0.
unsigned long const S_RotateRequest = 0x4008445A;

Vector4T<float> const S_White(1, 1, 1, 1);
Vector4T<float> const S_Grey(0.8f, 0.8f, 0.8f, 1);
Vector4T<float> const S_Black(0, 0, 0, 1);

// The Wiz's screen format: RGB 565 with a 16-bit depth buffer and no alpha.
EGLint const S_ConfigAttributes[] = { EGL_RED_SIZE, 5, EGL_GREEN_SIZE, 6, EGL_BLUE_SIZE, 5, EGL_ALPHA_SIZE, 0,
    EGL_DEPTH_SIZE, 16, EGL_MAX_PBUFFER_HEIGHT, 1024, EGL_MAX_PBUFFER_WIDTH, 1024, EGL_NONE };

struct GLStringLine {
    char const* m_Label;
    GLenum m_Name;
};

GLStringLine const S_GLStrings[] = {
    { "OpenGL Vendor:     ", GL_VENDOR },
    { "OpenGL Renderer:   ", GL_RENDERER },
    { "OpenGL Version:    ", GL_VERSION },
    { "OpenGL Extensions: ", GL_EXTENSIONS },
};

// By Fog::FogMode.
GLenum const S_FogModes[] = { GL_LINEAR, GL_EXP, GL_EXP2 };

// The engine's filter names are crossed with GL's: the mip filter picks the sampling within a
// level, the min filter how levels are chosen (FilterNone: no mip levels at all). By GetMinFilter.
GLint const S_MinFiltersNearest[] = { GL_NEAREST_MIPMAP_NEAREST, GL_NEAREST_MIPMAP_LINEAR, GL_NEAREST };
GLint const S_MinFiltersLinear[] = { GL_LINEAR_MIPMAP_NEAREST, GL_LINEAR_MIPMAP_LINEAR };

struct PrimitiveMode {
    GLenum m_Mode;
    int m_IndicesPerPrimitive;
};

// By PolygonGeometry::GetPrimiviteType.
PrimitiveMode const S_PrimitiveModes[] = { { GL_TRIANGLES, 3 }, { GL_LINES, 2 } };

struct TexCoordSet {
    int m_Set;
    U32 m_StaticBit;
    Handle::BufferIndex m_Buffer;
};

// Unit 1 first, as the arrays are switched on and off.
TexCoordSet const S_TexCoordSets[] = { { 1, Handle::StaticTexCoords1, Handle::TexCoord1Buffer },
    { 0, Handle::StaticTexCoords0, Handle::TexCoord0Buffer } };

// GL reads colours and matrices as plain arrays.
struct Floats4 {
    explicit Floats4(Vector4T<float> const& c) : v{ c.x, c.y, c.z, c.w } {}
    GLfloat v[4];
};

struct FixedMatrix {
    explicit FixedMatrix(Matrix4T<Fixed> const& matrix)
    {
        for (int i = 0; i < 16; ++i)
            v[i] = matrix.m[i].GetRaw();
    }
    GLfixed v[16];
};

template <std::size_t N>
GLint Lookup(GLint const (&table)[N], int index, GLint otherwise)
{
    return index >= 0 && static_cast<std::size_t>(index) < N ? table[index] : otherwise;
}

void SetCapability(GLenum capability, bool enabled)
{
    if (enabled)
        GL->glEnable(capability);
    else
        GL->glDisable(capability);
}

void SetMaterialColor(GLenum name, Vector4T<float> const& color)
{
    GL->glMaterialfv(GL_FRONT_AND_BACK, name, Floats4(color).v);
}

// Sends the material with its diffuse colour modulated by colorMul and returns the colour for
// glColor4f, which GL_COLOR_MATERIAL turns into ambient and diffuse. Without a material the
// surface is plain grey and colorMul has no effect.
Vector4T<float> ApplyMaterial(Material const* material, Vector4T<float> const& colorMul)
{
    if (!material) {
        SetMaterialColor(GL_AMBIENT, S_Grey);
        SetMaterialColor(GL_DIFFUSE, S_Grey);
        SetMaterialColor(GL_SPECULAR, S_Black);
        SetMaterialColor(GL_EMISSION, S_Black);
        GL->glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 0);
        return S_Grey;
    }
    Vector4T<float> const d = material->GetDiffuseColor();
    Vector4T<float> const diffuse(d.x * colorMul.x, d.y * colorMul.y, d.z * colorMul.z, d.w * colorMul.w);
    SetMaterialColor(GL_AMBIENT, material->GetAmbientColor());
    SetMaterialColor(GL_DIFFUSE, diffuse);
    SetMaterialColor(GL_SPECULAR, material->GetSpecularColor());
    SetMaterialColor(GL_EMISSION, material->GetEmissionColor());
    GL->glMaterialx(GL_FRONT_AND_BACK, GL_SHININESS, material->GetShininess().GetRaw());
    return diffuse;
}

// Values outside the modes leave blending, alpha test and depth writes as they are.
void ApplyBlendMode(Shader::BlendMode mode)
{
    switch (mode) {
    case Shader::BlendOpaque:
        GL->glDepthMask(GL_TRUE);
        GL->glDisable(GL_BLEND);
        GL->glDisable(GL_ALPHA_TEST);
        break;
    case Shader::BlendAlpha:
        GL->glDepthMask(GL_FALSE);
        GL->glEnable(GL_BLEND);
        GL->glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        GL->glDisable(GL_ALPHA_TEST);
        break;
    case Shader::BlendAlphaTest:
        GL->glDepthMask(GL_TRUE);
        GL->glDisable(GL_BLEND);
        GL->glEnable(GL_ALPHA_TEST);
        GL->glAlphaFunc(GL_GREATER, 0.5f);
        break;
    case Shader::BlendAdditive:
        GL->glBlendFunc(GL_ONE, GL_ONE);
        GL->glEnable(GL_BLEND);
        GL->glDisable(GL_ALPHA_TEST);
        GL->glDepthMask(GL_FALSE);
        break;
    case Shader::BlendNoDepthWrite:
        GL->glDepthMask(GL_FALSE);
        GL->glDisable(GL_BLEND);
        GL->glDisable(GL_ALPHA_TEST);
        break;
    }
}

// Where a light of this type sits in GL's terms (w = 0: a direction); false for a type GL
// cannot take.
bool LightPosition(Light::LightType type, Matrix4T<Fixed> const& placing, GLfixed (&position)[4])
{
    Vector4T<Fixed> column;
    switch (type) {
    case Light::Directional:
        column = placing.GetM2Vector4();
        column.w = Fixed(0);
        break;
    case Light::Point:
        column = placing.GetM3Vector4();
        column.w = Fixed::One;
        break;
    default:
        return false;
    }
    position[0] = column.x.GetRaw();
    position[1] = column.y.GetRaw();
    position[2] = column.z.GetRaw();
    position[3] = column.w.GetRaw();
    return true;
}

GLenum ImageFormat(Image::Format format)
{
    switch (format) {
    case Image::FormatRGBA:
        return GL_RGBA;
    case Image::FormatLuminanceAlpha:
        return GL_LUMINANCE_ALPHA;
    case Image::FormatLuminance:
        return GL_LUMINANCE;
    default:
        return GL_RGB;
    }
}

bool IsPowerOfTwo(int value)
{
    return (value & (value - 1)) == 0;
}

GLint MinFilter(Texture const& texture)
{
    return texture.GetMipFilter() == 0 ? Lookup(S_MinFiltersNearest, texture.GetMinFilter(), GL_LINEAR)
                                       : Lookup(S_MinFiltersLinear, texture.GetMinFilter(), GL_LINEAR);
}

// A handle of another renderer holds no name of ours.
GLuint TexID(Texture const& texture)
{
    TextureHandleWizGL const* handle = dynamic_cast<TextureHandleWizGL const*>(texture.GetTextureHandle());
    return handle ? handle->GetTexID() : 0;
}

// Filters are sent on every use, not only at upload.
void SetFilters(Texture const& texture)
{
    GL->glBindTexture(GL_TEXTURE_2D, TexID(texture));
    GL->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, MinFilter(texture));
    GL->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, texture.GetMagFilter() != 0 ? GL_LINEAR : GL_NEAREST);
    GL->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    GL->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
}

void LoadTextureMatrix(Texture const& texture)
{
    GL->glMatrixMode(GL_TEXTURE);
    if (Transform* transform = texture.GetTextureTransform()) {
        Matrix4T<Fixed> matrix;
        transform->GetLocalMatrix(matrix);
        GL->glLoadMatrixx(FixedMatrix(matrix).v);
    } else {
        GL->glLoadIdentity();
    }
    GL->glMatrixMode(GL_MODELVIEW);
}

char const* GLString(GLenum name)
{
    char const* text = reinterpret_cast<char const*>(GL->glGetString(name));
    return text ? text : "";
}

// Where one draw reads its arrays from: a buffer object for the static arrays that have one, client
// memory for the rest. GL_ARRAY_BUFFER is rebound only when the source changes, so that a client
// pointer is never taken as an offset into the buffer of the array before it; every draw starts
// and ends with nothing bound.
class ArraySources {
public:
    ArraySources(PolygonGeometry const& geometry, Handle const* handle)
        : m_Geometry(geometry), m_Handle(handle), m_Bound(0)
    {
    }

    GLuint Buffer(U32 staticBit, Handle::BufferIndex index) const
    {
        return m_Handle && m_Geometry.IsStatic(staticBit) ? m_Handle->GetBuffer(index) : 0;
    }

    void const* Array(U32 staticBit, Handle::BufferIndex index, void const* client)
    {
        GLuint const buffer = Buffer(staticBit, index);
        if (buffer != m_Bound) {
            GL->glBindBuffer(GL_ARRAY_BUFFER, buffer);
            m_Bound = buffer;
        }
        return buffer ? nullptr : client;
    }

private:
    PolygonGeometry const& m_Geometry;
    Handle const* m_Handle;
    GLuint m_Bound;
};

void EnableArrays(PolygonGeometry const& g, ArraySources& sources, GLint textureUnits)
{
    for (TexCoordSet const& set : S_TexCoordSets) {
        if (textureUnits <= set.m_Set)
            continue;
        GL->glClientActiveTexture(GL_TEXTURE0 + set.m_Set);
        if (g.GetNumTexCoords(set.m_Set) == 0) {
            GL->glDisableClientState(GL_TEXTURE_COORD_ARRAY);
            continue;
        }
        GL->glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        GL->glTexCoordPointer(2, GL_FLOAT, 8, sources.Array(set.m_StaticBit, set.m_Buffer, g.GetTexCoordPointer(set.m_Set)));
    }
    if (g.GetNumColors() > 0) {
        GL->glEnableClientState(GL_COLOR_ARRAY);
        GL->glColorPointer(4, GL_FLOAT, 0, sources.Array(Handle::StaticColors, Handle::ColorBuffer, g.GetColorPointer()));
    }
    if (g.GetNumNormals() > 0) {
        GL->glEnableClientState(GL_NORMAL_ARRAY);
        GL->glNormalPointer(GL_FLOAT, 0, sources.Array(Handle::StaticNormals, Handle::NormalBuffer, g.GetNormalPointer()));
    }
    GL->glEnableClientState(GL_VERTEX_ARRAY);
    GL->glVertexPointer(3, GL_FLOAT, 0, sources.Array(Handle::StaticVertices, Handle::VertexBuffer, g.GetVertexPointer()));
}

// Primitive types other than triangles and lines draw nothing.
void DrawElements(PolygonGeometry const& g, ArraySources const& sources)
{
    int const type = g.GetPrimiviteType();
    if (type < 0 || type >= static_cast<int>(sizeof(S_PrimitiveModes) / sizeof(S_PrimitiveModes[0])))
        return;
    PrimitiveMode const& mode = S_PrimitiveModes[type];
    GLuint const buffer = sources.Buffer(Handle::StaticIndices, Handle::IndexBuffer);
    if (buffer != 0)
        GL->glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, buffer);
    GL->glDrawElements(mode.m_Mode, g.GetNumPrimitives() * mode.m_IndicesPerPrimitive, GL_UNSIGNED_SHORT,
        buffer ? nullptr : g.GetIndexPointer());
}

void DisableArrays(PolygonGeometry const& g, GLint textureUnits)
{
    GL->glDisableClientState(GL_VERTEX_ARRAY);
    if (g.GetNumColors() > 0)
        GL->glDisableClientState(GL_COLOR_ARRAY);
    if (g.GetNumNormals() > 0)
        GL->glDisableClientState(GL_NORMAL_ARRAY);
    for (TexCoordSet const& set : S_TexCoordSets) {
        if (textureUnits > set.m_Set) {
            GL->glClientActiveTexture(GL_TEXTURE0 + set.m_Set);
            GL->glDisableClientState(GL_TEXTURE_COORD_ARRAY);
        }
    }
    GL->glBindBuffer(GL_ARRAY_BUFFER, 0);
    GL->glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
}

} // namespace

Render* Render::Create()
{
    return RenderWizGL::Create();
}

RenderWizGL* RenderWizGL::Create()
{
    return new (TypeInfoT<RenderWizGL>::S_TypeInfo_1) RenderWizGL();
}

RenderWizGL::RenderWizGL()
    : m_Window(nullptr), m_MaxTextureUnits(0), m_MaxLights(0), m_MaxTextureSize(0), m_Display(EGL_NO_DISPLAY),
      m_Config(nullptr), m_Context(EGL_NO_CONTEXT), m_WindowSurface(EGL_NO_SURFACE), m_CurrentShader(nullptr),
      m_CurrentColor(-1, -1, -1, -1), m_CurrentFog(nullptr), m_ViewMatrix(Matrix4T<Fixed>::Identity),
      m_ProjectionMatrix(Matrix4T<Fixed>::Identity), m_ModelMatrix(Matrix4T<Fixed>::Identity),
      m_ScreenRotation(Matrix4T<Fixed>::Identity)
{
}

RenderWizGL::~RenderWizGL() = default;

bool RenderWizGL::Init()
{
    WizLog("[D] ", "RenderWizGL::Init");
    if (!GLAPI_Init()) {
        WizLog("[E] ", "GLAPI_Init failed.");
        return false;
    }
    m_Window = std::malloc(S_WindowBlockSize);
    if (!m_Window) {
        WizLog("[E] ", "OS_CreateWindow failed.");
        return false;
    }
    bool const created = CreateEGL();
    // Published after a failure too, so that Exit tears down what was made before it.
    GLAPI_SetEGLObjects(m_Display, m_WindowSurface, m_Context);
    if (!created)
        return false;
    QueryGL();
    GL->glCullFace(GL_BACK);
    GL->glEnable(GL_DEPTH_TEST);
    GL->glDepthFunc(GL_LEQUAL);
    // Scaled transforms would otherwise scale the normals and the lighting with them.
    GL->glEnable(GL_NORMALIZE);
    GL->glEnable(GL_COLOR_MATERIAL);
    GL->glColor4f(1, 1, 1, 1);
    m_ScreenRotation.MakeRotationZ(Fixed(90));
    return true;
}

bool RenderWizGL::CreateEGL()
{
    m_Display = GL->eglGetDisplay(EGL_DEFAULT_DISPLAY);
    if (m_Display == EGL_NO_DISPLAY) {
        WizLog("[E] ", "eglGetDisplay returned NO_DISPLAY.");
        return false;
    }
    GL->eglInitialize(m_Display, nullptr, nullptr);
    EGLint count = 0;
    if (!GL->eglChooseConfig(m_Display, S_ConfigAttributes, &m_Config, 1, &count)) {
        WizLog("[E] ", "eglChooseConfig failed.");
        return false;
    }
    m_Context = GL->eglCreateContext(m_Display, m_Config, EGL_NO_CONTEXT, nullptr);
    if (m_Context == EGL_NO_CONTEXT) {
        WizLog("[E] ", "eglCreateContext failed.");
        return false;
    }
    m_WindowSurface = GL->eglCreateWindowSurface(m_Display, m_Config, reinterpret_cast<EGLNativeWindowType>(m_Window), nullptr);
    // No line of its own: the caller reports the failed Init.
    if (m_WindowSurface == EGL_NO_SURFACE)
        return false;
    GL->eglMakeCurrent(m_Display, m_WindowSurface, m_WindowSurface, m_Context);
    return true;
}

void RenderWizGL::QueryGL()
{
    for (GLStringLine const& line : S_GLStrings)
        WizLog("[I] ", line.m_Label, GLString(line.m_Name));
    GL->glGetIntegerv(GL_MAX_TEXTURE_UNITS, &m_MaxTextureUnits);
    GL->glGetIntegerv(GL_MAX_TEXTURE_SIZE, &m_MaxTextureSize);
    GL->glGetIntegerv(GL_MAX_LIGHTS, &m_MaxLights);
    WizLog("[I] ", "MaxTextureUnits=", m_MaxTextureUnits);
    WizLog("[I] ", "MaxLights=", m_MaxLights);
    WizLog("[I] ", "MaxTextureSize=", m_MaxTextureSize);
}

void RenderWizGL::Exit()
{
    WizLog("[D] ", "RenderWizGL::Exit");
    if (!GL)
        return;
    for (Ptr<TextureHandleWizGL> const& handle : m_TextureHandles) {
        handle->ClearRenderer();
        handle->Unload();
    }
    m_TextureHandles.clear();
    for (Ptr<RenderPolygonHandleWizGL> const& handle : m_PolygonHandles)
        handle->Unload();
    m_PolygonHandles.clear();
    ShutdownGL();
    std::free(m_Window);
    m_Window = nullptr;
    ForgetState();
}

// Back to the state of a new renderer, so that a later Init starts from a fresh context.
void RenderWizGL::ForgetState()
{
    m_Display = EGL_NO_DISPLAY;
    m_Config = nullptr;
    m_Context = EGL_NO_CONTEXT;
    m_WindowSurface = EGL_NO_SURFACE;
    m_CurrentShader = nullptr;
    m_CurrentColor = Vector4T<float>(-1, -1, -1, -1);
    m_CurrentFog = nullptr;
}

bool RenderWizGL::IsRenderable() const
{
    return m_Display != EGL_NO_DISPLAY && m_Context != EGL_NO_CONTEXT && m_WindowSurface != EGL_NO_SURFACE;
}

Fixed RenderWizGL::GetAspect() const
{
    return Fixed(0.75f);
}

void RenderWizGL::SetColorClearValue(Vector4T<float> const& color)
{
    GL->glClearColor(color.x, color.y, color.z, color.w);
}

void RenderWizGL::SetDepthClearValue(Fixed depth)
{
    GL->glClearDepthx(depth.GetRaw() / 65536);
}

void RenderWizGL::Clear(int buffers)
{
    GL->glDepthMask(GL_TRUE);
    GLbitfield mask = 0;
    if (buffers & ClearColor)
        mask |= GL_COLOR_BUFFER_BIT;
    if (buffers & ClearDepth)
        mask |= GL_DEPTH_BUFFER_BIT;
    if (buffers & ClearStencil)
        WizLog("[E] ", "RenderWizGL::Clear: StencilBuffer not supported by WIZ.");
    if (mask != 0)
        GL->glClear(mask);
}

void RenderWizGL::SetViewMatrix(Matrix4T<Fixed> const& view)
{
    m_ViewMatrix = view;
    GL->glLoadMatrixx(FixedMatrix(view).v);
}

void RenderWizGL::SetProjectionMatrix(Matrix4T<Fixed> const& projection)
{
    m_ProjectionMatrix = m_ScreenRotation * projection;
    GL->glMatrixMode(GL_PROJECTION);
    GL->glLoadMatrixx(FixedMatrix(m_ProjectionMatrix).v);
    GL->glMatrixMode(GL_MODELVIEW);
}

void RenderWizGL::SetAmbientLight(Vector3T<float> const& color)
{
    GL->glLightModelfv(GL_LIGHT_MODEL_AMBIENT, Floats4(Vector4T<float>(color.x, color.y, color.z, 1)).v);
}

void RenderWizGL::SetLights(short count)
{
    int used = std::max(0, static_cast<int>(count));
    if (used > m_MaxLights) {
        WizLog("[W] ", "RenderWizGL::SetLights: lights exceed max lights.");
        used = m_MaxLights;
    }
    for (int i = 0; i < used; ++i)
        GL->glEnable(GL_LIGHT0 + i);
    for (int i = used; i < m_MaxLights; ++i)
        GL->glDisable(GL_LIGHT0 + i);
}

void RenderWizGL::SetLight(short slot, Light* light, Matrix4T<Fixed> const& placing)
{
    if (slot >= m_MaxLights) {
        WizLog("[E] ", "RenderWizGL::SetLight: light exceeds limits.");
        return;
    }
    GLfixed position[4];
    if (!LightPosition(light->GetType(), placing, position)) {
        WizLog("[E] ", "LightType #", static_cast<int>(light->GetType()), " unhandled");
        return;
    }
    GLenum const id = GL_LIGHT0 + slot;
    Vector3T<float> const color = light->GetColor();
    GL->glLightxv(id, GL_POSITION, position);
    GL->glLightfv(id, GL_DIFFUSE, Floats4(Vector4T<float>(color.x, color.y, color.z, 1)).v);
    GL->glLightfv(id, GL_AMBIENT, Floats4(S_Black).v);
    GL->glLightfv(id, GL_SPECULAR, Floats4(S_Black).v);
}

void RenderWizGL::SetFog(Fog* fog)
{
    if (fog == m_CurrentFog)
        return;
    m_CurrentFog = fog;
    if (!fog) {
        GL->glDisable(GL_FOG);
        return;
    }
    if (fog->m_Mode >= 0 && fog->m_Mode < static_cast<int>(sizeof(S_FogModes) / sizeof(S_FogModes[0])))
        GL->glFogf(GL_FOG_MODE, static_cast<GLfloat>(S_FogModes[fog->m_Mode]));
    GL->glFogfv(GL_FOG_COLOR, Floats4(fog->m_Color).v);
    GL->glFogf(GL_FOG_DENSITY, fog->m_Density.ToFloat());
    GL->glFogf(GL_FOG_START, fog->m_Start.ToFloat());
    GL->glFogf(GL_FOG_END, fog->m_End.ToFloat());
    GL->glEnable(GL_FOG);
}

void RenderWizGL::SetShader(Shader* shader, Vector4T<float> const& colorMul)
{
    if (shader == m_CurrentShader && colorMul == m_CurrentColor)
        return;
    m_CurrentShader = shader;
    m_CurrentColor = colorMul;
    if (!shader) {
        WizLog("[W] ", "RenderWizGL::SetShader: NULL-Shader results in undefined draw behaviour.");
        GL->glColor4f(S_White.x, S_White.y, S_White.z, S_White.w);
        return;
    }
    Vector4T<float> const color = ApplyMaterial(shader->GetMaterial(), colorMul);
    for (int unit = m_MaxTextureUnits - 1; unit >= 0; --unit)
        SetTexture(unit, shader->GetTexture(unit));
    SetCapability(GL_LIGHTING, shader->GetLightingEnabled());
    SetCapability(GL_CULL_FACE, shader->GetCullingEnabled());
    ApplyBlendMode(shader->GetBlendMode());
    GL->glColor4f(color.x, color.y, color.z, color.w);
}

void RenderWizGL::SetTexture(int unit, Texture* texture)
{
    if (unit >= m_MaxTextureUnits) {
        WizLog("[E] ", "SetTexture", " Pass #", unit, " exceeding GL_MAX_TEXTURE_UNITS");
        return;
    }
    GL->glActiveTexture(GL_TEXTURE0 + unit);
    Texture2D* texture2D = texture ? texture->Cast<Texture2D>() : nullptr;
    Image* image = texture2D ? texture2D->GetImage() : nullptr;
    if (!image) {
        GL->glDisable(GL_TEXTURE_2D);
        GL->glBindTexture(GL_TEXTURE_2D, 0);
        return;
    }
    GL->glEnable(GL_TEXTURE_2D);
    if (FitsTextureLimits(*image)) {
        if (!texture->GetTextureHandle())
            UploadImage(texture, *image);
        SetFilters(*texture);
    }
    LoadTextureMatrix(*texture);
}

bool RenderWizGL::FitsTextureLimits(Image const& image) const
{
    int const width = image.GetWidth();
    int const height = image.GetHeight();
    if (!IsPowerOfTwo(width) || !IsPowerOfTwo(height)) {
        WizLog("[E] ", "SetTexture", " Texture dimensions not power of 2.");
        return false;
    }
    if (width > m_MaxTextureSize || height > m_MaxTextureSize) {
        WizLog("[E] ", "SetTexture", " Texture size exceeding limits.");
        return false;
    }
    return true;
}

void RenderWizGL::UploadImage(Texture* texture, Image const& image)
{
    WizLog("[D] ", "Generating Texture.");
    Ptr<TextureHandleWizGL> handle = TextureHandleWizGL::Create(this);
    handle->GenTexture();
    m_TextureHandles.push_back(handle);
    GL->glBindTexture(GL_TEXTURE_2D, handle->GetTexID());
    GLenum const format = ImageFormat(image.GetFormat());
    // Rows are packed without padding (Image).
    GL->glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    GL->glPixelStorei(GL_PACK_ALIGNMENT, 1);
    GL->glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, 1);
    GL->glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(format), image.GetWidth(), image.GetHeight(), 0, format,
        GL_UNSIGNED_BYTE, image.GetDataPtr());
    texture->SetTextureHandle(handle);
    WizLog("[D] ", "Texture: Format=", Hex{ format }, " W=", static_cast<int>(image.GetWidth()), " H=",
        static_cast<int>(image.GetHeight()));
}

void RenderWizGL::SetTarget(RenderTarget*)
{
    m_CurrentTarget = nullptr;
    GL->eglMakeCurrent(m_Display, m_WindowSurface, m_WindowSurface, m_Context);
    GL->glViewport(0, 0, S_ScreenWidth, S_ScreenHeight);
}

void RenderWizGL::Draw(Drawable* drawable, Matrix4T<Fixed> const& placing)
{
    GL->glPushMatrix();
    GL->glMultMatrixx(FixedMatrix(placing).v);
    m_ModelMatrix = placing;
    Draw(drawable);
    GL->glPopMatrix();
}

void RenderWizGL::Draw(Drawable* drawable)
{
    if (!drawable)
        return;
    drawable->UpdateDrawable();
    if (PolygonGeometry* geometry = drawable->Cast<PolygonGeometry>())
        DrawPolygonGeometry(geometry);
}

void RenderWizGL::DrawPolygonGeometry(PolygonGeometry* geometry)
{
    if (geometry->GetNumPrimitives() < 1)
        return;
    if (!geometry->GetRenderPolygonHandle()) {
        Ptr<RenderPolygonHandleWizGL> handle = RenderPolygonHandleWizGL::Create(this);
        handle->CreateBufferData(geometry);
        geometry->SetRenderPolygonHandle(handle);
        m_PolygonHandles.push_back(handle);
    }
    ArraySources sources(*geometry, dynamic_cast<Handle const*>(geometry->GetRenderPolygonHandle()));
    EnableArrays(*geometry, sources, m_MaxTextureUnits);
    DrawElements(*geometry, sources);
    DisableArrays(*geometry, m_MaxTextureUnits);
}

void RenderWizGL::SwapBuffers()
{
    GL->glFlush();
    GL->eglWaitGL();
    GL->eglSwapBuffers(m_Display, m_WindowSurface);
    GLenum const glError = GL->glGetError();
    if (glError != GL_NO_ERROR)
        WizLog("[E] ", "RenderWizGL: GL ERROR = ", Hex{ glError });
    EGLint const eglError = GL->eglGetError();
    if (eglError != EGL_SUCCESS)
        WizLog("[E] ", "RenderWizGL: EGL ERROR = ", Hex{ static_cast<unsigned int>(eglError) });
}

void SetScreenRotation(int rotation)
{
    WizLog("[D] ", "SetScreenRotation: ", rotation);
    int const device = open("/dev/fb0", O_RDWR);
    if (device < 0)
        return;
    U32 words[2] = { static_cast<U32>(rotation), 0 };
    ioctl(device, S_RotateRequest, words);
    close(device);
}

Vector3T<float> VertexTransform(Vector3T<float> const& v, Matrix4T<Fixed> const& m)
{
    Vector3T<Fixed> const p = Matrix4T<Fixed>::Transform(Vector3T<Fixed>(Fixed(v.x), Fixed(v.y), Fixed(v.z)), m);
    return Vector3T<float>(p.x.ToFloat(), p.y.ToFloat(), p.z.ToFloat());
}

} // namespace Vellacore
