#pragma once

#include "imaging/Brennick_Image_Utilities.h"
#include "imaging/Script_Items.h"

/// Scripts follow a picture whose pending rotation is written into its pixels: margins and text objects are stored in
/// pixels of the file as it stands.

/// Turns the origin and the escapement of each "Paragraph" in the body of a Text item with a picture that is turned
/// counterclockwise by 90, 180 or 270 degrees. `old_size` is the picture before the turn, in pixels. The box itself is
/// measured along the text and keeps its width and height. Everything else of the body stays as it is, character for
/// character, as does a body that holds no paragraph.
QString Turned_Text_Body(const QString& body, int degrees, Pixel_Size old_size);

/// The items with text objects turned.
void Turn_Text_Items(Script_Item_Array& items, int degrees, Pixel_Size old_size);

/// The items with crop margins turned.
void Turn_Crop_Items(Script_Item_Array& items, int degrees);

/// Both.
void Turn_Items(Script_Item_Array& items, int degrees, Pixel_Size old_size);

/// The items of a picture whose file is mirrored (`flip` as in a record): crop margins change sides, so that what was cut
/// off stays cut off, and text objects move with what lies below them. Letters stay readable: the box of a paragraph
/// covers the mirrored place, and the text runs at the mirrored slope.
/// Only for a flip that no record holds as a pending one: scripts are applied to a picture as flipped by its record, so
/// writing that flip into the file changes nothing in what they mean.
void Mirror_Items(Script_Item_Array& items, int flip, Pixel_Size size);
