#include "catalogue/Catalogue_State.h"

const Script_Item_Array* Catalogue_State::Prepared_Items() const
{
    const auto& sets = Prepared_Script_Sets();
    if (Current_Prepared_Script < 1 || Current_Prepared_Script > int(sets.size())) return nullptr;
    return &sets[std::size_t(Current_Prepared_Script) - 1].Script_Items;
}

const Script_Item_Array& Catalogue_State::Items_In_Force(const Picture_Item& item) const
{
    const Script_Item_Array* prepared = Prepared_Items();
    return item.Script_Items.Is_Empty() && prepared != nullptr ? *prepared : item.Script_Items;
}
