#include "rename/Rename_Rows.h"

#include "catalogue/File_Entry.h"
#include "frame/text/Text_Utilities.h"
#include "imaging/Brennick_Image_Utilities.h"

Rename_Row Row_Of_File(const QString& path)
{
    Rename_Row row{.folder = Folder_Part(path),
                   .file_name = Name_Part(path),
                   .file_date = Normalize_Date(Entry_Of_File(path).File_Date, true)};
    File_Dimensions facts;
    if (Get_Dimensions(path, 0, facts)) {
        row.horz_pixels = facts.width;
        row.vert_pixels = facts.height;
    }
    return row;
}

Rename_Row Row_Of_Picture(const Picture_Item& item)
{
    return {.folder = item.Path,
            .file_name = item.File_Name,
            .file_date = item.File_Date,
            .horz_pixels = item.Horz_Pixels,
            .vert_pixels = item.Vert_Pixels};
}

Caption_Facts Caption_Facts_Of(const Picture_Item& item)
{
    return {.folder = item.Path,
            .root = Root_Of_Name(item.File_Name),
            .extension = Extension_Of_Name(item.File_Name),
            .date = item.File_Date,
            .description = item.Description};
}

std::vector<Rename_Move> Moves_Of(const std::vector<Rename_Row>& rows)
{
    std::vector<Rename_Move> moves;
    for (const Rename_Row& row : rows)
        moves.push_back({.folder = File_System_Bytes(row.folder),
                         .old_name = File_System_Bytes(row.file_name),
                         .new_name = File_System_Bytes(row.Final_Name())});
    return moves;
}
