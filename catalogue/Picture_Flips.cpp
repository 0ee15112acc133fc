#include "catalogue/Picture_Flips.h"

#include "catalogue/Text_Item_Turning.h"
#include "imaging/Script_Interpreter.h"

namespace {

/// The record's way to say "both flips".
void Make_Half_Turn(Picture_Item& item)
{
    item.Flip = 0;
    item.Rotate = Normal_Rotation(item.Rotate + 180);
    const Script_Item_Array before = item.Script_Items;
    Turn_Text_Items(item.Script_Items, 180, {item.Horz_Pixels, item.Vert_Pixels});
    if (!(item.Script_Items == before)) item.Script_Modified = true;
}

} // namespace

void Flip_Picture(Catalogue_State& state, Picture_Pictures& pictures, int key, int flip)
{
    Picture_Item* item = state.pictures.Find(key);
    if (item == nullptr) return;
    item->Flip ^= flip;
    if (item->Flip == (Flip_Left_To_Right | Flip_Top_To_Bottom)) Make_Half_Turn(*item);
    pictures.Show_Turned(key);
}
