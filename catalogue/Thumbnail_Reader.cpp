#include "catalogue/Thumbnail_Reader.h"

#include "frame/text/Path_Utilities.h"

#include <algorithm>

namespace {

constexpr int One_Thread = 1;

/// Two of these are never decoded side by side.
bool Is_Large(const Picture_Item& item)
{
    return std::int64_t(item.Horz_Pixels) * item.Vert_Pixels > Load_Ahead::Most_Pixels_Side_By_Side / 2;
}

} // namespace

bool Thumbnail_Reader::Is_Being_Read(int key) const
{
    return std::any_of(readings_.begin(), readings_.end(),
                       [key](const Reading& reading) { return reading.key == key; });
}

void Thumbnail_Reader::Want(std::span<const int> keys)
{
    std::erase_if(readings_, [&](const Reading& reading) {
        return std::find(keys.begin(), keys.end(), reading.key) == keys.end();
    });
    for (const int key : keys) {
        if (Being_Read() >= Most_At_Once) return;
        const Picture_Item* item = state_.pictures.Find(key);
        if (item != nullptr && !Is_Being_Read(key)) Begin(*item);
    }
}

void Thumbnail_Reader::Begin(const Picture_Item& item)
{
    const bool is_large = Is_Large(item);
    if (is_large && std::any_of(readings_.begin(), readings_.end(), [](const auto& other) { return other.is_large; }))
        return; // its turn comes when the other one has ended
    const QString full_name = item.Full_Name();
    const File_Entry entry{.Path_Name = full_name, .Rotate = item.Rotate};
    readings_.push_back({item.Picture_Key, full_name, item.Rotate, is_large,
                         std::make_unique<Load_Ahead>(std::vector{pictures_.Request_For(entry)}, One_Thread)});
}

std::optional<int> Thumbnail_Reader::Take()
{
    const auto ended = std::find_if(readings_.begin(), readings_.end(), [](const Reading& reading) {
        return reading.file->Wait(std::chrono::milliseconds(0));
    });
    if (ended == readings_.end()) return std::nullopt;
    const Reading reading = std::move(*ended);
    readings_.erase(ended);
    return Take_Over(reading) ? std::optional(reading.key) : std::nullopt;
}

/// False when the record or the file is not what was read.
bool Thumbnail_Reader::Take_Over(const Reading& reading) const
{
    const Picture_Contents contents = reading.file->Take();
    Owned_Bitmap bitmap(Count_Bitmap(contents.bitmap));
    Picture_Item* item = state_.pictures.Find(reading.key);
    if (item == nullptr || item->Full_Name() != reading.full_name) return false;
    if (!bitmap || item->Thumbnail_Bitmap) return true;
    const auto identity = Identity_Of(File_System_Bytes(reading.full_name));
    if (!identity || !(*identity == contents.identity)) return false;
    item->Thumbnail_Bitmap = std::move(bitmap);
    item->Thumbnail_Rotate = reading.rotate;
    item->Thumbnail_Flip = 0;
    item->Scale_Divisor = contents.scale_divisor;
    return true;
}
