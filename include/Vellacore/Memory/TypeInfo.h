#ifndef VELLACORE_MEMORY_TYPEINFO_H
#define VELLACORE_MEMORY_TYPEINFO_H

#include "Vellacore/Core/Types.h"

namespace Vellacore {

// What the allocator needs to know about a type: how large one element is and how a block of it
// is destroyed. Every block remembers the record it was allocated with, so a Ptr<Base> destroys a
// derived object through the derived type's record, not through a virtual deleting destructor.
struct TypeInfo {
    I32 m_TypeSize;
    void (*m_Destroy)(void* object);
};

template <class T>
void Destruct1(T* p);
template <class T>
void DestructN(T* p);

// One record for single objects and one for arrays, per type. Templates' static members are
// shared across translation units, so every user sees the same record.
template <class T>
struct TypeInfoT {
    static TypeInfo const S_TypeInfo_1;
    static TypeInfo const S_TypeInfo_N;

private:
    static void Destroy1(void* object) { Destruct1(static_cast<T*>(object)); }
    static void DestroyN(void* object) { DestructN(static_cast<T*>(object)); }
};

template <class T>
TypeInfo const TypeInfoT<T>::S_TypeInfo_1 = { static_cast<I32>(sizeof(T)), &TypeInfoT<T>::Destroy1 };
template <class T>
TypeInfo const TypeInfoT<T>::S_TypeInfo_N = { static_cast<I32>(sizeof(T)), &TypeInfoT<T>::DestroyN };

} // namespace Vellacore

#endif
