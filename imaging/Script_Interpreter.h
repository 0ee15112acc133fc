#pragma once

#include "imaging/Brennick_Image_Utilities.h"
#include "imaging/Script_Items.h"

#include <atomic>

/// Applies the items of a script to a bitmap. Items run in order; one that fails, or is damaged so that it produces
/// nothing, leaves the picture as it is and the next one goes on: a script never stops half way. Which items a picture
/// has, and where its file lies, is the catalogue's business.

/// Draws the text object of a Text item. Whoever has fonts installs one.
class Text_Item_Renderer {
public:
    virtual ~Text_Item_Renderer() = default;

    /// Draws into `target` in place. `divisor` is the reduction of the picture (1 is full size); the object's geometry is
    /// turned by `rotation` degrees first when that is not 0. False when nothing could be drawn.
    virtual bool Render(Bitmap_Handle target, const QString& body, int divisor, int rotation) = 0;
};

/// Null removes it. Not owned. Without one, Text items do nothing.
void Install_Text_Item_Renderer(Text_Item_Renderer* renderer);

/// How a Crop item's margins, stored in full-size pixels, are brought to the bitmap's scale.
enum class Margin_Division {
    Rounded,   ///< float division, rounded half to even: pictures loaded from a file
    Truncated, ///< integer division: thumbnails
};

struct Script_Run {
    int divisor = 1;  ///< reduction of the bitmap; below 1 counts as 1
    int rotation = 0; ///< effective rotation of the bitmap in degrees; any number, brought into 0 to 359
    Margin_Division margin_division = Margin_Division::Rounded;
    const std::atomic<bool>* stop = nullptr; ///< once it is true no further item begins
};

/// Whether another thread than the window's may run the items over a bitmap of its own: text is drawn with the window's
/// fonts.
bool May_Run_Aside(const Script_Item_Array& items);

/// Runs the items over `start`, which is never changed or released. The result is a new bitmap that belongs to the
/// caller, or `start` itself when no item produced anything.
Bitmap_Handle Apply_Script_Items(Bitmap_Handle start, const Script_Item_Array& items, const Script_Run& run);

/// Runs the items over a bitmap that the caller gives away, and returns what to use instead, owned by the caller. Each
/// intermediate bitmap is released as soon as the next one stands.
Bitmap_Handle Apply_Script_Items_To_Own(Bitmap_Handle start, const Script_Item_Array& items, const Script_Run& run);

/// One item; 0 when it produced nothing.
Bitmap_Handle Apply_Script_Item(Bitmap_Handle source, const Script_Item& item, const Script_Run& run);

/// Turns the margins of a Crop item to match a picture that was turned counterclockwise by 90, 180 or 270 degrees (after
/// bringing them into 0 to 359); other angles change nothing.
void Rotate_Crop_Margins(int& left, int& top, int& right, int& bottom, int degrees);

/// degrees mod 360, in 0 to 359.
int Normal_Rotation(int degrees);

/// Where a picture comes from.
struct Picture_Source {
    QString path;
    int type = 0; ///< 0 asks the signature
    int scale_divisor = 1;
    int rotation = 0;  ///< effective rotation in degrees
    int flip_bits = 0; ///< bit 1 mirrors left to right, bit 2 top to bottom, after the rotation
};

/// The picture without any script: load, rotate, flip. A new bitmap, or 0 with Last_Load_Error.
Bitmap_Handle Load_Picture_Bitmap(const QString& path, int type, int scale_divisor, int rotation, int flip_bits);

/// Load, rotate, flip, run the script. A new bitmap, or 0 when the load failed.
Bitmap_Handle Load_Adjusted_Picture(const Picture_Source& source, const Script_Item_Array& items);

/// Runs the items over a thumbnail made at `thumbnail_divisor` and already turned. bitmap_is_copy comes back true when
/// the result is a new bitmap; otherwise it is `thumbnail`, which stays its owner's and is never released here.
Bitmap_Handle Adjusted_Thumbnail(Bitmap_Handle thumbnail, const Script_Item_Array& items, int thumbnail_divisor,
                                 int rotation, bool& bitmap_is_copy);
