#pragma once

#include "frame/files/Result.h"

#include <QtCore/QString>

/// The program's own text files: slide shows, albums, templates, configurations.

/// The whole text, UTF-8 or else Windows-1252. Files above the limit of documents, folders, devices and pipes are refused.
Result<QString> Read_Document(const QString& path);

/// Writes UTF-8 under the name, whole or not at all.
Result<void> Write_Document(const QString& path, const QString& text);

/// What the files name as the program's version: major, a point, minor, two digits each.
QString Document_Version();
