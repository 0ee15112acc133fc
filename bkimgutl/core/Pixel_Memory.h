#pragma once

#include "frame/files/Result.h"

#include <cstddef>
#include <cstdint>

/// Memory of one bitmap, from a pool. Writing freshly mapped memory costs seven times a warm copy, and every kernel call
/// makes a new bitmap; so released blocks are kept, up to a bound, and given back to the system when they lie idle. Large
/// blocks ask for huge pages and are aligned to 64 bytes. Blocks have 64 readable and writable bytes behind their end, so
/// that vector code may run over a row's end.
class Pixel_Memory {
public:
    Pixel_Memory() = default;
    static Result<Pixel_Memory> Allocate(std::size_t bytes);
    Pixel_Memory(Pixel_Memory&& other) noexcept;
    Pixel_Memory& operator=(Pixel_Memory&& other) noexcept;
    ~Pixel_Memory();

    std::uint8_t* Bytes() const { return bytes_; }
    std::size_t Size() const { return size_; }

private:
    std::uint8_t* bytes_ = nullptr;
    std::size_t size_ = 0;     ///< asked for
    std::size_t capacity_ = 0; ///< of the block, as the pool keeps it
};

/// Gives all idle blocks back to the system.
void Release_Idle_Pixel_Memory();

struct Pixel_Memory_Use {
    std::size_t live_bytes = 0;      ///< of blocks that bitmaps hold
    std::size_t idle_bytes = 0;      ///< of blocks that wait for the next bitmap
    std::size_t most_live_bytes = 0; ///< Allocate fails beyond it
    std::size_t most_idle_bytes = 0;
};
Pixel_Memory_Use Current_Pixel_Memory_Use();
