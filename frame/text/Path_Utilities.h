#pragma once

#include "frame/files/Result.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// Paths as text. Inside the program a path is native, with "/" between folders; document files hold "\". The splitters
/// know "\", "/" and ":": a path with a "/" in it is native and is split at "/" alone, because "\" and ":" are ordinary
/// characters in native file names; any other path is split at "\" and ":".

/// 1-based position of the first of "/", "\" and ":" at or behind `start`; 0 when there is none.
int Find_Separator(const QString& text, int start = 1);

QString Folder_Part(const QString& path);            ///< up to and including the last separator; may be empty
QString Name_Part(const QString& path);              ///< what follows the last separator
QString Extension_Part(const QString& path);         ///< behind the last "." of the name, empty if none
QString Base_Name_Part(const QString& path);         ///< the name without "." and extension
QString Path_Without_Extension(const QString& path); ///< folder and base name

/// Adds the separator that the path uses ("/" unless it holds "\" alone). The empty path stays empty.
QString With_Trailing_Separator(const QString& path);
QString Without_Trailing_Separator(const QString& path); ///< removes one; the root "/" stays

/// Adds "." and `extension` when the name has no extension and does not end in ".".
QString With_Default_Extension(const QString& path, const QString& extension);

/// The text that both paths begin with, compared without regard to case and taken from the first. It may end inside a
/// folder's name; Folder_Part cuts it back to whole folders.
QString Common_Path(const QString& left, const QString& right);

/// Paths for document files, and back. A leading "\" and drive letters stay as they are but for the separators.
QString Document_Path(const QString& native_path); ///< "/" becomes "\"
QString Native_Path(const QString& path);          ///< "\" becomes "/"

/// The file or folder that `path` means: the literal name when it exists, else with "\" as separator, else the first
/// match by case folding, folder by folder in order of names. Without any of these the native form of `path`.
QString Existing_Path(const QString& path);

/// 1 if a file of this name exists (literally or converted, folders do not count), 0 if not. An empty name is an error
/// where `raise_error` is set, otherwise 0.
Result<int> Test_File_Exists(const QString& file_name, bool raise_error);

/// A path for the pixel library and the system, and back: the bytes of the file system, so that any name on a disk can
/// be opened again, valid UTF-8 or not.
std::string File_System_Bytes(const QString& path);
QString Path_From_Bytes(const QByteArray& bytes);

/// True when the name can stand in a folder: 1 to 255 bytes, no "/" or NUL, not "." or "..".
bool Is_Valid_File_Name(const QString& name);

/// True when `name` fits one part of a ";" list of patterns such as "*.jpg;*.jif;*.tif", without regard to case. "*.*"
/// fits every name; an empty part fits none.
bool Fits_File_Pattern(const QString& name, const QString& patterns);
