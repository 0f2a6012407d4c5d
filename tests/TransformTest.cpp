#include "Vellacore/Scene/LookTransform.h"
#include "Vellacore/Scene/TextureTransform.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

using namespace Vellacore;

namespace {

typedef Vector3T<Fixed> V3;
typedef Matrix4T<Fixed> M4;

class Probe : public LookTransform {
public:
    static Probe* Create() { return new (TypeInfoT<Probe>::S_TypeInfo_1) Probe(); }
    void SpoilLocalMatrix() { m_LocalMatrix.m[0] = Fixed(99); } // only a rebuild brings it back
};

class TransformTest : public testing::Test {
protected:
    static void SetUpTestSuite() { Fixed::InitLookupTables(); }
    static void TearDownTestSuite() { Fixed::ExitLookupTables(); }
};

M4 LocalOf(Transform* transform) { M4 local; transform->GetLocalMatrix(local); return local; }

std::vector<I32> Raws(M4 const& m) { std::vector<I32> raws; for (Fixed f : m.m) raws.push_back(f.GetRaw()); return raws; }

M4 Turn(void (M4::*make)(Fixed), Fixed degrees) { M4 turned; (turned.*make)(degrees); return turned; }

void ExpectMaps(Transform* transform, V3 const& point, V3 const& expected)
{
    V3 const actual = M4::Transform(point, LocalOf(transform));
    for (Fixed V3::*axis : { &V3::x, &V3::y, &V3::z })
        EXPECT_NEAR((expected.*axis).ToFloat(), (actual.*axis).ToFloat(), 1.0f / 1024);
}

#define SET_SAME(Property) [](auto* p) { p->Set##Property(p->Get##Property()); }

} // namespace

TEST_F(TransformTest, ScalesThenRotatesThenOrientsThenTranslates)
{
    Ptr<Transform> placed = Transform::Create();
    placed->SetScaling(V3(2, 2, 2));
    placed->SetRotation(V3(90, 0, 0));
    placed->SetOrientation(V3(0, 0, 90));
    placed->SetTranslation(V3(1, 2, 3));
    // About x, z goes to -y; about z, -y then goes to x. The other way round z would end at -y.
    ExpectMaps(placed, V3(0, 0, 1), V3(3, 2, 3));
}

TEST_F(TransformTest, RotationOrderPicksTheProductOfAxisMatrices)
{
    M4 const x = Turn(&M4::MakeRotationX, 30), y = Turn(&M4::MakeRotationY, 45), z = Turn(&M4::MakeRotationZ, 60);
    struct { int order; M4 expected; } const cases[] = { { Transform::XZY, x * z * y }, { Transform::YZX, y * z * x },
        { Transform::YXZ, y * x * z }, { Transform::ZXY, z * x * y }, { Transform::ZYX, z * y * x },
        { Transform::XYZ, x * y * z }, { 6, x * y * z }, { -1, x * y * z } };
    // One transform throughout: changing nothing but the order must rebuild the matrix.
    Ptr<Transform> transform = Transform::Create();
    transform->SetRotation(V3(30, 45, 60));
    for (auto const& c : cases) {
        transform->SetRotationOrder(static_cast<Transform::RotationOrder>(c.order));
        EXPECT_EQ(Raws(c.expected), Raws(LocalOf(transform))) << "order " << c.order;
    }
    // The orientation turns afterwards, in X, Y, Z order whatever order the rotation uses.
    transform->SetOrientation(V3(30, 45, 60));
    transform->SetRotationOrder(Transform::ZYX);
    EXPECT_EQ(Raws(z * y * x * (x * y * z)), Raws(LocalOf(transform)));
}

TEST_F(TransformTest, EverySetterAndOnlyASetterRebuildsTheLocalMatrix)
{
    Ptr<Probe> probe = Probe::Create();
    probe->SetTranslation(V3(0, 0, 5));
    std::vector<I32> const clean = Raws(LocalOf(probe));
    std::function<void(Probe*)> const setters[] = { SET_SAME(Translation), SET_SAME(Rotation), SET_SAME(RotationOrder),
        SET_SAME(Scaling), SET_SAME(Orientation), SET_SAME(LookAt), SET_SAME(Up), SET_SAME(Offset) };
    for (auto const& set : setters) {
        probe->SpoilLocalMatrix();
        EXPECT_EQ(99, LocalOf(probe).m[0]) << "cached until a setter is called";
        set(probe);
        EXPECT_EQ(clean, Raws(LocalOf(probe))) << "setter " << &set - setters;
    }
}

TEST_F(TransformTest, LookTransformAimsFromTheEyeAtTheTarget)
{
    Ptr<LookTransform> look = LookTransform::Create();
    look->SetTranslation(V3(3, 0, 0));
    look->SetScaling(V3(2, 2, 2));
    look->SetOffset(V3(0, 1, 0));
    // Forward is -z; scaled by 2 it reaches from the eye two units towards the target.
    ExpectMaps(look, V3(0, 0, 0), V3(3, 1, 0));
    ExpectMaps(look, V3(0, 0, -1), V3(1, 1, 0));
    // No aim exists from the target itself: the last matrix stays.
    std::vector<I32> const aimed = Raws(LocalOf(look));
    look->SetTranslation(look->GetLookAt());
    EXPECT_EQ(aimed, Raws(LocalOf(look)));
    look->SetTranslation(V3(0, 0, 4));
    ExpectMaps(look, V3(0, 0, -1), V3(0, 1, 2));
}

TEST_F(TransformTest, TextureTransformTurnsAndScalesAboutTheCentre)
{
    struct { Fixed turn, scale, scroll; V3 point, expected; } const cases[] = {
        { 90, 1, 0.25, V3(0, 0, 0), V3(1.25, 0, 0) }, { 45, 3, 0, V3(0.5, 0.5, 0), V3(0.5, 0.5, 0) } };
    Ptr<TextureTransform> texture = TextureTransform::Create();
    for (auto const& c : cases) {
        texture->SetRotation(V3(0, 0, c.turn));
        texture->SetScaling(V3(c.scale, c.scale, 1));
        texture->SetTranslation(V3(c.scroll, 0, 0));
        ExpectMaps(texture, c.point, c.expected);
    }
}
