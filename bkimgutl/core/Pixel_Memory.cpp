#include "bkimgutl/core/Pixel_Memory.h"

#include "frame/files/Limits.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <mutex>
#include <sanitizer/asan_interface.h>
#include <sys/mman.h>
#include <utility>
#include <vector>

// Small blocks come from malloc, which pools them itself. Large ones are mapped on a boundary of 2 MiB in whole huge
// pages and are kept here when a bitmap dies: the newest first, since its pages are warmest.

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t huge_page = std::size_t(2) << 20;
constexpr std::size_t alignment = 64;
constexpr std::size_t slack = 64; // behind the end, for vector code
constexpr std::chrono::seconds longest_idle{20};

struct Idle_Block {
    std::uint8_t* bytes;
    std::size_t capacity;
    Clock::time_point since;
};

constexpr bool Is_Mapped(std::size_t capacity)
{
    return capacity >= huge_page;
}

constexpr std::size_t Round_Up(std::size_t value, std::size_t unit)
{
    return (value + unit - 1) / unit * unit;
}

std::size_t Capacity_For(std::size_t bytes)
{
    const std::size_t needed = bytes + slack;
    return needed >= huge_page / 2 ? Round_Up(needed, huge_page) : Round_Up(needed, alignment);
}

// mmap knows no alignment: map a huge page more and give both ends back.
std::uint8_t* Map_Block(std::size_t capacity)
{
    void* mapped =
        mmap(nullptr, capacity + huge_page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (mapped == MAP_FAILED) return nullptr;
    auto* start = static_cast<std::uint8_t*>(mapped);
    auto* aligned = reinterpret_cast<std::uint8_t*>(Round_Up(reinterpret_cast<std::uintptr_t>(start), huge_page));
    const auto before = std::size_t(aligned - start);
    if (before > 0) munmap(start, before);
    if (before < huge_page) munmap(aligned + capacity, huge_page - before);
    madvise(aligned, capacity, MADV_HUGEPAGE);
    return aligned;
}

std::uint8_t* Get_From_System(std::size_t capacity)
{
    if (Is_Mapped(capacity)) return Map_Block(capacity);
    return static_cast<std::uint8_t*>(std::aligned_alloc(alignment, capacity));
}

void Give_To_System(std::uint8_t* bytes, std::size_t capacity)
{
    if (!Is_Mapped(capacity)) return std::free(bytes);
    ASAN_UNPOISON_MEMORY_REGION(bytes, capacity);
    munmap(bytes, capacity);
}

class Pool {
public:
    std::uint8_t* Take(std::size_t bytes, std::size_t& capacity);
    void Put_Back(std::uint8_t* bytes, std::size_t capacity);
    void Release_All();
    Pixel_Memory_Use Use();

private:
    std::uint8_t* Take_Idle(std::size_t least, std::size_t& capacity);
    void Drop_Down_To(std::size_t most_idle);
    void Drop_Stale();

    std::mutex mutex_;
    std::vector<Idle_Block> idle_; // oldest first
    std::size_t idle_bytes_ = 0;
    std::size_t live_bytes_ = 0;
    const std::size_t limit_ = std::size_t(Live_Bitmap_Bytes_Limit());
    const std::size_t most_idle_ = limit_ / 8;
};

// A block may be at most an eighth larger than asked for, so that small pictures do not sit in large blocks.
std::uint8_t* Pool::Take_Idle(std::size_t least, std::size_t& capacity)
{
    for (std::size_t i = idle_.size(); i-- > 0;) {
        if (idle_[i].capacity < least || idle_[i].capacity > least + least / 8 + huge_page) continue;
        std::uint8_t* bytes = idle_[i].bytes;
        capacity = idle_[i].capacity;
        idle_bytes_ -= capacity;
        idle_.erase(idle_.begin() + std::ptrdiff_t(i));
        return bytes;
    }
    return nullptr;
}

std::uint8_t* Pool::Take(std::size_t bytes, std::size_t& capacity)
{
    const std::lock_guard lock(mutex_);
    capacity = Capacity_For(bytes);
    if (bytes > limit_ || live_bytes_ > limit_ - bytes) return nullptr;
    std::uint8_t* block = Is_Mapped(capacity) ? Take_Idle(capacity, capacity) : nullptr;
    if (block == nullptr) {
        const std::size_t room = limit_ - live_bytes_ - bytes;
        Drop_Down_To(room);
        block = Get_From_System(capacity);
    }
    if (block == nullptr && !idle_.empty()) {
        Drop_Down_To(0);
        block = Get_From_System(capacity);
    }
    if (block == nullptr) return nullptr;
    live_bytes_ += capacity;
    if (Is_Mapped(capacity)) {
        ASAN_UNPOISON_MEMORY_REGION(block, bytes + slack);
        ASAN_POISON_MEMORY_REGION(block + bytes + slack, capacity - bytes - slack);
    }
    return block;
}

void Pool::Put_Back(std::uint8_t* bytes, std::size_t capacity)
{
    const std::lock_guard lock(mutex_);
    live_bytes_ -= capacity;
    if (!Is_Mapped(capacity) || capacity > most_idle_) return Give_To_System(bytes, capacity);
    Drop_Down_To(most_idle_ - capacity);
    Drop_Stale();
    ASAN_POISON_MEMORY_REGION(bytes, capacity);
    idle_.push_back({bytes, capacity, Clock::now()});
    idle_bytes_ += capacity;
}

void Pool::Drop_Down_To(std::size_t most_idle)
{
    std::size_t dropped = 0;
    for (; idle_bytes_ > most_idle; ++dropped) {
        Give_To_System(idle_[dropped].bytes, idle_[dropped].capacity);
        idle_bytes_ -= idle_[dropped].capacity;
    }
    idle_.erase(idle_.begin(), idle_.begin() + std::ptrdiff_t(dropped));
}

void Pool::Drop_Stale()
{
    const auto oldest = Clock::now() - longest_idle;
    std::size_t kept = idle_bytes_;
    for (const Idle_Block& block : idle_)
        if (block.since < oldest) kept -= block.capacity;
    Drop_Down_To(kept); // the stale ones are the oldest, so they stand in front
}

void Pool::Release_All()
{
    const std::lock_guard lock(mutex_);
    Drop_Down_To(0);
}

Pixel_Memory_Use Pool::Use()
{
    const std::lock_guard lock(mutex_);
    return {live_bytes_, idle_bytes_, limit_, most_idle_};
}

// Never destroyed: bitmaps that live in statics may die after it would have.
Pool& The_Pool()
{
    static Pool* pool = new Pool;
    return *pool;
}

} // namespace

Result<Pixel_Memory> Pixel_Memory::Allocate(std::size_t bytes)
{
    Pixel_Memory memory;
    memory.bytes_ = The_Pool().Take(bytes, memory.capacity_);
    if (memory.bytes_ == nullptr)
        return Failure("not enough memory for a picture of " + std::to_string(bytes) + " bytes");
    memory.size_ = bytes;
    return memory;
}

Pixel_Memory::Pixel_Memory(Pixel_Memory&& other) noexcept
    : bytes_(std::exchange(other.bytes_, nullptr)),
      size_(std::exchange(other.size_, 0)),
      capacity_(std::exchange(other.capacity_, 0))
{}

Pixel_Memory& Pixel_Memory::operator=(Pixel_Memory&& other) noexcept
{
    if (this == &other) return *this;
    std::swap(bytes_, other.bytes_);
    std::swap(size_, other.size_);
    std::swap(capacity_, other.capacity_);
    return *this;
}

Pixel_Memory::~Pixel_Memory()
{
    if (bytes_ != nullptr) The_Pool().Put_Back(bytes_, capacity_);
}

void Release_Idle_Pixel_Memory()
{
    The_Pool().Release_All();
}

Pixel_Memory_Use Current_Pixel_Memory_Use()
{
    return The_Pool().Use();
}
