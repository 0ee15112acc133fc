#include "catalogue/Next_Picture.h"

#include "bkimgutl/contract/Load_Ahead.h"
#include "bkimgutl/core/Cancellation.h"
#include "bkimgutl/core/Step_Back.h"
#include "frame/text/Path_Utilities.h"
#include "imaging/Script_Interpreter.h"

#include <algorithm>
#include <limits>
#include <system_error>

namespace {

constexpr int On_This_Thread = 0;
constexpr auto All_Pixels = std::numeric_limits<std::int32_t>::max();

} // namespace

/// The system may give no thread: the picture is read when it is needed then.
Next_Picture::Making::Making(const Facts& of) : facts(of)
{
    try {
        bitmaps = std::async(std::launch::async, [this] { return Made(facts, stop); });
    } catch (const std::system_error&) {
    }
}

Next_Picture::Making::~Making()
{
    stop = true;
    if (bitmaps.valid()) bitmaps.wait();
}

bool Next_Picture::Making::Is_Done() const
{
    return !bitmaps.valid() || bitmaps.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

Next_Picture::Facts Next_Picture::Facts_Of(const Picture_Item& item) const
{
    Facts facts{.key = item.Picture_Key, .rotate = item.Rotate, .flip = item.Flip, .file = item.Full_Name()};
    if (const auto identity = Identity_Of(File_System_Bytes(facts.file))) facts.identity = *identity;
    facts.script = state_.Items_In_Force(item);
    return facts;
}

void Next_Picture::Give_Up()
{
    std::erase_if(given_up_, [](const auto& making) { return making->Is_Done(); });
    if (making_ == nullptr) return;
    making_->stop = true;
    if (!making_->Is_Done()) given_up_.push_back(std::move(making_));
    making_.reset();
}

void Next_Picture::End()
{
    making_.reset();
    given_up_.clear();
}

void Next_Picture::Begin(int key)
{
    const Picture_Item* item = state_.pictures.Find(key);
    const Facts facts = item != nullptr ? Facts_Of(*item) : Facts();
    if (making_ != nullptr && making_->facts == facts) return;
    Give_Up();
    const bool can_be_read = item != nullptr && item->Rotate % 90 == 0 && !(facts.identity == File_Identity());
    if (can_be_read) making_ = std::make_unique<Making>(facts);
}

bool Next_Picture::Is_Being_Made(int key) const
{
    return making_ != nullptr && making_->facts.key == key && !making_->Is_Done();
}

/// A file that another program changed while it was read is read again when it is needed.
Next_Picture::Bitmaps Next_Picture::Read(const Facts& facts)
{
    Load_Ahead reading({{.path = File_System_Bytes(facts.file), .rotation = facts.rotate, .least_side = All_Pixels}},
                       On_This_Thread);
    const Picture_Contents contents = reading.Take();
    Bitmaps bitmaps;
    bitmaps.picture.Reset(Count_Bitmap(contents.bitmap));
    if (!(contents.identity == facts.identity)) bitmaps.picture.Reset();
    for (const int mode : {Flip_Left_To_Right, Flip_Top_To_Bottom})
        if (bitmaps.picture && (facts.flip & mode) != 0)
            bitmaps.picture.Reset(Flip_Bitmap(bitmaps.picture.Get(), mode));
    return bitmaps;
}

/// No exception leaves the thread: what does not fit into memory is tried again, and told, when it is needed.
Next_Picture::Bitmaps Next_Picture::Made(const Facts& facts, const std::atomic<bool>& stop)
{
    Step_Back();
    const Cancellation_Scope scope(stop);
    try {
        Bitmaps bitmaps = Read(facts);
        if (!bitmaps.picture || !May_Run_Aside(facts.script)) return bitmaps;
        const Bitmap_Handle own = bitmaps.picture.Get();
        const Bitmap_Handle adjusted =
            Apply_Script_Items(own, facts.script, {.divisor = 1, .rotation = facts.rotate, .stop = &stop});
        if (adjusted != own) bitmaps.adjusted.Reset(adjusted);
        return stop ? Bitmaps() : std::move(bitmaps); // nobody comes for what was given up
    } catch (const std::exception&) {
        return {};
    }
}

Next_Picture::Bitmaps Next_Picture::Take(const Picture_Item& item)
{
    if (making_ == nullptr || !(making_->facts == Facts_Of(item))) return {};
    Bitmaps bitmaps;
    if (making_->bitmaps.valid()) bitmaps = making_->bitmaps.get();
    making_.reset();
    return bitmaps;
}
