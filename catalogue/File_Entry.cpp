#include "catalogue/File_Entry.h"

#include "frame/text/Date_Utilities.h"

#include <QtCore/QFileInfo>

int Size_In_KB(std::int64_t bytes)
{
    return int((bytes + 512) / 1024);
}

File_Entry Entry_Of_File(const QString& path)
{
    File_Entry entry;
    entry.Path_Name = path;
    const QFileInfo facts(path);
    if (!facts.exists()) return entry;
    entry.File_Date = Date_From_Date_Time(facts.lastModified());
    entry.File_Size_KB = Size_In_KB(facts.size());
    return entry;
}
