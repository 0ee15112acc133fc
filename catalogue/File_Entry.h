#pragma once

#include <QtCore/QString>
#include <cstdint>

/// A file that is about to be picked. The pick list, the slide list and the grid of the folder pane all pass lists of it.
struct File_Entry {
    QString Path_Name; ///< full name
    double File_Date =
        0; ///< days, see Date_Utilities.h; 0 is taken from the file when it is read, and the size with it
    int File_Size_KB = 0; ///< (length + 512) / 1024
    int Rotate = 0;       ///< degrees
    float Interval = 0;   ///< seconds on show; 0 means the global time
};

/// (length + 512) / 1024
int Size_In_KB(std::int64_t bytes);

/// Date and size as the file has them now; rotation and interval 0. A missing file gives 0 for both.
File_Entry Entry_Of_File(const QString& path);
