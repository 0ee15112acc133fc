#pragma once

#include "catalogue/Catalogue_State.h"
#include "catalogue/File_Entry.h"
#include "catalogue/Next_Picture.h"

/// The bitmaps of the records: loading, thumbnails, rotation, the current picture. Results as in Picture_Catalogue.h.
class Picture_Pictures {
public:
    explicit Picture_Pictures(Catalogue_State& state) : state_(state) {}

    Bitmap_Handle Load(Picture_Item& item, int rotate_delta, int scale_divisor);
    Bitmap_Handle Load_Adjusted(Picture_Item& item, int rotate_delta, int scale_divisor);
    Bitmap_Handle Thumbnail(Picture_Item& item, int rotate_delta, bool& is_copy) const;
    Bitmap_Handle Thumbnail_Adjusted(Picture_Item& item, int rotate_delta, bool& is_copy) const;
    /// Reads a thumbnail that was given up, and turns one that lags behind its record. False when the file cannot be read
    /// any more.
    bool Ensure_Thumbnail(Picture_Item& item) const;

    /// Loads the thumbnail at divisor 8 and again at the smallest power of two that still fills a cell.
    /// Nothing where no view shows thumbnails.
    void Make_Thumbnail(Picture_Item& item);

    /// What to read of a file for its record: no pixels where no view shows thumbnails.
    Picture_Request Request_For(const File_Entry& entry) const;

    /// A file that was read becomes the record's: thumbnail, type, sizes, resolutions, description, script, camera line and
    /// date. The record counts as unmodified then, and owns the bitmap. False, and nothing but the thumbnail has changed,
    /// when the file could not be read.
    bool Take_Contents(Picture_Item& item, Picture_Contents contents) const;

    /// Date, size and identity of the file as it stands now.
    static void Read_File_Facts(Picture_Item& item);

    /// After the file or the pending rotation changed. With size_changed the divisor is found anew.
    void Reload_Picture_Thumbnail(int index, bool size_changed);

    /// Another file stands under the name: the record is read anew, and nothing is pending for it any more.
    void Read_New_File(int index);

    void Rotate_Picture(int key, int angle);

    /// Rotate or Flip was changed: shows the picture so, and a slide show that is open counts as modified.
    void Show_Turned(int key);

    /// 0 or an unknown index: there is no current picture any more.
    void Set_Current_Picture(int index);
    void Drop_Current_Picture();

    /// What is read before it becomes the current picture.
    Next_Picture& Next() { return next_; }

    /// The current picture with its script, if that was run ahead; 0 otherwise. Once for each change of the current
    /// picture. The caller owns it.
    Bitmap_Handle Take_Current_Adjusted() { return current_adjusted_.Release(); }

private:
    void Refresh_Current_Picture(int key);
    Owned_Bitmap Load_Thumbnail(const Picture_Item& item) const;
    Catalogue_State& state_;
    Next_Picture next_{state_};
    Owned_Bitmap current_adjusted_;
};
