#include "Vellacore/Core/Logger.h"
#include "Vellacore/Core/Object.h"
#include "Vellacore/Memory/Ptr.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <utility>

using namespace Vellacore;

namespace {

// Counts live instances so that destruction is observable.
class Counted : public Object {
public:
    static int S_Alive;
    static Counted* Create() { return new (TypeInfoT<Counted>::S_TypeInfo_1) Counted(); }
    Counted() { ++S_Alive; }
    ~Counted() override { --S_Alive; }
    Ptr<Counted> m_Next;
};
int Counted::S_Alive = 0;

class CountedChild : public Counted {
public:
    static CountedChild* Create() { return new (TypeInfoT<CountedChild>::S_TypeInfo_1) CountedChild(); }
    int m_Payload[7] = {};
};

I32 CountOf(void const* object)
{
    return HeaderOf(object)->m_RefCount;
}

// Calls through a null object on purpose: the members' own null test is what is checked.
__attribute__((no_sanitize("undefined"))) std::pair<bool, Counted*> ThroughNull(Object* object)
{
    return { object->Is<Counted>(), object->Cast<Counted>() };
}

} // namespace

TEST(Memory, FreshBlockHasHeaderAndNoReference)
{
    Counted* object = Counted::Create();
    BlockHeader const* header = HeaderOf(object);
    EXPECT_EQ(0, header->m_RefCount);
    EXPECT_EQ(&TypeInfoT<Counted>::S_TypeInfo_1, header->m_TypeInfo);
    EXPECT_EQ(0u, reinterpret_cast<std::uintptr_t>(object) % alignof(std::max_align_t));
    // Never held by a Ptr, so its owner destroys it.
    Destruct1(object);
    EXPECT_EQ(0, Counted::S_Alive);
}

TEST(Memory, ArrayBlocksKeepTheirCountAndFree)
{
    for (int count : { 0, 1, 4096 }) {
        U8* bytes = new (count, TypeInfoT<U8>::S_TypeInfo_N) U8[count];
        EXPECT_EQ(count, HeaderOf(bytes)->m_Count);
        EXPECT_EQ(&TypeInfoT<U8>::S_TypeInfo_N, HeaderOf(bytes)->m_TypeInfo);
        for (int i = 0; i < count; ++i)
            bytes[i] = static_cast<U8>(i);
        HeaderOf(bytes)->m_TypeInfo->m_Destroy(bytes);
    }
}

TEST(Memory, SizeMismatchAbortsWithLoggedAssertion)
{
    VellacoreTest::TempDir dir;
    EXPECT_DEATH({ Logger::Init(); operator new(sizeof(Counted) + 1, TypeInfoT<Counted>::S_TypeInfo_1); }, "");
    EXPECT_NE(std::string::npos, VellacoreTest::ReadFile("Xapp.log").find("[E] Memory/Memory(33)(I32)b==ti.m_TypeSize\n"));
}

// Copies count; assignment counts the new value first, so that neither a self-assignment nor
// replacing a head by its own next node destroys what is assigned.
TEST(Ptr, CopiesCountAndTheLastReferenceDestroysOnce)
{
    Ptr<Counted> head = Counted::Create();
    EXPECT_EQ(1, CountOf(head));
    {
        Ptr<Counted> second = head;
        Ptr<Counted> third;
        third = second;
        EXPECT_EQ(3, CountOf(head));
    }
    head = head;
    EXPECT_EQ(1, CountOf(head));
    EXPECT_EQ(1, Counted::S_Alive);

    // The next node is kept alive only by the head that is being replaced.
    head->m_Next = Counted::Create();
    head = head->m_Next;
    EXPECT_EQ(1, Counted::S_Alive);
    EXPECT_EQ(1, CountOf(head));

    head = nullptr;
    EXPECT_EQ(0, Counted::S_Alive);
}

TEST(Ptr, BasePointerDestroysThroughTheAllocatedType)
{
    {
        Ptr<Object> base = CountedChild::Create();
        Ptr<Counted> middle = base->Cast<Counted>();
        EXPECT_EQ(2, CountOf(base));
        EXPECT_EQ(&TypeInfoT<CountedChild>::S_TypeInfo_1, HeaderOf(base)->m_TypeInfo);
    }
    EXPECT_EQ(0, Counted::S_Alive);
}

TEST(Object, TypeTestsFollowInheritance)
{
    Ptr<Object> child = CountedChild::Create();
    Ptr<Object> plain = Counted::Create();
    EXPECT_TRUE(child->Is<Counted>());
    EXPECT_TRUE(child->Is<CountedChild>());
    EXPECT_FALSE(plain->Is<CountedChild>());
    EXPECT_EQ(child.Get(), child->Cast<Counted>());
    EXPECT_EQ(nullptr, plain->Cast<CountedChild>());

    // Volatile, so the compiler cannot see the null and warn about the call.
    Object* volatile none = nullptr;
    EXPECT_EQ(std::make_pair(false, static_cast<Counted*>(nullptr)), ThroughNull(none));
}
