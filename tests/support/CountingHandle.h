#ifndef VELLACORE_TESTS_COUNTINGHANDLE_H
#define VELLACORE_TESTS_COUNTINGHANDLE_H

#include "Vellacore/Memory/Memory.h"

namespace VellacoreTest {

// A renderer's resource handle (TextureHandle or RenderPolygonHandle) that counts the live ones.
template <class HandleT>
class CountingHandleT : public HandleT {
public:
    static int S_Alive;
    static CountingHandleT* Create() { return new (Vellacore::TypeInfoT<CountingHandleT>::S_TypeInfo_1) CountingHandleT(); }
    CountingHandleT() { ++S_Alive; }
    ~CountingHandleT() override { --S_Alive; }
    void Unload() override {}
};

template <class HandleT>
int CountingHandleT<HandleT>::S_Alive = 0;

} // namespace VellacoreTest

#endif
