#include "BenchSupport.h"

#include "Vellacore/Geometry/PolygonGeometry.h"
#include "Vellacore/Render/DrawTree.h"
#include "Vellacore/Render/Render.h"
#include "Vellacore/Render/Shader.h"
#include "Vellacore/Scene/Camera.h"
#include "Vellacore/Scene/Transform.h"

#include <array>

namespace Vellacore {
namespace Bench {

namespace {

// Accepts every call and does nothing, so that only the traversal is timed.
class NullRender : public Render {
public:
    static NullRender* Create() { return new (TypeInfoT<NullRender>::S_TypeInfo_1) NullRender(); }
    bool Init() override { return true; }
    void Exit() override {}
    bool IsRenderable() const override { return true; }
    Fixed GetAspect() const override { return Fixed(4) / Fixed(3); }
    void SetColorClearValue(Vector4T<float> const&) override {}
    void SetDepthClearValue(Fixed) override {}
    void Clear(int) override {}
    void SetViewMatrix(Matrix4T<Fixed> const&) override {}
    void SetProjectionMatrix(Matrix4T<Fixed> const&) override {}
    void SetAmbientLight(Vector3T<float> const&) override {}
    void SetLights(short) override {}
    void SetLight(short, Light*, Matrix4T<Fixed> const&) override {}
    void SetFog(Fog*) override {}
    void SetShader(Shader*, Vector4T<float> const&) override {}
    void SetTarget(RenderTarget*) override {}
    void Draw(Drawable*, Matrix4T<Fixed> const&) override {}
    void SwapBuffers() override {}
};

template <class T>
T* AddNew(Group* parent)
{
    T* node = T::Create();
    node->SetParent(parent);
    return node;
}

// A steady frame of range(0) drawables, each under a transform of its own, sharing eight shaders
// in two layers: the walk, the world matrices, the shader sort and the renderer calls per node.
void DrawScene(benchmark::State& state)
{
    int const count = static_cast<int>(state.range(0));
    Ptr<Transform> root = Transform::Create();
    Camera* camera = AddNew<Camera>(AddNew<Transform>(root));
    std::array<Ptr<Shader>, 8> shaders;
    for (std::size_t i = 0; i < shaders.size(); ++i) {
        shaders[i] = Shader::Create();
        shaders[i]->SetLayer(8 + static_cast<int>(i % 2));
    }
    RandomFloats random;
    for (int i = 0; i < count; ++i) {
        Transform* transform = AddNew<Transform>(root);
        transform->SetTranslation(random.UniformVector<Fixed>(-100.0f, 100.0f));
        AddNew<PolygonGeometry>(transform)->SetShader(shaders[static_cast<std::size_t>(i) % shaders.size()]);
    }
    Ptr<DrawTree> tree = DrawTree::Create();
    tree->SetRenderer(NullRender::Create());
    tree->SetSceneRoot(root);
    tree->SetCamera(camera);

    for (auto _ : state)
        tree->Draw();
    state.SetItemsProcessed(state.iterations() * count);
}

// One transform, made dirty again before every call, stands for the engine. Static, so that its
// inputs stay as small as the float peer's.
Transform& DirtyTransform()
{
    static Ptr<Transform> const transform = Transform::Create();
    return *transform;
}

Matrix4T<float> RotationXYZ(Vector3T<float> const& degrees)
{
    Matrix4T<float> x, y, z;
    x.MakeRotationX(degrees.x);
    y.MakeRotationY(degrees.y);
    z.MakeRotationZ(degrees.z);
    return (x * y) * z;
}

// The local matrix from translation, rotation, scaling and orientation, composed the way
// Transform::ComputeLocalMatrix does: ((S * R) * O) * T.
struct TransformLocalMatrix {
    static constexpr char const* Name = "TransformLocalMatrix";
    template <class Scalar>
    static std::array<Vector3T<Scalar>, 4> MakeArguments(RandomFloats& random)
    {
        return {random.UniformVector<Scalar>(-100.0f, 100.0f), random.UniformVector<Scalar>(-180.0f, 180.0f),
            random.UniformVector<Scalar>(0.5f, 2.0f), random.UniformVector<Scalar>(-180.0f, 180.0f)};
    }
    static Matrix4T<Fixed> Apply(Vector3T<Fixed> const& translation, Vector3T<Fixed> const& rotation,
        Vector3T<Fixed> const& scaling, Vector3T<Fixed> const& orientation)
    {
        Transform& transform = DirtyTransform();
        transform.SetTranslation(translation);
        transform.SetRotation(rotation);
        transform.SetScaling(scaling);
        transform.SetOrientation(orientation);
        Matrix4T<Fixed> local;
        transform.GetLocalMatrix(local);
        return local;
    }
    static Matrix4T<float> Apply(Vector3T<float> const& translation, Vector3T<float> const& rotation,
        Vector3T<float> const& scaling, Vector3T<float> const& orientation)
    {
        Matrix4T<float> s, t;
        s.MakeScaling(scaling);
        t.MakeTranslation(translation);
        return ((s * RotationXYZ(rotation)) * RotationXYZ(orientation)) * t;
    }
};

} // namespace

void RegisterDrawTreeBenchmarks()
{
    // No slash in the name: the traversal has no peer, so it stays out of the ratio table. The
    // scene sizes show how the time per node scales.
    benchmark::RegisterBenchmark("DrawTree.Draw", &DrawScene)->Arg(100)->Arg(1000)->Arg(10000);
    // libfixmath has no matrices of its own to compose with; that column stays empty.
    RegisterFlavours<TransformLocalMatrix, Fixed, float>();
}

} // namespace Bench
} // namespace Vellacore
