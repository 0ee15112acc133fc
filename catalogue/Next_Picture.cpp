#include "catalogue/Next_Picture.h"

#include "frame/text/Path_Utilities.h"
#include "imaging/Script_Interpreter.h"

#include <limits>

namespace {

constexpr int One_Thread = 1;
constexpr auto All_Pixels = std::numeric_limits<std::int32_t>::max();

} // namespace

Next_Picture::Facts Next_Picture::Facts_Of(const Picture_Item& item) const
{
    Facts facts{.key = item.Picture_Key, .rotate = item.Rotate, .flip = item.Flip};
    if (const auto identity = Identity_Of(File_System_Bytes(item.Full_Name()))) facts.identity = *identity;
    facts.script = Join_Script_Items(state_.Items_In_Force(item));
    return facts;
}

void Next_Picture::Begin(int key)
{
    const Picture_Item* item = state_.pictures.Find(key);
    const Facts facts = item != nullptr ? Facts_Of(*item) : Facts();
    if (item != nullptr && facts == facts_ && (reading_ != nullptr || bitmaps_.picture)) return;
    reading_.reset();
    bitmaps_ = {};
    facts_ = facts;
    if (item == nullptr || item->Rotate % 90 != 0) return;
    reading_ = std::make_unique<Load_Ahead>(
        std::vector<Picture_Request>{
            {.path = File_System_Bytes(item->Full_Name()), .rotation = item->Rotate, .least_side = All_Pixels}},
        One_Thread);
}

/// A file that another program changed while it was read is read again when it is needed.
void Next_Picture::Take_Read()
{
    const Picture_Contents contents = reading_->Take();
    reading_.reset();
    bitmaps_.picture.Reset(Count_Bitmap(contents.bitmap));
    if (!(contents.identity == facts_.identity)) bitmaps_ = {};
    for (const int mode : {Flip_Left_To_Right, Flip_Top_To_Bottom})
        if (bitmaps_.picture && (facts_.flip & mode) != 0)
            bitmaps_.picture.Reset(Flip_Bitmap(bitmaps_.picture.Get(), mode));
}

bool Next_Picture::Go_On()
{
    if (reading_ == nullptr) return true;
    if (!reading_->Wait(std::chrono::milliseconds(0))) return false;
    Take_Read();
    const Picture_Item* item = state_.pictures.Find(facts_.key);
    if (item == nullptr || !bitmaps_.picture) return true;
    const Bitmap_Handle own = bitmaps_.picture.Get();
    const Bitmap_Handle adjusted =
        Apply_Script_Items(own, state_.Items_In_Force(*item), {.divisor = 1, .rotation = item->Rotate});
    if (adjusted != own) bitmaps_.adjusted.Reset(adjusted);
    return true;
}

Next_Picture::Bitmaps Next_Picture::Take(const Picture_Item& item)
{
    if (facts_.key != item.Picture_Key || !(facts_ == Facts_Of(item))) return {};
    if (reading_ != nullptr) Take_Read();
    facts_ = {};
    return std::exchange(bitmaps_, {});
}
