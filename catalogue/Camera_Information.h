#pragma once

#include "catalogue/Camera_Record.h"

inline const QString No_Camera_Information = QStringLiteral("No camera information available");
inline const QString Camera_Information_Caption = QStringLiteral("Halvine - Camera Information (EXIF)");

/// The line under a thumbnail: "1/250s, f/5.6, ¤" (the sign says that the flash fired). Missing parts are left out.
QString Camera_Summary_Line(const Camera_Record& record);

/// The report: a line for each fact that is there, joined with CR LF.
QString Camera_Report(const Camera_Record& record);

/// The record of a file, width and height taken from the picture where the block has none. Nothing without a block.
std::optional<Camera_Record> Camera_Record_Of_File(const QString& path, int type = 0);
