#pragma once

#include "frame/files/Regular_File.h"
#include "imaging/Brennick_Image_Utilities.h"
#include "imaging/Script_Items.h"

#include <QtCore/QString>
#include <cstdint>

/// Pending flips of a record, applied after its rotation.
constexpr int Flip_Left_To_Right = 1;
constexpr int Flip_Top_To_Bottom = 2;

/// The record of one picture. The bitmap belongs to the record. Names are changed through Picture_List alone, which finds
/// pictures by them.
struct Picture_Item {
    std::int32_t Picture_Key = 0; ///< from 1; never used again in a run
    std::int32_t File_Type = 0;   ///< an Image_File_Type as a number
    QString Path;                 ///< folder, with its trailing separator
    QString File_Name;            ///< name with extension
    double File_Date = 0;         ///< time of modification, in days, through Normalize_Date
    std::int32_t File_Size_KB = 0;
    std::int32_t Horz_Pixels = 0; ///< of the stored, upright picture, before any pending rotation
    std::int32_t Vert_Pixels = 0;
    std::int32_t Pixel_Depth = 0;      ///< bits; 8 and below is grey or palette
    std::int32_t Horz_Resolution = -1; ///< dots per inch as stored, settable; -1 none
    std::int32_t Vert_Resolution = -1;
    std::int32_t Scale_Divisor = 8; ///< reduction of the thumbnail
    std::int32_t Rotate = 0;        ///< pending rotation in degrees, 0 to 359
    std::int32_t Flip = 0;          ///< pending flips
    QString Description;            ///< the file's comment
    bool Description_Modified = false;
    /// Empty when unreadable or given up. It may lag behind a change of Rotate and Flip, so that a thousand pictures turn
    /// without touching their pixels: Picture_Pictures::Ensure_Thumbnail brings it in line.
    Owned_Bitmap Thumbnail_Bitmap;
    std::int32_t Thumbnail_Rotate = 0; ///< Rotate and Flip as the bitmap shows them
    std::int32_t Thumbnail_Flip = 0;
    QString Camera_Summary;        ///< "1/250s, f/5.6, ¤"
    std::uint32_t Lock_Flags = 0;  ///< see Picture_Locks.h
    float Interval_In_Seconds = 0; ///< 0 means the global time
    Script_Item_Array Script_Items;
    bool Script_Modified = false; ///< the script differs from what the file holds
    QString Script_Fault;         ///< why the file's script could not be read to its end; empty when it was
    File_Identity Identity; ///< of the file when it was read or written last: tells whether another program changed it
    std::int32_t Source_Warnings = -1; ///< of the last full-size load, as Get_Bitmap_Source_Warnings_CPP; -1 none yet

    bool Thumbnail_Is_In_Line() const { return Thumbnail_Rotate == Rotate && Thumbnail_Flip == Flip; }
    QString Full_Name() const { return Path + File_Name; }
};
