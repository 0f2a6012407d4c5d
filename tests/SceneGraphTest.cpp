#include "Vellacore/Core/Logger.h"
#include "Vellacore/Scene/Container.h"
#include "Vellacore/Scene/DNode.h"
#include "Vellacore/Scene/InterfaceGroup.h"
#include "Vellacore/Scene/Light.h"
#include "Vellacore/Scene/LookTransform.h"
#include "Vellacore/Scene/SearchTree.h"
#include "Vellacore/Scene/TextureTransform.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

using namespace Vellacore;

namespace {

// A leaf whose destruction is observable.
class ProbeNode : public DNode {
public:
    static int S_Alive;
    static ProbeNode* Create() { return new (TypeInfoT<ProbeNode>::S_TypeInfo_1) ProbeNode(); }
    ProbeNode() { ++S_Alive; }
    ~ProbeNode() override { --S_Alive; }
};
int ProbeNode::S_Alive = 0;

// Made under `parent` by the public route, so the parent holds the only reference.
template <class T>
T* AddNew(Group* parent, char const* name = "")
{
    T* node = T::Create();
    node->SetName(name);
    node->SetParent(parent);
    return node;
}

std::vector<Node*> ChildrenOf(Group const* group)
{
    std::vector<Node*> children;
    for (int i = 0; i < group->GetNumChildren(); ++i)
        children.push_back(group->GetChild(i));
    return children;
}

I32 CountOf(Object const* object) { return HeaderOf(object)->m_RefCount; }

} // namespace

TEST(SceneGraph, ReparentingAppendsAndKeepsOrder)
{
    Ptr<Group> a = Group::Create(), b = Group::Create();
    ProbeNode *first = AddNew<ProbeNode>(a), *second = AddNew<ProbeNode>(a), *third = AddNew<ProbeNode>(a);
    ProbeNode* resident = AddNew<ProbeNode>(b);
    // The same parent again, a second AddChild, or removing another group's child change nothing.
    second->SetParent(a);
    a->AddChild(second);
    a->RemoveChild(resident);
    EXPECT_EQ((std::vector<Node*>{ first, second, third }), ChildrenOf(a));

    // Only the old parent held it: the move must not destroy it on the way.
    first->SetParent(b);
    EXPECT_EQ(4, ProbeNode::S_Alive);
    EXPECT_EQ(b.Get(), first->GetParent());
    EXPECT_EQ(1, CountOf(first));
    EXPECT_EQ((std::vector<Node*>{ second, third }), ChildrenOf(a));
    EXPECT_EQ((std::vector<Node*>{ resident, first }), ChildrenOf(b));
}

TEST(SceneGraph, DetachingReleasesTheParentsReference)
{
    Ptr<Group> group = Group::Create();
    AddNew<ProbeNode>(group)->SetParent(nullptr);
    EXPECT_EQ(0, ProbeNode::S_Alive);

    Ptr<ProbeNode> kept = AddNew<ProbeNode>(group);
    kept->SetParent(nullptr);
    EXPECT_EQ(nullptr, kept->GetParent());
    EXPECT_EQ(0, group->GetNumChildren());
    EXPECT_EQ(1, CountOf(kept));

    // A node no Ptr ever held is left to its owner, whatever is asked of it.
    ProbeNode* fresh = ProbeNode::Create();
    fresh->SetParent(nullptr);
    group->RemoveChild(fresh);
    EXPECT_EQ(2, ProbeNode::S_Alive);
    Destruct1(fresh);
}

TEST(SceneGraph, DestroyedGroupDetachesItsChildren)
{
    Ptr<ProbeNode> survivor;
    {
        Ptr<Group> root = Group::Create();
        Group* inner = AddNew<Group>(root);
        AddNew<ProbeNode>(inner);
        AddNew<ProbeNode>(inner);
        survivor = AddNew<ProbeNode>(root);
        EXPECT_EQ(3, ProbeNode::S_Alive);
    }
    EXPECT_EQ(1, ProbeNode::S_Alive);
    EXPECT_EQ(nullptr, survivor->GetParent());
    EXPECT_EQ(1, CountOf(survivor));

    // Listed by AddChild alone, the node names another parent; destruction must still finish and
    // leave it where SetParent put it.
    Ptr<Group> home = Group::Create();
    survivor->SetParent(home);
    Ptr<Group>(Group::Create())->AddChild(survivor);
    EXPECT_EQ(home.Get(), survivor->GetParent());
    EXPECT_EQ(2, CountOf(survivor));
}

TEST(SceneGraph, ParentTransformIsTheNearestTransformAbove)
{
    Ptr<Group> root = Group::Create();
    Transform* outer = AddNew<Transform>(root);
    Group* middle = AddNew<Group>(outer);
    LookTransform* inner = AddNew<LookTransform>(middle);
    Node* leaf = AddNew<ProbeNode>(inner);
    Node* beside = AddNew<ProbeNode>(root);

    struct { Node* node; Transform* expected; } const cases[] = {
        { leaf, inner }, { inner, outer }, { middle, outer }, { outer, nullptr }, { beside, nullptr },
        { root, nullptr } };
    for (auto const& c : cases)
        EXPECT_EQ(c.expected, c.node->GetParentTransform()) << c.node;
}

TEST(SceneGraph, SearchTreeFindsTheFirstNameInPreOrder)
{
    Ptr<Group> root = Group::Create();
    root->SetName("Root");
    Group* early = AddNew<Group>(root, "Early");
    Node* earlyTwin = AddNew<ProbeNode>(early, "Twin");
    AddNew<ProbeNode>(root, "Twin");
    Container* box = AddNew<Container>(root, "Box");
    Ptr<Group> boxed = Group::Create();
    boxed->SetName("Boxed");
    AddNew<ProbeNode>(boxed, "Hidden");
    box->AddObject(nullptr);
    box->AddObject(boxed);

    struct { char const* name; Object* expected; } const cases[] = {
        { "Root", root }, { "Twin", earlyTwin }, { "Boxed", boxed }, { "Hidden", nullptr }, { "twin", nullptr },
        { "Twi", nullptr } };
    for (auto const& c : cases)
        EXPECT_EQ(c.expected, SearchTree(root, c.name)) << c.name;
    EXPECT_EQ(nullptr, SearchTree(nullptr, "Root"));
}

TEST(SceneGraph, SearchTreeTypeAppendsMatchesInPreOrder)
{
    Ptr<Transform> root = Transform::Create();
    Group* group = AddNew<Group>(root);
    LookTransform* look = AddNew<LookTransform>(group);
    Container* box = AddNew<Container>(root);
    TextureTransform* texture = AddNew<TextureTransform>(root);
    Ptr<Transform> stored = Transform::Create();
    AddNew<Transform>(stored);
    for (Object* object : std::initializer_list<Object*>{ stored, Light::Create(), stored })
        box->AddObject(object);

    Ptr<Transform> earlier = Transform::Create();
    Array<Ptr<Transform>> result{ earlier };
    SearchTreeType(root, result);
    EXPECT_EQ((Array<Ptr<Transform>>{ earlier, root, look, stored, stored, texture }), result);

    Array<Ptr<InterfaceGroup>> none;
    SearchTreeType(root, none);
    SearchTreeType<InterfaceGroup>(nullptr, none);
    EXPECT_TRUE(none.empty());
}

TEST(SceneGraph, InterfaceProjectionScalesBySwappedResolution)
{
    // Raw elements 0, 5, 12 and 13, the rest identity; the first case is what construction sets up.
    struct { int width, height; I32 raw[4]; } const cases[] = {
        { 320, 240, { 546, 409, 68, 51 } }, { 240, 320, { 409, 546, 51, 68 } },
        { 0, 100, { 1310, 0x7FFFFFFF, 163, 0x7FFFFFFF } } };
    Ptr<InterfaceGroup> overlay = InterfaceGroup::Create();
    for (auto const& c : cases) {
        if (&c != cases)
            overlay->SetResolution(Vector2T<Fixed>(c.width, c.height));
        Matrix4T<Fixed> expected = Matrix4T<Fixed>::Identity;
        int const elements[] = { 0, 5, 12, 13 };
        for (int i = 0; i < 4; ++i)
            expected.m[elements[i]] = Fixed::FromRaw(c.raw[i]);
        for (int i = 0; i < 16; ++i)
            EXPECT_EQ(expected.m[i].GetRaw(), overlay->GetProjection().m[i].GetRaw())
                << c.width << "x" << c.height << " element " << i;
    }
}

TEST(SceneGraph, ContainerHoldsOneReferencePerEntry)
{
    {
        Ptr<Container> box = Container::Create();
        ProbeNode* twice = ProbeNode::Create();
        ProbeNode* once = ProbeNode::Create();
        for (Object* object : std::initializer_list<Object*>{ twice, once, twice })
            box->AddObject(object);
        EXPECT_EQ(2, CountOf(twice));

        box->RemoveObject(0);
        box->RemoveObject(2);
        box->RemoveObject(-1);
        ASSERT_EQ(2, box->GetNumObjects());
        EXPECT_EQ(once, box->GetObject(0));
        EXPECT_EQ(twice, box->GetObject(1));
        EXPECT_EQ(nullptr, box->GetObject(2));
        EXPECT_EQ(1, CountOf(twice));
    }
    EXPECT_EQ(0, ProbeNode::S_Alive);
}

TEST(SceneGraph, LightDestructionIsLoggedWhileTheLoggerLives)
{
    VellacoreTest::TempDir dir;
    Ptr<Light> light = Light::Create();
    Logger::Init();
    light = Light::Create();
    Logger::Exit();
    light = nullptr;
    EXPECT_EQ("---- START  (BUILD: Apr 26 2010 / 18:27:56) ----\n[D] ~Light\n", VellacoreTest::ReadFile("Xapp.log"));
}
