#ifndef VELLACORE_MEMORY_MEMORY_H
#define VELLACORE_MEMORY_MEMORY_H

#include "Vellacore/Core/Types.h"
#include "Vellacore/Memory/TypeInfo.h"

#include <cstddef>
#include <type_traits>

namespace Vellacore {

// Every typed allocation is one malloc: a block header, then the payload. The header holds the
// intrusive reference count that Ptr maintains and the type record that destroys the block.
struct BlockHeader {
    U32 m_Magic;
    I32 m_RefCount;
    TypeInfo const* m_TypeInfo;
    I32 m_Count; // 0 for a single object, the element count for an array block
};

// 16 bytes on the 32-bit handheld; on a 64-bit host the record pointer widens it, and rounding up to
// 16 keeps objects at the alignment malloc gives.
constexpr std::size_t BlockHeaderSize = (sizeof(BlockHeader) + 15) & ~std::size_t(15);
constexpr U32 BlockMagic = 0xBABEB00B;

inline BlockHeader* HeaderOf(void const* object)
{
    return reinterpret_cast<BlockHeader*>(static_cast<char*>(const_cast<void*>(object)) - BlockHeaderSize);
}

void Delete1(void* p);
void DeleteN(void* p);

// The block's contents are destroyed through the complete-object destructor (virtual for Object
// types), never the deleting one: the block goes back with free, not with operator delete.
template <class T>
void Destruct1(T* p)
{
    p->~T();
    Delete1(p);
}

template <class T>
void DestructN(T* p)
{
    if (!std::is_trivially_destructible<T>::value) {
        for (I32 i = HeaderOf(p)->m_Count; i > 0; --i)
            p[i - 1].~T();
    }
    DeleteN(p);
}

} // namespace Vellacore

// The typed allocators. Usage: new (TypeInfoT<T>::S_TypeInfo_1) T(), and for byte buffers
// new (count, TypeInfoT<U8>::S_TypeInfo_N) U8[count]. Array blocks are for element types without
// a destructor, which the compiler allocates without an array cookie in front of the elements.
void* operator new(std::size_t size, Vellacore::TypeInfo const& ti);
void* operator new[](std::size_t size, int count, Vellacore::TypeInfo const& ti);
// Called only when a constructor throws during one of the allocations above.
void operator delete(void* p, Vellacore::TypeInfo const& ti);
void operator delete[](void* p, int count, Vellacore::TypeInfo const& ti);

#endif
