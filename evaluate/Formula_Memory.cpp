#include "evaluate/Formula_Memory.h"

#include "evaluate/variant/Variant_Array.h"

#include <algorithm>
#include <malloc.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define HV_SANITIZER_HEAP
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define HV_SANITIZER_HEAP
#endif
#ifdef HV_SANITIZER_HEAP
extern "C" std::size_t __sanitizer_get_current_allocated_bytes(); // not every compiler brings the header for it
#endif

namespace Formula {

namespace {

constexpr std::int64_t Array_Overhead = 128; // the headers, and what the heap adds

} // namespace

Formula_Memory::Formula_Memory(std::int64_t limit, Meter meter) : limit_(limit), meter_(std::move(meter))
{
    Start();
}

void Formula_Memory::Set_Limit(std::int64_t limit)
{
    limit_ = limit;
}

void Formula_Memory::Start()
{
    granted_ = left_ = Step();
    made_ = 0;
    base_.reset();
}

Error_Number Formula_Memory::Take_Elements(std::int64_t count)
{
    const std::int64_t bytes = Array_Overhead + count * std::int64_t(sizeof(Variant));
    left_ -= bytes;
    return left_ >= 0 || Ask_Heap(bytes, 0) >= 0 ? Error_Number::None : Error_Number::Out_Of_Memory;
}

Error_Number Formula_Memory::Room_For_List(std::int64_t texts, std::int64_t characters)
{
    const std::int64_t bytes =
        Array_Overhead + texts * (std::int64_t(sizeof(Variant)) + Text_Overhead) + 2 * characters;
    return bytes <= left_ || bytes <= Ask_Heap(0, 0) ? Error_Number::None : Error_Number::Out_Of_Memory;
}

Error_Number Formula_Memory::Take_Copy_Of(const Variant& array)
{
    if (!array.Is_Array() || array.Array().references == 1) return Error_Number::None;
    return Take_Elements(std::int64_t(array.Array().elements.size()));
}

std::int64_t Formula_Memory::Array_Bytes(const Variant_Array& array)
{
    if (array.references > 1) return 0;
    std::int64_t bytes = Array_Overhead + std::int64_t(array.elements.size() * sizeof(Variant));
    for (const Variant& element : array.elements)
        if (element.Is_String()) bytes += Text_Bytes(element.Text());
    return bytes;
}

Error_Number Formula_Memory::Note_Array(const Variant_Array& array)
{
    const std::int64_t bytes = Array_Bytes(array);
    left_ -= bytes;
    return left_ >= 0 || Ask_Heap(0, bytes) >= 0 ? Error_Number::None : Error_Number::Out_Of_Memory;
}

/// to_come  bytes that were noted and stand not yet on the heap
/// there    bytes that stand there although nobody asked before
/// How many bytes are free for more; negative when there are too many already.
std::int64_t Formula_Memory::Ask_Heap(std::int64_t to_come, std::int64_t there)
{
    const std::int64_t now = meter_();
    // The run only adds to what stood there at its start: a lower reading is what others gave back.
    base_ = std::min(base_.value_or(now - there), now);
    made_ += granted_ - left_;
    const std::int64_t held = std::min(now - *base_, made_ - to_come);
    const std::int64_t free = limit_ - held - to_come;
    granted_ = left_ = std::max(free, Step());
    return free;
}

std::int64_t Formula_Memory::Heap_Bytes()
{
#ifdef HV_SANITIZER_HEAP // it has a heap of its own, of which the C library knows nothing
    return std::int64_t(__sanitizer_get_current_allocated_bytes());
#else
    const struct mallinfo2 heap = mallinfo2();
    return std::int64_t(heap.uordblks) + std::int64_t(heap.hblkhd);
#endif
}

} // namespace Formula
