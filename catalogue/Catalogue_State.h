#pragma once

#include "catalogue/Catalogue_View.h"
#include "catalogue/Picture_List.h"
#include "catalogue/Picture_Selection.h"
#include "catalogue/Work_Keeper.h"
#include "frame/ports/Platform.h"

/// What the routines of the catalogue share. Halvine_Form owns it; each routine gets a reference.
struct Catalogue_State {
    Platform& platform;
    Catalogue_View* view;        ///< never null
    Slide_Show_Link* slide_show; ///< never null
    Work_Keeper* keeper;         ///< never null
    Picture_List pictures{};
    Picture_Selection selection{pictures};
    int Current_Prepared_Script = 0; ///< 1-based index of Prepared_Script_Sets, 0 none
    Script_Item_Array Copied_Script_Items{};
    QString Default_Extensions = QStringLiteral("*.jpg;*.jif;*.tif"); ///< file patterns
    int current_picture_key = 0;                                      ///< shown beside the filmstrip, 0 none
    Owned_Bitmap Current_Picture_Bitmap{}; ///< full size, with the record's rotation and flips

    int Current_Picture_Index() const
    {
        const int index = pictures.Index_From_Key(current_picture_key);
        return index > 0 ? index : 0;
    }

    /// The picture's own items, or, when it has none, those of the prepared script in force.
    const Script_Item_Array& Items_In_Force(const Picture_Item& item) const;

    /// The prepared script in force; null when none is.
    const Script_Item_Array* Prepared_Items() const;
};
