#include "support/AllocationCounter.h"

#include <cstdlib>
#include <new>

// The test program's replacements of the global allocation functions, so that a test can see
// whether code allocates. They hand out malloc blocks, and every delete form goes to free: the
// sanitizer runtime, which would otherwise supply the forms not replaced here, must never see a
// malloc block come back through its own operator delete.

namespace {

unsigned long S_Allocations = 0;

void* CountedMalloc(std::size_t size) noexcept
{
    ++S_Allocations;
    // Every successful call must yield a distinct pointer, even for size 0.
    return std::malloc(size ? size : 1);
}

void* CountedNew(std::size_t size)
{
    if (void* block = CountedMalloc(size))
        return block;
    throw std::bad_alloc();
}

} // namespace

namespace VellacoreTest {

unsigned long AllocationCount()
{
    return S_Allocations;
}

} // namespace VellacoreTest

void* operator new(std::size_t size)
{
    return CountedNew(size);
}

void* operator new[](std::size_t size)
{
    return CountedNew(size);
}

void* operator new(std::size_t size, std::nothrow_t const&) noexcept
{
    return CountedMalloc(size);
}

void* operator new[](std::size_t size, std::nothrow_t const&) noexcept
{
    return CountedMalloc(size);
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

void operator delete[](void* block) noexcept
{
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}

void operator delete[](void* block, std::size_t) noexcept
{
    std::free(block);
}

void operator delete(void* block, std::nothrow_t const&) noexcept
{
    std::free(block);
}

void operator delete[](void* block, std::nothrow_t const&) noexcept
{
    std::free(block);
}
