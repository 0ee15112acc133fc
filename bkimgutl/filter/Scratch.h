#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>

/// Working memory of one purpose (Tag) and thread, aligned to 64 bytes. It is kept for the next call, since freshly mapped
/// memory would cost more than the work in it; a request of the same purpose invalidates the one before. Contents are
/// whatever was left, zero at first.
template <class Tag, class Value = std::int16_t>
Value* Scratch(std::size_t count)
{
    struct Freed {
        void operator()(void* memory) const { std::free(memory); }
    };
    thread_local std::unique_ptr<void, Freed> memory;
    thread_local std::size_t capacity = 0;
    if (count > capacity) {
        const std::size_t bytes = (count * sizeof(Value) + 63) / 64 * 64;
        memory.reset(); // before the new one, so that never both are held
        capacity = 0;
        memory.reset(std::aligned_alloc(64, bytes));
        if (!memory) throw std::bad_alloc();
        __builtin_memset(memory.get(), 0, bytes);
        capacity = count;
    }
    return static_cast<Value*>(memory.get());
}
