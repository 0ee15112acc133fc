// The commands of the script menu.

#include "catalogue/Catalogue_Commands.h"

void Catalogue_Commands::Choose_Prepared_Script(int number)
{
    if (number < 1 || number > int(Prepared_Script_Sets().size())) return;
    if (form_.Picking().Pick_In_Progress() || Is_Busy()) return;
    host_.Leave_Full_Window_View();
    host_.Leave_Picture_List();
    int& current = form_.State().Current_Prepared_Script;
    current = current == number ? 0 : number;
    Scripts_Changed();
}

void Catalogue_Commands::Scripts_Changed()
{
    Catalogue_View& view = *form_.State().view;
    view.Draw_All_Thumbnails();
    form_.State().keeper->Keep_Now();
    view.Show_Current_Picture();
    view.Update_Status();
}

void Catalogue_Commands::Clear_Scripts(bool all)
{
    for (const int key : Keys_For(all, Select_Access::Exclusive)) {
        Picture_Item& item = *form_.State().pictures.Find(key);
        if (item.Script_Items.Is_Empty()) continue; // erasing what was not there leaves the record as it is
        item.Script_Items.Clear();
        item.Script_Modified = true;
    }
    Scripts_Changed();
}

void Catalogue_Commands::Copy_Selected_Script()
{
    const std::vector<int> keys = Keys_For(false, Select_Access::Shared);
    if (!keys.empty()) form_.State().Copied_Script_Items = form_.State().pictures.Find(keys.front())->Script_Items;
    form_.State().view->Update_Status();
}

void Catalogue_Commands::Paste(const Script_Item_Array& items, bool all)
{
    for (const int key : Keys_For(all, Select_Access::Exclusive)) {
        Picture_Item& item = *form_.State().pictures.Find(key);
        item.Script_Items = items;
        item.Script_Modified = true;
    }
    Scripts_Changed();
}

void Catalogue_Commands::Paste_Copied(bool all)
{
    Paste(form_.State().Copied_Script_Items, all);
}

void Catalogue_Commands::Paste_Prepared(bool all)
{
    if (const Script_Item_Array* prepared = form_.State().Prepared_Items()) Paste(*prepared, all);
}

void Catalogue_Commands::Delete_Script_Items()
{
    const std::vector<int> keys = Keys_For(false, Select_Access::Exclusive);
    if (keys.empty()) return;
    host_.Edit_Script_Items(keys);
    Scripts_Changed();
}

void Catalogue_Commands::Save_Scripts(bool all)
{
    std::vector<int> keys = Keys_For(all, Select_Access::Exclusive);
    std::erase_if(keys, [this](int key) { return !form_.State().pictures.Find(key)->Script_Modified; });
    Save_Series(QStringLiteral("Halvine - Save Scripts"), keys,
                [this](int key) { return form_.Saving().Save_Texts(key); });
}
