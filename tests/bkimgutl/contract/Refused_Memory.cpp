#include "tests/bkimgutl/contract/Refused_Memory.h"

#include <cstdlib>
#include <new>

// In a file of their own, so that the compiler joins no new and delete of a test to a mismatched pair.

thread_local int Requests_Until_Refused = -1;

void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept
{
    if (Requests_Until_Refused >= 0 && Requests_Until_Refused-- == 0) return nullptr;
    return std::malloc(bytes > 0 ? bytes : 1);
}

void* operator new(std::size_t bytes)
{
    void* memory = operator new(bytes, std::nothrow);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
