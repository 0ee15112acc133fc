#pragma once

#include "frame/Program_State.h"
#include "frame/files/Result.h"

#include <functional>

/// Configuration files, "hvi": the settings of the program in mark-up, an element for each, to carry them elsewhere.

/// Asked with what was read before any of it is taken; false takes nothing. For the formulas in the lists.
using Configuration_Question = std::function<bool(const Program_State& read)>;

/// Takes what the text holds. The file's lists replace the program's; what it does not name stays. A text that does not
/// begin with the right element changes nothing, and nothing is asked. True when it was read to its end and taken; after
/// a fault what was read before it is taken.
bool Read_Configuration_Text(Program_State& state, const QString& text, const Configuration_Question& may_take = {});
QString Configuration_Text(const Program_State& state);

/// The same from and to a file; false, or a reason, when the file cannot be read or written.
bool Load_Configuration_File(Program_State& state, const QString& path, const Configuration_Question& may_take = {});
Result<void> Store_Configuration_File(const Program_State& state, const QString& path);
