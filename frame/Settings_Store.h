#pragma once

#include "frame/Program_State.h"
#include "frame/ports/Platform.h"

/// What the program remembers between runs: one line of records such as
///     DIR:'/home/me/',PRN:'',SDI:2.00,EXT:'*.jpg',RNF:"'name','formula'"
/// A record is a keyword of three letters, in any case, a colon and a value; records end at "," or ";". A record that
/// begins with "~" is a comment. Unknown records are passed over, and a value that is out of its limits changes nothing:
/// a damaged line costs the records that are damaged and never more.

inline const QString Settings_Key = QStringLiteral("Brennick\\Halvine");
inline const QString Settings_Value = QStringLiteral("Halvine");
inline const QString Alias_Value = QStringLiteral("Alias"); ///< the folder tree's own text, never looked into

/// Settings lines and files may include one another so deep, and so often in one reading.
constexpr int Settings_Nesting_Limit = 4;
constexpr int Settings_Includes_Limit = 64;

/// One stored string, at most 65536 characters of it; empty when missing.
QString Read_Stored_Value(Settings_Map& settings, const QString& name);

/// Reads a line into the state. `Nesting` is 0 for the stored line; each INI record reads a file one deeper.
void Read_Settings_String(Program_State& state, const QString& Settings_String, int Nesting = 0);

/// Reads a file of settings lines; empty lines and lines that begin with "~" say nothing. A file that cannot be opened,
/// a folder or a device, a file above the limit of settings files, or one nested 4 deep or more is passed over.
void Read_Settings_File(Program_State& state, const QString& File_Name, int Nesting);

/// The whole text of such a file; empty for one that is passed over.
QString Text_Of_Settings_File(const QString& path);

/// The line as it is stored. The file pattern is part of it only `With_Extensions`.
QString Settings_String_Of(const Program_State& state, bool With_Extensions);

/// Stores the line, then the alias. A failed write is dropped: nobody can be asked at the end of the program.
void Write_Settings_String(const Program_State& state, Settings_Map& settings, const QString& Alias_String,
                           bool With_Extensions);

/// A pair as text, 'name','value' with single quotes inside doubled, and back. A text that opens no quote is both name
/// and value; a name without a comma behind it is its own value. Nothing for the empty text.
QString Text_Of_Pair(const Name_Value_Pair& pair);
std::optional<Name_Value_Pair> Pair_From_Text(const QString& text);
