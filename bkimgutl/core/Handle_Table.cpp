#include "bkimgutl/core/Handle_Table.h"

#include "bkimgutl/core/Last_Error.h"

#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <vector>

// A handle is generation * 65536 + slot. A slot's generation starts at 1 and grows with each release; a slot whose
// generation is used up is never used again, so that no two bitmaps ever had the same handle.

namespace {

constexpr std::size_t most_slots = 65536;
constexpr std::uint32_t last_generation = 32767;

struct Slot {
    std::optional<Bitmap> bitmap;
    std::uint32_t generation = 1;
};

struct Table {
    std::mutex mutex;       // for the table; not for what the bitmaps hold
    std::deque<Slot> slots; // found bitmaps stay where they are while others are adopted
    std::vector<std::uint32_t> free_slots;
};

Table& The_Table()
{
    // Never destroyed: threads may still read files when a program exits.
    static Table* const table = new Table;
    return *table;
}

/// The table is locked by the caller.
Slot* Find_Slot(Table& table, Bitmap_Handle handle)
{
    const auto bits = std::uint32_t(handle);
    auto& slots = table.slots;
    const std::size_t number = bits & 0xFFFF;
    if (number >= slots.size()) return nullptr;
    Slot& slot = slots[number];
    return slot.bitmap && slot.generation == bits >> 16 ? &slot : nullptr;
}

Result<Bitmap*> Find(Bitmap_Handle handle)
{
    Table& table = The_Table();
    const std::lock_guard lock(table.mutex);
    Slot* slot = Find_Slot(table, handle);
    if (slot == nullptr) return Failure("invalid bitmap handle");
    return &*slot->bitmap;
}

std::optional<std::uint32_t> Take_Free_Slot(Table& table)
{
    if (!table.free_slots.empty()) {
        const std::uint32_t number = table.free_slots.back();
        table.free_slots.pop_back();
        return number;
    }
    if (table.slots.size() == most_slots) return std::nullopt;
    table.slots.emplace_back();
    return std::uint32_t(table.slots.size() - 1);
}

} // namespace

Result<const Bitmap*> Find_Bitmap(Bitmap_Handle handle)
{
    return Find(handle);
}

Result<Bitmap*> Find_Bitmap_To_Change(Bitmap_Handle handle)
{
    return Find(handle);
}

Bitmap_Handle Adopt(Bitmap bitmap)
{
    Table& table = The_Table();
    const std::lock_guard lock(table.mutex);
    const auto number = Take_Free_Slot(table);
    if (!number) return Fail({"too many bitmaps"});
    Slot& slot = table.slots[*number];
    slot.bitmap = std::move(bitmap);
    return Bitmap_Handle(slot.generation << 16 | *number);
}

Bitmap_Handle Adopt_Or_Fail(Result<Bitmap> result)
{
    return result ? Adopt(std::move(*result)) : Fail(result.error());
}

bool Release(Bitmap_Handle handle)
{
    std::optional<Bitmap> released; // its memory goes after the lock
    Table& table = The_Table();
    const std::lock_guard lock(table.mutex);
    Slot* slot = Find_Slot(table, handle);
    if (slot == nullptr) return false;
    released.swap(slot->bitmap);
    if (slot->generation++ < last_generation) table.free_slots.push_back(std::uint32_t(handle) & 0xFFFF);
    return true;
}
