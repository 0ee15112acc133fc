#pragma once

#include "frame/Program_State.h"
#include "frame/files/Result.h"

/// Configuration files, "hvi": the settings of the program in mark-up, an element for each, to carry them elsewhere.

/// Takes what the text holds. The file's lists replace the program's; what it does not name stays. A text that does not
/// begin with the right element changes nothing. True when it was read to its end; after a fault what was read stays.
bool Read_Configuration_Text(Program_State& state, const QString& text);
QString Configuration_Text(const Program_State& state);

/// The same from and to a file; false, or a reason, when the file cannot be read or written.
bool Load_Configuration_File(Program_State& state, const QString& path);
Result<void> Store_Configuration_File(const Program_State& state, const QString& path);
