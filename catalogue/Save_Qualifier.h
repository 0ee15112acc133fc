#pragma once

#include <QtCore/QString>

/// A qualifier behind a file name says how to save: "JPG", "TIF" and a number 0 to 100 for the quality, each behind a
/// "/", "\" or ":". "sea.jpg:TIF:80" is the file "sea.jpg", written as TIFF with quality 80.
struct Qualified_Name {
    QString name;
    QString qualifier;
};

/// Words that are folders on the disk, as in "/photos/80/sea.jpg", are no qualifier.
Qualified_Name Split_Qualifier(const QString& text);

/// Takes type (1 JPEG, 2 TIFF) and quality from the qualifier; without a type in it from the extension of the target, "jpg"
/// or "tif". What is told nowhere stays as it is.
void Parse_Save_Qualifier(const QString& target, const QString& qualifier, int& type, int& quality);
