#include "Vellacore/Scene/LookTransform.h"
#include "Vellacore/Scene/TextureTransform.h"

#include <gtest/gtest.h>

#include <functional>

using namespace Vellacore;

namespace {

typedef Vector3T<Fixed> V3;
typedef Matrix4T<Fixed> M4;

// Sees the protected state, to tell a rebuilt local matrix from a cached one: only a rebuild brings
// the spoiled element back.
template <class Base>
class ProbeT : public Base {
public:
    static ProbeT* Create() { return new (TypeInfoT<ProbeT>::S_TypeInfo_1) ProbeT(); }
    U16 Flags() const { return this->m_DirtyFlags; }
    void SpoilLocalMatrix() { this->m_LocalMatrix.m[0] = Fixed(99); }
};

class TransformTest : public testing::Test {
protected:
    static void SetUpTestSuite() { Fixed::InitLookupTables(); }
    static void TearDownTestSuite() { Fixed::ExitLookupTables(); }
};

M4 LocalOf(Transform* transform)
{
    M4 local;
    transform->GetLocalMatrix(local);
    return local;
}

// Table lookups give a degree's sine to about 16 bits; a couple of products lose a little more.
void ExpectMaps(Transform* transform, V3 const& point, V3 const& expected)
{
    V3 const actual = M4::Transform(point, LocalOf(transform));
    for (Fixed V3::*axis : { &V3::x, &V3::y, &V3::z })
        EXPECT_NEAR((expected.*axis).ToFloat(), (actual.*axis).ToFloat(), 1.0f / 1024);
}

void ExpectSame(M4 const& expected, M4 const& actual)
{
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(expected.m[i].GetRaw(), actual.m[i].GetRaw()) << "element " << i;
}

template <class Base>
void ExpectRebuiltOnlyAfterASetter(std::function<void(ProbeT<Base>*)> const& set)
{
    Ptr<ProbeT<Base>> probe = ProbeT<Base>::Create();
    probe->SetTranslation(V3(0, 0, 5));
    M4 const clean = LocalOf(probe);
    probe->SpoilLocalMatrix();
    EXPECT_EQ(99, LocalOf(probe).m[0]);
    set(probe);
    ExpectSame(clean, LocalOf(probe));
}

} // namespace

TEST_F(TransformTest, ScalesThenRotatesThenOrientsThenTranslates)
{
    Ptr<Transform> placed = Transform::Create();
    placed->SetScaling(V3(2, 2, 2));
    placed->SetRotation(V3(0, 90, 0));
    placed->SetTranslation(V3(1, 2, 3));
    // Turning 90 degrees about y takes x to -z and z to x.
    ExpectMaps(placed, V3(1, 0, 0), V3(1, 2, 1));
    ExpectMaps(placed, V3(0, 0, 1), V3(3, 2, 3));

    // About x, z goes to -y; about z, -y then goes to x. The other way round z would end at -y.
    Ptr<Transform> oriented = Transform::Create();
    oriented->SetRotation(V3(90, 0, 0));
    oriented->SetOrientation(V3(0, 0, 90));
    ExpectMaps(oriented, V3(0, 0, 1), V3(1, 0, 0));
    // The orientation turns in X, Y, Z order whatever order the rotation uses.
    oriented->SetRotation(V3(0, 0, 0));
    oriented->SetOrientation(V3(90, 0, 90));
    oriented->SetRotationOrder(Transform::ZYX);
    ExpectMaps(oriented, V3(0, 0, 1), V3(1, 0, 0));
}

TEST_F(TransformTest, RotationOrderPicksTheProductOfAxisMatrices)
{
    M4 x, y, z;
    x.MakeRotationX(30);
    y.MakeRotationY(45);
    z.MakeRotationZ(60);
    struct { int order; M4 expected; } const cases[] = { { Transform::XZY, x * z * y }, { Transform::YZX, y * z * x },
        { Transform::YXZ, y * x * z }, { Transform::ZXY, z * x * y }, { Transform::ZYX, z * y * x },
        { Transform::XYZ, x * y * z }, { 6, x * y * z }, { -1, x * y * z } };
    // One transform throughout: changing nothing but the order must rebuild the matrix.
    Ptr<Transform> transform = Transform::Create();
    transform->SetRotation(V3(30, 45, 60));
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << "order " << c.order);
        transform->SetRotationOrder(static_cast<Transform::RotationOrder>(c.order));
        ExpectSame(c.expected, LocalOf(transform));
    }
}

// Every setter rebuilds the local matrix, even one that changes nothing; until then it is cached.
TEST_F(TransformTest, EverySetterAndOnlyASetterRebuildsTheLocalMatrix)
{
    typedef ProbeT<LookTransform> Look;
    std::function<void(Look*)> const setters[] = { [](Look* p) { p->SetTranslation(p->GetTranslation()); },
        [](Look* p) { p->SetRotation(p->GetRotation()); }, [](Look* p) { p->SetRotationOrder(p->GetRotationOrder()); },
        [](Look* p) { p->SetScaling(p->GetScaling()); }, [](Look* p) { p->SetOrientation(p->GetOrientation()); },
        [](Look* p) { p->SetLookAt(p->GetLookAt()); }, [](Look* p) { p->SetUp(p->GetUp()); },
        [](Look* p) { p->SetOffset(p->GetOffset()); } };
    for (auto const& set : setters) {
        SCOPED_TRACE(testing::Message() << "setter " << &set - setters);
        ExpectRebuiltOnlyAfterASetter<LookTransform>(set);
    }
    ExpectRebuiltOnlyAfterASetter<Transform>([](ProbeT<Transform>* p) { p->SetScaling(p->GetScaling()); });
    ExpectRebuiltOnlyAfterASetter<TextureTransform>(
        [](ProbeT<TextureTransform>* p) { p->SetScaling(p->GetScaling()); });
}

TEST_F(TransformTest, LookTransformAimsFromTheEyeAtTheTarget)
{
    Ptr<ProbeT<LookTransform>> look = ProbeT<LookTransform>::Create();
    look->SetTranslation(V3(3, 0, 0));
    look->SetScaling(V3(2, 2, 2));
    look->SetOffset(V3(0, 1, 0));
    // Forward is -z; scaled by 2 it reaches from the eye two units towards the target.
    ExpectMaps(look, V3(0, 0, 0), V3(3, 1, 0));
    ExpectMaps(look, V3(0, 0, -1), V3(1, 1, 0));
    M4 const aimed = LocalOf(look);

    // No aim exists from the target itself: the last matrix stays, and the change is consumed.
    look->SetTranslation(look->GetLookAt());
    ExpectSame(aimed, LocalOf(look));
    EXPECT_EQ(0, look->Flags());

    look->SetTranslation(V3(0, 0, 4));
    ExpectMaps(look, V3(0, 0, 0), V3(0, 1, 4));
    ExpectMaps(look, V3(0, 0, -1), V3(0, 1, 2));
}

TEST_F(TransformTest, TextureTransformTurnsAboutTheCentre)
{
    struct { Fixed turn, scale, scroll; V3 point, expected; } const cases[] = {
        { 180, 1, 0, V3(0, 0, 0), V3(1, 1, 0) },
        { 90, 1, 0.25, V3(0, 0, 0), V3(1.25, 0, 0) },
        { 45, 3, 0, V3(0.5, 0.5, 0), V3(0.5, 0.5, 0) },
        { 0, 0.5, 0, V3(1, 1, 0), V3(0.75, 0.75, 0) },
        { 0, 1, 0.25, V3(0, 0, 0), V3(0.25, 0, 0) },
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << "case " << &c - cases);
        Ptr<TextureTransform> texture = TextureTransform::Create();
        texture->SetRotation(V3(0, 0, c.turn));
        texture->SetScaling(V3(c.scale, c.scale, 1));
        texture->SetTranslation(V3(c.scroll, 0, 0));
        ExpectMaps(texture, c.point, c.expected);
    }
}
