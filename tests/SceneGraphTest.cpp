#include "Vellacore/Core/Logger.h"
#include "Vellacore/Scene/Container.h"
#include "Vellacore/Scene/DNode.h"
#include "Vellacore/Scene/Light.h"
#include "Vellacore/Scene/LookTransform.h"
#include "Vellacore/Scene/SearchTree.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

using namespace Vellacore;

namespace {

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

TEST(SceneGraph, SetParentMovesTheOnlyReference)
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
    EXPECT_EQ(1, CountOf(first));
    EXPECT_EQ((std::vector<Node*>{ second, third }), ChildrenOf(a));
    EXPECT_EQ((std::vector<Node*>{ resident, first }), ChildrenOf(b));

    // Detaching drops the parent's reference: the last one destroys the node, another keeps it.
    second->SetParent(nullptr);
    EXPECT_EQ(3, ProbeNode::S_Alive);
    Ptr<ProbeNode> kept = third;
    kept->SetParent(nullptr);
    EXPECT_EQ(1, CountOf(kept));
    ProbeNode* fresh = ProbeNode::Create(); // no Ptr ever held it: left to its owner
    fresh->SetParent(nullptr);
    EXPECT_EQ(4, ProbeNode::S_Alive);
    Destruct1(fresh);
}

TEST(SceneGraph, DestroyedGroupDetachesItsChildren)
{
    Ptr<ProbeNode> survivor;
    {
        Ptr<Group> root = Group::Create();
        AddNew<ProbeNode>(AddNew<Group>(root));
        AddNew<ProbeNode>(root);
        survivor = AddNew<ProbeNode>(root);
    }
    EXPECT_EQ(1, ProbeNode::S_Alive);
    EXPECT_EQ(nullptr, survivor->GetParent());
    EXPECT_EQ(1, CountOf(survivor));

    // Listed by AddChild alone, it names another parent: destruction must still finish and leave it there.
    Ptr<Group> home = Group::Create();
    survivor->SetParent(home);
    Ptr<Group>(Group::Create())->AddChild(survivor);
    EXPECT_EQ(home.Get(), survivor->GetParent());
    EXPECT_EQ(2, CountOf(survivor));
}

TEST(SceneGraph, ParentTransformIsTheNearestTransformAbove)
{
    Ptr<Transform> outer = Transform::Create();
    LookTransform* inner = AddNew<LookTransform>(AddNew<Group>(outer));
    EXPECT_EQ(inner, AddNew<ProbeNode>(inner)->GetParentTransform());
    EXPECT_EQ(outer.Get(), inner->GetParentTransform()) << "through a plain group";
}

// Both searches go depth first in pre-order; a container's entries are looked at but never searched into.
TEST(SceneGraph, SearchesArePreOrderAndStopAtContainerEntries)
{
    Ptr<Group> root = Group::Create();
    Group* early = AddNew<Group>(root, "Early");
    Group* earlyTwin = AddNew<Group>(early, "Twin");
    AddNew<ProbeNode>(root, "Twin");
    Container* box = AddNew<Container>(root, "Box");
    Transform* late = AddNew<Transform>(root, "Late");
    Ptr<Group> boxed = Group::Create();
    boxed->SetName("Boxed");
    AddNew<Group>(boxed, "Hidden");
    for (Object* object : std::initializer_list<Object*>{ nullptr, boxed, Light::Create() })
        box->AddObject(object);

    struct { char const* name; Object* expected; } const cases[] = {
        { "Twin", earlyTwin }, { "Boxed", boxed }, { "Hidden", nullptr }, { "twin", nullptr }, { "Twi", nullptr } };
    for (auto const& c : cases)
        EXPECT_EQ(c.expected, SearchTree(root, c.name)) << c.name;
    EXPECT_EQ(nullptr, SearchTree(nullptr, "Twin"));

    Ptr<Group> earlier = Group::Create();
    Array<Ptr<Group>> groups{ earlier };
    SearchTreeType(root, groups);
    SearchTreeType<Group>(nullptr, groups);
    EXPECT_EQ((Array<Ptr<Group>>{ earlier, root, early, earlyTwin, boxed, late }), groups);
}

TEST(SceneGraph, ContainerHoldsOneReferencePerEntry)
{
    {
        Ptr<Container> box = Container::Create();
        ProbeNode* twice = ProbeNode::Create();
        for (Object* object : std::initializer_list<Object*>{ twice, ProbeNode::Create(), twice })
            box->AddObject(object);
        box->RemoveObject(0);
        EXPECT_EQ(1, CountOf(twice));
        EXPECT_EQ(twice, box->GetObject(1)) << "later entries move up";
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
