#include "catalogue/Thumbnail_Budget.h"

#include "imaging/Script_Interpreter.h"

namespace {

std::int64_t Bytes_Of(Bitmap_Handle bitmap)
{
    Bitmap_Facts facts;
    return Get_Bitmap_Facts_CPP(bitmap, &facts) ? std::int64_t(facts.stride) * facts.height : 0;
}

} // namespace

bool Thumbnail_Budget::Use(int key)
{
    Picture_Item* item = state_.pictures.Find(key);
    Forget(key);
    if (item == nullptr) return false;
    if (!pictures_.Ensure_Thumbnail(*item)) return false;
    order_.push_front(key);
    const std::int64_t bytes = Bytes_Of(item->Thumbnail_Bitmap.Get());
    entries_.insert(key, {order_.begin(), bytes});
    bytes_ += bytes;
    Trim();
    return true;
}

void Thumbnail_Budget::Forget(int key)
{
    const auto found = entries_.find(key);
    if (found == entries_.end()) return;
    bytes_ -= found->bytes;
    order_.erase(found->place);
    entries_.erase(found);
}

void Thumbnail_Budget::Trim()
{
    while (bytes_ > budget_ && Kept() > Least_Kept) {
        const int key = order_.back();
        Forget(key);
        if (Picture_Item* item = state_.pictures.Find(key)) item->Thumbnail_Bitmap.Reset();
    }
}
