#include "Vellacore/Scene/LookTransform.h"
#include "Vellacore/Scene/TextureTransform.h"

#include <gtest/gtest.h>

using namespace Vellacore;

namespace {

typedef Vector3T<Fixed> V3;
typedef Matrix4T<Fixed> M4;

// Sees the protected state, to tell a rebuilt local matrix from a cached one.
template <class Base>
class ProbeT : public Base {
public:
    static ProbeT* Create() { return new (TypeInfoT<ProbeT>::S_TypeInfo_1) ProbeT(); }
    U16 Flags() const { return this->m_DirtyFlags; }
    // Only a rebuild brings the overwritten element back.
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

V3 Map(Transform* transform, V3 const& point)
{
    return M4::Transform(point, LocalOf(transform));
}

// Table lookups give a degree's sine to about 16 bits; a couple of products lose a little more.
void ExpectNear(V3 const& expected, V3 const& actual)
{
    float const tolerance = 1.0f / 1024;
    EXPECT_NEAR(expected.x.ToFloat(), actual.x.ToFloat(), tolerance);
    EXPECT_NEAR(expected.y.ToFloat(), actual.y.ToFloat(), tolerance);
    EXPECT_NEAR(expected.z.ToFloat(), actual.z.ToFloat(), tolerance);
}

void ExpectSame(M4 const& expected, M4 const& actual)
{
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(expected.m[i].GetRaw(), actual.m[i].GetRaw()) << "element " << i;
}

M4 Axis(void (M4::*make)(Fixed), Fixed degrees)
{
    M4 matrix;
    (matrix.*make)(degrees);
    return matrix;
}

template <class Base>
void ExpectCachedUntilSet()
{
    Ptr<ProbeT<Base>> probe = ProbeT<Base>::Create();
    M4 const clean = LocalOf(probe);
    probe->SpoilLocalMatrix();
    EXPECT_EQ(99, LocalOf(probe).m[0]);
    probe->SetScaling(probe->GetScaling());
    ExpectSame(clean, LocalOf(probe));
}

} // namespace

TEST_F(TransformTest, NewTransformsAreIdentity)
{
    for (Ptr<Transform> transform : { Transform::Create(), static_cast<Transform*>(LookTransform::Create()),
             static_cast<Transform*>(TextureTransform::Create()) })
        ExpectSame(M4::Identity, LocalOf(transform));
}

TEST_F(TransformTest, ScalesThenRotatesThenOrientsThenTranslates)
{
    Ptr<Transform> placed = Transform::Create();
    placed->SetScaling(V3(2, 2, 2));
    placed->SetRotation(V3(0, 90, 0));
    placed->SetTranslation(V3(1, 2, 3));
    // Turning 90 degrees about y takes x to -z and z to x.
    ExpectNear(V3(1, 2, 3), Map(placed, V3(0, 0, 0)));
    ExpectNear(V3(1, 2, 1), Map(placed, V3(1, 0, 0)));
    ExpectNear(V3(1, 4, 3), Map(placed, V3(0, 1, 0)));
    ExpectNear(V3(3, 2, 3), Map(placed, V3(0, 0, 1)));

    // About x, z goes to -y; about z, -y then goes to x. The other way round z would end at -y.
    Ptr<Transform> oriented = Transform::Create();
    oriented->SetRotation(V3(90, 0, 0));
    oriented->SetOrientation(V3(0, 0, 90));
    ExpectNear(V3(1, 0, 0), Map(oriented, V3(0, 0, 1)));
    // The orientation turns in X, Y, Z order whatever order the rotation uses.
    oriented->SetRotation(V3(0, 0, 0));
    oriented->SetOrientation(V3(90, 0, 90));
    oriented->SetRotationOrder(Transform::ZYX);
    ExpectNear(V3(1, 0, 0), Map(oriented, V3(0, 0, 1)));
}

TEST_F(TransformTest, RotationOrderPicksTheProductOfAxisMatrices)
{
    M4 const x = Axis(&M4::MakeRotationX, 30);
    M4 const y = Axis(&M4::MakeRotationY, 45);
    M4 const z = Axis(&M4::MakeRotationZ, 60);
    struct Case {
        Transform::RotationOrder order;
        M4 expected;
    } const cases[] = { { Transform::XZY, x * z * y }, { Transform::YZX, y * z * x }, { Transform::YXZ, y * x * z },
        { Transform::ZXY, z * x * y }, { Transform::ZYX, z * y * x }, { Transform::XYZ, x * y * z },
        { static_cast<Transform::RotationOrder>(6), x * y * z }, { static_cast<Transform::RotationOrder>(-1), x * y * z } };

    // One transform throughout: changing nothing but the order must rebuild the matrix.
    Ptr<Transform> transform = Transform::Create();
    transform->SetRotation(V3(30, 45, 60));
    for (Case const& c : cases) {
        SCOPED_TRACE(testing::Message() << "order " << c.order);
        transform->SetRotationOrder(c.order);
        ExpectSame(c.expected, LocalOf(transform));
    }
}

TEST_F(TransformTest, SettersMarkDirtyEvenWithoutChange)
{
    typedef ProbeT<LookTransform> Probe;
    struct Case {
        char const* name;
        void (*set)(Probe*);
        U16 flag;
    } const cases[] = {
        { "translation", [](Probe* p) { p->SetTranslation(p->GetTranslation()); }, 0x01 },
        { "rotation", [](Probe* p) { p->SetRotation(p->GetRotation()); }, 0x02 },
        { "order", [](Probe* p) { p->SetRotationOrder(p->GetRotationOrder()); }, 0x02 },
        { "scaling", [](Probe* p) { p->SetScaling(p->GetScaling()); }, 0x04 },
        { "orientation", [](Probe* p) { p->SetOrientation(p->GetOrientation()); }, 0x08 },
        { "look-at", [](Probe* p) { p->SetLookAt(p->GetLookAt()); }, 0x10 },
        { "up", [](Probe* p) { p->SetUp(p->GetUp()); }, 0x20 },
        { "offset", [](Probe* p) { p->SetOffset(p->GetOffset()); }, 0x40 },
    };
    Ptr<Probe> probe = Probe::Create();
    EXPECT_EQ(0xFFFF, probe->Flags());
    probe->SetTranslation(V3(0, 0, 5));
    M4 const aimed = LocalOf(probe);
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        probe->SpoilLocalMatrix();
        EXPECT_EQ(99, LocalOf(probe).m[0]);
        c.set(probe);
        EXPECT_EQ(c.flag, probe->Flags());
        ExpectSame(aimed, LocalOf(probe));
        EXPECT_EQ(0, probe->Flags());
    }

    ExpectCachedUntilSet<Transform>();
    ExpectCachedUntilSet<TextureTransform>();
}

TEST_F(TransformTest, LookTransformAimsFromTheEyeAtTheTarget)
{
    Ptr<ProbeT<LookTransform>> look = ProbeT<LookTransform>::Create();
    look->SetTranslation(V3(3, 0, 0));
    look->SetScaling(V3(2, 2, 2));
    look->SetOffset(V3(0, 1, 0));
    // Forward is -z; scaled by 2 it reaches from the eye two units towards the target.
    ExpectNear(V3(3, 1, 0), Map(look, V3(0, 0, 0)));
    ExpectNear(V3(1, 1, 0), Map(look, V3(0, 0, -1)));
    M4 const aimed = LocalOf(look);

    // No aim exists from the target itself: the last matrix stays, and the change is consumed.
    look->SetTranslation(look->GetLookAt());
    ExpectSame(aimed, LocalOf(look));
    EXPECT_EQ(0, look->Flags());

    look->SetTranslation(V3(0, 0, 4));
    ExpectNear(V3(0, 1, 4), Map(look, V3(0, 0, 0)));
    ExpectNear(V3(0, 1, 2), Map(look, V3(0, 0, -1)));
}

TEST_F(TransformTest, TextureTransformTurnsAboutTheCentre)
{
    struct Case {
        Fixed turn, scale, scroll;
        V3 point, expected;
    } const cases[] = {
        { 180, 1, 0, V3(0, 0, 0), V3(1, 1, 0) },
        { 90, 1, 0, V3(0, 0, 0), V3(1, 0, 0) },
        { 90, 1, 0.25, V3(0, 0, 0), V3(1.25, 0, 0) },
        { 45, 3, 0, V3(0.5, 0.5, 0), V3(0.5, 0.5, 0) },
        { 0, 0.5, 0, V3(1, 1, 0), V3(0.75, 0.75, 0) },
        { 0, 1, 0.25, V3(0, 0, 0), V3(0.25, 0, 0) },
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(testing::Message() << "turn " << c.turn.ToFloat() << " scale " << c.scale.ToFloat()
                                        << " scroll " << c.scroll.ToFloat());
        Ptr<TextureTransform> texture = TextureTransform::Create();
        texture->SetRotation(V3(0, 0, c.turn));
        texture->SetScaling(V3(c.scale, c.scale, 1));
        texture->SetTranslation(V3(c.scroll, 0, 0));
        ExpectNear(c.expected, Map(texture, c.point));
    }
}
