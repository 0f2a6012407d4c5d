#ifndef VELLACORE_MEMORY_PTR_H
#define VELLACORE_MEMORY_PTR_H

#include "Vellacore/Memory/Memory.h"

namespace Vellacore {

// Intrusive smart pointer: one machine word, the count lives in the block header. The object is
// destroyed, through the type record it was allocated with, when the last Ptr lets go of it.
template <class T>
class Ptr {
public:
    Ptr() : m_Pointer(nullptr) {}
    Ptr(T* p) : m_Pointer(p) { Acquire(p); }
    Ptr(Ptr const& other) : m_Pointer(other.m_Pointer) { Acquire(m_Pointer); }
    template <class U>
    Ptr(Ptr<U> const& other) : m_Pointer(other.Get()) { Acquire(m_Pointer); }
    ~Ptr() { Release(m_Pointer); }

    // The new object is counted before the old one is released, so assigning an object that only
    // the old value keeps alive (or the same object) is safe.
    Ptr& operator=(T* p)
    {
        Acquire(p);
        T* old = m_Pointer;
        m_Pointer = p;
        Release(old);
        return *this;
    }
    Ptr& operator=(Ptr const& other) { return *this = other.m_Pointer; }
    template <class U>
    Ptr& operator=(Ptr<U> const& other) { return *this = other.Get(); }

    T* Get() const { return m_Pointer; }
    T* operator->() const { return m_Pointer; }
    T& operator*() const { return *m_Pointer; }
    operator T*() const { return m_Pointer; }

private:
    static void Acquire(T* p)
    {
        if (p)
            ++HeaderOf(p)->m_RefCount;
    }
    static void Release(T* p)
    {
        if (!p)
            return;
        BlockHeader* header = HeaderOf(p);
        if (--header->m_RefCount < 1)
            header->m_TypeInfo->m_Destroy(p);
    }

    T* m_Pointer;
};

} // namespace Vellacore

#endif
