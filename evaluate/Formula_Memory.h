#pragma once

#include "evaluate/variant/Evaluate_Error.h"
#include "evaluate/variant/Variant.h"

#include <functional>
#include <optional>

namespace Formula {

/// Keeps a run from filling the memory of the machine with many values, each of which is small enough by itself.
///
///     value made -> note its bytes -> only when the notes use up what is left: ask the heap -> enough left, or an error
///
/// The notes alone would forbid a loop that builds a text and drops it again a thousand times, so the heap has the last
/// word. It is asked so rarely that nothing of it can be measured. What other threads take meanwhile is never put on the
/// run beyond what it noted itself.
/// Bytes in 64 bits. A run keeps at most the limit and one step. What makes a text or a list longer than its arguments asks
/// for room before; a text that is only changed may come on top.
class Formula_Memory {
public:
    using Meter = std::function<std::int64_t()>;
    static constexpr std::int64_t Most_Step = 32 << 20; ///< noted before the heap is asked for the first time

    explicit Formula_Memory(std::int64_t limit, Meter meter = Heap_Bytes);

    std::int64_t Limit() const { return limit_; }
    void Set_Limit(std::int64_t limit); ///< holds from the next start on
    void Start();                       ///< of a run

    /// Before an array of so many elements is made; 7 when it would be too much.
    Error_Number Take_Elements(std::int64_t count);

    /// Before a text of so many characters is made; 14 when it would be too much. Notes nothing: that is done when the
    /// text stands and is known.
    Error_Number Room_For_Text(std::int64_t characters)
    {
        const std::int64_t bytes = Text_Overhead + 2 * characters;
        return bytes <= left_ || bytes <= Ask_Heap(0, 0) ? Error_Number::None : Error_Number::Out_Of_String_Space;
    }

    /// The same before a list of so many texts is made, which have so many characters together; 7.
    Error_Number Room_For_List(std::int64_t texts, std::int64_t characters);

    /// Before an array is written to, which copies one that is shared. Nothing for other values.
    Error_Number Take_Copy_Of(const Variant& array);

    /// Behind an operation: nothing for a value that is shared, since it was there before. 7 or 14 when it is too much.
    Error_Number Note(const Variant& value)
    {
        if (value.Is_Plain()) return Error_Number::None;
        if (!value.Is_String()) return Note_Array(value.Array());
        const std::int64_t bytes = Text_Bytes(value.Text());
        left_ -= bytes;
        return left_ >= 0 || Ask_Heap(0, bytes) >= 0 ? Error_Number::None : Error_Number::Out_Of_String_Space;
    }

    /// The bytes that all threads hold on the heap.
    static std::int64_t Heap_Bytes();

private:
    static constexpr std::int64_t Text_Overhead = 32; ///< the header, and what the heap adds

    /// With what the heap and the header add. A text that is shared was made before.
    static std::int64_t Text_Bytes(const QString& text)
    {
        return text.isDetached() ? Text_Overhead + 2 * std::int64_t(text.size()) : 0;
    }
    static std::int64_t Array_Bytes(const Variant_Array& array);
    Error_Number Note_Array(const Variant_Array& array);
    std::int64_t Step() const { return limit_ / 4 < Most_Step ? limit_ / 4 : Most_Step; }
    std::int64_t Ask_Heap(std::int64_t to_come, std::int64_t there);

    std::int64_t limit_;
    Meter meter_;
    std::int64_t granted_ = 0;         ///< since the heap was asked
    std::int64_t left_ = 0;            ///< of it
    std::int64_t made_ = 0;            ///< noted since the first time, up to the last
    std::optional<std::int64_t> base_; ///< what the heap held when it was asked for the first time
};

} // namespace Formula
