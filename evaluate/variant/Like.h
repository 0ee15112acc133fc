#pragma once

#include "evaluate/variant/Evaluate_Error.h"
#include "evaluate/variant/Operators.h"

#include <QtCore/QString>

/// Pattern matching: "*" any run, "?" one character, "#" one digit, "[list]" one character of the list with ranges
/// "a-z", "[!list]" one that is not in it; "-" at either end of a list and "]" outside one stand for themselves, "[]"
/// is nothing. Any other character stands for itself. Time is bounded by text times pattern, memory by the pattern.
namespace Formula {

/// 93 for an open list without its "]" and a range that runs backwards.
Evaluated<bool> Is_Like(QStringView text, QStringView pattern, Compare_Mode mode);

/// The first stretch of text at or behind a position (1-based; below 1 means 1) that is like the pattern without regard
/// to case: among those with the smallest end, the one with the largest start. Positions are 1-based; both are 0 when
/// there is none. A pattern that fits nothing at all takes one character.
struct Like_Place {
    std::int64_t begin = 0, end = 0;
};
Evaluated<Like_Place> First_Like(QStringView text, QStringView pattern, std::int64_t position);

/// The mirror image on Left(text, position): the largest start, then the smallest end. 0 or less is the whole text.
Evaluated<Like_Place> Last_Like(QStringView text, QStringView pattern, std::int64_t position);

} // namespace Formula
