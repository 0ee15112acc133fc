#include "catalogue/Thumbnail_Budget.h"

#include "imaging/Script_Interpreter.h"

#include <algorithm>

namespace {

std::int64_t Bytes_Of(Bitmap_Handle bitmap)
{
    Bitmap_Facts facts;
    return Get_Bitmap_Facts_CPP(bitmap, &facts) ? std::int64_t(facts.stride) * facts.height : 0;
}

/// A Scale item makes its picture as large as it says, also out of a thumbnail. A cell needs no more pixels than the
/// thumbnail has.
Owned_Bitmap No_Larger_Than(Pixel_Size most, Owned_Bitmap bitmap)
{
    const Pixel_Size size = Size_Of_Bitmap(bitmap.Get());
    const int side = std::max(size.width, size.height);
    const int most_side = std::max(most.width, most.height);
    if (side <= most_side) return bitmap;
    const auto reduced = [&](int length) { return std::max(int(std::int64_t(length) * most_side / side), 1); };
    Owned_Bitmap small(Count_Bitmap(Create_Scaled_Bitmap_CPP(bitmap.Get(), reduced(size.width), reduced(size.height),
                                                             int(Interpolation_Method::Triangle))));
    return small ? std::move(small) : std::move(bitmap);
}

} // namespace

void Thumbnail_Budget::Note(int key)
{
    const Picture_Item* item = state_.pictures.Find(key);
    if (item == nullptr || !item->Thumbnail_Bitmap) return Forget(key);
    Count(Put_First(*item));
    Trim();
}

bool Thumbnail_Budget::Use(int key)
{
    Picture_Item* item = state_.pictures.Find(key);
    if (item == nullptr || !pictures_.Ensure_Thumbnail(*item)) {
        Forget(key);
        return false;
    }
    Entry& entry = Put_First(*item);
    if (!Is_Ready(*item)) Adjust(entry, *item);
    Count(entry);
    Trim();
    return true;
}

bool Thumbnail_Budget::Is_Ready(const Picture_Item& item) const
{
    const auto found = entries_.find(item.Picture_Key);
    if (found == entries_.end() || !item.Thumbnail_Bitmap || !item.Thumbnail_Is_In_Line()) return false;
    const Entry& entry = found->second;
    return entry.is_adjusted && entry.thumbnail == item.Thumbnail_Bitmap.Get() &&
           entry.items == state_.Items_In_Force(item);
}

Bitmap_Handle Thumbnail_Budget::Drawn(const Picture_Item& item) const
{
    if (!item.Thumbnail_Is_In_Line()) return 0;
    const Bitmap_Handle thumbnail = item.Thumbnail_Bitmap.Get();
    const auto found = entries_.find(item.Picture_Key);
    const bool is_its_own = found != entries_.end() && found->second.thumbnail == thumbnail;
    return is_its_own && found->second.adjusted ? found->second.adjusted.Get() : thumbnail;
}

Thumbnail_Budget::Entry& Thumbnail_Budget::Put_First(const Picture_Item& item)
{
    const int key = item.Picture_Key;
    const auto found = entries_.find(key);
    if (found == entries_.end())
        return entries_.emplace(key, Entry{.place = order_.insert(order_.begin(), key)}).first->second;
    order_.splice(order_.begin(), order_, found->second.place);
    return found->second;
}

void Thumbnail_Budget::Adjust(Entry& entry, const Picture_Item& item) const
{
    entry.adjusted.Reset();
    entry.thumbnail = item.Thumbnail_Bitmap.Get();
    entry.items = state_.Items_In_Force(item);
    entry.is_adjusted = true;
    bool is_copy = false;
    const Bitmap_Handle result =
        Adjusted_Thumbnail(entry.thumbnail, entry.items, item.Scale_Divisor, item.Rotate, is_copy);
    if (is_copy) entry.adjusted = No_Larger_Than(Size_Of_Bitmap(entry.thumbnail), Owned_Bitmap(result));
}

void Thumbnail_Budget::Count(Entry& entry)
{
    const Picture_Item* item = state_.pictures.Find(*entry.place);
    if (entry.thumbnail != item->Thumbnail_Bitmap.Get()) entry.adjusted.Reset(); // of a thumbnail that is gone
    bytes_ -= entry.bytes;
    entry.bytes = Bytes_Of(item->Thumbnail_Bitmap.Get()) + Bytes_Of(entry.adjusted.Get());
    bytes_ += entry.bytes;
}

void Thumbnail_Budget::Forget(int key)
{
    const auto found = entries_.find(key);
    if (found == entries_.end()) return;
    bytes_ -= found->second.bytes;
    order_.erase(found->second.place);
    entries_.erase(found);
}

void Thumbnail_Budget::Forget_Removed()
{
    for (auto place = order_.begin(); place != order_.end();) {
        const int key = *place++;
        if (state_.pictures.Find(key) == nullptr) Forget(key);
    }
}

void Thumbnail_Budget::Trim()
{
    while ((bytes_ > budget_ && Kept() > Least_Kept) || Kept() > Most_Kept) {
        const int key = order_.back();
        Forget(key);
        if (Picture_Item* item = state_.pictures.Find(key)) item->Thumbnail_Bitmap.Reset();
    }
}
