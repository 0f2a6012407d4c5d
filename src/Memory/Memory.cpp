#include "Vellacore/Memory/Memory.h"

#include "Vellacore/Core/Assert.h"

#include <cstdlib>

using namespace Vellacore;

namespace {

char* AllocateBlock(std::size_t payload, TypeInfo const& ti, I32 count, int line)
{
    void* block = std::malloc(payload + BlockHeaderSize);
    if (!block)
        Assert("block!=0", "Memory/Memory", line);
    BlockHeader* header = static_cast<BlockHeader*>(block);
    header->m_Magic = BlockMagic;
    header->m_RefCount = 0;
    header->m_TypeInfo = &ti;
    header->m_Count = count;
    return static_cast<char*>(block) + BlockHeaderSize;
}

void FreeBlock(void* p)
{
    std::free(HeaderOf(p));
}

} // namespace

void* operator new(std::size_t size, TypeInfo const& ti)
{
    if (static_cast<I32>(size) != ti.m_TypeSize)
        Assert("(I32)b==ti.m_TypeSize", "Memory/Memory", 33);
    return AllocateBlock(static_cast<std::size_t>(ti.m_TypeSize), ti, 0, 37);
}

void* operator new[](std::size_t size, int count, TypeInfo const& ti)
{
    std::size_t payload = static_cast<std::size_t>(ti.m_TypeSize) * static_cast<std::size_t>(count);
    return AllocateBlock(payload, ti, count, 62) + payload - size;
}

void operator delete(void* p, TypeInfo const&)
{
    FreeBlock(p);
}

void operator delete[](void* p, int, TypeInfo const&)
{
    FreeBlock(p);
}

namespace Vellacore {

void Delete1(void* p)
{
    FreeBlock(p);
}

void DeleteN(void* p)
{
    FreeBlock(p);
}

} // namespace Vellacore
