// Recording stand-in for the handheld's GL ES 1.1 / EGL driver. It draws nothing: every entry point
// the engine binds appends its call to a trace, and queries answer with what the test chose, so the
// renderer's call sequences can be checked line by line on a machine without the driver.

// The build hides everything by default; the entry points must stay visible under their C names.
#define GL_API __attribute__((visibility("default")))
#define EGLAPI __attribute__((visibility("default")))
#include <EGL/egl.h>
#include <GLES/gl.h>

#include "RecordingGL.h"

#include <cstdint>
#include <cstdio>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

// ---- Formatting -------------------------------------------------------------------------------

// Small values mean different things to different parameters (1 is GL_TRUE, GL_ONE and GL_LINES),
// so they are named only for the parameters that take them. From 0x100 up the enums the engine
// uses are unique, and those are named wherever an enum is expected.
enum class Group { Any, Boolean, Factor, Primitive };

struct EnumName {
    unsigned value;
    Group group;
    char const* name;
};

#define NAME(e) EnumName{e, Group::Any, #e}
#define NAME_IN(group, e) EnumName{e, Group::group, #e}
constexpr EnumName S_EnumNames[] = {
    NAME_IN(Boolean, GL_FALSE), NAME_IN(Boolean, GL_TRUE), NAME_IN(Factor, GL_ZERO), NAME_IN(Factor, GL_ONE),
    NAME_IN(Primitive, GL_POINTS), NAME_IN(Primitive, GL_LINES), NAME_IN(Primitive, GL_LINE_LOOP),
    NAME_IN(Primitive, GL_LINE_STRIP), NAME_IN(Primitive, GL_TRIANGLES), NAME_IN(Primitive, GL_TRIANGLE_STRIP),
    NAME_IN(Primitive, GL_TRIANGLE_FAN),
    // Capabilities.
    NAME(GL_LIGHTING), NAME(GL_LIGHT0), NAME(GL_LIGHT1), NAME(GL_LIGHT2), NAME(GL_LIGHT3), NAME(GL_LIGHT4),
    NAME(GL_LIGHT5), NAME(GL_LIGHT6), NAME(GL_LIGHT7), NAME(GL_DEPTH_TEST), NAME(GL_NORMALIZE),
    NAME(GL_RESCALE_NORMAL), NAME(GL_COLOR_MATERIAL), NAME(GL_CULL_FACE), NAME(GL_BLEND), NAME(GL_ALPHA_TEST),
    NAME(GL_FOG), NAME(GL_TEXTURE_2D), NAME(GL_DITHER),
    // Matrix modes, faces, comparison functions, blend factors.
    NAME(GL_MODELVIEW), NAME(GL_PROJECTION), NAME(GL_TEXTURE), NAME(GL_FRONT), NAME(GL_BACK),
    NAME(GL_FRONT_AND_BACK), NAME(GL_NEVER), NAME(GL_LESS), NAME(GL_EQUAL), NAME(GL_LEQUAL), NAME(GL_GREATER),
    NAME(GL_NOTEQUAL), NAME(GL_GEQUAL), NAME(GL_ALWAYS), NAME(GL_SRC_COLOR), NAME(GL_ONE_MINUS_SRC_COLOR),
    NAME(GL_SRC_ALPHA), NAME(GL_ONE_MINUS_SRC_ALPHA), NAME(GL_DST_ALPHA), NAME(GL_ONE_MINUS_DST_ALPHA),
    NAME(GL_DST_COLOR), NAME(GL_ONE_MINUS_DST_COLOR), NAME(GL_SRC_ALPHA_SATURATE),
    // Light, material, light model and fog parameters.
    NAME(GL_AMBIENT), NAME(GL_DIFFUSE), NAME(GL_SPECULAR), NAME(GL_POSITION), NAME(GL_SPOT_DIRECTION),
    NAME(GL_SPOT_EXPONENT), NAME(GL_SPOT_CUTOFF), NAME(GL_CONSTANT_ATTENUATION), NAME(GL_LINEAR_ATTENUATION),
    NAME(GL_QUADRATIC_ATTENUATION), NAME(GL_EMISSION), NAME(GL_SHININESS), NAME(GL_AMBIENT_AND_DIFFUSE),
    NAME(GL_LIGHT_MODEL_AMBIENT), NAME(GL_LIGHT_MODEL_TWO_SIDE), NAME(GL_FOG_MODE), NAME(GL_FOG_DENSITY),
    NAME(GL_FOG_START), NAME(GL_FOG_END), NAME(GL_FOG_COLOR), NAME(GL_EXP), NAME(GL_EXP2),
    // Textures: parameters, their values, environment, units, pixel storage.
    NAME(GL_TEXTURE_MIN_FILTER), NAME(GL_TEXTURE_MAG_FILTER), NAME(GL_TEXTURE_WRAP_S), NAME(GL_TEXTURE_WRAP_T),
    NAME(GL_GENERATE_MIPMAP), NAME(GL_NEAREST), NAME(GL_LINEAR), NAME(GL_NEAREST_MIPMAP_NEAREST),
    NAME(GL_LINEAR_MIPMAP_NEAREST), NAME(GL_NEAREST_MIPMAP_LINEAR), NAME(GL_LINEAR_MIPMAP_LINEAR),
    NAME(GL_REPEAT), NAME(GL_CLAMP_TO_EDGE), NAME(GL_TEXTURE_ENV), NAME(GL_TEXTURE_ENV_MODE), NAME(GL_MODULATE),
    NAME(GL_REPLACE), NAME(GL_DECAL), NAME(GL_ADD), NAME(GL_TEXTURE0), NAME(GL_TEXTURE1),
    NAME(GL_UNPACK_ALIGNMENT), NAME(GL_PACK_ALIGNMENT),
    // Pixel formats and data types.
    NAME(GL_ALPHA), NAME(GL_RGB), NAME(GL_RGBA), NAME(GL_LUMINANCE), NAME(GL_LUMINANCE_ALPHA), NAME(GL_BYTE),
    NAME(GL_UNSIGNED_BYTE), NAME(GL_SHORT), NAME(GL_UNSIGNED_SHORT), NAME(GL_FLOAT), NAME(GL_FIXED),
    // Client arrays and buffer objects.
    NAME(GL_VERTEX_ARRAY), NAME(GL_NORMAL_ARRAY), NAME(GL_COLOR_ARRAY), NAME(GL_TEXTURE_COORD_ARRAY),
    NAME(GL_ARRAY_BUFFER), NAME(GL_ELEMENT_ARRAY_BUFFER), NAME(GL_STATIC_DRAW), NAME(GL_DYNAMIC_DRAW),
    // Queries.
    NAME(GL_VENDOR), NAME(GL_RENDERER), NAME(GL_VERSION), NAME(GL_EXTENSIONS), NAME(GL_MAX_LIGHTS),
    NAME(GL_MAX_TEXTURE_UNITS), NAME(GL_MAX_TEXTURE_SIZE),
    // EGL config and surface attributes.
    NAME(EGL_BUFFER_SIZE), NAME(EGL_ALPHA_SIZE), NAME(EGL_BLUE_SIZE), NAME(EGL_GREEN_SIZE), NAME(EGL_RED_SIZE),
    NAME(EGL_DEPTH_SIZE), NAME(EGL_STENCIL_SIZE), NAME(EGL_MAX_PBUFFER_HEIGHT), NAME(EGL_MAX_PBUFFER_PIXELS),
    NAME(EGL_MAX_PBUFFER_WIDTH), NAME(EGL_NATIVE_RENDERABLE), NAME(EGL_NATIVE_VISUAL_ID),
    NAME(EGL_NATIVE_VISUAL_TYPE), NAME(EGL_SAMPLES), NAME(EGL_SAMPLE_BUFFERS), NAME(EGL_SURFACE_TYPE),
    NAME(EGL_NONE), NAME(EGL_BIND_TO_TEXTURE_RGB), NAME(EGL_BIND_TO_TEXTURE_RGBA), NAME(EGL_MIN_SWAP_INTERVAL),
    NAME(EGL_MAX_SWAP_INTERVAL), NAME(EGL_RENDERABLE_TYPE), NAME(EGL_HEIGHT), NAME(EGL_WIDTH),
};
// In the order glClear masks are spelled: colour, depth, stencil.
constexpr EnumName S_ClearBits[] = {NAME(GL_COLOR_BUFFER_BIT), NAME(GL_DEPTH_BUFFER_BIT), NAME(GL_STENCIL_BUFFER_BIT)};
#undef NAME
#undef NAME_IN

// A lookup answers with at most one name: no value twice in a group, nor in a group and in Any.
constexpr bool Unambiguous()
{
    for (EnumName const& a : S_EnumNames)
        for (EnumName const& b : S_EnumNames)
            if (&a != &b && a.value == b.value
                && (a.group == b.group || a.group == Group::Any || b.group == Group::Any))
                return false;
    return true;
}
static_assert(Unambiguous(), "an enum value is named twice for the same parameters");

char const* Lookup(unsigned value, Group group)
{
    for (EnumName const& e : S_EnumNames)
        if (e.value == value && (e.group == group || e.group == Group::Any))
            return e.name;
    return nullptr;
}

// One argument, already formatted.
struct Text {
    std::string text;
};

std::string Hex(unsigned value)
{
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "0x%x", value);
    return buffer;
}

std::string Arg(Text const& t) { return t.text; }
std::string Arg(int value) { return std::to_string(value); }
std::string Arg(unsigned value) { return std::to_string(value); }
std::string Arg(long value) { return std::to_string(value); }
std::string Arg(GLboolean flag)
{
    char const* name = Lookup(flag, Group::Boolean);
    return name ? name : std::to_string(flag);
}
std::string Arg(float value)
{
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%g", double(value));
    return buffer;
}
std::string Arg(char const* text) { return text ? text : "null"; }
// The recorder cannot tell client memory from an offset into a bound buffer; offsets are small.
std::string Arg(void const* pointer)
{
    std::uintptr_t value = reinterpret_cast<std::uintptr_t>(pointer);
    return !pointer ? "null" : value < 4096 ? std::to_string(value) : "ptr";
}

Text Enum(unsigned value, Group group = Group::Any)
{
    char const* name = Lookup(value, group);
    return {name ? name : Hex(value)};
}

// An integer or float parameter that carries an enum for some parameter names only.
template <class T>
Text EnumOr(T value)
{
    char const* name = value >= T(0) && value <= T(0xFFFF) ? Lookup(unsigned(value), Group::Any) : nullptr;
    return {name ? name : Arg(value)};
}

template <class T>
Text FogParam(GLenum pname, T value)
{
    return pname == GL_FOG_MODE ? EnumOr(value) : Text{Arg(value)};
}

Text Bits(GLbitfield mask)
{
    std::string text;
    for (EnumName const& e : S_ClearBits)
        if (mask & e.value) {
            text += (text.empty() ? "" : "|") + std::string(e.name);
            mask &= ~e.value;
        }
    if (mask || text.empty())
        text += (text.empty() ? "" : "|") + Hex(mask);
    return {text};
}

template <class T>
Text List(T const* values, int count)
{
    if (!values)
        return {"null"};
    std::string text;
    for (int i = 0; i < count; ++i)
        text += (i ? "," : "") + Arg(values[i]);
    return {"{" + text + "}"};
}

// Values read through a parameter array, by the parameter it sets.
int ValuesOf(GLenum pname)
{
    switch (pname) {
    case GL_POSITION: case GL_AMBIENT: case GL_DIFFUSE: case GL_SPECULAR: case GL_EMISSION:
    case GL_AMBIENT_AND_DIFFUSE: case GL_LIGHT_MODEL_AMBIENT: case GL_FOG_COLOR:
        return 4;
    case GL_SPOT_DIRECTION:
        return 3;
    default:
        return 1;
    }
}

Text Attribs(EGLint const* list)
{
    if (!list)
        return {"null"};
    std::string text = "{";
    for (; *list != EGL_NONE; list += 2)
        text += Enum(list[0]).text + "," + std::to_string(list[1]) + ",";
    return {text + "EGL_NONE}"};
}

Text Handle(void const* handle, char const* kind) { return {handle ? kind : "null"}; }
Text Dpy(EGLDisplay display) { return Handle(display, "dpy"); }
Text Cfg(EGLConfig config) { return Handle(config, "cfg"); }
Text Ctx(EGLContext context) { return Handle(context, "ctx"); }
Text Surf(EGLSurface surface) { return Handle(surface, "surf"); }

// ---- Trace and answers ------------------------------------------------------------------------

struct Recorder {
    std::vector<std::string> lines;
    std::map<unsigned, int> integers{{GL_MAX_LIGHTS, 8}, {GL_MAX_TEXTURE_UNITS, 2}, {GL_MAX_TEXTURE_SIZE, 1024}};
    std::set<std::string, std::less<>> failing;
    GLenum glError = GL_NO_ERROR;
    EGLint eglError = EGL_SUCCESS;
    GLuint nextTexture = 1;
    GLuint nextBuffer = 1;
};
Recorder S_Recorder;

// Distinct non-null handles; only their addresses matter.
int S_Display, S_Config, S_Context, S_WindowSurface, S_PbufferSurface;

// Appends "name(arg, arg, ...)" and returns the line, so an answer can be added to it.
template <class... A>
std::string& Record(char const* name, A const&... args)
{
    std::string list;
    ((list += ", " + Arg(args)), ...);
    S_Recorder.lines.push_back(name + ("(" + list.substr(list.empty() ? 0 : 2)) + ")");
    return S_Recorder.lines.back();
}

bool Failing(char const* name) { return S_Recorder.failing.count(name) != 0; }

template <class... A>
EGLBoolean Succeed(char const* name, A const&... args)
{
    Record(name, args...);
    return Failing(name) ? EGL_FALSE : EGL_TRUE;
}

template <class... A>
void* Make(void* handle, char const* name, A const&... args)
{
    Record(name, args...);
    return Failing(name) ? nullptr : handle;
}

template <class T>
EGLBoolean Write(T* out, T value, EGLBoolean result)
{
    if (result && out)
        *out = value;
    return result;
}

// Every query finds the one config there is.
EGLBoolean Configs(EGLConfig* configs, EGLint size, EGLint* count, EGLBoolean result)
{
    if (configs && size > 0)
        Write(configs, static_cast<EGLConfig>(&S_Config), result);
    return Write(count, 1, result);
}

template <class T>
T TakeError(T& pending, T none, char const* name)
{
    T error = pending;
    pending = none;
    Record(name) += "->" + Hex(unsigned(error));
    return error;
}

void Generate(char const* name, GLsizei n, GLuint* names, GLuint& next)
{
    std::string& line = Record(name, n) += "->";
    for (GLsizei i = 0; i < n; ++i) {
        GLuint generated = Failing(name) ? 0 : next++;
        if (names)
            names[i] = generated;
        line += (i ? "," : "") + std::to_string(generated);
    }
}

char const* StringOf(GLenum name)
{
    switch (name) {
    case GL_VENDOR: return "Recording";
    case GL_RENDERER: return "Recording GL";
    case GL_VERSION: return "OpenGL ES-CM 1.1 Recording";
    case GL_EXTENSIONS: return "";
    default: return nullptr;
    }
}

int IntegerOf(GLenum pname)
{
    auto found = S_Recorder.integers.find(pname);
    return found == S_Recorder.integers.end() ? 0 : found->second;
}

} // namespace

extern "C" {

// ---- Control interface ------------------------------------------------------------------------

void RecordingGL_Reset() { S_Recorder = Recorder(); }
int RecordingGL_GetCount() { return int(S_Recorder.lines.size()); }
char const* RecordingGL_GetLine(int index)
{
    return index >= 0 && unsigned(index) < S_Recorder.lines.size() ? S_Recorder.lines[index].c_str() : nullptr;
}
void RecordingGL_SetInteger(unsigned pname, int value) { S_Recorder.integers[pname] = value; }
void RecordingGL_FailCall(char const* name)
{
    if (name)
        S_Recorder.failing.insert(name);
}
void RecordingGL_SetError(unsigned glError, int eglError)
{
    S_Recorder.glError = glError;
    S_Recorder.eglError = eglError;
}

// ---- EGL --------------------------------------------------------------------------------------

EGLint eglGetError() { return TakeError(S_Recorder.eglError, EGLint(EGL_SUCCESS), __func__); }
EGLBoolean eglGetConfigs(EGLDisplay dpy, EGLConfig* configs, EGLint config_size, EGLint* num_config)
{
    return Configs(configs, config_size, num_config, Succeed(__func__, Dpy(dpy), configs, config_size, num_config));
}
EGLBoolean eglChooseConfig(EGLDisplay dpy, EGLint const* attrib_list, EGLConfig* configs, EGLint config_size,
                           EGLint* num_config)
{
    return Configs(configs, config_size, num_config,
                   Succeed(__func__, Dpy(dpy), Attribs(attrib_list), configs, config_size, num_config));
}
EGLSurface eglCreatePbufferSurface(EGLDisplay dpy, EGLConfig config, EGLint const* attrib_list)
{
    return Make(&S_PbufferSurface, __func__, Dpy(dpy), Cfg(config), Attribs(attrib_list));
}
EGLBoolean eglDestroySurface(EGLDisplay dpy, EGLSurface surface) { return Succeed(__func__, Dpy(dpy), Surf(surface)); }
__eglMustCastToProperFunctionPointerType eglGetProcAddress(char const* procname)
{
    Record(__func__, procname);
    return nullptr;
}
EGLDisplay eglGetDisplay(EGLNativeDisplayType display_id)
{
    return Make(&S_Display, __func__, Text{std::to_string(reinterpret_cast<std::uintptr_t>(display_id))});
}
EGLBoolean eglInitialize(EGLDisplay dpy, EGLint* major, EGLint* minor)
{
    return Write(minor, 1, Write(major, 1, Succeed(__func__, Dpy(dpy), major, minor)));
}
EGLBoolean eglTerminate(EGLDisplay dpy) { return Succeed(__func__, Dpy(dpy)); }
EGLContext eglCreateContext(EGLDisplay dpy, EGLConfig config, EGLContext share_context, EGLint const* attrib_list)
{
    return Make(&S_Context, __func__, Dpy(dpy), Cfg(config), Ctx(share_context), Attribs(attrib_list));
}
EGLSurface eglCreateWindowSurface(EGLDisplay dpy, EGLConfig config, EGLNativeWindowType win,
                                  EGLint const* attrib_list)
{
    return Make(&S_WindowSurface, __func__, Dpy(dpy), Cfg(config), reinterpret_cast<void const*>(win),
                Attribs(attrib_list));
}
EGLBoolean eglMakeCurrent(EGLDisplay dpy, EGLSurface draw, EGLSurface read, EGLContext ctx)
{
    return Succeed(__func__, Dpy(dpy), Surf(draw), Surf(read), Ctx(ctx));
}
EGLBoolean eglDestroyContext(EGLDisplay dpy, EGLContext ctx) { return Succeed(__func__, Dpy(dpy), Ctx(ctx)); }
EGLBoolean eglSwapBuffers(EGLDisplay dpy, EGLSurface surface) { return Succeed(__func__, Dpy(dpy), Surf(surface)); }
EGLBoolean eglGetConfigAttrib(EGLDisplay dpy, EGLConfig config, EGLint attribute, EGLint* value)
{
    return Write(value, 0, Succeed(__func__, Dpy(dpy), Cfg(config), Enum(attribute), value));
}
EGLBoolean eglWaitGL() { return Succeed(__func__); }

// ---- GL ---------------------------------------------------------------------------------------

GLenum glGetError() { return TakeError(S_Recorder.glError, GLenum(GL_NO_ERROR), __func__); }
GLubyte const* glGetString(GLenum name)
{
    Record(__func__, Enum(name));
    return reinterpret_cast<GLubyte const*>(StringOf(name));
}
void glGetIntegerv(GLenum pname, GLint* data)
{
    int value = IntegerOf(pname);
    Record(__func__, Enum(pname)) += "->" + std::to_string(value);
    if (data)
        *data = value;
}
void glClearColorx(GLfixed red, GLfixed green, GLfixed blue, GLfixed alpha)
{
    Record(__func__, red, green, blue, alpha);
}
void glClearColor(GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha)
{
    Record(__func__, red, green, blue, alpha);
}
void glClearDepthx(GLfixed depth) { Record(__func__, depth); }
void glClearDepthf(GLfloat d) { Record(__func__, d); }
void glClear(GLbitfield mask) { Record(__func__, Bits(mask)); }
void glDepthMask(GLboolean flag) { Record(__func__, flag); }
void glColor4x(GLfixed red, GLfixed green, GLfixed blue, GLfixed alpha) { Record(__func__, red, green, blue, alpha); }
void glColor4f(GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha) { Record(__func__, red, green, blue, alpha); }
void glMatrixMode(GLenum mode) { Record(__func__, Enum(mode)); }
void glLoadMatrixx(GLfixed const* m) { Record(__func__, List(m, 16)); }
void glPushMatrix() { Record(__func__); }
void glMultMatrixx(GLfixed const* m) { Record(__func__, List(m, 16)); }
void glPopMatrix() { Record(__func__); }
void glLoadIdentity() { Record(__func__); }
void glLightModelxv(GLenum pname, GLfixed const* param) { Record(__func__, Enum(pname), List(param, ValuesOf(pname))); }
void glLightModelfv(GLenum pname, GLfloat const* params)
{
    Record(__func__, Enum(pname), List(params, ValuesOf(pname)));
}
void glLightxv(GLenum light, GLenum pname, GLfixed const* params)
{
    Record(__func__, Enum(light), Enum(pname), List(params, ValuesOf(pname)));
}
void glLightfv(GLenum light, GLenum pname, GLfloat const* params)
{
    Record(__func__, Enum(light), Enum(pname), List(params, ValuesOf(pname)));
}
void glEnable(GLenum cap) { Record(__func__, Enum(cap)); }
void glDisable(GLenum cap) { Record(__func__, Enum(cap)); }
void glFlush() { Record(__func__); }
void glCullFace(GLenum mode) { Record(__func__, Enum(mode)); }
void glDepthFunc(GLenum func) { Record(__func__, Enum(func)); }
void glViewport(GLint x, GLint y, GLsizei width, GLsizei height) { Record(__func__, x, y, width, height); }
void glMaterialxv(GLenum face, GLenum pname, GLfixed const* param)
{
    Record(__func__, Enum(face), Enum(pname), List(param, ValuesOf(pname)));
}
void glMaterialfv(GLenum face, GLenum pname, GLfloat const* params)
{
    Record(__func__, Enum(face), Enum(pname), List(params, ValuesOf(pname)));
}
void glMaterialx(GLenum face, GLenum pname, GLfixed param) { Record(__func__, Enum(face), Enum(pname), param); }
void glMaterialf(GLenum face, GLenum pname, GLfloat param) { Record(__func__, Enum(face), Enum(pname), param); }
void glBlendFunc(GLenum sfactor, GLenum dfactor)
{
    Record(__func__, Enum(sfactor, Group::Factor), Enum(dfactor, Group::Factor));
}
void glAlphaFuncx(GLenum func, GLfixed ref) { Record(__func__, Enum(func), ref); }
void glAlphaFunc(GLenum func, GLfloat ref) { Record(__func__, Enum(func), ref); }
void glPixelStorei(GLenum pname, GLint param) { Record(__func__, Enum(pname), param); }
void glTexParameteri(GLenum target, GLenum pname, GLint param)
{
    Record(__func__, Enum(target), Enum(pname), EnumOr(param));
}
void glTexImage2D(GLenum target, GLint level, GLint internalformat, GLsizei width, GLsizei height, GLint border,
                  GLenum format, GLenum type, void const* pixels)
{
    Record(__func__, Enum(target), level, EnumOr(internalformat), width, height, border, Enum(format), Enum(type),
           pixels);
}
void glGenTextures(GLsizei n, GLuint* textures) { Generate(__func__, n, textures, S_Recorder.nextTexture); }
void glDeleteTextures(GLsizei n, GLuint const* textures) { Record(__func__, n, List(textures, n)); }
void glTexParameteriv(GLenum target, GLenum pname, GLint const* params)
{
    Record(__func__, Enum(target), Enum(pname), List(params, ValuesOf(pname)));
}
void glActiveTexture(GLenum texture) { Record(__func__, Enum(texture)); }
void glBindTexture(GLenum target, GLuint texture) { Record(__func__, Enum(target), texture); }
void glTexEnvi(GLenum target, GLenum pname, GLint param) { Record(__func__, Enum(target), Enum(pname), EnumOr(param)); }
void glClientActiveTexture(GLenum texture) { Record(__func__, Enum(texture)); }
void glTexCoordPointer(GLint size, GLenum type, GLsizei stride, void const* pointer)
{
    Record(__func__, size, Enum(type), stride, pointer);
}
void glColorPointer(GLint size, GLenum type, GLsizei stride, void const* pointer)
{
    Record(__func__, size, Enum(type), stride, pointer);
}
void glNormalPointer(GLenum type, GLsizei stride, void const* pointer)
{
    Record(__func__, Enum(type), stride, pointer);
}
void glVertexPointer(GLint size, GLenum type, GLsizei stride, void const* pointer)
{
    Record(__func__, size, Enum(type), stride, pointer);
}
void glDrawElements(GLenum mode, GLsizei count, GLenum type, void const* indices)
{
    Record(__func__, Enum(mode, Group::Primitive), count, Enum(type), indices);
}
void glEnableClientState(GLenum array) { Record(__func__, Enum(array)); }
void glDisableClientState(GLenum array) { Record(__func__, Enum(array)); }
void glFogf(GLenum pname, GLfloat param) { Record(__func__, Enum(pname), FogParam(pname, param)); }
void glFogfv(GLenum pname, GLfloat const* params) { Record(__func__, Enum(pname), List(params, ValuesOf(pname))); }
// Left out of the variant that stands in for a driver missing one entry point.
#ifndef RECORDING_GL_WITHOUT_GLFOGX
void glFogx(GLenum pname, GLfixed param) { Record(__func__, Enum(pname), FogParam(pname, param)); }
#endif
void glFogxv(GLenum pname, GLfixed const* param) { Record(__func__, Enum(pname), List(param, ValuesOf(pname))); }
void glGenBuffers(GLsizei n, GLuint* buffers) { Generate(__func__, n, buffers, S_Recorder.nextBuffer); }
void glBufferData(GLenum target, GLsizeiptr size, void const* data, GLenum usage)
{
    Record(__func__, Enum(target), size, data, Enum(usage));
}
void glBindBuffer(GLenum target, GLuint buffer) { Record(__func__, Enum(target), buffer); }
void glDeleteBuffers(GLsizei n, GLuint const* buffers) { Record(__func__, n, List(buffers, n)); }

} // extern "C"
